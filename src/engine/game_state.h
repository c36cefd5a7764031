// game_state: the numbers of the game's states. Each from the main menu on is a screen.
#pragma once

using GameState = int;

inline constexpr GameState GAME_STATE_NONE = 0; // no engine yet
inline constexpr GameState GAME_STATE_INIT = 1; // the engine is starting
inline constexpr GameState GAME_STATE_QUIT = 2; // ends the main loop
inline constexpr GameState GAME_STATE_MAIN_MENU = 3;
inline constexpr GameState GAME_STATE_TEXT_DEMO = 4;
inline constexpr GameState GAME_STATE_TEXTURE_DEMO = 5;
inline constexpr GameState GAME_STATE_TILEMAP_DEMO = 6;
inline constexpr GameState GAME_STATE_SPRITE_DEMO = 7;
inline constexpr GameState GAME_STATE_PLATFORMER_DEMO = 8;
inline constexpr GameState GAME_STATE_GAMEPAD_DEMO = 9;
inline constexpr GameState GAME_STATE_LOGICAL_DEMO = 10;
inline constexpr GameState GAME_STATE_INPUT_DEMO = 11;
inline constexpr GameState GAME_STATE_AUDIO_DEMO = 12;
inline constexpr GameState GAME_STATE_PHYSICS_DEMO = 13;
inline constexpr GameState GAME_STATE_COUNT = 14;
