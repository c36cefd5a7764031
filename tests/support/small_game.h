// A game of two screens that records the engine's calls.
#pragma once

#include "lumarind/engine/game.h"

#include <string>

inline constexpr GameState SMALL_HOME = GAME_STATE_FIRST_SCREEN, SMALL_ROOM = GAME_STATE_FIRST_SCREEN + 1;

extern const Game small_game;

// "h" and "r" (the screens) before their calls: + setup, - cleanup, . tick, 5 fixed update, 6 fixed update during a
// fade; o an option with its value, E an Escape passed to the game.
extern std::string small_calls;
extern bool small_takes_escape, small_setup_fails;
