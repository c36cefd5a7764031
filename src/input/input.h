// input: the game's actions, held and pressed, bound by text to keys and gamepad controls. Main thread only.
//
// A press is an edge: a key down without auto-repeat, a button down, an axis crossing its threshold. Each reaches the
// frame and the fixed steps exactly once: outside fixed steps input_pressed is true during the frame that polled the
// event, inside them it is true in the first step that runs after it, in whichever frame that is.
//
// A binding text is a list of up to four names, separated by commas: a key as SDL names it ("Left Shift"), or "pad:"
// and a gamepad button ("pad:a"), a trigger ("pad:lefttrigger"), or a stick axis and its direction ("pad:leftx-").
#pragma once

#include "lumarind/input/input_actions.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_stdinc.h>

inline constexpr int INPUT_MAX_BINDINGS = 4;        // to an action
inline constexpr float INPUT_AXIS_THRESHOLD = 0.5f; // an axis counts as held beyond it, after the deadzone

enum InputBindingKind : Sint32 {
    INPUT_BINDING_KEY = 0,
    INPUT_BINDING_BUTTON = 1,
    INPUT_BINDING_AXIS = 2,
};

struct InputBinding {
    InputBindingKind kind;
    Sint32 code;      // SDL_Scancode, SDL_GamepadButton or SDL_GamepadAxis
    Sint32 direction; // of an axis: -1 or 1, for a trigger 1; else 0
};

// --- lifetime ---
bool input_setup(); // binds the configuration's texts; what is not recognised is warned of and left out. Safe twice
void input_cleanup();

// --- questions: false for no action, and without setup ---
bool input_key_held(SDL_Scancode key); // any key, bound or not; what a replay says while there is one
bool input_held(int action);           // some binding is active now
bool input_pressed(int action);        // see above

// --- bindings ---
// Reads up to `capacity` bindings from the text and returns their number. Each piece left out is warned of.
int input_parse_bindings(const char *text, InputBinding *bindings, int capacity);
// Binds anew and stores the text in the configuration as it is. True when every piece was taken.
bool input_bind(int action, const char *text);
const char *input_bindings_text(int action); // from the configuration; "" for no action, or before setup

// --- called by the frame loop ---
void input_frame_start();                        // before a frame's first event
void input_handle_event(const SDL_Event *event); // for each of them
void input_fixed_step_begin();
void input_fixed_step_end();
void input_clear_presses(); // after a change of screens
