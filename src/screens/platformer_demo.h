// platformer_demo: the castle as a playable level.
#pragma once

#include <SDL3/SDL_stdinc.h>

bool platformer_demo_setup();
void platformer_demo_fixed_update(double dt); // dt in seconds
void platformer_demo_tick();
Uint64 platformer_demo_state_hash(); // of the simulation state
void platformer_demo_cleanup();
