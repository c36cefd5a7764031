#include "lumarind/settings/settings_menu.h"

#include "lumarind/config/config.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/game.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/text_draw.h"
#include "lumarind/settings/settings.h"
#include "settings/settings_internal.h"

static constexpr int FIRST_ACTION = SETTINGS_VALUE_COUNT, LINES_MAX = FIRST_ACTION + GAME_MAX_ACTIONS + 2;
static constexpr float WIDEST = 640, TALL = 400; // UI units; views taller than TALL show a heading
static constexpr Uint8 SHADE = 150, SHADE_PROMPT = 190;

struct SettingsMenu {
    Menu list, conflict; // conflict: the prompt to resolve one
    int slot;            // selected binding slot of the selected action
    bool ignore_input;   // ignores the presses that opened the menu or ended a capture, for one frame
    bool conflict_shown; // the conflict was already shown in the previous frame
};
static SettingsMenu settings_menu;

void settings_menu_open() {
    settings_menu = {.list = {}, .conflict = {}, .slot = 0, .ignore_input = true, .conflict_shown = false};
}

// Formats the slots of an action as "A   [Left]   Stick left"; if its line is selected, the selected slot in brackets.
static void _settings_menu_slots(int action, bool selected, char *out, size_t size) {
    size_t used = 0;
    out[0] = '\0';
    for (int i = 0; i < INPUT_MAX_BINDINGS; i++) {
        const SettingsText name = settings_slot_text(action, i);
        const bool selected_slot = selected && i == settings_menu.slot;
        if (!name.text[0] && !selected_slot) continue;
        used += static_cast<size_t>(SDL_snprintf(
            out + used, size - used, selected_slot ? "%s[%s]" : "%s%s", used ? "   " : "",
            name.text[0] ? name.text : "new"));
        if (used >= size || !name.text[0]) break;
    }
}

static int _settings_menu_slot_count(int action) { // including an empty one for a new binding
    int count = 0;
    while (count < INPUT_MAX_BINDINGS && settings_slot_text(action, count).text[0]) count++;
    return SDL_min(count + 1, INPUT_MAX_BINDINGS);
}

static void _settings_menu_apply(const MenuAnswer &answer, const SettingsAction *actions, int action_count) {
    const int line = settings_menu.list.selected, index = line - FIRST_ACTION;
    if (line < FIRST_ACTION) {
        const int step = answer.step != 0 ? answer.step : answer.taken >= 0 ? 1 : 0;
        if (step != 0) settings_value_step(line, step);
    } else if (index < action_count) {
        const int action = actions[index].action, slots = _settings_menu_slot_count(action);
        settings_menu.slot = SDL_clamp(settings_menu.slot, 0, slots - 1);
        if (answer.taken >= 0) {
            settings_capture_begin(action, settings_menu.slot);
        } else if (answer.clear) {
            settings_clear(action, settings_menu.slot);
        } else {
            settings_menu.slot = (settings_menu.slot + answer.step + slots) % slots;
        }
    } else if (answer.taken == FIRST_ACTION + action_count) {
        settings_restore_bindings();
    }
}

static void _settings_menu_draw_waiting(float width, float height) {
    char text[2 * SETTINGS_TEXT_SIZE];
    TTF_Font *font = engine_get_font_by_index(SHARED_FONT_UI);
    const float line = menu_line_height();
    const char *label = _settings_label(settings_capture_action());
    menu_darken(SHADE_PROMPT);
    SDL_snprintf(text, sizeof text, "Press a key or a button for \"%s\"", label);
    engine_draw_text(font, text, width / 2, height / 2 - line, menu_look().bright, TEXT_CENTER);
    SDL_snprintf(text, sizeof text, "Cancels in %d s", static_cast<int>(settings_capture_left() + 0.99));
    engine_draw_text(font, text, width / 2, height / 2, menu_look().dim, TEXT_CENTER);
}

static MenuAnswer _settings_menu_conflict(float width, float height) {
    static constexpr MenuLine LINES[] = {{"Swap the bindings"}, {"Cancel"}};
    SettingsText binding = {};
    const int other = settings_capture_conflict(&binding);
    const float line = menu_line_height();
    char text[3 * SETTINGS_TEXT_SIZE];
    menu_darken(SHADE_PROMPT);
    SDL_snprintf(text, sizeof text, "%s is already bound to \"%s\"", binding.text, _settings_label(other));
    engine_draw_text(
        engine_get_font_by_index(SHARED_FONT_UI), text, width / 2, height / 2 - 1.5f * line, menu_look().bright,
        TEXT_CENTER);
    const SDL_FRect area = {width / 2 - 130, height / 2, 260, 2 * line};
    const MenuAnswer answer = menu_tick(&settings_menu.conflict, LINES, 2, area, settings_menu.conflict_shown);
    settings_menu.conflict_shown = true; // accepts input from the next frame on
    if (answer.taken >= 0 || answer.back) settings_capture_answer(answer.taken == 0);
    return answer;
}

static void _settings_menu_draw_frame(float width, float height, bool at_action) {
    menu_darken(SHADE);
    if (height <= TALL) return;
    engine_draw_text(
        engine_get_font_by_index(SHARED_FONT_UI_HEADING), "Settings", width / 2, 8, menu_look().bright, TEXT_CENTER);
    const char *hint = at_action ? "Left and right choose a binding, confirm replaces it, Delete clears it"
                                 : "Left and right change a value";
    engine_draw_text(
        engine_get_font_by_index(SHARED_FONT_UI), hint, width / 2, height - menu_line_height() - 6, menu_look().dim,
        TEXT_CENTER);
}

static MenuAnswer _settings_menu_list(float width, float height, bool accepts_input, int *count) {
    const SettingsAction *actions = nullptr;
    const int action_count = _settings_actions(&actions), selected = settings_menu.list.selected - FIRST_ACTION;
    SettingsText values[SETTINGS_VALUE_COUNT] = {};
    char bindings[GAME_MAX_ACTIONS][INPUT_MAX_BINDINGS * SETTINGS_TEXT_SIZE];
    MenuLine lines[LINES_MAX] = {};
    for (int i = 0; i < SETTINGS_VALUE_COUNT; i++) {
        values[i] = settings_value_text(i);
        lines[i] = {settings_value_name(i), values[i].text};
    }
    for (int i = 0; i < action_count; i++) {
        _settings_menu_slots(actions[i].action, selected == i, bindings[i], sizeof bindings[i]);
        lines[FIRST_ACTION + i] = {actions[i].label, bindings[i]};
    }
    *count = FIRST_ACTION + action_count + 2;
    lines[*count - 2] = {"Default bindings"};
    lines[*count - 1] = {"Back"};
    _settings_menu_draw_frame(width, height, selected >= 0 && selected < action_count);
    const float wide = SDL_min(width - 20, WIDEST), top = height > TALL ? 64.0f : 6.0f;
    const float foot = height > TALL ? menu_line_height() + 14 : 4;
    const SDL_FRect area = {width / 2 - wide / 2, top, wide, height - top - foot};
    const MenuAnswer answer = menu_tick(&settings_menu.list, lines, *count, area, accepts_input);
    if (accepts_input) _settings_menu_apply(answer, actions, action_count);
    return answer;
}

bool settings_menu_tick(MenuAnswer *result) {
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    settings_capture_advance(engine_fps_delta());
    const SettingsCapture capture = settings_capture();
    const bool accepts_input = capture == SETTINGS_CAPTURE_NONE && !settings_menu.ignore_input;
    settings_menu.ignore_input = capture != SETTINGS_CAPTURE_NONE;
    if (capture != SETTINGS_CAPTURE_CONFLICT) {
        settings_menu.conflict_shown = false;
        settings_menu.conflict = {};
    }
    int count = 0;
    MenuAnswer answer = _settings_menu_list(width, height, accepts_input, &count);
    const bool left = accepts_input && (answer.back || answer.taken == count - 1);
    if (capture == SETTINGS_CAPTURE_WAITING) _settings_menu_draw_waiting(width, height);
    if (capture == SETTINGS_CAPTURE_CONFLICT) answer = _settings_menu_conflict(width, height);
    if (result) *result = answer;
    if (left) cfg_save(); // reports errors; the settings then last until exit
    return !left;
}
