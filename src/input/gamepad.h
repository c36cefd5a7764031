// gamepad: the one active controller, followed through plugging in and out. A further controller is ignored until the
// active one goes. Main thread only. Every reading without a controller is false or zero.
// Mappings for controllers SDL does not know are taken from config/gamecontrollerdb.txt when it is there.
#pragma once

#include <SDL3/SDL_gamepad.h>

inline constexpr float GAMEPAD_DEADZONE_MAX = 0.9f;

// --- lifetime ---
bool gamepad_setup();   // opens the first controller there is; safe twice. False: reported
void gamepad_cleanup(); // safe twice

// --- called for SDL's events ---
void gamepad_open(SDL_JoystickID id); // becomes the active one when there is none
void gamepad_handle_added(SDL_JoystickID id);
void gamepad_handle_removed(SDL_JoystickID id); // the active one's place goes to the next

// --- the active controller ---
bool gamepad_connected();
const char *gamepad_name();      // "No controller" without one
const char *gamepad_type_name(); // "none" without one
bool gamepad_has_button(SDL_GamepadButton button);
bool gamepad_button(SDL_GamepadButton button); // down now
SDL_GamepadButtonLabel gamepad_button_label(SDL_GamepadButton button);
bool gamepad_has_axis(SDL_GamepadAxis axis);
Sint16 gamepad_axis_raw(SDL_GamepadAxis axis); // -32768 to 32767; triggers from 0; stick y grows downwards
float gamepad_axis(SDL_GamepadAxis axis);      // -1 to 1 behind the deadzone; triggers 0 to 1
float gamepad_deadzone();                      // 0 to GAMEPAD_DEADZONE_MAX

// Both axes of a stick, -1 to 1, behind the radial deadzone. The outputs may be null.
void gamepad_stick(SDL_GamepadAxis x_axis, SDL_GamepadAxis y_axis, float *x, float *y);
void gamepad_left_stick(float *x, float *y);
void gamepad_right_stick(float *x, float *y);

// Intensities 0 to 65535 of the low and the high frequency motor. False: refused.
bool gamepad_rumble(Uint16 low_frequency, Uint16 high_frequency, Uint32 duration_ms);

// --- pure calculations ---
float gamepad_axis_normalise(Sint16 raw);    // -1 to 1
float gamepad_trigger_normalise(Sint16 raw); // 0 to 1
// What lies beyond the deadzone, stretched to reach from 0 at its edge to 1.
float gamepad_axis_deadzone(float value, float deadzone);
// The same for a stick's length, which is cut to 1; its direction stays. The outputs may be null.
void gamepad_stick_deadzone(float x, float y, float deadzone, float *out_x, float *out_y);
