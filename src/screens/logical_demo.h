// logical_demo: the castle in a low logical resolution, with a label in UI space.
#pragma once

#include <SDL3/SDL_stdinc.h>

bool logical_demo_setup();
void logical_demo_fixed_update(double dt); // dt in seconds
void logical_demo_tick();
Uint64 logical_demo_state_hash(); // of the simulation state
void logical_demo_cleanup();
