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
#include "engine/transition_internal.h"
#include "input/input_recording.h"
#include "lumarind/config/config.h"
#include "lumarind/core/error.h"
#include "lumarind/core/files.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/transition.h"
#include "lumarind/input/input.h"
#include "replay/replay_feed.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_messagebox.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_timer.h>
#include <SDL3/SDL_video.h>

// --- start ---

static int startup_failed() {
    const Game *game = engine_game();
    FilePath log = {};
    SDL_snprintf(log.text, sizeof log.text, "%s.log", game->id);
    const bool here = game->files == GAME_FILES_CURRENT_FOLDER;
    char text[2 * FILE_PATH_SIZE];
    SDL_snprintf(
        text, sizeof text, "%s could not start. See %s%s for the reason.", game->name,
        here ? log.text : files_user(log.text).text, here ? " in this folder" : "");
    SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_ERROR, game->title, text, nullptr);
    replay_stop();
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

// Requests a recording or opens a replay if its environment variable is set.
static bool _main_setup_replay() {
    replay_clear_failure();
    if (const char *path = SDL_getenv("LUMARIND_RECORD")) return replay_record(path);
    const char *path = SDL_getenv("LUMARIND_REPLAY"), *speed = SDL_getenv("LUMARIND_REPLAY_SPEED");
    if (!path) return true;
    double factor = 1;
    if (speed && SDL_strcmp(speed, "max") == 0) {
        factor = 0;
    } else if (speed) {
        factor = SDL_strtod(speed, nullptr);
        if (!(factor > 0))
            return engine_error("[REPLAY] LUMARIND_REPLAY_SPEED expects a number above 0 or max: %s", speed);
    }
    if (!replay_open(path, factor)) return false;
    const ReplayStart *start = replay_start();
    args_apply_recorded(start->screen, start->window_width, start->window_height, start->ui_scale);
    return true;
}

static void _main_fill_recording_start(GameState state, ReplayStart *start) {
    const Game *game = engine_game();
    SDL_strlcpy(start->game, game->id, sizeof start->game);
    SDL_strlcpy(start->build, LUMARIND_VERSION, sizeof start->build);
    SDL_strlcpy(start->screen, game->screens[state - GAME_STATE_FIRST_SCREEN].name, sizeof start->screen);
    start->step_hz = cfg_get_fixed_step_hz();
    SDL_GetWindowSize(engine_window(), &start->window_width, &start->window_height);
    SDL_GetRenderOutputSize(engine_renderer(), &start->output_width, &start->output_height);
    start->ui_scale = engine_ui_scale();
    start->deadzone = cfg_get_gamepad_deadzone();
    start->seed = SDL_GetTicksNS();
    start->fade_seconds = _transition_seconds_to(state);
    start->axes_past = _input_axes_past();
    start->binding_count = input_action_count();
    for (int i = 0; i < start->binding_count; i++) {
        SDL_strlcpy(start->bindings[i], cfg_get_input_bindings(i), sizeof start->bindings[i]);
    }
}

// Sets up a screen. Before that, starts a requested recording or an open replay.
static bool _main_setup_screen(GameState state) {
    if (replay_is_requested() && screen_for(state)) {
        ReplayStart start = {};
        _main_fill_recording_start(state, &start);
        replay_begin(&start);
    }
    replay_play();
    return screen_setup(state);
}

static bool _main_first_screen_setup(GameState start) {
    engine_set_state(start);
    if (!_main_setup_screen(start)) {
        screen_cleanup();
        return false;
    }
    if (const ReplayStart *recorded = replay_start()) {
        if (recorded->fade_seconds > 0) _transition_start_fade_in(recorded->fade_seconds);
        _input_set_axes_past(recorded->axes_past);
    }
    return true;
}

MainStart main_loop_start(const Game *game, int argc, char *argv[]) {
    _engine_set_game(game);
    const bool has_folders = files_setup();
    log_setup(); // first, so that every failure is logged
    if (!has_folders) {
        engine_error("[FILES] No folder for user files, error: %s", SDL_GetError());
        return MAIN_START_FAILED;
    }
    files_log();
    const ArgsResult result = args_parse(argc, argv);
    if (result == ARGS_HELP) return MAIN_START_HELP;
    if (result == ARGS_FAILED) return MAIN_START_FAILED;
    if (!_main_setup_replay()) return MAIN_START_FAILED;
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
    if (!_main_setup_screen(state)) return false;
    engine_state_change_handled();
    transition_screen_changed(state);
    return true;
}

static bool _main_must_switch(GameState state) { return state != engine_get_prev_state() || engine_take_restart(); }

static void _main_run_fixed_steps(GameState state) {
    profiler_mark(PHASE_FIX);
    const double dt = engine_fixed_delta();
    while (engine_fixed_step_consume()) {
        input_fixed_step_begin();
        if (!engine_is_paused()) screen_fixed_update(state, dt);
        transition_fixed_update(dt);
        input_fixed_step_end();
        replay_step(screen_name(state), screen_state_hash(state));
        profiler_count_step();
    }
}

bool main_loop_frame() {
    engine_frame_start();
    engine_event_poll();
    const GameState state = engine_get_state();
    if (_main_must_switch(state) && !_main_switch_screen(state)) return false;
    _main_run_fixed_steps(state);
    profiler_mark(PHASE_TICK);
    screen_tick(state);
    transition_tick();
    engine_tick();
    if (replay_failed()) return false;

    const int quit_at = args_quit_at();
    if (quit_at > 0 && engine_frame_number() >= static_cast<Uint64>(quit_at)) engine_set_state(GAME_STATE_QUIT);
    return engine_get_state() != GAME_STATE_QUIT;
}

// --- stop ---

void main_loop_stop() {
    replay_stop();
    screen_cleanup();
    engine_stop();
    log_cleanup();
}

int engine_run(const Game *game, int argc, char *argv[]) {
    if (const char *problem = _engine_game_problem(game)) {
        engine_error("[MAIN] Invalid Game record: %s", problem);
        SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_ERROR, "Invalid Game record", problem, nullptr);
        return 1;
    }
    switch (main_loop_start(game, argc, argv)) {
    case MAIN_START_HELP:
        log_cleanup();
        return 0;
    case MAIN_START_FAILED:
        return startup_failed();
    case MAIN_START_RUN:
        break;
    }
    while (main_loop_frame()) {
    }
    main_loop_stop();
    return replay_failed() ? 1 : 0;
}
