// screen_registry: which of the game's screens runs in which state, and the one that is set up now. Main thread only.
#pragma once

#include "lumarind/engine/game_state.h"

#include <SDL3/SDL_stdinc.h>

struct Screen;

const Screen *screen_for(GameState state); // null: no screen in that state

const char *screen_name(GameState state);       // "" without one
Uint64 (*screen_state_hash(GameState state))(); // null without one

// --- the resident screen: the one whose setup ran last ---
bool screen_setup(GameState state); // true as well for a state without a screen
void screen_fixed_update(GameState state, double dt);
void screen_tick(GameState state);
void screen_cleanup();

// The state named on the command line, or the home screen; 0, with the valid names in the log: no such name.
GameState resolve_start_screen();
