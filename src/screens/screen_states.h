// screen_states: game states of the demonstration's screens, in the order of its screen table.
#pragma once

#include "lumarind/engine/game_state.h"

inline constexpr GameState GAME_STATE_MAIN_MENU = GAME_STATE_FIRST_SCREEN;
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
