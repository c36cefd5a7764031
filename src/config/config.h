// config: the persistent configuration, stored in config/<id>.ini in the user's folder, with the game's id. Main thread
// only.
// Values are stored as parsed; the module that uses one checks its range. Getters and setters may be called only
// between cfg_setup and cfg_cleanup, with valid action and bus numbers.
#pragma once

#include "lumarind/diagnostics/capture_format.h"

enum AudioBus {
    AUDIO_BUS_MASTER,
    AUDIO_BUS_MUSIC,
    AUDIO_BUS_SFX,
    AUDIO_BUS_COUNT,
};

struct CfgWindowProps {
    int x, y, width, height; // window units
    bool resizable, fullscreen, maximized, borderless;
};

struct CfgGraphicsProps {
    bool show_fps, show_frame_time_graph, vsync_enable;
    int fps_limit; // 0 or less: no limit
    int ui_scale;  // 0 or less: from the display
};

// --- lifetime ---
bool cfg_setup(); // zero-initialises the record; safe to call twice; reports errors
void cfg_cleanup();
void cfg_set_defaults();

// Sets the defaults, then overrides them from the file. A missing file is created unless saving is disabled. Unknown
// keys are ignored; malformed numbers are read as 0 with a warning. Reports an error if an existing file cannot be
// opened and read completely.
bool cfg_load();

// Writes the whole record, replacing the file atomically where its folder permits; a symbolic link is preserved.
// Returns true also if saving is disabled. Reports errors, also without a record; after a failed cfg_load nothing is
// written.
bool cfg_save();

// --- settings ---
CfgWindowProps cfg_get_window_props();
void cfg_set_window_props(
    int x, int y, int width, int height, bool resizable, bool fullscreen, bool maximized, bool borderless);
CfgGraphicsProps cfg_get_graphics_props();
bool cfg_get_vsync_enabled();
void cfg_set_vsync_enabled(bool enabled);
int cfg_get_fps_limit();
void cfg_set_fps_limit(int limit);
bool cfg_get_show_fps();
void cfg_set_show_fps(bool show);
bool cfg_get_show_frame_time_graph();
void cfg_set_show_frame_time_graph(bool show); // does nothing without a record
int cfg_get_ui_scale();
void cfg_set_ui_scale(int scale);
int cfg_get_fixed_step_hz();
const char *cfg_get_capture_directory(); // points into the record
CaptureFormat cfg_get_capture_format();
int cfg_get_capture_jpeg_quality();
bool cfg_get_capture_include_fps();
void cfg_set_gamepad_deadzone(float deadzone);
float cfg_get_gamepad_deadzone();                          // not clamped
const char *cfg_get_input_bindings(int action);            // points into the record
void cfg_set_input_bindings(int action, const char *text); // truncated to 127 characters
float cfg_get_audio_volume(int bus);                       // not clamped
void cfg_set_audio_volume(int bus, float volume);

// --- the game's own settings (Game::settings): strings of up to 127 characters, or numbers ---
const char *cfg_get_setting(const char *name);             // "" if the name is unknown
double cfg_get_setting_number(const char *name);           // 0 if the name is unknown or the value not a number
bool cfg_set_setting(const char *name, const char *value); // reports unknown names as errors
bool cfg_set_setting_number(const char *name, double value);
