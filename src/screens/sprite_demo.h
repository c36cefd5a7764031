// sprite_demo: the fire knight's fourteen clips, one at a time, and the sheet they come from.
#pragma once

bool sprite_demo_setup();
void sprite_demo_fixed_update(double dt); // dt in seconds
void sprite_demo_tick();
void sprite_demo_cleanup();
