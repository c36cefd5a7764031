// The Game record of Cinder Keep, a small platformer. See docs/cinder-keep.md for a tour.

#include "game.h"
#include "lumarind/engine/game.h"

#include <SDL3/SDL_stdinc.h>

static constexpr GameAction ACTIONS[] = {
    {"left", "Left, A, pad:dpleft, pad:leftx-"},
    {"right", "Right, D, pad:dpright, pad:leftx+"},
    {"jump", "Space, W, pad:a"},
    {"roll", "Left Shift, L, pad:rightshoulder, pad:b"},
    {"attack", "J, X, pad:x"},
    {"special", "K, C, pad:y"},
    {"pause", "Escape, P, pad:start"},
    {"menu_up", "Up, W, pad:dpup, pad:lefty-"},
    {"menu_down", "Down, S, pad:dpdown, pad:lefty+"},
    {"menu_left", "Left, A, pad:dpleft, pad:leftx-"},
    {"menu_right", "Right, D, pad:dpright, pad:leftx+"},
    {"menu_take", "Return, Space, pad:a, pad:start"},
    {"menu_back", "Escape, Backspace, pad:b"},
    {"menu_clear", "Delete, pad:y"},
};
static_assert(SDL_arraysize(ACTIONS) == ACTION_COUNT, "one row per action, in the order of the enum");

static constexpr GameScreen SCREENS[] = {
    {"title", {title_setup, title_fixed_update, title_tick, title_cleanup}},
    {"level-1", {play_setup_1, play_fixed_update, play_tick, play_cleanup}, play_hash},
    {"level-2", {play_setup_2, play_fixed_update, play_tick, play_cleanup}, play_hash},
    {"credits", {credits_setup, credits_fixed_update, credits_tick, credits_cleanup}},
};
static_assert(SDL_arraysize(SCREENS) == SCREEN_COUNT, "one row per screen, in the order of the enum");

const Game cinder_keep = {
    .title = "Cinder Keep",
    .name = "Cinder Keep",
    .program = "cinder-keep",
    .id = "cinder-keep",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = SCREEN_COUNT,
    .actions = ACTIONS,
    .action_count = ACTION_COUNT,
    .ui_font = "assets/keep.ttf",
    .ui_font_size = 17,
    .heading_font_size = 40,
    .window_width = 1280,
    .window_height = 720,
    .hot_keys = GAME_KEYS_ALL & ~GAME_KEY_ESCAPE, // Escape is bound to actions
};

int main(int argc, char *argv[]) { return engine_run(&cinder_keep, argc, argv); }
