// platformer_demo: the castle, playable.
#pragma once

bool platformer_demo_setup();
void platformer_demo_fixed_update(double dt); // dt in seconds
void platformer_demo_tick();
void platformer_demo_cleanup();
