#include "engine/frame.h"

#include "diagnostics/frame_profile.h"
#include "diagnostics/profiler.h"
#include "engine/engine_record.h"
#include "input/input_recording.h"
#include "lumarind/config/config.h"
#include "lumarind/diagnostics/capture.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/game.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/transition.h"
#include "lumarind/input/gamepad.h"
#include "lumarind/input/input.h"
#include "lumarind/toolkit/reload.h"
#include "replay/replay_feed.h"
#include "toolkit/view_copy.h"

#include <SDL3/SDL_log.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_timer.h>

static constexpr double FADE_HOME_SECONDS = 0.25;

static double _ns_to_seconds(Uint64 ns) { return static_cast<double>(ns) / static_cast<double>(SDL_NS_PER_SECOND); }

void engine_state_change_handled() {
    SDL_LogDebug(SDL_LOG_CATEGORY_TEST, "[ENGINE] DEBUG: GAME STATE HANDLED: %d", engine->state);
    engine->prev_state = engine->state;
    engine->restart = engine->paused = false;
    timestep_reset(&engine->timestep);
    engine->last_frame_ticks = SDL_GetTicksNS();
    input_clear_presses();
}

bool engine_take_restart() {
    const bool requested = engine->restart;
    engine->restart = false;
    return requested;
}

// Length of the frame in ns: measured, or set by a test or the replay.
static Uint64 _frame_length(Uint64 now) {
    Uint64 elapsed = engine->last_frame_ticks != 0 ? now - engine->last_frame_ticks : 0;
    if (engine->next_frame_ns >= 0) elapsed = static_cast<Uint64>(engine->next_frame_ns);
    engine->next_frame_ns = -1;
    if (replay_is_playing()) {
        if (!replay_next_frame(&elapsed)) engine_set_state(GAME_STATE_QUIT);
        engine->fps_delta = _ns_to_seconds(elapsed); // the measured time would be that of replaying
    }
    replay_record_frame(elapsed);
    return elapsed;
}

// Redirects drawing of a fast replay to a render target of one pixel.
static void _engine_discard_drawing() {
    if (!engine->sink) {
        engine->sink = SDL_CreateTexture(engine->renderer, SDL_PIXELFORMAT_RGBA32, SDL_TEXTUREACCESS_TARGET, 1, 1);
    }
    SDL_SetRenderTarget(engine->renderer, engine->sink);
}

void engine_frame_start() {
    const Uint64 now = SDL_GetTicksNS();
    profiler_frame_boundary(now);
    engine->frame_number++;
    const Uint64 elapsed = _frame_length(now);
    if (elapsed != 0) timestep_advance(&engine->timestep, _ns_to_seconds(elapsed));
    engine->last_frame_ticks = now;
    engine->frame_start = now;
    if (replay_is_fast()) _engine_discard_drawing();
    reload_tick();
    view_copy_new_frame();
}

// --- events ---

static void _engine_handle_escape(bool repeat) {
    if (engine_game()->escape && (repeat || engine_game()->escape())) return;
    if (engine_get_state() == GAME_STATE_FIRST_SCREEN) {
        engine_set_state(GAME_STATE_QUIT);
    } else {
        transition_fade_to(GAME_STATE_FIRST_SCREEN, FADE_HOME_SECONDS);
    }
}

static void _engine_handle_key(const SDL_KeyboardEvent *key) {
    const Uint32 on = engine_game()->hot_keys;
    switch (key->key) {
    case SDLK_ESCAPE:
        if (on & GAME_KEY_ESCAPE) _engine_handle_escape(key->repeat);
        break;
    case SDLK_F3:
        if (on & GAME_KEY_PROFILER) engine_toggle_show_frame_time_graph();
        break;
    case SDLK_F4:
        if (on & GAME_KEY_PROFILER) profiler_toggle_freeze();
        break;
    case SDLK_F12:
        if (on & GAME_KEY_CAPTURE) capture_request();
        break;
    case SDLK_Q:
        if ((on & GAME_KEY_QUIT) && (key->mod & SDL_KMOD_CTRL)) engine_set_state(GAME_STATE_QUIT);
        break;
    default:
        break;
    }
}

static void _engine_handle_event(const SDL_Event *event) {
    if (replay_is_playing() && event->type >= SDL_EVENT_GAMEPAD_ADDED && event->type <= SDL_EVENT_GAMEPAD_REMOVED)
        return; // from a device that is not connected here
    switch (event->type) {
    case SDL_EVENT_QUIT:
        engine_set_state(GAME_STATE_QUIT);
        break;
    case SDL_EVENT_KEY_DOWN:
        _engine_handle_key(&event->key);
        break;
    case SDL_EVENT_GAMEPAD_ADDED:
        gamepad_handle_added(event->gdevice.which);
        break;
    case SDL_EVENT_GAMEPAD_REMOVED:
        gamepad_handle_removed(event->gdevice.which);
        break;
    default:
        break;
    }
}

// Iterates over a copy of the array record, because a callback may add to this chain and reallocate it.
static void _engine_run_callbacks(SDL_Event *event) {
    const CallbackArray chain = engine->callbacks[event->type];
    for (int i = 0; i < chain.count; i++) {
        if (chain.items[i] && !chain.items[i](event)) return;
    }
    const DataCallbackArray with_data = engine->data_callbacks;
    for (int i = 0; i < with_data.count; i++) {
        const DataCallbackEntry &entry = with_data.items[i];
        if (entry.type == event->type && !entry.call(event, entry.data)) return;
    }
}

static void _engine_dispatch_event() {
    SDL_Event *event = &engine->event;
    replay_record_event(event);
    input_handle_event(event);
    _engine_run_callbacks(event);
    _engine_handle_event(event);
}

// During a replay only Ctrl+Q and closing the window take effect.
static bool _engine_ends_replay(const SDL_Event *event) {
    const bool ctrl_q =
        event->type == SDL_EVENT_KEY_DOWN && event->key.key == SDLK_Q && (event->key.mod & SDL_KMOD_CTRL);
    return ctrl_q || event->type == SDL_EVENT_QUIT;
}

static void _engine_replay_events() {
    while (replay_next_event(&engine->event)) _engine_dispatch_event();
    if (replay_failed()) engine_set_state(GAME_STATE_QUIT);
}

static void _engine_record_devices() {
    ReplayDevices devices = {};
    SDL_memcpy(devices.keys, SDL_GetKeyboardState(nullptr), sizeof devices.keys);
    SDL_GetMouseState(&devices.mouse_x, &devices.mouse_y);
    SDL_GetRenderOutputSize(engine->renderer, &devices.output_width, &devices.output_height);
    _gamepad_record(&devices.pad);
    replay_record_devices(&devices);
}

void engine_event_poll() {
    input_frame_start();
    SDL_Event polled = {}; // not engine->event: SDL writes to it even if there is no event
    while (SDL_PollEvent(&polled)) {
        if (polled.type >= ENGINE_EVENT_TYPES) continue;
        if (replay_is_playing()) {
            if (_engine_ends_replay(&polled)) engine_set_state(GAME_STATE_QUIT);
            continue;
        }
        engine->event = polled;
        SDL_ConvertEventToRenderCoordinates(engine->renderer, &engine->event);
        _engine_dispatch_event();
    }
    if (replay_is_playing()) _engine_replay_events();
    if (replay_is_recording()) _engine_record_devices();
}

SDL_Event engine_event() { return engine ? engine->event : SDL_Event{}; }

// --- end of the frame ---

static void _engine_draw_overlays() {
    const bool capture_overlays = cfg_get_capture_include_fps();
    engine_use_ui_space();
    if (!capture_overlays) capture_tick();
    if (cfg_get_show_fps()) engine_draw_fps();
    profiler_tick();
    if (capture_overlays) capture_tick();
}

static void _engine_wait_for_frame_period() {
    if (engine->target_fps == 0) return;
    const Uint64 elapsed = SDL_GetTicksNS() - engine->frame_start;
    if (elapsed < engine->frame_period) SDL_DelayPrecise(engine->frame_period - elapsed);
}

static void _engine_count_frame() {
    const Uint64 now = SDL_GetTicksNS();
    engine->fps_delta = _ns_to_seconds(now - engine->frame_start);
    engine->frames++;
    if (now - engine->fps_window_start < SDL_NS_PER_SECOND) return;
    engine->fps = engine->frames;
    engine->frames = 0;
    engine->fps_window_start = now;
    engine_update_fps();
}

void engine_tick() {
    profiler_mark(PHASE_OVL);
    _engine_draw_overlays();
    profiler_mark(PHASE_PRES);
    if (!replay_is_fast()) SDL_RenderPresent(engine->renderer);
    engine_apply_space(false);
    profiler_mark(PHASE_SLEEP);
    _engine_wait_for_frame_period();
    _engine_count_frame();
}
