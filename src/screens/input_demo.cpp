// Shows how a screen uses the input layer: the simulation queries presses in the fixed update, the display in the tick,
// and each of them sees every press exactly once: both counters of an action advance together at any frame and step
// rate.

#include "screens/input_demo.h"

#include "lumarind/core/error.h"
#include "lumarind/core/state_hash.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/timestep.h"
#include "lumarind/input/gamepad.h"
#include "lumarind/input/input.h"
#include "lumarind/toolkit/primitives.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

static constexpr const char *TITLE = "Input Actions Demo";
static constexpr SDL_Color TITLE_COLOR = {208, 220, 230, 255};
static constexpr Uint32 COLOR_BACKGROUND = rgba(20, 24, 30, 255);
static constexpr Uint32 COLOR_IDLE = rgba(42, 49, 60, 255);
static constexpr Uint32 COLOR_OUTLINE = rgba(74, 85, 100, 255);
static constexpr Uint32 COLOR_ACTIVE = rgba(120, 216, 254, 255);
static constexpr Uint32 COLOR_FLASH = rgba(255, 193, 7, 255);
static constexpr Uint32 COLOR_TEXT = rgba(208, 220, 230, 255);
static constexpr Uint32 COLOR_TEXT_DIM = rgba(112, 124, 136, 255);

// The marker.
static constexpr float INPUT_DEMO_MARKER_SIZE = 16;
static constexpr float INPUT_DEMO_SPEED = 160; // units/s
static constexpr float RUN_FACTOR = 2;
static constexpr double FLASH_SECONDS = 0.25;

// Layout, in units of the view.
static constexpr float MARGIN = 16;
static constexpr float CONTROLLER_TOP = 54;
static constexpr float TABLE_TOP = 78;
static constexpr float ROW_PITCH = 12;
static constexpr float COLUMN_HELD = 96, COLUMN_STEP = 144, COLUMN_TICK = 200, COLUMN_BINDINGS = 256;
static constexpr float HELD_SQUARE_LEFT = 100, HELD_SQUARE_SIZE = 8;
static constexpr float ARENA_TOP = 202, ARENA_BOTTOM_MARGIN = 40, ARENA_MIN = 16;
static constexpr float FOOTER_RISE = 24;

struct InputDemo {
    TTF_Text *title_text; // owned
    Uint32 step_counts[INPUT_ACTION_COUNT], tick_counts[INPUT_ACTION_COUNT];
    SDL_FPoint marker, prev_marker; // top-left corner in the arena, after and before the last fixed step
    double flash;                   // s left
    bool paused;
};
static InputDemo *input_demo;

static void input_demo_arena(SDL_FRect *arena) {
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    *arena = {
        MARGIN, ARENA_TOP, SDL_max(width - 2 * MARGIN, ARENA_MIN),
        SDL_max(height - ARENA_BOTTOM_MARGIN - ARENA_TOP, ARENA_MIN)};
}

// --- lifetime ---

bool input_demo_setup() {
    if (input_demo) return true;
    input_demo = static_cast<InputDemo *>(SDL_calloc(1, sizeof *input_demo));
    if (!input_demo) return engine_error("[INPUT_DEMO] Memory allocation failed, error: %s", SDL_GetError());
    input_demo->title_text = engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI), TITLE, 0, TITLE_COLOR);
    if (!input_demo->title_text) return false;
    SDL_FRect arena = {};
    input_demo_arena(&arena);
    input_demo->marker = {(arena.w - INPUT_DEMO_MARKER_SIZE) / 2, (arena.h - INPUT_DEMO_MARKER_SIZE) / 2};
    input_demo->prev_marker = input_demo->marker;
    return true;
}

void input_demo_cleanup() {
    if (!input_demo) return;
    engine_cleanup_text(&input_demo->title_text);
    SDL_free(input_demo);
    input_demo = nullptr;
}

// --- simulation ---

static float _input_demo_axis(InputAction negative, InputAction positive) {
    return static_cast<float>(input_held(positive)) - static_cast<float>(input_held(negative));
}

static void _input_demo_move_marker(float dt) {
    const float distance = dt * INPUT_DEMO_SPEED * (input_held(INPUT_ACTION_RUN) ? RUN_FACTOR : 1);
    SDL_FRect arena = {};
    input_demo_arena(&arena);
    SDL_FPoint *marker = &input_demo->marker;
    marker->x += distance * _input_demo_axis(INPUT_ACTION_LEFT, INPUT_ACTION_RIGHT);
    marker->y += distance * _input_demo_axis(INPUT_ACTION_UP, INPUT_ACTION_DOWN);
    marker->x = SDL_clamp(marker->x, 0, arena.w - INPUT_DEMO_MARKER_SIZE);
    marker->y = SDL_clamp(marker->y, 0, arena.h - INPUT_DEMO_MARKER_SIZE);
}

Uint64 input_demo_state_hash() {
    const InputDemo *demo = input_demo;
    Uint64 hash = state_hash_of(
        STATE_HASH_START, demo->marker.x, demo->marker.y, demo->prev_marker.x, demo->prev_marker.y, demo->flash,
        demo->paused);
    for (Uint32 count : demo->step_counts) hash = state_hash_add(hash, count);
    return hash;
}

void input_demo_fixed_update(double dt) {
    input_demo->prev_marker = input_demo->marker;
    for (int action = 0; action < INPUT_ACTION_COUNT; action++) {
        if (input_pressed(action)) input_demo->step_counts[action]++;
    }
    if (input_pressed(INPUT_ACTION_PAUSE)) input_demo->paused = !input_demo->paused;
    if (input_pressed(INPUT_ACTION_JUMP)) input_demo->flash = FLASH_SECONDS;
    if (input_demo->flash > 0) input_demo->flash -= dt;
    if (!input_demo->paused) _input_demo_move_marker(static_cast<float>(dt));
}

// --- drawing ---

static void _input_demo_draw_row(SDL_Renderer *renderer, int action, float y) {
    const bool held = input_held(action);
    draw_text(renderer, MARGIN, y, held ? COLOR_ACTIVE : COLOR_TEXT, "%s", input_action_name(action));
    const SDL_FRect square = {HELD_SQUARE_LEFT, y, HELD_SQUARE_SIZE, HELD_SQUARE_SIZE};
    fill_rect(renderer, &square, held ? COLOR_ACTIVE : COLOR_IDLE);
    draw_text(renderer, COLUMN_STEP, y, COLOR_TEXT, "%u", input_demo->step_counts[action]);
    draw_text(renderer, COLUMN_TICK, y, COLOR_TEXT, "%u", input_demo->tick_counts[action]);
    draw_text(renderer, COLUMN_BINDINGS, y, COLOR_TEXT_DIM, "%s", input_bindings_text(action));
}

static void input_demo_draw_table(SDL_Renderer *renderer) {
    draw_text(renderer, MARGIN, TABLE_TOP, COLOR_TEXT_DIM, "ACTION");
    draw_text(renderer, COLUMN_HELD, TABLE_TOP, COLOR_TEXT_DIM, "HELD");
    draw_text(renderer, COLUMN_STEP, TABLE_TOP, COLOR_TEXT_DIM, "STEP");
    draw_text(renderer, COLUMN_TICK, TABLE_TOP, COLOR_TEXT_DIM, "TICK");
    draw_text(renderer, COLUMN_BINDINGS, TABLE_TOP, COLOR_TEXT_DIM, "BINDINGS");
    for (int action = 0; action < INPUT_ACTION_COUNT; action++) {
        _input_demo_draw_row(renderer, action, TABLE_TOP + ROW_PITCH * static_cast<float>(action + 1));
    }
}

static void input_demo_draw_arena(SDL_Renderer *renderer) {
    SDL_FRect arena = {};
    input_demo_arena(&arena);
    outline_rect(renderer, &arena, COLOR_OUTLINE);

    const SDL_FPoint at = timestep_lerp_point(input_demo->prev_marker, input_demo->marker, engine_fixed_alpha());
    const SDL_FRect marker = {arena.x + at.x, arena.y + at.y, INPUT_DEMO_MARKER_SIZE, INPUT_DEMO_MARKER_SIZE};
    fill_rect(renderer, &marker, input_demo->flash > 0 ? COLOR_FLASH : COLOR_ACTIVE);
    if (input_demo->paused) draw_text(renderer, arena.x + 8, arena.y + 8, COLOR_FLASH, "PAUSED");
}

void input_demo_tick() {
    for (int action = 0; action < INPUT_ACTION_COUNT; action++) {
        if (input_pressed(action)) input_demo->tick_counts[action]++;
    }
    SDL_Renderer *renderer = engine_renderer();
    set_color(renderer, COLOR_BACKGROUND);
    SDL_RenderClear(renderer);
    engine_render_text(input_demo->title_text, MARGIN, MARGIN);

    const bool connected = gamepad_connected();
    draw_text(
        renderer, MARGIN, CONTROLLER_TOP, connected ? COLOR_ACTIVE : COLOR_TEXT_DIM, "%s   %s",
        connected ? "CONTROLLER" : "NO CONTROLLER", gamepad_name());
    input_demo_draw_table(renderer);
    input_demo_draw_arena(renderer);

    float view_height = 0;
    engine_view_size(nullptr, &view_height);
    draw_text(
        renderer, MARGIN, view_height - FOOTER_RISE, COLOR_TEXT_DIM,
        "Bindings: [input] in config/lumarind-engine.ini        ESC  back to menu");
}
