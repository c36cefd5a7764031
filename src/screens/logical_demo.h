// logical_demo: the castle at its own pixels in a low logical resolution, and a label at the window's.
#pragma once

#include <SDL3/SDL_stdinc.h>

bool logical_demo_setup();
void logical_demo_fixed_update(double dt); // dt in seconds
void logical_demo_tick();
Uint64 logical_demo_state_hash(); // of the simulation
void logical_demo_cleanup();
