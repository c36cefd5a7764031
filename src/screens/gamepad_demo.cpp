// Shows every query of the gamepad module: a diagram of the controller that lights up, with the values beside it.

#include "screens/gamepad_demo.h"

#include "lumarind/core/error.h"
#include "lumarind/engine/callbacks.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/input/gamepad.h"
#include "lumarind/toolkit/primitives.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

#include <iterator>

static constexpr const char *TITLE = "Gamepad Demo";
static constexpr SDL_Color TITLE_COLOR = {208, 220, 230, 255};
static constexpr Uint32 COLOR_BACKGROUND = rgba(20, 24, 30, 255);
static constexpr Uint32 COLOR_IDLE = rgba(42, 49, 60, 255);
static constexpr Uint32 COLOR_OUTLINE = rgba(74, 85, 100, 255);
static constexpr Uint32 COLOR_ABSENT = rgba(38, 43, 50, 255);
static constexpr Uint32 COLOR_ACTIVE = rgba(120, 216, 254, 255);
static constexpr Uint32 COLOR_TEXT = rgba(208, 220, 230, 255);
static constexpr Uint32 COLOR_TEXT_DIM = rgba(112, 124, 136, 255);
static constexpr Uint32 COLOR_LABEL_ON = rgba(16, 24, 32, 255);

static constexpr Uint16 RUMBLE_STRENGTH = 49152; // of 65535, both motors
static constexpr Uint32 RUMBLE_MS = 400;

// Layout, in units of the view.
static constexpr float MARGIN = 16;
static constexpr float STATUS_TOP = 54;
static constexpr float CONTENT_TOP = 84, READOUTS_LEFT = 480;
static constexpr float ROW_PITCH = 12;
static constexpr float FOOTER_RISE = 24;
static constexpr float TRIGGER_WIDTH = 74, TRIGGER_HEIGHT = 14;
static constexpr float STICK_RADIUS = 40, STICK_DOT_RADIUS = 4, STICK_LABEL_DROP = 52;

static constexpr const char *AXIS_NAMES[] = {"LEFT X", "LEFT Y", "RIGHT X", "RIGHT Y", "L TRIGGER", "R TRIGGER"};
static_assert(std::size(AXIS_NAMES) == SDL_GAMEPAD_AXIS_COUNT, "one name per axis");

struct GamepadDemo {
    TTF_Text *title_text; // owned
    double rumble_shown;  // s left to show "(sent)"
};
static GamepadDemo *gamepad_demo;

// --- lifetime ---

static bool gamepad_demo_key_down(SDL_Event *event) {
    if (event->key.key != SDLK_R || event->key.repeat) return true;
    if (gamepad_rumble(RUMBLE_STRENGTH, RUMBLE_STRENGTH, RUMBLE_MS)) gamepad_demo->rumble_shown = RUMBLE_MS / 1000.0;
    return true;
}

bool gamepad_demo_setup() {
    if (gamepad_demo) return true;
    gamepad_demo = static_cast<GamepadDemo *>(SDL_calloc(1, sizeof *gamepad_demo));
    if (!gamepad_demo) return engine_error("[GAMEPAD_DEMO] Memory allocation failed, error: %s", SDL_GetError());
    gamepad_demo->title_text = engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI), TITLE, 0, TITLE_COLOR);
    return gamepad_demo->title_text && engine_add_callback(SDL_EVENT_KEY_DOWN, gamepad_demo_key_down);
}

void gamepad_demo_cleanup() {
    if (!gamepad_demo) return;
    engine_remove_callback(SDL_EVENT_KEY_DOWN, gamepad_demo_key_down);
    engine_cleanup_text(&gamepad_demo->title_text);
    SDL_free(gamepad_demo);
    gamepad_demo = nullptr;
}

// --- controls ---

struct ControlColors {
    Uint32 fill, label;
};

static ControlColors _button_colors(SDL_GamepadButton button) {
    if (!gamepad_has_button(button)) return {COLOR_ABSENT, COLOR_TEXT_DIM};
    if (gamepad_button(button)) return {COLOR_ACTIVE, COLOR_LABEL_ON};
    return {COLOR_IDLE, COLOR_TEXT};
}

static void
draw_button_rect(SDL_Renderer *renderer, const SDL_FRect &rect, SDL_GamepadButton button, const char *label) {
    const ControlColors colors = _button_colors(button);
    fill_rect(renderer, &rect, colors.fill);
    outline_rect(renderer, &rect, COLOR_OUTLINE);
    draw_centered_text(renderer, rect.x + rect.w / 2, rect.y + rect.h / 2, label, colors.label);
}

static void
draw_button_circle(SDL_Renderer *renderer, float cx, float cy, float r, SDL_GamepadButton button, const char *label) {
    const ControlColors colors = _button_colors(button);
    fill_circle(renderer, cx, cy, r, colors.fill);
    outline_circle(renderer, cx, cy, r, COLOR_OUTLINE);
    draw_centered_text(renderer, cx, cy, label, colors.label);
}

static void draw_trigger(SDL_Renderer *renderer, float x, float y, SDL_GamepadAxis axis, const char *label) {
    const bool present = gamepad_has_axis(axis);
    const float value = present ? gamepad_axis(axis) : 0;
    const SDL_FRect box = {x, y, TRIGGER_WIDTH, TRIGGER_HEIGHT};
    fill_rect(renderer, &box, present ? COLOR_IDLE : COLOR_ABSENT);
    if (value > 0) {
        const SDL_FRect bar = {x, y, TRIGGER_WIDTH * value, TRIGGER_HEIGHT};
        fill_rect(renderer, &bar, COLOR_ACTIVE);
    }
    outline_rect(renderer, &box, COLOR_OUTLINE);
    const Uint32 label_color = !present ? COLOR_TEXT_DIM : value > 0.5f ? COLOR_LABEL_ON : COLOR_TEXT;
    draw_centered_text(renderer, x + TRIGGER_WIDTH / 2, y + TRIGGER_HEIGHT / 2, label, label_color);
}

static void draw_stick(
    SDL_Renderer *renderer, float cx, float cy, SDL_GamepadAxis x_axis, SDL_GamepadAxis y_axis,
    SDL_GamepadButton button, const char *label) {
    const bool present = gamepad_has_axis(x_axis) && gamepad_has_axis(y_axis);
    const bool clicked = gamepad_has_button(button) && gamepad_button(button);
    fill_circle(renderer, cx, cy, STICK_RADIUS, present ? COLOR_IDLE : COLOR_ABSENT);
    outline_circle(renderer, cx, cy, STICK_RADIUS, clicked ? COLOR_ACTIVE : COLOR_OUTLINE);
    outline_circle(renderer, cx, cy, gamepad_deadzone() * STICK_RADIUS, COLOR_OUTLINE);
    const float x = gamepad_axis_normalise(gamepad_axis_raw(x_axis));
    const float y = gamepad_axis_normalise(gamepad_axis_raw(y_axis));
    fill_circle(
        renderer, cx + STICK_RADIUS * x, cy + STICK_RADIUS * y, STICK_DOT_RADIUS,
        present ? COLOR_ACTIVE : COLOR_ABSENT);
    draw_centered_text(renderer, cx, cy + STICK_LABEL_DROP, label, present ? COLOR_TEXT : COLOR_TEXT_DIM);
}

static const char *face_label(SDL_GamepadButton button, const char *fallback) {
    switch (gamepad_button_label(button)) {
    case SDL_GAMEPAD_BUTTON_LABEL_A:
        return "A";
    case SDL_GAMEPAD_BUTTON_LABEL_B:
        return "B";
    case SDL_GAMEPAD_BUTTON_LABEL_X:
        return "X";
    case SDL_GAMEPAD_BUTTON_LABEL_Y:
        return "Y";
    case SDL_GAMEPAD_BUTTON_LABEL_CROSS:
        return "CRS";
    case SDL_GAMEPAD_BUTTON_LABEL_CIRCLE:
        return "CIR";
    case SDL_GAMEPAD_BUTTON_LABEL_SQUARE:
        return "SQR";
    case SDL_GAMEPAD_BUTTON_LABEL_TRIANGLE:
        return "TRI";
    default:
        return fallback;
    }
}

// --- diagram, in coordinates relative to its corner ---

struct RectButton {
    SDL_FRect rect = {};
    SDL_GamepadButton button = SDL_GAMEPAD_BUTTON_INVALID;
    const char *label = "";
};
static constexpr RectButton RECT_BUTTONS[] = {
    {.rect = {20, 0, 74, 18}, .button = SDL_GAMEPAD_BUTTON_LEFT_SHOULDER, .label = "LB"},
    {.rect = {346, 0, 74, 18}, .button = SDL_GAMEPAD_BUTTON_RIGHT_SHOULDER, .label = "RB"},
    {.rect = {160, 76, 30, 16}, .button = SDL_GAMEPAD_BUTTON_BACK, .label = "BK"},
    {.rect = {250, 76, 30, 16}, .button = SDL_GAMEPAD_BUTTON_START, .label = "ST"},
    {.rect = {74, 83, 22, 22}, .button = SDL_GAMEPAD_BUTTON_DPAD_UP, .label = "U"},
    {.rect = {74, 127, 22, 22}, .button = SDL_GAMEPAD_BUTTON_DPAD_DOWN, .label = "D"},
    {.rect = {52, 105, 22, 22}, .button = SDL_GAMEPAD_BUTTON_DPAD_LEFT, .label = "L"},
    {.rect = {96, 105, 22, 22}, .button = SDL_GAMEPAD_BUTTON_DPAD_RIGHT, .label = "R"},
};

struct FaceButton {
    float cx = 0, cy = 0;
    SDL_GamepadButton button = SDL_GAMEPAD_BUTTON_INVALID;
    const char *fallback = ""; // used if the controller's label is unknown
};
static constexpr FaceButton FACE_BUTTONS[] = {
    {.cx = 356, .cy = 78, .button = SDL_GAMEPAD_BUTTON_NORTH, .fallback = "Y"},
    {.cx = 324, .cy = 110, .button = SDL_GAMEPAD_BUTTON_WEST, .fallback = "X"},
    {.cx = 388, .cy = 110, .button = SDL_GAMEPAD_BUTTON_EAST, .fallback = "B"},
    {.cx = 356, .cy = 142, .button = SDL_GAMEPAD_BUTTON_SOUTH, .fallback = "A"},
};
static constexpr float FACE_RADIUS = 16, GUIDE_RADIUS = 13;

static void draw_diagram(SDL_Renderer *renderer, float ox, float oy) {
    for (const RectButton &row : RECT_BUTTONS) {
        const SDL_FRect rect = {ox + row.rect.x, oy + row.rect.y, row.rect.w, row.rect.h};
        draw_button_rect(renderer, rect, row.button, row.label);
    }
    draw_trigger(renderer, ox + 20, oy + 26, SDL_GAMEPAD_AXIS_LEFT_TRIGGER, "LT");
    draw_trigger(renderer, ox + 346, oy + 26, SDL_GAMEPAD_AXIS_RIGHT_TRIGGER, "RT");
    draw_button_circle(renderer, ox + 220, oy + 84, GUIDE_RADIUS, SDL_GAMEPAD_BUTTON_GUIDE, "G");
    for (const FaceButton &row : FACE_BUTTONS) {
        draw_button_circle(
            renderer, ox + row.cx, oy + row.cy, FACE_RADIUS, row.button, face_label(row.button, row.fallback));
    }
    draw_stick(
        renderer, ox + 150, oy + 196, SDL_GAMEPAD_AXIS_LEFTX, SDL_GAMEPAD_AXIS_LEFTY, SDL_GAMEPAD_BUTTON_LEFT_STICK,
        "LEFT STICK  L3");
    draw_stick(
        renderer, ox + 300, oy + 196, SDL_GAMEPAD_AXIS_RIGHTX, SDL_GAMEPAD_AXIS_RIGHTY, SDL_GAMEPAD_BUTTON_RIGHT_STICK,
        "RIGHT STICK  R3");
}

// --- read-outs ---

static void _draw_axis_row(SDL_Renderer *renderer, float x, float y, int index) {
    const auto axis = static_cast<SDL_GamepadAxis>(index);
    if (gamepad_has_axis(axis)) {
        draw_text(
            renderer, x, y, COLOR_TEXT, "%-12s %6d   %+6.3f", AXIS_NAMES[index], gamepad_axis_raw(axis),
            static_cast<double>(gamepad_axis(axis)));
    } else {
        draw_text(renderer, x, y, COLOR_TEXT_DIM, "%-12s      -        -", AXIS_NAMES[index]);
    }
}

static void
_draw_stick_row(SDL_Renderer *renderer, float x, float y, const char *name, void (*read)(float *x, float *y)) {
    float stick_x = 0, stick_y = 0;
    read(&stick_x, &stick_y);
    const float length = SDL_sqrtf(stick_x * stick_x + stick_y * stick_y);
    draw_text(
        renderer, x, y, COLOR_TEXT, "%-6s %+6.3f %+6.3f  mag %5.3f", name, static_cast<double>(stick_x),
        static_cast<double>(stick_y), static_cast<double>(length));
}

// Lists the names of held buttons, as many as fit.
static void _list_held_buttons(char *list, size_t size) {
    size_t used = 0;
    list[0] = '\0';
    for (int i = 0; i < SDL_GAMEPAD_BUTTON_COUNT; i++) {
        const auto button = static_cast<SDL_GamepadButton>(i);
        if (!gamepad_has_button(button) || !gamepad_button(button)) continue;
        const char *name = SDL_GetGamepadStringForButton(button);
        const char *gap = used > 0 ? " " : "";
        const size_t length = SDL_strlen(gap) + SDL_strlen(name);
        if (used + length >= size) return;
        SDL_snprintf(list + used, size - used, "%s%s", gap, name);
        used += length;
    }
}

static void draw_readouts(SDL_Renderer *renderer, float x, float y) {
    draw_text(renderer, x, y, COLOR_TEXT_DIM, "AXIS            RAW     VALUE");
    for (int i = 0; i < SDL_GAMEPAD_AXIS_COUNT; i++) {
        _draw_axis_row(renderer, x, y + ROW_PITCH * static_cast<float>(i + 1), i);
    }
    draw_text(
        renderer, x, y + 8 * ROW_PITCH, COLOR_TEXT_DIM, "AFTER DEADZONE %.2f", static_cast<double>(gamepad_deadzone()));
    _draw_stick_row(renderer, x, y + 9 * ROW_PITCH, "LEFT", gamepad_left_stick);
    _draw_stick_row(renderer, x, y + 10 * ROW_PITCH, "RIGHT", gamepad_right_stick);

    char held[160];
    _list_held_buttons(held, sizeof held);
    draw_text(renderer, x, y + 12 * ROW_PITCH, COLOR_TEXT_DIM, "HELD");
    draw_text(renderer, x, y + 13 * ROW_PITCH, held[0] ? COLOR_ACTIVE : COLOR_TEXT_DIM, "%s", held[0] ? held : "none");
}

// --- frame ---

void gamepad_demo_tick() {
    SDL_Renderer *renderer = engine_renderer();
    set_color(renderer, COLOR_BACKGROUND);
    SDL_RenderClear(renderer);
    engine_render_text(gamepad_demo->title_text, MARGIN, MARGIN);

    const bool connected = gamepad_connected();
    draw_text(
        renderer, MARGIN, STATUS_TOP, connected ? COLOR_ACTIVE : COLOR_TEXT_DIM, "%s   %s   [%s]",
        connected ? "CONNECTED" : "NO CONTROLLER", gamepad_name(), gamepad_type_name());
    draw_diagram(renderer, MARGIN, CONTENT_TOP);
    draw_readouts(renderer, READOUTS_LEFT, CONTENT_TOP);

    if (gamepad_demo->rumble_shown > 0) gamepad_demo->rumble_shown -= engine_fps_delta();
    const bool sent = gamepad_demo->rumble_shown > 0;
    float view_height = 0;
    engine_view_size(nullptr, &view_height);
    draw_text(
        renderer, MARGIN, view_height - FOOTER_RISE, sent ? COLOR_ACTIVE : COLOR_TEXT_DIM,
        "R  rumble test%s        ESC  back to menu", sent ? "  (sent)" : "");
}
