// input_recording: the input modules' state as stored in recordings.
#pragma once

#include <SDL3/SDL_stdinc.h>

struct ReplayPad;

void _gamepad_record(ReplayPad *pad); // the active controller's state as seen by the game

// Two bits per axis: beyond the threshold at its last event, in negative and in positive direction.
Uint32 _input_axes_past();
void _input_set_axes_past(Uint32 bits);
