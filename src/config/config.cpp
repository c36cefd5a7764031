#include "lumarind/config/config.h"

#include "app/args.h"
#include "config/config_internal.h"
#include "lumarind/core/error.h"
#include "lumarind/input/input_actions.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_iostream.h>
#include <SDL3/SDL_log.h>
#include <ini.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>

Config *lumarind::config;

const char *const lumarind::cfg_audio_volume_keys[AUDIO_BUS_COUNT] = {"master_volume", "music_volume", "sfx_volume"};

// --- the file's keys, in the order they are written ---

enum KeyKind { KEY_BOOL, KEY_INT, KEY_FLOAT, KEY_DIRECTORY, KEY_FORMAT, KEY_BINDINGS, KEY_VOLUMES, KEY_SETTINGS };

struct KeyRow {
    const char *section = "";
    const char *key = ""; // empty for kinds with one key per action, bus or setting
    KeyKind kind = KEY_BOOL;
    bool Config::*flag = nullptr;
    Sint32 Config::*number = nullptr;
    float Config::*real = nullptr;
};
static constexpr KeyRow KEY_ROWS[] = {
    {.section = "graphics", .key = "show_fps", .kind = KEY_BOOL, .flag = &Config::show_fps},
    {.section = "graphics", .key = "fps_limit", .kind = KEY_INT, .number = &Config::fps_limit},
    {.section = "graphics", .key = "show_frame_time_graph", .kind = KEY_BOOL, .flag = &Config::show_frame_time_graph},
    {.section = "graphics", .key = "vsync_enable", .kind = KEY_BOOL, .flag = &Config::vsync_enable},
    {.section = "graphics", .key = "ui_scale", .kind = KEY_INT, .number = &Config::ui_scale},
    {.section = "window", .key = "x", .kind = KEY_INT, .number = &Config::x},
    {.section = "window", .key = "y", .kind = KEY_INT, .number = &Config::y},
    {.section = "window", .key = "width", .kind = KEY_INT, .number = &Config::width},
    {.section = "window", .key = "height", .kind = KEY_INT, .number = &Config::height},
    {.section = "window", .key = "resizable", .kind = KEY_BOOL, .flag = &Config::resizable},
    {.section = "window", .key = "maximized", .kind = KEY_BOOL, .flag = &Config::maximized},
    {.section = "window", .key = "fullscreen", .kind = KEY_BOOL, .flag = &Config::fullscreen},
    {.section = "window", .key = "borderless", .kind = KEY_BOOL, .flag = &Config::borderless},
    {.section = "simulation", .key = "fixed_step_hz", .kind = KEY_INT, .number = &Config::fixed_step_hz},
    {.section = "capture", .key = "directory", .kind = KEY_DIRECTORY},
    {.section = "capture", .key = "format", .kind = KEY_FORMAT},
    {.section = "capture", .key = "jpeg_quality", .kind = KEY_INT, .number = &Config::jpeg_quality},
    {.section = "capture", .key = "include_fps", .kind = KEY_BOOL, .flag = &Config::include_fps},
    {.section = "gamepad", .key = "deadzone", .kind = KEY_FLOAT, .real = &Config::deadzone},
    {.section = "input", .kind = KEY_BINDINGS},
    {.section = "audio", .kind = KEY_VOLUMES},
    {.section = "game", .kind = KEY_SETTINGS},
};

static const KeyRow *_cfg_find_row(const char *section, const char *name) {
    for (const KeyRow &row : KEY_ROWS) {
        if (SDL_strcmp(row.section, section) != 0) continue;
        if (!*row.key || SDL_strcmp(row.key, name) == 0) return &row;
    }
    return nullptr;
}

// --- lifetime ---

bool cfg_setup() {
    if (config) return true;
    config = static_cast<Config *>(SDL_calloc(1, sizeof *config));
    return config || engine_error("[CONFIG] Memory allocation failed, error: %s", SDL_GetError());
}

void cfg_cleanup() {
    SDL_free(config);
    config = nullptr;
}

FilePath cfg_path() {
    FilePath name = {};
    SDL_snprintf(name.text, sizeof name.text, "%s/%s.ini", CFG_DIRECTORY, engine_game()->id);
    return files_user(name.text);
}

void cfg_set_defaults() {
    const Game *game = engine_game();
    *config = Config{
        .x = game->window_x,
        .y = game->window_y,
        .width = game->window_width,
        .height = game->window_height,
        .resizable = true,
        .fullscreen = false,
        .maximized = false,
        .borderless = false,
        .show_fps = game->show_fps,
        .show_frame_time_graph = false,
        .vsync_enable = true,
        .fps_limit = 0,
        .ui_scale = 0,
        .fixed_step_hz = 60,
        .capture_directory = "captures",
        .capture_format = CAPTURE_FORMAT_PNG,
        .jpeg_quality = 90,
        .include_fps = false,
        .deadzone = 0.15f,
        .bindings = {},
        .volumes = {0.8f, 0.6f, 0.8f},
        .settings = {},
        .load_failed = config->load_failed,
    };
    for (int action = 0; action < input_action_count(); action++) {
        cfg_set_input_bindings(action, input_default_bindings_text(action));
    }
    for (int i = 0; i < game->setting_count; i++) {
        SDL_strlcpy(config->settings[i], game->settings[i].value, CFG_SETTING_SIZE);
    }
}

// --- loading ---

// Returns whether the conversion that stopped at `end` consumed all of `text`; otherwise logs a warning.
static bool _cfg_number_complete(const char *type, const char *text, const char *end) {
    if (end == text) {
        SDL_LogWarn(
            SDL_LOG_CATEGORY_ERROR, "[CONFIG] String to %s conversion: No digits were found in the string.", type);
    } else if (*end != '\0') {
        SDL_LogWarn(
            SDL_LOG_CATEGORY_ERROR, "[CONFIG] String to %s conversion: Non-numeric characters after the number: %s",
            type, end);
    } else {
        return true;
    }
    return false;
}

Sint32 cfg_str_to_long(const char *text) {
    char *end = nullptr;
    const long number = std::strtol(text, &end, 10);
    if (!_cfg_number_complete("long", text, end)) return 0;
    return static_cast<Sint32>(SDL_clamp(number, static_cast<long>(INT_MIN), static_cast<long>(INT_MAX)));
}

float cfg_str_to_float(const char *text) {
    char *end = nullptr;
    const double number = SDL_strtod(text, &end);
    return _cfg_number_complete("float", text, end) ? static_cast<float>(number) : 0.0f;
}

int cfg_audio_bus_from_key(const char *name) {
    for (int bus = 0; bus < AUDIO_BUS_COUNT; bus++) {
        if (SDL_strcmp(cfg_audio_volume_keys[bus], name) == 0) return bus;
    }
    return -1;
}

static bool _cfg_load_bindings(Config *record, const char *name, const char *value) {
    const int action = input_action_from_name(name);
    if (action < 0) return false;
    SDL_strlcpy(record->bindings[action], value, CFG_BINDINGS_SIZE);
    return true;
}

static bool _cfg_load_volume(Config *record, const char *name, const char *value) {
    const int bus = cfg_audio_bus_from_key(name);
    if (bus < 0) return false;
    record->volumes[bus] = cfg_str_to_float(value);
    return true;
}

static int _cfg_setting_index(const char *name) {
    const Game *game = engine_game();
    for (int i = 0; i < game->setting_count; i++) {
        if (SDL_strcmp(game->settings[i].name, name) == 0) return i;
    }
    return -1;
}

static bool _cfg_load_setting(Config *record, const char *name, const char *value) {
    const int index = _cfg_setting_index(name);
    if (index < 0) return false;
    SDL_strlcpy(record->settings[index], value, CFG_SETTING_SIZE);
    return true;
}

int cfg_load_handler(void *user, const char *section, const char *name, const char *value) {
    auto *record = static_cast<Config *>(user);
    const KeyRow *row = _cfg_find_row(section, name);
    if (!row) return 0;
    switch (row->kind) {
    case KEY_BOOL:
        record->*row->flag = SDL_strcmp(value, "true") == 0;
        break;
    case KEY_INT:
        record->*row->number = cfg_str_to_long(value);
        break;
    case KEY_FLOAT:
        record->*row->real = cfg_str_to_float(value);
        break;
    case KEY_DIRECTORY:
        SDL_strlcpy(record->capture_directory, value, CFG_CAPTURE_DIRECTORY_SIZE);
        break;
    case KEY_FORMAT:
        record->capture_format = capture_format_from_string(value);
        break;
    case KEY_BINDINGS:
        return _cfg_load_bindings(record, name, value);
    case KEY_VOLUMES:
        return _cfg_load_volume(record, name, value);
    case KEY_SETTINGS:
        return _cfg_load_setting(record, name, value);
    }
    return 1;
}

// Opened without checking for existence first: the file may appear or vanish in between.
bool cfg_load() {
    cfg_set_defaults();
    const FilePath path = cfg_path();
    std::FILE *file = std::fopen(path.text, "r");
    config->load_failed = !file && errno != ENOENT;
    if (!file && !config->load_failed) {
        SDL_Log("[CONFIG] Config file not found: %s", path.text);
        if (args_config_save_enabled()) SDL_Log("[CONFIG] Creating new config file: %s", path.text);
        cfg_save(); // if this fails, the first start continues with the defaults
        return true;
    }
    SDL_Log("[CONFIG] Loading config file: %s", path.text);
    if (file) { // ini_parse_file treats a read error as end of file
        config->load_failed = ini_parse_file(file, cfg_load_handler, config) < 0 || std::ferror(file);
        std::fclose(file);
    }
    return !config->load_failed || engine_error("[CONFIG] Error loading/parsing config file: %s", path.text);
}

// --- saving ---

namespace fs = std::filesystem;

// Resolves *path to the file to replace, following chains of symbolic links; the last target may not exist.
// Returns false if a link cannot be followed.
static bool _cfg_resolve_links(fs::path *path) {
    constexpr int LINKS_MAX = 40; // links may form a cycle
    for (int i = 0; i < LINKS_MAX; i++) {
        std::error_code error;
        const fs::file_type type = fs::symlink_status(*path, error).type();
        if (type != fs::file_type::symlink) return type != fs::file_type::none;
        const fs::path target = fs::read_symlink(*path, error);
        if (error) return false;
        *path = path->parent_path() / target; // an absolute target replaces the whole path
    }
    return false;
}

// Renaming over the file would bypass its write protection and could replace a device, so it is opened for writing
// first: SDL opens regular files only.
static bool _cfg_may_write(const fs::path &path, fs::file_type type) {
    if (type == fs::file_type::not_found) return true;
    if (type == fs::file_type::none) return false; // status unavailable
    SDL_IOStream *file = SDL_IOFromFile(path.string().c_str(), "r+");
    return file && SDL_CloseIO(file);
}

// Writes a pair so that it round-trips: without spaces around "=" if inih would treat ';' as a comment or the line is
// too long, and with the value on an indented continuation line if it is still too long.
static bool _cfg_write_text(SDL_IOStream *file, const char *key, const char *value) {
    const size_t length = SDL_strlen(key) + SDL_strlen(value);
    const char *between = " = ";
    if (value[0] == ';' || length + SDL_strlen(between) > CFG_LINE_MAX) between = "=";
    if (length + SDL_strlen(between) > CFG_LINE_MAX) between = " =\n ";
    return SDL_IOprintf(file, "%s%s%s\n", key, between, value) > 0;
}

// Writes a value that was set at run time, replacing what the format cannot represent: line feeds become spaces,
// whitespace before a ';' is dropped. Bindings keep their meaning.
static bool _cfg_write_line(SDL_IOStream *file, const char *key, const char *value) {
    char text[SDL_max(CFG_BINDINGS_SIZE, CFG_SETTING_SIZE)] = {};
    size_t length = 0;
    for (const char *at = value; *at; at++) {
        while (*at == ';' && length > 0 && SDL_isspace(static_cast<unsigned char>(text[length - 1]))) length--;
        text[length++] = *at == '\n' ? ' ' : *at;
    }
    text[length] = '\0';
    return _cfg_write_text(file, key, text);
}

static bool _cfg_write_row(SDL_IOStream *file, const KeyRow &row) {
    const auto line = [&](const char *value) { return _cfg_write_text(file, row.key, value); };
    bool ok = true;
    switch (row.kind) {
    case KEY_BOOL:
        return line(config->*row.flag ? "true" : "false");
    case KEY_INT:
        return SDL_IOprintf(file, "%s = %d\n", row.key, config->*row.number) > 0;
    case KEY_FLOAT:
        return SDL_IOprintf(file, "%s = %.2f\n", row.key, static_cast<double>(config->*row.real)) > 0;
    case KEY_DIRECTORY:
        return line(config->capture_directory);
    case KEY_FORMAT:
        return line(capture_format_to_string(config->capture_format));
    case KEY_BINDINGS:
        for (int i = 0; i < input_action_count(); i++) {
            ok = _cfg_write_line(file, input_action_name(i), config->bindings[i]) && ok;
        }
        return ok;
    case KEY_VOLUMES:
        for (int i = 0; i < AUDIO_BUS_COUNT; i++) {
            const double volume = static_cast<double>(config->volumes[i]);
            ok = SDL_IOprintf(file, "%s = %.2f\n", cfg_audio_volume_keys[i], volume) > 0 && ok;
        }
        return ok;
    case KEY_SETTINGS:
        for (int i = 0; i < engine_game()->setting_count; i++) {
            ok = _cfg_write_line(file, engine_game()->settings[i].name, config->settings[i]) && ok;
        }
        return ok;
    }
    return ok;
}

static bool _cfg_write_rows(SDL_IOStream *file) {
    const char *section = "";
    bool ok = true;
    for (const KeyRow &row : KEY_ROWS) {
        if (row.kind == KEY_SETTINGS && engine_game()->setting_count == 0) continue;
        if (SDL_strcmp(section, row.section) != 0) {
            ok = SDL_IOprintf(file, "%s[%s]\n", *section ? "\n" : "", row.section) > 0 && ok;
            section = row.section;
        }
        ok = _cfg_write_row(file, row) && ok;
    }
    return SDL_IOprintf(file, "\n") > 0 && ok;
}

static SDL_IOStream *_cfg_open(const fs::path &path) { return SDL_IOFromFile(path.string().c_str(), "w"); }

static bool _cfg_write_file(SDL_IOStream *file) { // null: opening failed
    if (!file) return false;
    bool ok = _cfg_write_rows(file);
    ok = SDL_FlushIO(file) && ok;
    return SDL_CloseIO(file) && ok;
}

// Writes a temporary file and renames it, so that a crash or a full disk leaves the old settings intact. If no file can
// be created in the folder, or the file cannot be replaced (a mount point), it is written in place.
static bool _cfg_replace_file() {
    std::error_code error;
    fs::path path = cfg_path().text;
    if (!_cfg_resolve_links(&path)) return false;
    const fs::file_status old = fs::status(path, error);
    if (!_cfg_may_write(path, old.type())) return false;
    fs::path temporary = path;
    temporary += ".new";
    SDL_IOStream *file = _cfg_open(temporary);
    const bool written = _cfg_write_file(file);
    if (written && fs::exists(old)) fs::permissions(temporary, old.permissions(), error);
    if (written && SDL_RenamePath(temporary.string().c_str(), path.string().c_str())) return true;
    // Removed first: on a full disk its space is needed. It may be left over from an earlier run.
    if (fs::is_regular_file(temporary, error)) fs::remove(temporary, error);
    return (written || !file) && _cfg_write_file(_cfg_open(path));
}

bool cfg_save() {
    if (!config) return false;
    const FilePath path = cfg_path(), directory = files_user(CFG_DIRECTORY);
    if (config->load_failed) {
        SDL_Log("[CONFIG] The settings were not read, not writing: %s", path.text);
        return false;
    }
    if (!args_config_save_enabled()) {
        SDL_Log("[CONFIG] --no-config-save given, not writing: %s", path.text);
        return true;
    }
    if (!SDL_CreateDirectory(directory.text)) {
        return engine_error("[CONFIG] Unable to create directory: %s, error: %s", directory.text, SDL_GetError());
    }
    if (!_cfg_replace_file()) return engine_error("[CONFIG] Error writing config file: %s", path.text);
    SDL_Log("[CONFIG] Config file saved: %s", path.text);
    return true;
}

// --- settings ---

CfgWindowProps cfg_get_window_props() {
    return {
        .x = config->x,
        .y = config->y,
        .width = config->width,
        .height = config->height,
        .resizable = config->resizable,
        .fullscreen = config->fullscreen,
        .maximized = config->maximized,
        .borderless = config->borderless,
    };
}

void cfg_set_window_props(
    int x, int y, int width, int height, bool resizable, bool fullscreen, bool maximized, bool borderless) {
    config->x = x;
    config->y = y;
    config->width = width;
    config->height = height;
    config->resizable = resizable;
    config->fullscreen = fullscreen;
    config->maximized = maximized;
    config->borderless = borderless;
}

CfgGraphicsProps cfg_get_graphics_props() {
    return {
        .show_fps = config->show_fps,
        .show_frame_time_graph = config->show_frame_time_graph,
        .vsync_enable = config->vsync_enable,
        .fps_limit = config->fps_limit,
        .ui_scale = config->ui_scale,
    };
}

bool cfg_get_vsync_enabled() { return config->vsync_enable; }
void cfg_set_vsync_enabled(bool enabled) { config->vsync_enable = enabled; }
int cfg_get_fps_limit() { return config->fps_limit; }
void cfg_set_fps_limit(int limit) { config->fps_limit = limit; }
bool cfg_get_show_fps() { return config->show_fps; }
void cfg_set_show_fps(bool show) { config->show_fps = show; }
bool cfg_get_show_frame_time_graph() { return config->show_frame_time_graph; }

void cfg_set_show_frame_time_graph(bool show) {
    if (config) config->show_frame_time_graph = show;
}

int cfg_get_ui_scale() { return config->ui_scale; }
void cfg_set_ui_scale(int scale) { config->ui_scale = scale; }
int cfg_get_fixed_step_hz() { return config->fixed_step_hz; }
const char *cfg_get_capture_directory() { return config->capture_directory; }
CaptureFormat cfg_get_capture_format() { return config->capture_format; }
int cfg_get_capture_jpeg_quality() { return config->jpeg_quality; }
bool cfg_get_capture_include_fps() { return config->include_fps; }
void cfg_set_gamepad_deadzone(float deadzone) { config->deadzone = deadzone; }
float cfg_get_gamepad_deadzone() { return config->deadzone; }
const char *cfg_get_input_bindings(int action) { return config->bindings[action]; }

void cfg_set_input_bindings(int action, const char *text) {
    SDL_strlcpy(config->bindings[action], text, CFG_BINDINGS_SIZE);
}

float cfg_get_audio_volume(int bus) { return config->volumes[bus]; }
void cfg_set_audio_volume(int bus, float volume) { config->volumes[bus] = volume; }

// --- the game's own settings ---

const char *cfg_get_setting(const char *name) {
    const int index = config ? _cfg_setting_index(name) : -1;
    return index < 0 ? "" : config->settings[index];
}

bool cfg_set_setting(const char *name, const char *value) {
    const int index = config ? _cfg_setting_index(name) : -1;
    if (index < 0) return engine_error("[CONFIG] The game has no setting of this name: %s", name);
    SDL_strlcpy(config->settings[index], value, CFG_SETTING_SIZE);
    return true;
}

double cfg_get_setting_number(const char *name) { return SDL_strtod(cfg_get_setting(name), nullptr); }

bool cfg_set_setting_number(const char *name, double value) {
    char text[32] = {};
    SDL_snprintf(text, sizeof text, "%.9g", value);
    return cfg_set_setting(name, text);
}
