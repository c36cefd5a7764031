// game: declarations shared by all of Cinder Keep: actions, screens, colours.
#pragma once

#include "lumarind/engine/game_state.h"

#include <SDL3/SDL_pixels.h>
#include <SDL3/SDL_stdinc.h>

struct Game;
extern const Game cinder_keep; // main.cpp

enum Action {
    ACTION_LEFT,
    ACTION_RIGHT,
    ACTION_JUMP,
    ACTION_ROLL,
    ACTION_ATTACK,
    ACTION_SPECIAL,
    ACTION_PAUSE,
    ACTION_MENU_UP, // menu actions cannot be rebound, so players cannot lock themselves out
    ACTION_MENU_DOWN,
    ACTION_MENU_LEFT,
    ACTION_MENU_RIGHT,
    ACTION_MENU_TAKE,
    ACTION_MENU_BACK,
    ACTION_MENU_CLEAR,
    ACTION_COUNT,
};
inline constexpr int ACTION_PLAY_COUNT = ACTION_MENU_UP; // gameplay actions, which can be rebound

// In the order of the table in main.cpp.
enum ScreenNumber { SCREEN_TITLE, SCREEN_LEVEL_1, SCREEN_LEVEL_2, SCREEN_CREDITS, SCREEN_COUNT };
inline constexpr int LEVEL_COUNT = 2;
constexpr GameState state_of(int screen) { return GAME_STATE_FIRST_SCREEN + screen; }
inline constexpr double FADE_SECONDS = 0.4;

inline constexpr SDL_Color COLOR_BRIGHT = {255, 226, 150, 255}, COLOR_PLAIN = {200, 190, 190, 255},
                           COLOR_DIM = {132, 124, 146, 255}, COLOR_WARNING = {255, 130, 96, 255};

// Screens, each in its own file. Setups report errors.
bool title_setup();
void title_fixed_update(double dt);
void title_tick();
void title_cleanup();

bool play_setup_1();
bool play_setup_2();
void play_fixed_update(double dt);
void play_tick();
void play_cleanup();
Uint64 play_hash();
const struct Level *play_level(); // the current level, for tests; null on other screens
void play_continue_next();        // the next level setup continues from the saved checkpoint

bool credits_setup();
void credits_fixed_update(double dt);
void credits_tick();
void credits_cleanup();

// The pause menu.
enum PauseChoice { PAUSE_STAY, PAUSE_RESUME, PAUSE_CHECKPOINT, PAUSE_TITLE };
void pause_open();
PauseChoice pause_tick();
