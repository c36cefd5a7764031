#include "engine/setup.h"

#include "app/args.h"
#include "diagnostics/profiler.h"
#include "engine/engine_record.h"
#include "lumarind/audio/audio.h"
#include "lumarind/config/config.h"
#include "lumarind/core/error.h"
#include "lumarind/core/storage.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/game.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/text_draw.h"
#include "lumarind/engine/ui_scale.h"
#include "lumarind/input/gamepad.h"
#include "lumarind/input/input.h"
#include "replay/replay_feed.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_init.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>
#include <SDL3_ttf/SDL_ttf.h>

// --- start, in the order of calls ---

static bool engine_setup_sdl3() {
    SDL_Log("[ENGINE] SDL3 initialization...");
    if (!SDL_Init(SDL_INIT_VIDEO | SDL_INIT_GAMEPAD | SDL_INIT_EVENTS)) {
        return engine_error("[ENGINE] SDL3 initialization failed, error: %s", SDL_GetError());
    }
    SDL_Log("[ENGINE] SDL3 TTF version: %d", TTF_Version());
    SDL_Log("[ENGINE] Base path: %s", SDL_GetBasePath());
    return true;
}

static bool engine_setup_ttf() {
    return TTF_Init() || engine_error("[FONTS] Font loading failed to initialise, error: %s", SDL_GetError());
}

static bool engine_setup_properties() {
    engine_set_state(GAME_STATE_INIT);
    // Before anything that can fail: stopping after a failed start writes the flag back.
    engine->show_frame_time_graph = cfg_get_show_frame_time_graph();
    timestep_init(&engine->timestep, cfg_get_fixed_step_hz());

    engine->fps_text = static_cast<char *>(SDL_calloc(1, FPS_TEXT_SIZE));
    if (!engine->fps_text) {
        return engine_error("[ENGINE] FPS Text memory allocation failed, error: %s", SDL_GetError());
    }
    engine->running_dir = SDL_GetCurrentDirectory();
    if (!engine->running_dir) {
        return engine_error("[ENGINE] Unable to determine running directory: %s", SDL_GetError());
    }
    SDL_Log("[ENGINE] Running dir: %s", engine->running_dir);
    return true;
}

static bool engine_setup_event_callbacks() {
    engine->callbacks = static_cast<CallbackArray *>(SDL_calloc(ENGINE_EVENT_TYPES, sizeof(CallbackArray)));
    if (!engine->callbacks) {
        return engine_error("[ENGINE] Memory allocation for event callbacks failed, error: %s", SDL_GetError());
    }
    for (Uint32 type = 0; type < ENGINE_EVENT_TYPES; type++) engine->callbacks[type].grow_by = 1;
    return true;
}

static_assert(GAME_CENTERED == SDL_WINDOWPOS_CENTERED);

static void _engine_fill_window_properties(SDL_PropertiesID props, const CfgWindowProps &window) {
    SDL_SetStringProperty(props, SDL_PROP_WINDOW_CREATE_TITLE_STRING, engine->title);
    SDL_SetNumberProperty(props, SDL_PROP_WINDOW_CREATE_X_NUMBER, window.x);
    SDL_SetNumberProperty(props, SDL_PROP_WINDOW_CREATE_Y_NUMBER, window.y);
    if (!window.maximized && !window.fullscreen) {
        SDL_SetNumberProperty(props, SDL_PROP_WINDOW_CREATE_WIDTH_NUMBER, window.width);
        SDL_SetNumberProperty(props, SDL_PROP_WINDOW_CREATE_HEIGHT_NUMBER, window.height);
    }
    SDL_SetBooleanProperty(props, SDL_PROP_WINDOW_CREATE_RESIZABLE_BOOLEAN, window.resizable);
    SDL_SetBooleanProperty(props, SDL_PROP_WINDOW_CREATE_BORDERLESS_BOOLEAN, window.borderless);
    SDL_SetBooleanProperty(props, SDL_PROP_WINDOW_CREATE_HIGH_PIXEL_DENSITY_BOOLEAN, true);
}

static bool engine_setup_window(const char *title) {
    engine->title = SDL_strdup(title);
    if (!engine->title) return engine_error("[ENGINE] Memory allocation failed, error: %s", SDL_GetError());

    CfgWindowProps window = cfg_get_window_props();
    if (args_window_size(&window.width, &window.height)) window.maximized = window.fullscreen = false;

    const SDL_PropertiesID props = SDL_CreateProperties();
    if (props == 0) return engine_error("[ENGINE] SDL3: Unable to create properties: %s", SDL_GetError());
    _engine_fill_window_properties(props, window);
    engine->window = SDL_CreateWindowWithProperties(props);
    SDL_DestroyProperties(props);
    if (!engine->window) return engine_error("[ENGINE] SDL3: Window creation failed, error: %s", SDL_GetError());

    if (window.maximized) {
        SDL_MaximizeWindow(engine->window);
    } else if (window.fullscreen) {
        SDL_SetWindowFullscreen(engine->window, true);
    }
    const float display_scale = SDL_GetWindowDisplayScale(engine->window);
    engine->ui_scale = ui_scale_pick(display_scale, cfg_get_ui_scale(), args_ui_scale());
    SDL_Log("[ENGINE] Display scale: %.2f, UI scale: %d", static_cast<double>(display_scale), engine->ui_scale);
    return true;
}

static bool engine_setup_renderer() {
    engine->renderer = SDL_CreateRenderer(engine->window, nullptr);
    if (!engine->renderer) return engine_error("[ENGINE] SDL3: Renderer creation failed, error: %s", SDL_GetError());
    const float scale = static_cast<float>(engine->ui_scale);
    if (!SDL_SetRenderScale(engine->renderer, scale, scale)) {
        return engine_error("[ENGINE] SDL3: Setting the render scale failed, error: %s", SDL_GetError());
    }
    const CfgGraphicsProps graphics = cfg_get_graphics_props();
    if (graphics.vsync_enable) {
        if (!engine_set_vsync_mode(1)) return false;
    } else if (graphics.fps_limit > 0) {
        engine_set_target_fps(static_cast<Uint64>(graphics.fps_limit));
    }
    SDL_Log("[ENGINE] Window title: %s", engine->title);
    SDL_Log(
        "[ENGINE] Video driver: %s, renderer: %s", SDL_GetCurrentVideoDriver(), SDL_GetRendererName(engine->renderer));
    return true;
}

// Some window managers ignore a new window's position, so it is set again once the window exists.
static void engine_place_window() {
    const CfgWindowProps window = cfg_get_window_props();
    if (window.maximized || window.fullscreen) return;
    SDL_SyncWindow(engine->window);
    SDL_SetWindowPosition(engine->window, window.x, window.y);
    SDL_SyncWindow(engine->window);
}

// Video drivers without system cursors (headless ones, the console) use SDL's default cursor, which SDL owns:
// destroying it does nothing.
static SDL_Cursor *_engine_create_cursor(SDL_SystemCursor type) {
    SDL_Cursor *cursor = SDL_CreateSystemCursor(type);
    return cursor ? cursor : SDL_GetDefaultCursor();
}

static bool engine_setup_system_mouse_cursors() {
    engine->default_cursor = _engine_create_cursor(SDL_SYSTEM_CURSOR_DEFAULT);
    if (!engine->default_cursor) {
        return engine_error("[ENGINE] SDL3: System mouse default cursor creation failed, error: %s", SDL_GetError());
    }
    engine->pointer_cursor = _engine_create_cursor(SDL_SYSTEM_CURSOR_POINTER);
    if (!engine->pointer_cursor) {
        return engine_error("[ENGINE] SDL3: System mouse pointer cursor creation failed, error: %s", SDL_GetError());
    }
    engine->cursor_type = SDL_SYSTEM_CURSOR_DEFAULT;
    return true;
}

static bool engine_setup_text_engine() {
    engine->text_engine = TTF_CreateRendererTextEngine(engine->renderer);
    if (!engine->text_engine) {
        return engine_error("[ENGINE] SDL3: Renderer text engine creation failed, error: %s", SDL_GetError());
    }
    engine->fonts = static_cast<FontList *>(SDL_calloc(1, sizeof(FontList)));
    if (!engine->fonts) {
        return engine_error("[ENGINE] Memory allocation for font list failed, error: %s", SDL_GetError());
    }
    return true;
}

// Overrides settings with those of the recording, without saving them.
static bool _engine_apply_recorded_settings() {
    const ReplayStart *start = replay_start();
    if (!start) return true;
    if (start->step_hz != cfg_get_fixed_step_hz()) {
        return engine_error(
            "[REPLAY] The recording has %d fixed steps per second, the configuration %d", start->step_hz,
            cfg_get_fixed_step_hz());
    }
    for (int i = 0; i < SDL_min(start->binding_count, input_action_count()); i++) {
        cfg_set_input_bindings(i, start->bindings[i]);
    }
    cfg_set_gamepad_deadzone(start->deadzone);
    cfg_set_vsync_enabled(false); // frame lengths come from the recording
    cfg_set_fps_limit(0);
    return true;
}

static bool engine_setup(const char *title) {
    if (!engine_setup_sdl3()) return false;
    if (!engine_setup_ttf()) return false;
    if (!storage_setup()) return false;
    if (!cfg_setup() || !cfg_load() || !_engine_apply_recorded_settings()) return false;
    if (!engine_setup_properties()) return false;
    if (!engine_setup_event_callbacks()) return false;
    if (!gamepad_setup() || !input_setup() || !audio_setup()) return false;
    if (!engine_setup_window(title)) return false;
    if (!engine_setup_renderer()) return false;
    engine_place_window();
    if (!engine_setup_system_mouse_cursors()) return false;
    if (!profiler_setup()) return false;
    return engine_setup_text_engine();
}

bool engine_start(const char *title) {
    if (engine) return true;
    engine = static_cast<Engine *>(SDL_calloc(1, sizeof *engine));
    if (!engine) return engine_error("[ENGINE] Memory allocation failed, error: %s", SDL_GetError());
    engine->next_frame_ns = -1;
    engine_error_attach(&engine->error);
    if (engine_setup(title)) return true;
    engine_stop();
    return false;
}

// --- stop, also after a partial start ---

static void _engine_store_window_geometry() {
    int width = 0, height = 0, x = 0, y = 0;
    if (!engine->window || engine->geometry_saved || args_window_size(&width, &height)) return;
    SDL_GetWindowPosition(engine->window, &x, &y);
    SDL_GetWindowSize(engine->window, &width, &height);
    const CfgWindowProps window = cfg_get_window_props();
    cfg_set_window_props(x, y, width, height, window.resizable, window.fullscreen, window.maximized, window.borderless);
}

static void _engine_release_fonts() {
    for (int i = 0; engine->fonts && i < engine->fonts->count; i++) font_cleanup(engine->fonts->fonts[i]);
    SDL_free(engine->fonts);
    fonts_close_kept();
}

static void _engine_release_callbacks() {
    data_callbacks_cleanup(&engine->data_callbacks);
    if (!engine->callbacks) return;
    for (Uint32 type = 0; type < ENGINE_EVENT_TYPES; type++) callback_array_cleanup(&engine->callbacks[type]);
    SDL_free(engine->callbacks);
}

static void _engine_release_window() {
    if (engine->text_engine) TTF_DestroyRendererTextEngine(engine->text_engine);
    if (engine->renderer) SDL_DestroyRenderer(engine->renderer);
    if (engine->window) SDL_DestroyWindow(engine->window);
    if (engine->default_cursor) SDL_DestroyCursor(engine->default_cursor);
    if (engine->pointer_cursor) SDL_DestroyCursor(engine->pointer_cursor);
}

void engine_stop() {
    if (!engine) return;
    _engine_store_window_geometry();
    text_draw_forget(nullptr);
    _engine_release_fonts();
    _engine_release_callbacks();
    audio_cleanup();
    input_cleanup();
    gamepad_cleanup();
    profiler_cleanup();
    _engine_release_window();
    if (TTF_WasInit() != 0) TTF_Quit();

    SDL_free(engine->fps_text);
    SDL_free(engine->running_dir);
    SDL_free(engine->title);
    cfg_set_show_frame_time_graph(engine->show_frame_time_graph);
    cfg_save();
    cfg_cleanup();
    storage_cleanup();

    engine_clear_error();
    engine_error_attach(nullptr);
    SDL_free(engine);
    engine = nullptr;
    SDL_Log("[ENGINE] SDL3 shutdown");
    SDL_Quit();
}
