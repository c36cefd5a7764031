#include "engine/game_internal.h"

#include <utility>

static Game g_game = {.id = "lumarind"}; // a copy, with derived defaults filled in

static bool _is_empty(const char *text) { return !text || !*text; }

void _engine_set_game(const Game *game) {
    g_game = *game;
    if (_is_empty(game->name)) g_game.name = game->title;
    if (_is_empty(game->program)) g_game.program = game->id;
}

const Game *engine_game() { return &g_game; }

// --- validation: each function returns an error message, or null ---

static bool _is_file_name(const char *text) {
    return !SDL_strpbrk(text, "/\\:*?\"<>|") && SDL_strcmp(text, ".") != 0 && SDL_strcmp(text, "..") != 0;
}

static const char *_problem(const char *format, ...) {
    static char text[256];
    va_list args;
    va_start(args, format);
    SDL_vsnprintf(text, sizeof text, format, args);
    va_end(args);
    return text;
}

static const char *_check_texts(const Game *game) {
    if (_is_empty(game->title)) return "title is empty";
    if (_is_empty(game->id)) return "id is empty";
    const std::pair<const char *, const char *> names[] = {
        {"id", game->id}, {"program", game->program}, {"organisation", game->organisation}};
    for (const auto &[field, text] : names) {
        if (text && !_is_file_name(text)) return _problem("%s is not a file name: %s", field, text);
    }
    return nullptr;
}

// Checks the row count and that all names are present and unique.
template <typename Row> static const char *_check_rows(const char *table, const Row *rows, Sint32 count, Sint32 max) {
    if (count < 0 || count > max) return _problem("%d %s are out of range, 0 to %d", count, table, max);
    if (!rows && count > 0) return _problem("%d %s, but the table is null", count, table);
    for (Sint32 i = 0; i < count; i++) {
        if (_is_empty(rows[i].name)) return _problem("the name of %s[%d] is empty", table, i);
        for (Sint32 j = 0; j < i; j++) {
            if (SDL_strcasecmp(rows[i].name, rows[j].name) == 0)
                return _problem("%s: duplicate name %s", table, rows[i].name);
        }
    }
    return nullptr;
}

static const char *_check_screens(const Game *game) {
    if (!game->screens || game->screen_count < 1) return _problem("it has no screens");
    if (const char *wrong = _check_rows("screens", game->screens, game->screen_count, SDL_MAX_SINT32)) return wrong;
    for (Sint32 i = 0; i < game->screen_count; i++) {
        const Screen &screen = game->screens[i].screen;
        if (!screen.setup || !screen.tick || !screen.cleanup)
            return _problem("screen %s lacks setup, tick or cleanup", game->screens[i].name);
    }
    return nullptr;
}

static const char *_check_options(const Game *game) {
    if (const char *wrong = _check_rows("options", game->options, game->option_count, SDL_MAX_SINT32)) return wrong;
    for (Sint32 i = 0; i < game->option_count; i++) {
        if (!game->options[i].apply) return _problem("option %s has no apply function", game->options[i].name);
    }
    return nullptr;
}

const char *_engine_game_problem(const Game *game) {
    if (!game) return "it is null";
    if (game->abi != LUMARIND_ABI) {
        return _problem("it was built for ABI %u, the library has %u", game->abi, unsigned{LUMARIND_ABI});
    }
    if (const char *wrong = _check_texts(game)) return wrong;
    if (const char *wrong = _check_screens(game)) return wrong;
    if (const char *wrong = _check_rows("actions", game->actions, game->action_count, GAME_MAX_ACTIONS)) return wrong;
    if (const char *wrong = _check_rows("settings", game->settings, game->setting_count, GAME_MAX_SETTINGS))
        return wrong;
    if (const char *wrong = _check_options(game)) return wrong;
    if (game->ui_font && !(game->ui_font_size > 0 && game->heading_font_size > 0)) return "a font size is not positive";
    if (game->window_width < 1 || game->window_height < 1) return "the window's size is not positive";
    return nullptr;
}
