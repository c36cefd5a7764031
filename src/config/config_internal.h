// What the configuration's tests reach into.
#pragma once

#include "config/config.h"
#include "input/input_actions.h"

#include <SDL3/SDL_stdinc.h>

inline constexpr const char *CFG_DIRECTORY = "config";
inline constexpr const char *CFG_PATH = "config/lumarind-engine.ini";
inline constexpr int CFG_CAPTURE_DIRECTORY_SIZE = 256; // with the terminating NUL, as below
inline constexpr int CFG_BINDINGS_SIZE = 128;
inline constexpr size_t CFG_LINE_MAX = 199; // characters inih reads of a line

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
    char bindings[INPUT_ACTION_COUNT][CFG_BINDINGS_SIZE];
    float volumes[AUDIO_BUS_COUNT];
    bool load_failed; // the file holds settings that are not in here: it is not written
};
extern Config *config; // null: not set up
extern const char *const cfg_audio_volume_keys[AUDIO_BUS_COUNT];

// inih's handler; `user` is the record. 1: the pair was recognised.
int cfg_load_handler(void *user, const char *section, const char *name, const char *value);

// The whole text as a decimal number. 0 with a warning when there is none or something follows it; integers saturate.
Sint32 cfg_str_to_long(const char *text);
float cfg_str_to_float(const char *text);
int cfg_audio_bus_from_key(const char *name); // -1: no bus's key
