// replay_event: an event as recordings hold it.
#pragma once

#include "replay/codec.h"

#include <SDL3/SDL_events.h>

inline constexpr int REPLAY_EVENT_TEXT_SIZE = 512; // bytes kept of a typed or dropped text, with the terminating NUL

bool replay_event_is_kept(const SDL_Event *event); // others are of no consequence to a game

// Writes the event or reads it; a text it carries is then in `text`, of REPLAY_EVENT_TEXT_SIZE bytes, and lives as
// long. Devices have no number: there is one of each kind.
void replay_event_code(Codec *codec, SDL_Event *event, char *text);
