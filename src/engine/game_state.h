// game_state: the numbers of game states.
#pragma once

using GameState = int;

inline constexpr GameState GAME_STATE_NONE = 0;         // the engine is not started
inline constexpr GameState GAME_STATE_INIT = 1;         // the engine is starting
inline constexpr GameState GAME_STATE_QUIT = 2;         // ends the main loop
inline constexpr GameState GAME_STATE_FIRST_SCREEN = 3; // the game's screens in their order, the home screen first
