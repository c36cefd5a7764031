#include "lumarind/engine/engine.h"

#include "engine/engine_record.h"
#include "lumarind/config/config.h"
#include "lumarind/core/error.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_timer.h>
#include <SDL3/SDL_video.h>

Engine *lumarind::engine;

// --- game state ---

void engine_set_state(GameState s) {
    if (s == engine->state) return;
    SDL_LogDebug(SDL_LOG_CATEGORY_TEST, "[ENGINE] DEBUG: GAME STATE: %d -> %d", engine->state, s);
    engine->prev_state = engine->state;
    engine->state = s;
}

GameState engine_get_state() { return engine ? engine->state : GAME_STATE_NONE; }
GameState engine_get_prev_state() { return engine ? engine->prev_state : GAME_STATE_NONE; }

void engine_restart_state() { engine->restart = true; }
bool engine_is_paused() { return engine && engine->paused; }
void engine_set_paused(bool paused) { engine->paused = paused; }

// --- frame ---

Uint64 engine_frame_number() { return engine ? engine->frame_number : 0; }
double engine_fps_delta() { return engine ? engine->fps_delta : 0; }

void engine_set_target_fps(Uint64 fps) {
    engine->target_fps = fps;
    engine->frame_period = fps == 0 ? 0 : SDL_NS_PER_SECOND / fps;
    engine->frame_start = SDL_GetTicksNS();
}

// --- fixed timestep ---

double engine_fixed_delta() { return engine ? engine->timestep.step : 0; }
bool engine_fixed_step_consume() { return engine && timestep_consume_step(&engine->timestep); }
double engine_fixed_alpha() { return engine ? timestep_alpha(&engine->timestep) : 0; }

// --- window ---

SDL_Window *engine_window() { return engine ? engine->window : nullptr; }
SDL_Renderer *engine_renderer() { return engine ? engine->renderer : nullptr; }

void engine_set_title(const char *title) {
    char *copy = SDL_strdup(title);
    if (!copy) {
        engine_error("[ENGINE] Memory allocation failed while setting the title, error: %s", SDL_GetError());
        return;
    }
    SDL_free(engine->title);
    engine->title = copy;
}

const char *engine_get_title() { return engine ? engine->title : ""; }

bool engine_set_vsync_mode(int mode) {
    if (SDL_SetRenderVSync(engine->renderer, mode)) return true;
    SDL_LogError(
        SDL_LOG_CATEGORY_ERROR, "[GAME] SDL3: Setting V-Sync mode failed, mode: %d, error: %s", mode, SDL_GetError());
    return false;
}

bool engine_set_vsync(bool on) {
    if (!engine_set_vsync_mode(on ? 1 : 0)) return false;
    cfg_set_vsync_enabled(on);
    engine_set_target_fps(on ? 0 : static_cast<Uint64>(SDL_max(cfg_get_fps_limit(), 0)));
    return true;
}

bool engine_is_fullscreen() { return engine && cfg_get_window_props().fullscreen; }

bool engine_set_fullscreen(bool on) {
    CfgWindowProps window = cfg_get_window_props();
    if (window.fullscreen == on) return true;
    if (on) { // the geometry to return to
        SDL_GetWindowPosition(engine->window, &window.x, &window.y);
        SDL_GetWindowSize(engine->window, &window.width, &window.height);
    }
    if (!SDL_SetWindowFullscreen(engine->window, on)) {
        return engine_error("[ENGINE] SDL3: Switching full screen failed, error: %s", SDL_GetError());
    }
    if (!on) SDL_SetWindowSize(engine->window, window.width, window.height); // of a window that started in full screen
    engine->geometry_saved = on;
    cfg_set_window_props(
        window.x, window.y, window.width, window.height, window.resizable, on, !on && window.maximized,
        window.borderless);
    return true;
}

void engine_set_system_cursor(SDL_SystemCursor type) {
    const bool pointer = type == SDL_SYSTEM_CURSOR_POINTER;
    engine->cursor_type = pointer ? SDL_SYSTEM_CURSOR_POINTER : SDL_SYSTEM_CURSOR_DEFAULT;
    SDL_SetCursor(pointer ? engine->pointer_cursor : engine->default_cursor);
}

SDL_SystemCursor engine_get_system_cursor_type() {
    return engine ? static_cast<SDL_SystemCursor>(engine->cursor_type) : SDL_SYSTEM_CURSOR_DEFAULT;
}

// --- profiler panel ---

void engine_toggle_show_frame_time_graph() {
    engine->show_frame_time_graph = !engine->show_frame_time_graph;
    SDL_LogDebug(
        SDL_LOG_CATEGORY_TEST, "[ENGINE] DEBUG: Toggled: show_frame_time_graph: %d", engine->show_frame_time_graph);
}

void engine_set_show_frame_time_graph(bool show) { engine->show_frame_time_graph = show; }
bool engine_get_show_frame_time_graph() { return engine && engine->show_frame_time_graph; }
