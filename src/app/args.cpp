#include "app/args.h"

#include "lumarind/engine/game.h"
#include "lumarind/engine/ui_scale.h"

#include <SDL3/SDL_log.h>
#include <SDL3/SDL_stdinc.h>

#include <cstdio>

struct Args {
    bool config_save = true;
    const char *screen = nullptr; // borrowed from the argument vector
    Sint32 capture_at = 0, capture_every = 0, quit_at = 0;
    Sint32 window_width = 0, window_height = 0;
    Sint32 ui_scale = 0;
};
static Args args;

// --- options, one function each: the value is null for options without one ---

using ApplyOption = bool (*)(const char *option, const char *value);

static bool _args_no_config_save(const char *, const char *) {
    args.config_save = false;
    return true;
}

static bool _args_screen(const char *, const char *value) {
    args.screen = value;
    return true;
}

static bool _args_capture_at(const char *option, const char *value) {
    return args_take_positive_int(option, value, &args.capture_at);
}

static bool _args_capture_every(const char *option, const char *value) {
    return args_take_positive_int(option, value, &args.capture_every);
}

static bool _args_quit_at(const char *option, const char *value) {
    return args_take_positive_int(option, value, &args.quit_at);
}

static bool _args_window_size(const char *option, const char *value) {
    int width = 0, height = 0;
    if (SDL_sscanf(value, "%dx%d", &width, &height) != 2 || width <= 0 || height <= 0) {
        SDL_LogError(SDL_LOG_CATEGORY_APPLICATION, "[ARGS] %s expects WxH, e.g. 800x450: %s", option, value);
        return false;
    }
    args.window_width = width;
    args.window_height = height;
    return true;
}

static bool _args_ui_scale(const char *option, const char *value) {
    if (!args_take_positive_int(option, value, &args.ui_scale)) return false;
    if (args.ui_scale <= UI_SCALE_MAX) return true;
    SDL_LogError(
        SDL_LOG_CATEGORY_APPLICATION, "[ARGS] %s expects %d to %d: %s", option, UI_SCALE_MIN, UI_SCALE_MAX, value);
    return false;
}

struct Option {
    const char *name = "";
    bool takes_value = false;
    ApplyOption apply = nullptr; // null: help
};
static constexpr Option OPTIONS[] = {
    {.name = "--no-config-save", .apply = _args_no_config_save},
    {.name = "--screen", .takes_value = true, .apply = _args_screen},
    {.name = "--capture-at", .takes_value = true, .apply = _args_capture_at},
    {.name = "--capture-every", .takes_value = true, .apply = _args_capture_every},
    {.name = "--quit-at", .takes_value = true, .apply = _args_quit_at},
    {.name = "--window-size", .takes_value = true, .apply = _args_window_size},
    {.name = "--ui-scale", .takes_value = true, .apply = _args_ui_scale},
    {.name = "--help"},
    {.name = "-h"},
};

static const Option *_args_find_option(const char *name) {
    for (const Option &option : OPTIONS) {
        if (SDL_strcmp(option.name, name) == 0) return &option;
    }
    return nullptr;
}

// Applies one of the game's options.
static ArgsResult _args_apply_game_option(int argc, char *argv[], int *index) {
    const char *name = argv[*index];
    const Game *game = engine_game();
    for (int i = 0; i < game->option_count; i++) {
        const GameOption &option = game->options[i];
        if (SDL_strcmp(option.name, name) != 0) continue;
        const char *value = option.value_name ? args_take_value(name, argc, argv, index) : nullptr;
        if (option.value_name && !value) return ARGS_FAILED;
        return option.apply(value) ? ARGS_RUN : ARGS_FAILED;
    }
    SDL_LogError(SDL_LOG_CATEGORY_APPLICATION, "[ARGS] Unknown argument: %s", name);
    return ARGS_FAILED;
}

// Applies the option at *index.
static ArgsResult _args_apply_option(int argc, char *argv[], int *index) {
    const char *name = argv[*index];
    const Option *option = _args_find_option(name);
    if (!option) return _args_apply_game_option(argc, argv, index);
    if (!option->apply) return ARGS_HELP;
    const char *value = nullptr;
    if (option->takes_value) {
        value = args_take_value(name, argc, argv, index);
        if (!value) return ARGS_FAILED;
    }
    return option->apply(name, value) ? ARGS_RUN : ARGS_FAILED;
}

ArgsResult args_parse(int argc, char *argv[]) {
    args = {};
    for (int i = 1; i < argc; i++) {
        const ArgsResult result = _args_apply_option(argc, argv, &i);
        if (result == ARGS_RUN) continue;
        args_print_usage();
        return result;
    }
    return ARGS_RUN;
}

static void _args_print_game_option(const GameOption &option) {
    constexpr int HELP_COLUMN = 22;
    char name[128] = {};
    SDL_snprintf(name, sizeof name, option.value_name ? "%s <%s>" : "%s", option.name, option.value_name);
    std::printf("  %-*s%s\n", HELP_COLUMN, name, option.help);
}

void args_print_usage() {
    const Game *game = engine_game();
    std::printf("Usage: %s [options]\n", game->program);
    std::printf("\n");
    std::printf("  --no-config-save      Run without writing config/%s.ini on exit.\n", game->id);
    std::printf("  --screen <name>       Open this screen instead of the main menu.\n");
    std::printf("  --capture-at <n>      Save a capture of frame n.\n");
    std::printf("  --capture-every <n>   Save a capture every n frames.\n");
    std::printf("  --quit-at <n>         Exit once frame n has been drawn.\n");
    std::printf("  --window-size <WxH>   Override the window size, without saving it.\n");
    std::printf(
        "  --ui-scale <n>        Override the UI scale (%d to %d), without saving it.\n", UI_SCALE_MIN, UI_SCALE_MAX);
    for (int i = 0; i < game->option_count; i++) _args_print_game_option(game->options[i]);
    std::printf("  -h, --help            Show this help and exit.\n");
    std::fflush(stdout);
}

const char *args_take_value(const char *option, int argc, char *argv[], int *index) {
    if (*index + 1 >= argc) {
        SDL_LogError(SDL_LOG_CATEGORY_APPLICATION, "[ARGS] Missing value for: %s", option);
        return nullptr;
    }
    return argv[++*index];
}

bool args_take_positive_int(const char *option, const char *value, int *out) {
    int number = 0;
    if (SDL_sscanf(value, "%d", &number) != 1 || number <= 0) {
        SDL_LogError(SDL_LOG_CATEGORY_APPLICATION, "[ARGS] %s expects a positive number: %s", option, value);
        return false;
    }
    *out = number;
    return true;
}

bool args_config_save_enabled() { return args.config_save; }
const char *args_start_screen() { return args.screen; }
int args_capture_at() { return args.capture_at; }
int args_capture_every() { return args.capture_every; }
int args_quit_at() { return args.quit_at; }
int args_ui_scale() { return args.ui_scale; }

bool args_window_size(int *width, int *height) {
    if (args.window_width <= 0 || args.window_height <= 0) return false;
    if (width) *width = args.window_width;
    if (height) *height = args.window_height;
    return true;
}

void args_apply_recorded(const char *screen, int window_width, int window_height, int ui_scale) {
    args.config_save = false;
    args.screen = screen;
    args.window_width = window_width;
    args.window_height = window_height;
    args.ui_scale = ui_scale;
}
