// input: input actions, held and pressed, bound to keys and gamepad controls by texts. Main thread only.
//
// Presses are edge-triggered: a key down without auto-repeat, a button down, an axis crossing its threshold. Each is
// delivered exactly once to the frame and once to the fixed steps: outside fixed steps input_pressed is true during the
// frame that polled the event, inside them in the first step that runs after it, possibly in a later frame.
//
// A binding text lists up to four names, separated by commas: a key by SDL's name ("Left Shift"), or "pad:" followed
// by a gamepad button ("pad:a"), a trigger ("pad:lefttrigger"), or a stick axis and its direction ("pad:leftx-").
#pragma once

#include "lumarind/input/input_actions.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_stdinc.h>

inline constexpr int INPUT_MAX_BINDINGS = 4;        // per action
inline constexpr float INPUT_AXIS_THRESHOLD = 0.5f; // an axis beyond it counts as held; applied after the deadzone

enum InputBindingKind : Sint32 {
    INPUT_BINDING_KEY = 0,
    INPUT_BINDING_BUTTON = 1,
    INPUT_BINDING_AXIS = 2,
};

struct InputBinding {
    InputBindingKind kind;
    Sint32 code;      // SDL_Scancode, SDL_GamepadButton or SDL_GamepadAxis
    Sint32 direction; // axes: -1 or 1; triggers: 1; otherwise 0
};

// --- lifetime ---
bool input_setup(); // parses the configured bindings; warns of unknown names, skipping them. Safe to call twice
void input_cleanup();

// --- queries: false for an invalid action, and without setup ---
bool input_key_held(SDL_Scancode key); // any key, bound or not; during a replay the recorded state
bool input_held(int action);           // at least one binding is active
bool input_pressed(int action);        // see above

// --- bindings ---
// Parses up to `capacity` bindings and returns their number. Skipped entries are logged as warnings.
int input_parse_bindings(const char *text, InputBinding *bindings, int capacity);
// Replaces the action's bindings and stores the text in the configuration. Returns true if no entry was skipped.
bool input_bind(int action, const char *text);
const char *input_bindings_text(int action); // from the configuration; "" for an invalid action, or without setup

// --- called by the frame loop ---
void input_frame_start();                        // before the frame's first event
void input_handle_event(const SDL_Event *event); // for each event
void input_fixed_step_begin();
void input_fixed_step_end();
void input_clear_presses(); // after a screen change
