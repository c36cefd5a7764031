// gamepad: the one active controller. Not opening any yet; the engine already says which come and go.
#pragma once

#include <SDL3/SDL_joystick.h>

bool gamepad_setup(); // false: reported
void gamepad_cleanup();
void gamepad_handle_added(SDL_JoystickID id);
void gamepad_handle_removed(SDL_JoystickID id);
