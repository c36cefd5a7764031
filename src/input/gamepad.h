// gamepad: the single active controller, with hot-plug. Further controllers are ignored until the active one is
// removed. Without a controller all queries return false or zero. Main thread only.
// Mappings for controllers unknown to SDL are read from config/gamecontrollerdb.txt if it exists.
#pragma once

#include <SDL3/SDL_gamepad.h>

inline constexpr float GAMEPAD_DEADZONE_MAX = 0.9f;

// --- lifetime ---
bool gamepad_setup();   // opens the first connected controller; safe to call twice. Reports errors
void gamepad_cleanup(); // safe to call twice

// --- called for SDL's events ---
void gamepad_open(SDL_JoystickID id); // makes it the active controller if there is none
void gamepad_handle_added(SDL_JoystickID id);
void gamepad_handle_removed(SDL_JoystickID id); // if it was active, opens the next connected one

// --- the active controller ---
bool gamepad_connected();
const char *gamepad_name();      // "No controller" without one
const char *gamepad_type_name(); // "none" without one
bool gamepad_has_button(SDL_GamepadButton button);
bool gamepad_button(SDL_GamepadButton button); // down now
SDL_GamepadButtonLabel gamepad_button_label(SDL_GamepadButton button);
bool gamepad_has_axis(SDL_GamepadAxis axis);
Sint16 gamepad_axis_raw(SDL_GamepadAxis axis); // -32768 to 32767, triggers from 0; stick y grows downwards
float gamepad_axis(SDL_GamepadAxis axis);      // after the deadzone: -1 to 1, triggers 0 to 1
float gamepad_deadzone();                      // 0 to GAMEPAD_DEADZONE_MAX

// Both axes of a stick after the radial deadzone, -1 to 1. Outputs may be null.
void gamepad_stick(SDL_GamepadAxis x_axis, SDL_GamepadAxis y_axis, float *x, float *y);
void gamepad_left_stick(float *x, float *y);
void gamepad_right_stick(float *x, float *y);

// Intensities of the low and high frequency motors are 0 to 65535. Returns false if the controller has no rumble.
bool gamepad_rumble(Uint16 low_frequency, Uint16 high_frequency, Uint32 duration_ms);

// --- pure calculations ---
float gamepad_axis_normalise(Sint16 raw);    // -1 to 1
float gamepad_trigger_normalise(Sint16 raw); // 0 to 1
// Returns 0 inside the deadzone and rescales magnitudes from [deadzone, 1] to [0, 1], keeping the sign.
float gamepad_axis_deadzone(float value, float deadzone);
// Radial deadzone: the same for a stick's length, which is clamped to 1; its direction is unchanged. Outputs may be
// null.
void gamepad_stick_deadzone(float x, float y, float deadzone, float *out_x, float *out_y);
