// config: every persistent setting, in one record, read from and written back to config/<id>.ini, <id> being the
// game's, among the user's files. Main thread only.
// The record holds values as they were parsed; whoever uses one checks its range. The getters and setters may be
// called only between cfg_setup and cfg_cleanup, and with valid action and bus numbers.
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
    int fps_limit; // 0 or less: none
    int ui_scale;  // 0 or less: from the display
};

// --- lifetime ---
bool cfg_setup(); // a zeroed record; safe twice. False: reported
void cfg_cleanup();
void cfg_set_defaults();

// Defaults, then the file's values over them. A missing file is made, unless saving is switched off; lines that are
// not understood are ignored, numbers that are not count as 0 with a warning. False, reported: anything but a missing
// file keeps it from being opened and read to its end.
bool cfg_load();

// Writes the whole record. The file is replaced whole or not at all, where its folder lets it be replaced; a symbolic
// link to it stays one. True as well when saving is switched off. False: reported, or there is no record, or the last
// cfg_load failed: then nothing is written.
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
const char *cfg_get_capture_directory(); // the stored text itself
CaptureFormat cfg_get_capture_format();
int cfg_get_capture_jpeg_quality();
bool cfg_get_capture_include_fps();
void cfg_set_gamepad_deadzone(float deadzone);
float cfg_get_gamepad_deadzone();                          // not clamped
const char *cfg_get_input_bindings(int action);            // the stored text itself
void cfg_set_input_bindings(int action, const char *text); // cut to 127 characters
float cfg_get_audio_volume(int bus);                       // not clamped
void cfg_set_audio_volume(int bus, float volume);

// --- the game's own settings, by the names in its record, as texts of up to 127 characters or as numbers ---
const char *cfg_get_setting(const char *name);             // "" for no setting's name
double cfg_get_setting_number(const char *name);           // 0 where there is none
bool cfg_set_setting(const char *name, const char *value); // false, reported: the game has no setting of this name
bool cfg_set_setting_number(const char *name, double value);
