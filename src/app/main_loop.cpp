#include "app/main_loop.h"

#include "app/args.h"
#include "app/screen_registry.h"
#include "core/error.h"
#include "core/log.h"
#include "diagnostics/frame_profile.h"
#include "diagnostics/profiler.h"
#include "engine/engine.h"
#include "engine/frame.h"
#include "engine/setup.h"
#include "engine/text.h"
#include "engine/transition.h"
#include "input/input.h"

#include <SDL3/SDL_messagebox.h>

static constexpr const char *TITLE = "Lumarind Engine v0.0.1";
static constexpr const char *START_FAILED_TEXT =
    "Lumarind Engine could not start. See lumarind-engine.log in this folder for the reason.";

static constexpr const char *UI_FONT_PATH = "assets/fonts/EuroStyle Normal.ttf";
static constexpr float UI_FONT_SIZE = 32;
static constexpr float HEADING_FONT_SIZE = 48;

// --- start ---

static int startup_failed() {
    SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_ERROR, TITLE, START_FAILED_TEXT, nullptr);
    log_cleanup();
    return 1;
}

static bool shared_fonts_setup() {
    TTF_Font *ui = font_open(UI_FONT_PATH, UI_FONT_SIZE);
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
    return font_set_size(heading, HEADING_FONT_SIZE);
}

static bool _main_first_screen_setup(GameState start) {
    engine_set_state(start);
    if (screen_setup(start)) return true;
    screen_cleanup();
    return false;
}

MainStart main_loop_start(int argc, char *argv[]) {
    log_setup(); // first: the file is there before anything can fail
    const ArgsResult result = args_parse(argc, argv);
    if (result == ARGS_HELP) return MAIN_START_HELP;
    if (result == ARGS_FAILED) return MAIN_START_FAILED;
    const GameState start = resolve_start_screen();
    if (start == GAME_STATE_NONE) return MAIN_START_FAILED;
    if (!engine_start(TITLE)) return MAIN_START_FAILED;
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

static void _main_run_fixed_steps(GameState state) {
    profiler_mark(PHASE_FIX);
    const double dt = engine_fixed_delta();
    while (engine_fixed_step_consume()) {
        input_fixed_step_begin();
        screen_fixed_update(state, dt);
        transition_fixed_update(dt);
        input_fixed_step_end();
        profiler_count_step();
    }
}

bool main_loop_frame() {
    engine_frame_start();
    engine_event_poll();
    const GameState state = engine_get_state();
    if (state != engine_get_prev_state() && !_main_switch_screen(state)) return false;
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

extern "C" int SDL_main(int argc, char *argv[]) {
    switch (main_loop_start(argc, argv)) {
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
    return 0;
}
