// config_internal: the configuration module's state, for its tests.
#pragma once

#include "lumarind/config/config.h"
#include "lumarind/core/files.h"
#include "lumarind/engine/game.h"

#include <SDL3/SDL_stdinc.h>

constexpr const char *CFG_DIRECTORY = "config";
constexpr int CFG_CAPTURE_DIRECTORY_SIZE = 256; // bytes, with the terminating NUL; so are the next two
constexpr int CFG_BINDINGS_SIZE = 128;
constexpr int CFG_SETTING_SIZE = 128;
constexpr size_t CFG_LINE_MAX = 199; // longest line inih reads, in characters

struct Config {
    Sint32 x, y, width, height;
    bool resizable, fullscreen, maximized, borderless;
    bool show_fps, show_frame_time_graph, vsync_enable;
    Sint32 fps_limit, ui_scale;
    Sint32 fixed_step_hz;
    char capture_directory[CFG_CAPTURE_DIRECTORY_SIZE];
    CaptureFormat capture_format;
    Sint32 jpeg_quality;
    bool include_fps;
    float deadzone;
    char bindings[GAME_MAX_ACTIONS][CFG_BINDINGS_SIZE];
    float volumes[AUDIO_BUS_COUNT];
    char settings[GAME_MAX_SETTINGS][CFG_SETTING_SIZE]; // the game's own
    bool load_failed; // the file may hold settings that were not read, so it must not be overwritten
};
namespace lumarind {
extern Config *config; // null before setup
}
using lumarind::config;
namespace lumarind {
extern const char *const cfg_audio_volume_keys[AUDIO_BUS_COUNT];
}
using lumarind::cfg_audio_volume_keys;

FilePath cfg_path(); // of the configuration file

// inih's handler; `user` is the Config. Returns 1 if the key is known, else 0.
int cfg_load_handler(void *user, const char *section, const char *name, const char *value);

// Parse the whole text as a decimal number. Return 0 with a warning if it is not one; integers saturate.
Sint32 cfg_str_to_long(const char *text);
float cfg_str_to_float(const char *text);
int cfg_audio_bus_from_key(const char *name); // returns -1 if no bus has this key
