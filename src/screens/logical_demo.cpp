// Uses both drawing spaces in one frame: the screen has a logical size, presented with integer scaling; for its label
// the tick switches to UI space, and the engine switches back for the next frame.

#include "screens/logical_demo.h"

#include "lumarind/core/error.h"
#include "lumarind/core/state_hash.h"
#include "lumarind/engine/callbacks.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/timestep.h"
#include "lumarind/toolkit/primitives.h"
#include "screens/castle.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

static constexpr float MAP_SCALE = 1;
static constexpr Uint32 COLOR_VIEW_OUTLINE = rgba(255, 193, 7, 255);
static constexpr Uint32 COLOR_BOX = rgba(32, 32, 32, 255);
static constexpr Uint32 COLOR_BOX_OUTLINE = rgba(255, 255, 255, 255);
static constexpr SDL_Color TEXT_COLOR = {255, 255, 255, 255};
static constexpr float SIZE_TEXT_MARGIN = 4; // logical units
static constexpr float BOX_MARGIN = 10;      // UI units, distance from the window's corner
static constexpr float BOX_PADDING = 6;

struct LogicalDemo {
    Castle castle;
    double time, prev_time;                      // s, after and before the last fixed step
    TTF_Text *size_text, *ui_text, *paused_text; // owned
    bool paused;
};
static LogicalDemo *logical_demo;

// --- events ---

static bool logical_demo_key_down(SDL_Event *event) {
    if (!event->key.repeat && event->key.scancode == SDL_SCANCODE_P) logical_demo->paused = !logical_demo->paused;
    return true;
}

static bool logical_demo_gamepad_button_down(SDL_Event *event) {
    if (event->gbutton.button == SDL_GAMEPAD_BUTTON_START) logical_demo->paused = !logical_demo->paused;
    return true;
}

// --- lifetime ---

static TTF_Text *_logical_demo_prepare(const char *text) {
    return engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI), text, 0, TEXT_COLOR);
}

static bool _logical_demo_prepare_texts() {
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    char size[32];
    SDL_snprintf(size, sizeof size, "%.0fx%.0f", static_cast<double>(width), static_cast<double>(height));
    logical_demo->size_text = _logical_demo_prepare(size);
    if (!logical_demo->size_text) return false;
    logical_demo->ui_text = _logical_demo_prepare("UI space");
    if (!logical_demo->ui_text) return false;
    logical_demo->paused_text = _logical_demo_prepare("UI space, paused");
    return logical_demo->paused_text;
}

bool logical_demo_setup() {
    if (logical_demo) return true;
    logical_demo = static_cast<LogicalDemo *>(SDL_calloc(1, sizeof *logical_demo));
    if (!logical_demo) return engine_error("[LOGICAL_DEMO] Memory allocation failed, error: %s", SDL_GetError());
    return castle_load(&logical_demo->castle, MAP_SCALE) && _logical_demo_prepare_texts() &&
           engine_add_callback(SDL_EVENT_KEY_DOWN, logical_demo_key_down) &&
           engine_add_callback(SDL_EVENT_GAMEPAD_BUTTON_DOWN, logical_demo_gamepad_button_down);
}

void logical_demo_cleanup() {
    if (!logical_demo) return;
    engine_remove_callback(SDL_EVENT_GAMEPAD_BUTTON_DOWN, logical_demo_gamepad_button_down);
    engine_remove_callback(SDL_EVENT_KEY_DOWN, logical_demo_key_down);
    engine_cleanup_text(&logical_demo->paused_text);
    engine_cleanup_text(&logical_demo->ui_text);
    engine_cleanup_text(&logical_demo->size_text);
    castle_cleanup(&logical_demo->castle);
    SDL_free(logical_demo);
    logical_demo = nullptr;
}

// --- frame ---

void logical_demo_fixed_update(double dt) {
    logical_demo->prev_time = logical_demo->time;
    if (!logical_demo->paused) logical_demo->time += dt;
}

static void logical_demo_draw_screen_space(SDL_Renderer *renderer) {
    const double t = timestep_lerp(logical_demo->prev_time, logical_demo->time, engine_fixed_alpha());
    castle_draw_panning(&logical_demo->castle, t);
    SDL_FRect view = {};
    engine_view_size(&view.w, &view.h);
    outline_rect(renderer, &view, COLOR_VIEW_OUTLINE);
    engine_render_text(logical_demo->size_text, SIZE_TEXT_MARGIN, SIZE_TEXT_MARGIN);
}

static void logical_demo_draw_ui_space(SDL_Renderer *renderer) {
    engine_use_ui_space();
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    TTF_Text *label = logical_demo->paused ? logical_demo->paused_text : logical_demo->ui_text;
    SDL_FRect box = {};
    engine_text_size(label, &box.w, &box.h);
    box.w += 2 * BOX_PADDING;
    box.h += 2 * BOX_PADDING;
    box.x = width - BOX_MARGIN - box.w;
    box.y = height - BOX_MARGIN - box.h;
    fill_rect(renderer, &box, COLOR_BOX);
    outline_rect(renderer, &box, COLOR_BOX_OUTLINE);
    engine_render_text(label, box.x + BOX_PADDING, box.y + BOX_PADDING);
}

Uint64 logical_demo_state_hash() {
    return state_hash_of(STATE_HASH_START, logical_demo->time, logical_demo->prev_time, logical_demo->paused);
}

void logical_demo_tick() {
    SDL_Renderer *renderer = engine_renderer();
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
    logical_demo_draw_screen_space(renderer);
    logical_demo_draw_ui_space(renderer);
}
