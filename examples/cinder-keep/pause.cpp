// pause: the pause menu.

#include "game.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/text_draw.h"
#include "lumarind/input/input.h"
#include "menus.h"

#include <SDL3/SDL_stdinc.h>

enum Line { LINE_RESUME, LINE_CHECKPOINT, LINE_SETTINGS, LINE_TITLE, LINE_COUNT };
static constexpr MenuLine LINES[] = {{"Go on"}, {"Back to the last fire"}, {"Settings"}, {"Leave to the title"}};
static_assert(SDL_arraysize(LINES) == LINE_COUNT, "one row per line");

static Menu menu;
static bool in_settings, just_opened;

void pause_open() {
    menu = {};
    in_settings = false;
    just_opened = true; // the menu ignores the press that opened it
}

PauseChoice pause_tick() {
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    menu_darken(185);
    if (in_settings) {
        in_settings = menus_settings_tick();
        return PAUSE_STAY;
    }
    const float lines = menu_line_height() * static_cast<float>(LINE_COUNT), wide = SDL_min(width - 40, 300);
    engine_draw_text(
        engine_get_font_by_index(SHARED_FONT_UI_HEADING), "Pause", width / 2, height / 2 - lines / 2 - 62, COLOR_BRIGHT,
        TEXT_CENTER);
    const SDL_FRect area = {width / 2 - wide / 2, height / 2 - lines / 2, wide, lines};
    const MenuAnswer answer = menus_tick(&menu, LINES, LINE_COUNT, area, !just_opened);
    const bool again = input_pressed(ACTION_PAUSE) && !just_opened;
    just_opened = false;
    in_settings = answer.taken == LINE_SETTINGS;
    if (in_settings) settings_menu_open();
    if (answer.taken == LINE_CHECKPOINT) return PAUSE_CHECKPOINT;
    if (answer.taken == LINE_TITLE) return PAUSE_TITLE;
    return answer.taken == LINE_RESUME || answer.back || again ? PAUSE_RESUME : PAUSE_STAY;
}
