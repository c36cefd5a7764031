// physics_demo: a wrecking ball on a chain, a wall to break, and more to throw at it, simulated by Box2D.
#pragma once

bool physics_demo_setup();
void physics_demo_fixed_update(double dt); // dt in seconds
void physics_demo_tick();
void physics_demo_cleanup();
