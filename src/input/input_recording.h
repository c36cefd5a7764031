// input_recording: what the input modules hold, for recordings.
#pragma once

#include <SDL3/SDL_stdinc.h>

struct ReplayPad;

void _gamepad_record(ReplayPad *pad); // the active controller as a game sees it

// Two bits an axis: beyond the threshold to the negative, to the positive, when it moved last.
Uint32 _input_axes_past();
void _input_set_axes_past(Uint32 bits);
