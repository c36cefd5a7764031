// A game of two screens that writes down what the engine does to it.
#pragma once

#include "lumarind/engine/game.h"

#include <string>

inline constexpr GameState SMALL_HOME = GAME_STATE_FIRST_SCREEN, SMALL_ROOM = GAME_STATE_FIRST_SCREEN + 1;

extern const Game small_game;

// "h" and "r" before their calls: + setup, - cleanup, . tick, 5 the fixed update, 6 the same under a fade's cover; o an
// option with its value, E an Escape the game was offered.
extern std::string small_calls;
extern bool small_takes_escape, small_setup_fails;
