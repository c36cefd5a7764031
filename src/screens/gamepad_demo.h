// gamepad_demo: the active controller, drawn live.
#pragma once

bool gamepad_demo_setup();
void gamepad_demo_tick();
void gamepad_demo_cleanup();
