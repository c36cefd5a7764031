// replay_feed: the engine's interface to a recording: the main loop, frame and input modules write and read it.
#pragma once

#include "lumarind/replay/replay.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_gamepad.h>

constexpr Uint16 REPLAY_VERSION = 1;
constexpr int REPLAY_TEXT_SIZE = 128; // with the terminating NUL
constexpr int REPLAY_HASH_STEPS = 60; // fixed steps between state hashes
constexpr Sint32 REPLAY_MAX_ACTIONS = 32;

// The initial conditions of a recording; a replay starts with the same.
struct ReplayStart {
    char game[REPLAY_TEXT_SIZE], build[REPLAY_TEXT_SIZE], screen[REPLAY_TEXT_SIZE];
    Sint32 step_hz, window_width, window_height, output_width, output_height, ui_scale; // Hz, window units, px
    float deadzone;
    Uint64 seed;         // of SDL's random numbers
    double fade_seconds; // of the fade-in of the first screen; 0: none
    Uint32 axes_past;    // bits of controller axes already beyond the threshold (_input_axes_past)
    Sint32 binding_count;
    char bindings[REPLAY_MAX_ACTIONS][REPLAY_TEXT_SIZE];
};

// The controller as the game sees it.
struct ReplayPad {
    bool connected;
    char name[REPLAY_TEXT_SIZE], type[REPLAY_TEXT_SIZE];
    Uint32 buttons, has_buttons, has_axes; // bits
    Sint16 axes[SDL_GAMEPAD_AXIS_COUNT];
    Uint8 labels[SDL_GAMEPAD_BUTTON_COUNT];
};

// Device state that a frame may query.
struct ReplayDevices {
    bool keys[SDL_SCANCODE_COUNT];
    float mouse_x, mouse_y;             // window units
    Sint32 output_width, output_height; // px
    ReplayPad pad;
};

// --- recording ---
bool replay_is_requested();                             // recording starts with the next screen
void replay_begin(const ReplayStart *start);            // before that screen's setup; seeds SDL's random numbers
void replay_record_frame(Uint64 elapsed_ns);            // at the frame's start
void replay_record_event(const SDL_Event *event);       // as delivered to the game
void replay_record_devices(const ReplayDevices *state); // after the last event

// --- replaying ---
bool replay_open(const char *path, double speed); // reads the start; speed 0: as fast as possible. Reports errors
void replay_clear_failure();                      // at the program's start: a run before may have failed
const ReplayStart *replay_start();                // of the open recording, else null
bool replay_is_fast();                            // as fast as possible, without display
void replay_play();                               // before the first screen's setup; seeds SDL's random numbers
bool replay_next_frame(Uint64 *elapsed_ns);       // waits until the frame is due; false: end of the recording
bool replay_next_event(SDL_Event *event);         // of this frame; false: no more events
const ReplayDevices *replay_devices();            // null unless replaying

// --- recording and replaying ---
void replay_step(const char *screen, Uint64 (*state_hash)()); // after each fixed step; the hash function may be null
