// input_demo: the eight actions live, their presses counted by steps and ticks, and a marker they move.
#pragma once

bool input_demo_setup();
void input_demo_fixed_update(double dt); // dt in seconds
void input_demo_tick();
void input_demo_cleanup();
