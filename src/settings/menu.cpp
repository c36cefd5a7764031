#include "lumarind/settings/menu.h"

#include "lumarind/core/error.h"
#include "lumarind/engine/callbacks.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/text_draw.h"
#include "lumarind/input/input.h"
#include "lumarind/toolkit/primitives.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

static constexpr float PADDING = 3, SIDE = 12, MARK = 3; // UI units

struct MenuModule {
    MenuControls controls;
    MenuLook look;
    float mouse_x, mouse_y; // of the last event, drawing units
    bool moved, clicked;    // since the last tick, as is the wheel
    float wheel;
};
static MenuModule *menus;

static constexpr Uint32 MENU_EVENTS[] = {SDL_EVENT_MOUSE_MOTION, SDL_EVENT_MOUSE_BUTTON_DOWN, SDL_EVENT_MOUSE_WHEEL};

static bool _menu_handle_event(SDL_Event *event, void *) {
    if (event->type == SDL_EVENT_MOUSE_WHEEL) {
        menus->wheel += event->wheel.y;
        return true;
    }
    const bool button = event->type == SDL_EVENT_MOUSE_BUTTON_DOWN;
    menus->mouse_x = button ? event->button.x : event->motion.x;
    menus->mouse_y = button ? event->button.y : event->motion.y;
    if (button && event->button.button == SDL_BUTTON_LEFT) menus->clicked = true;
    menus->moved = true;
    return true;
}

bool menu_setup(const MenuControls &controls, const MenuLook &look) {
    if (menus) return true;
    menus = static_cast<MenuModule *>(SDL_calloc(1, sizeof *menus));
    if (!menus) return engine_error("[MENU] Memory allocation failed, error: %s", SDL_GetError());
    menus->controls = controls;
    menus->look = look;
    for (const Uint32 type : MENU_EVENTS) {
        if (engine_add_callback(type, _menu_handle_event, menus)) continue;
        menu_cleanup();
        return false;
    }
    return true;
}

void menu_cleanup() {
    if (!menus) return;
    for (const Uint32 type : MENU_EVENTS) engine_remove_callback(type, _menu_handle_event, menus);
    SDL_free(menus);
    menus = nullptr;
}

MenuLook menu_look() { return menus ? menus->look : MenuLook{}; }

float menu_line_height() {
    float height = 0;
    engine_measure_text(engine_get_font_by_index(SHARED_FONT_UI), "", nullptr, &height);
    return height + 2 * PADDING;
}

static Uint32 _menu_packed(SDL_Color color) { return rgba(color.r, color.g, color.b, color.a); }

void menu_darken(Uint8 alpha) {
    SDL_SetRenderDrawBlendMode(engine_renderer(), SDL_BLENDMODE_BLEND);
    fill_rect(engine_renderer(), nullptr, rgba(12, 8, 20, alpha));
}

static void _menu_draw_line(const MenuLine &line, const SDL_FRect &box, bool selected) {
    const MenuLook &look = menus->look;
    TTF_Font *font = engine_get_font_by_index(SHARED_FONT_UI);
    const SDL_Color color = line.off ? look.dim : selected ? look.bright : look.plain;
    if (selected) {
        fill_rect(engine_renderer(), &box, _menu_packed(look.bar));
        const SDL_FRect mark = {box.x, box.y, MARK, box.h};
        fill_rect(engine_renderer(), &mark, _menu_packed(look.mark));
    }
    const float y = box.y + PADDING;
    if (!line.value) {
        engine_draw_text(font, line.label, box.x + box.w / 2, y, color, TEXT_CENTER);
        return;
    }
    engine_draw_text(font, line.label, box.x + SIDE, y, color);
    engine_draw_text(font, line.value, box.x + box.w - SIDE, y, color, TEXT_RIGHT);
}

// Moves the selection up or down; wraps around and skips disabled lines.
static bool _menu_move(Menu *menu, const MenuLine *lines, int count) {
    const int step = input_pressed(menus->controls.down) - input_pressed(menus->controls.up);
    int at = menu->selected;
    for (int i = 0; step != 0 && i < count; i++) {
        at = (at + step + count) % count;
        if (!lines[at].off) break;
    }
    const bool moved = at != menu->selected;
    menu->selected = at;
    return moved;
}

// Hit test: returns the line under the mouse, or -1. Selects it if the mouse has moved.
static int _menu_hit_test(Menu *menu, const MenuLine *lines, int count, const SDL_FRect &area, int shown) {
    const float x = menus->mouse_x, y = menus->mouse_y;
    if (x < area.x || x >= area.x + area.w || y < area.y) return -1;
    const int row = static_cast<int>((y - area.y) / menu_line_height());
    const int line = row + static_cast<int>(menu->scroll);
    if (row >= shown || line >= count || lines[line].off) return -1;
    if (menus->moved || menus->wheel != 0) menu->selected = line;
    return line;
}

static void _menu_scroll(Menu *menu, int count, int shown) {
    const float selected = static_cast<float>(menu->selected), last = static_cast<float>(SDL_max(count - shown, 0));
    menu->scroll -= menus->wheel;
    if (menus->wheel == 0) // keep the selected line visible
        menu->scroll = SDL_clamp(menu->scroll, selected - static_cast<float>(shown) + 1, selected);
    menu->scroll = SDL_floorf(SDL_clamp(menu->scroll, 0, last));
}

static MenuAnswer _menu_handle_input(Menu *menu, const MenuLine *lines, int count, const SDL_FRect &area, int shown) {
    const MenuControls &controls = menus->controls;
    MenuAnswer answer = {};
    answer.moved = _menu_move(menu, lines, count);
    _menu_scroll(menu, count, shown);
    const int before = menu->selected, at = _menu_hit_test(menu, lines, count, area, shown);
    answer.moved = answer.moved || menu->selected != before;
    if (at >= 0 && menus->clicked) {
        answer.taken = at;
        answer.step = menus->mouse_x < area.x + area.w / 2 ? -1 : 1;
        return answer;
    }
    answer.step = input_pressed(controls.right) - input_pressed(controls.left);
    answer.back = input_pressed(controls.back);
    answer.clear = input_pressed(controls.clear);
    if (!input_pressed(controls.take) || lines[menu->selected].off) return answer;
    answer.taken = menu->selected;
    answer.step = 0;
    return answer;
}

MenuAnswer menu_tick(Menu *menu, const MenuLine *lines, int count, const SDL_FRect &area, bool accepts_input) {
    if (!menus || count < 1) return {};
    const float height = menu_line_height();
    const int shown = SDL_max(static_cast<int>(area.h / height), 1);
    menu->selected = SDL_clamp(menu->selected, 0, count - 1);
    MenuAnswer answer = {};
    if (accepts_input) answer = _menu_handle_input(menu, lines, count, area, shown);
    menus->moved = menus->clicked = false;
    menus->wheel = 0;
    SDL_SetRenderDrawBlendMode(engine_renderer(), SDL_BLENDMODE_BLEND);
    for (int row = 0; row < shown; row++) {
        const int line = row + static_cast<int>(menu->scroll);
        if (line >= count) break;
        const SDL_FRect box = {area.x, area.y + static_cast<float>(row) * height, area.w, height - 2};
        _menu_draw_line(lines[line], box, line == menu->selected);
    }
    return answer;
}
