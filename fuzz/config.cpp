// The configuration file: loaded values survive a round trip through saving and loading.
#include "config/config_internal.h"
#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "lumarind/input/input_actions.h"
#include "support/temporary_directory.h"

#include <cmath>
#include <string>

static Config load() {
    fuzz_check(cfg_setup() && cfg_load(), "any file loads");
    const Config loaded = *config;
    cfg_cleanup();
    return loaded;
}

// The file stores two decimals; a number without decimals round-trips exactly.
static bool same_number(float a, float b) {
    return a == b || (std::isnan(a) && std::isnan(b)) || std::fabs(a - b) <= 0.0051f;
}

// A text truncated to 127 characters may end with spaces, which the file does not preserve.
static bool same_bindings(const char *a, const char *b) {
    std::string text = a;
    while (!text.empty() && SDL_isspace(static_cast<unsigned char>(text.back()))) text.pop_back();
    return text == b;
}

static void check_same(const Config &a, const Config &b) {
    fuzz_check(
        a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height, "the window survives a round trip");
    fuzz_check(a.resizable == b.resizable && a.fullscreen == b.fullscreen, "the window's flags survive a round trip");
    fuzz_check(a.maximized == b.maximized && a.borderless == b.borderless, "the window's flags survive a round trip");
    fuzz_check(a.show_fps == b.show_fps && a.vsync_enable == b.vsync_enable, "the graphics flags survive a round trip");
    fuzz_check(a.show_frame_time_graph == b.show_frame_time_graph, "the panel's flag survives a round trip");
    fuzz_check(a.fps_limit == b.fps_limit && a.ui_scale == b.ui_scale, "the graphics numbers survive a round trip");
    fuzz_check(a.fixed_step_hz == b.fixed_step_hz, "the fixed step rate survives a round trip");
    fuzz_check(std::string(a.capture_directory) == b.capture_directory, "the capture directory survives a round trip");
    fuzz_check(
        a.capture_format == b.capture_format && a.include_fps == b.include_fps,
        "the capture settings survive a round trip");
    fuzz_check(a.jpeg_quality == b.jpeg_quality, "the JPEG quality survives a round trip");
    fuzz_check(same_number(a.deadzone, b.deadzone), "the deadzone survives a round trip");
    for (int i = 0; i < INPUT_ACTION_COUNT; i++) {
        fuzz_check(same_bindings(a.bindings[i], b.bindings[i]), "the bindings survive a round trip");
    }
    for (int i = 0; i < AUDIO_BUS_COUNT; i++) {
        fuzz_check(same_number(a.volumes[i], b.volumes[i]), "the volumes survive a round trip");
    }
}

int fuzz_config(const uint8_t *data, size_t size) {
    fuzz_start();
    write_file(cfg_path().text, std::string(reinterpret_cast<const char *>(data), size));
    fuzz_check(cfg_setup() && cfg_load(), "any file loads");
    const Config first = *config;
    fuzz_check(cfg_save(), "a loaded configuration can be saved");
    fuzz_note_text(read_file(cfg_path().text).c_str());
    cfg_cleanup();
    check_same(first, load());
    return 0;
}
