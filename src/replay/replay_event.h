// replay_event: serialisation of events in recordings.
#pragma once

#include "replay/codec.h"

#include <SDL3/SDL_events.h>

inline constexpr int REPLAY_EVENT_TEXT_SIZE = 512; // longest typed or dropped text, in bytes with the terminating NUL

bool replay_event_is_recorded(const SDL_Event *event); // false: the event does not affect games and is not recorded

// Writes or reads the event. Its text is read into `text`, of REPLAY_EVENT_TEXT_SIZE bytes, to which the event then
// points. Device ids are not stored: one device of each kind is assumed.
void replay_event_code(Codec *codec, SDL_Event *event, char *text);
