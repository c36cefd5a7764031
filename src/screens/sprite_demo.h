// sprite_demo: viewer for the fire knight's fourteen animation clips and their sprite sheet.
#pragma once

#include <SDL3/SDL_stdinc.h>

bool sprite_demo_setup();
void sprite_demo_fixed_update(double dt); // dt in seconds
void sprite_demo_tick();
Uint64 sprite_demo_state_hash(); // of the simulation state
void sprite_demo_cleanup();
