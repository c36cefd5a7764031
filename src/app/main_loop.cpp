#include "app/main_loop.h"

#include "app/args.h"
#include "app/screen_registry.h"
#include "core/files_internal.h"
#include "core/log.h"
#include "diagnostics/frame_profile.h"
#include "diagnostics/profiler.h"
#include "engine/frame.h"
#include "engine/game_internal.h"
#include "engine/setup.h"
#include "lumarind/core/error.h"
#include "lumarind/core/files.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/transition.h"
#include "lumarind/input/input.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_messagebox.h>

// --- start ---

static int startup_failed(const Game *game) {
    FilePath log = {};
    SDL_snprintf(log.text, sizeof log.text, "%s.log", game->id);
    const bool here = game->files == GAME_FILES_CURRENT_FOLDER;
    char text[2 * FILE_PATH_SIZE];
    SDL_snprintf(
        text, sizeof text, "%s could not start. See %s%s for the reason.", game->name,
        here ? log.text : files_user(log.text).text, here ? " in this folder" : "");
    SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_ERROR, game->title, text, nullptr);
    log_cleanup();
    return 1;
}

static bool shared_fonts_setup() {
    const Game *game = engine_game();
    if (!game->ui_font) return true;
    TTF_Font *ui = font_open(game->ui_font, game->ui_font_size);
    if (!ui) return false;
    if (engine_add_font(ui) != SHARED_FONT_UI) {
        font_cleanup(ui);
        return engine_error("[MAIN] Shared UI font did not land at SHARED_FONT_UI");
    }
    TTF_Font *heading = font_copy(ui);
    if (!heading) return false;
    if (engine_add_font(heading) != SHARED_FONT_UI_HEADING) {
        font_cleanup(heading);
        return engine_error("[MAIN] Shared heading font did not land at SHARED_FONT_UI_HEADING");
    }
    return font_set_size(heading, game->heading_font_size);
}

static bool _main_first_screen_setup(GameState start) {
    engine_set_state(start);
    if (screen_setup(start)) return true;
    screen_cleanup();
    return false;
}

MainStart main_loop_start(const Game *game, int argc, char *argv[]) {
    _engine_set_game(game);
    const bool has_folders = files_setup();
    log_setup(); // before anything that can fail: the file is there
    if (!has_folders) {
        engine_error("[FILES] There is no folder for the user's files, error: %s", SDL_GetError());
        return MAIN_START_FAILED;
    }
    files_log();
    const ArgsResult result = args_parse(argc, argv);
    if (result == ARGS_HELP) return MAIN_START_HELP;
    if (result == ARGS_FAILED) return MAIN_START_FAILED;
    const GameState start = resolve_start_screen();
    if (start == GAME_STATE_NONE) return MAIN_START_FAILED;
    if (!engine_start(game->title)) return MAIN_START_FAILED;
    if (!shared_fonts_setup() || !_main_first_screen_setup(start)) {
        engine_stop();
        return MAIN_START_FAILED;
    }
    engine_state_change_handled();
    return MAIN_START_RUN;
}

// --- frame ---

static bool _main_switch_screen(GameState state) {
    profiler_mark(PHASE_SWAP);
    screen_cleanup();
    if (!screen_setup(state)) return false;
    engine_state_change_handled();
    transition_screen_changed(state);
    return true;
}

static bool _main_has_to_switch(GameState state) { return state != engine_get_prev_state() || engine_take_restart(); }

static void _main_run_fixed_steps(GameState state) {
    profiler_mark(PHASE_FIX);
    const double dt = engine_fixed_delta();
    while (engine_fixed_step_consume()) {
        input_fixed_step_begin();
        if (!engine_is_paused()) screen_fixed_update(state, dt);
        transition_fixed_update(dt);
        input_fixed_step_end();
        profiler_count_step();
    }
}

bool main_loop_frame() {
    engine_frame_start();
    engine_event_poll();
    const GameState state = engine_get_state();
    if (_main_has_to_switch(state) && !_main_switch_screen(state)) return false;
    _main_run_fixed_steps(state);
    profiler_mark(PHASE_TICK);
    screen_tick(state);
    transition_tick();
    engine_tick();

    const int quit_at = args_quit_at();
    if (quit_at > 0 && engine_frame_number() >= static_cast<Uint64>(quit_at)) engine_set_state(GAME_STATE_QUIT);
    return engine_get_state() != GAME_STATE_QUIT;
}

// --- stop ---

void main_loop_stop() {
    screen_cleanup();
    engine_stop();
    log_cleanup();
}

int engine_run(const Game *game, int argc, char *argv[]) {
    if (const char *problem = _engine_game_problem(game)) {
        engine_error("[MAIN] The game's record is not usable: %s", problem);
        SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_ERROR, "The game's record is not usable", problem, nullptr);
        return 1;
    }
    switch (main_loop_start(game, argc, argv)) {
    case MAIN_START_HELP:
        log_cleanup();
        return 0;
    case MAIN_START_FAILED:
        return startup_failed(game);
    case MAIN_START_RUN:
        break;
    }
    while (main_loop_frame()) {
    }
    main_loop_stop();
    return 0;
}
