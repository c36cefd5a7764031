// screen_registry: which screen runs in which game state, and the one that is set up now. Main thread only.
#pragma once

#include "engine/game_state.h"

#include <SDL3/SDL_stdinc.h>

struct Screen {
    bool (*setup)() = nullptr;                    // makes all the screen owns; false: reported, cleanup follows
    void (*fixed_update)(double dt) = nullptr;    // one simulation step of dt seconds; may be absent
    void (*tick)() = nullptr;                     // draws one frame; without it the row is no screen
    void (*cleanup)() = nullptr;                  // releases it all, also after a partial setup
    Uint32 logical_width = 0, logical_height = 0; // 0 × 0: the screen draws in UI space
};

const Screen *screen_for(GameState state); // null: no screen in that state

// --- the resident screen: the one whose setup ran last ---
bool screen_setup(GameState state); // true as well for a state without a screen
void screen_fixed_update(GameState state, double dt);
void screen_tick(GameState state);
void screen_cleanup();

// The state named on the command line, or the main menu; 0, with the valid names in the log: no such name.
GameState resolve_start_screen();
