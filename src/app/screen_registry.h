// screen_registry: maps game states to the game's screens, and holds the screen that is set up. Main thread only.
#pragma once

#include "lumarind/engine/game_state.h"

#include <SDL3/SDL_stdinc.h>

struct Screen;

const Screen *screen_for(GameState state); // null if the state has no screen

const char *screen_name(GameState state);       // "" if the state has no screen
Uint64 (*screen_state_hash(GameState state))(); // may be null

// --- the resident screen: the last one set up ---
bool screen_setup(GameState state); // true also if the state has no screen
void screen_fixed_update(GameState state, double dt);
void screen_tick(GameState state);
void screen_cleanup();

// The state of the screen given on the command line, or of the home screen. 0: unknown name, logged with the valid
// ones.
GameState resolve_start_screen();
