// texture_demo: two images in motion, one sliding and one rotating.
#pragma once

#include <SDL3/SDL_stdinc.h>

bool texture_demo_setup();
void texture_demo_fixed_update(double dt); // dt in seconds
void texture_demo_tick();
Uint64 texture_demo_state_hash(); // of the simulation state
void texture_demo_cleanup();

double texture_demo_oscillate_x(double phase); // the slider's x in UI units at this phase in radians
