// gamepad_demo: live view of the active controller.
#pragma once

bool gamepad_demo_setup();
void gamepad_demo_tick();
void gamepad_demo_cleanup();
