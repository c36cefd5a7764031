#include "input/gamepad.h"

bool gamepad_setup() { return true; }
void gamepad_cleanup() {}
void gamepad_handle_added(SDL_JoystickID) {}
void gamepad_handle_removed(SDL_JoystickID) {}
