// texture_demo: two pictures in motion, one sliding and one turning.
#pragma once

bool texture_demo_setup();
void texture_demo_fixed_update(double dt); // dt in seconds
void texture_demo_tick();
void texture_demo_cleanup();

double texture_demo_oscillate_x(double phase); // the slider's x in UI units, from a phase in radians
