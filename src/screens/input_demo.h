// input_demo: the eight actions live, with their presses counted in fixed steps and in ticks, and a marker to move.
#pragma once

#include <SDL3/SDL_stdinc.h>

bool input_demo_setup();
void input_demo_fixed_update(double dt); // dt in seconds
void input_demo_tick();
Uint64 input_demo_state_hash(); // of the simulation state
void input_demo_cleanup();
