// tilemap_demo: a panning view of the castle, magnified three times.
#pragma once

#include <SDL3/SDL_stdinc.h>

bool tilemap_demo_setup();
void tilemap_demo_fixed_update(double dt); // dt in seconds
void tilemap_demo_tick();
Uint64 tilemap_demo_state_hash(); // of the simulation state
void tilemap_demo_cleanup();
