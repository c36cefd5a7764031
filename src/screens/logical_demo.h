// logical_demo: the castle at its own pixels in a low logical resolution, and a label at the window's.
#pragma once

bool logical_demo_setup();
void logical_demo_fixed_update(double dt); // dt in seconds
void logical_demo_tick();
void logical_demo_cleanup();
