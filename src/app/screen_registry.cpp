#include "app/screen_registry.h"

#include "app/args.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/game.h"

#include <SDL3/SDL_log.h>

static const Screen *resident_screen; // null: none

static const GameScreen *_screen_row(GameState state) {
    const Game *game = engine_game();
    const int index = state - GAME_STATE_FIRST_SCREEN;
    return index >= 0 && index < game->screen_count ? &game->screens[index] : nullptr;
}

const Screen *screen_for(GameState state) {
    const GameScreen *row = _screen_row(state);
    return row ? &row->screen : nullptr;
}

const char *screen_name(GameState state) {
    const GameScreen *row = _screen_row(state);
    return row ? row->name : "";
}

Uint64 (*screen_state_hash(GameState state))() {
    const GameScreen *row = _screen_row(state);
    return row ? row->state_hash : nullptr;
}

bool screen_setup(GameState state) {
    resident_screen = screen_for(state);
    if (!resident_screen) return true;
    return engine_set_logical_size(
               static_cast<int>(resident_screen->logical_width), static_cast<int>(resident_screen->logical_height)) &&
           resident_screen->setup();
}

void screen_fixed_update(GameState state, double dt) {
    const Screen *screen = screen_for(state);
    if (screen && screen->fixed_update) screen->fixed_update(dt);
}

void screen_tick(GameState state) {
    const Screen *screen = screen_for(state);
    if (screen) screen->tick();
}

void screen_cleanup() {
    if (!resident_screen) return;
    resident_screen->cleanup();
    resident_screen = nullptr;
    engine_set_logical_size(0, 0);
}

GameState resolve_start_screen() {
    const char *wanted = args_start_screen();
    if (!wanted) return GAME_STATE_FIRST_SCREEN;
    const Game *game = engine_game();
    for (int i = 0; i < game->screen_count; i++) {
        if (SDL_strcmp(game->screens[i].name, wanted) == 0) return GAME_STATE_FIRST_SCREEN + i;
    }
    SDL_LogError(SDL_LOG_CATEGORY_APPLICATION, "[MAIN] Unknown screen: %s", wanted);
    SDL_Log("Valid --screen names:");
    for (int i = 0; i < game->screen_count; i++) SDL_Log("  %s", game->screens[i].name);
    return GAME_STATE_NONE;
}
