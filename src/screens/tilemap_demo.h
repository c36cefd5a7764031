// tilemap_demo: the castle passing by, magnified three times.
#pragma once

bool tilemap_demo_setup();
void tilemap_demo_fixed_update(double dt); // dt in seconds
void tilemap_demo_tick();
void tilemap_demo_cleanup();
