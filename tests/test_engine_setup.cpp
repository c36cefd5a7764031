// Starting and stopping the engine: applying the configuration, writing it back, and cleanup after a failed step.

#include "diagnostics/profiler.h"
#include "diagnostics/profiler_internal.h"
#include "engine/frame.h"
#include "engine/setup.h"
#include "input/gamepad.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/input/input.h"
#include "support/engine_fixture.h"
#include "support/sdl_calls.h"

#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_init.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>
#include <SDL3_ttf/SDL_ttf.h>

namespace {

constexpr const char *CONFIG_PATH = "config/lumarind-engine.ini";

class EngineSetupTest : public EngineTest {
protected:
    static void expect_saved(std::initializer_list<const char *> lines) {
        const std::string file = read_file(CONFIG_PATH);
        for (const char *line : lines) EXPECT_NE(file.find(line), file.npos) << line;
    }
};

TEST_F(EngineSetupTest, StartAndStopAreIdempotentWithoutLeaks) {
    ASSERT_TRUE(start());
    const Engine *first = engine;
    EXPECT_TRUE(engine_start("another") && input_setup() && gamepad_setup() && profiler_setup()) << "idempotent";
    EXPECT_EQ(engine, first);
    EXPECT_STREQ(engine_get_title(), "Lumarind Engine v0.0.1");
    engine_set_title("renamed");
    EXPECT_STREQ(engine_get_title(), "renamed");
    engine_set_system_cursor(SDL_SYSTEM_CURSOR_CROSSHAIR);
    EXPECT_EQ(engine_get_system_cursor_type(), SDL_SYSTEM_CURSOR_DEFAULT) << "there are only two cursors";
    EXPECT_TRUE(log.has("[ENGINE] Video driver: dummy, renderer: software"));
    EXPECT_TRUE(log.has("[ENGINE] Display scale: 1.00, UI scale: 1"));
    EXPECT_TRUE(log.errors().empty());
    stop();
    EXPECT_EQ(engine, nullptr);
    engine_stop();
    EXPECT_EQ(log.lines.back().text, "[ENGINE] SDL3 shutdown");
    EXPECT_EQ(SDL_WasInit(0) + static_cast<Uint32>(TTF_WasInit()), 0u);

    float width = 1, height = 1, x = 1, y = 1;
    EXPECT_TRUE(engine_get_state() == GAME_STATE_NONE && engine_get_prev_state() == GAME_STATE_NONE);
    EXPECT_TRUE(engine_frame_number() == 0 && engine_fps_delta() == 0 && engine_event().type == 0);
    EXPECT_TRUE(engine_fixed_delta() == 0 && engine_fixed_alpha() == 0 && !engine_fixed_step_consume());
    EXPECT_TRUE(!engine_window() && !engine_renderer() && !engine_text_engine());
    EXPECT_TRUE(!engine_get_font() && !engine_get_font_by_index(SHARED_FONT_UI));
    EXPECT_TRUE(!engine_in_logical_space() && !engine_get_show_frame_time_graph() && engine_ui_scale() == 0);
    EXPECT_EQ(engine_get_system_cursor_type(), SDL_SYSTEM_CURSOR_DEFAULT);
    EXPECT_STREQ(engine_get_title(), "");
    EXPECT_STREQ(input_bindings_text(INPUT_ACTION_JUMP), "");
    EXPECT_EQ(profiler_resolve_budget_ms(), 0);
    engine_view_size(&width, &height);
    engine_text_size(nullptr, &width, &height);
    engine_mouse_position(&x, &y);
    EXPECT_TRUE(width == 0 && height == 0 && x == 0 && y == 0);
}

// --- the window ---

TEST_F(EngineSetupTest, WindowAndFrameRateFollowConfiguration) {
    const std::string all = "resizable=1 borderless=0 density=1 create; ", cursors = "cursor 0; cursor 11; ";
    const struct {
        const char *graphics, *window;
        const char *size; // --window-size
        std::string calls;
        Uint64 period = 0; // ns
    } cases[] = {
        {"", "", nullptr, "x=200 y=400 width=800 height=450 " + all + "place 200 400; " + cursors},
        {"", "x = 11\ny = 22\nwidth = 640\nheight = 360\n", nullptr,
         "x=11 y=22 width=640 height=360 " + all + "place 11 22; " + cursors},
        {"fps_limit = 1\n", "x = 11\ny = 22\nresizable = false\nborderless = true\n", "300x200",
         "x=11 y=22 width=300 height=200 resizable=0 borderless=1 density=1 create; place 11 22; " + cursors,
         1'000'000'000},
        {"fps_limit = -1\n", "x = 1\ny = 2\nmaximized = true\nfullscreen = true\n", nullptr,
         "x=1 y=2 " + all + "maximize; " + cursors},
        {"vsync_enable = true\nfps_limit = 120\n", "x = 1\ny = 2\nfullscreen = true\n", nullptr,
         "x=1 y=2 " + all + "fullscreen 1; vsync 1; " + cursors}, // limited by the display
        {"", "x = 1\ny = 2\nmaximized = true\n", "300x200", "x=1 y=2 width=300 height=200 " + all + cursors},
    };
    for (const auto &c : cases) {
        config = std::string("[simulation]\nfixed_step_hz = 0\n[graphics]\nvsync_enable = false\n") + c.graphics +
                 "[window]\n" + c.window;
        sdl_calls.clear();
        ASSERT_TRUE(c.size ? start({"--window-size", c.size}) : start());
        EXPECT_EQ(sdl_calls, c.calls) << c.window;
        EXPECT_EQ(engine->frame_period, c.period) << c.graphics;
        EXPECT_EQ(engine_fixed_delta(), 1.0 / 60);
    }
    ASSERT_TRUE(start({"--window-size", "801x450", "--ui-scale", "3"}));
    float view_width = 0;
    engine_view_size(&view_width, nullptr);
    EXPECT_EQ(view_width, 267);
    stop();
    expect_saved({"x = 1", "y = 2", "width = 800", "height = 450", "maximized = true", "ui_scale = 0"});
}

TEST_F(EngineSetupTest, StopSavesOnlyGeometryAndPanelFlag) {
    config = "[graphics]\nvsync_enable = false\nui_scale = 2\n[window]\nwidth = 640\nheight = 360\nborderless = true\n"
             "[input]\njump = K, nonsense\n";
    ASSERT_TRUE(start());
    EXPECT_EQ(engine_ui_scale(), 2);
    SDL_SetWindowPosition(engine->window, 77, 88);
    play("size:700x400 F3 1");
    EXPECT_TRUE(log.has("[ENGINE] DEBUG: Toggled: show_frame_time_graph: 1"));
    stop();
    expect_saved(
        {"x = 77", "y = 88", "width = 700", "height = 400", "show_frame_time_graph = true", "borderless = true",
         "ui_scale = 2", "vsync_enable = false", "jump = K, nonsense"});
}

// --- failures ---

TEST_F(EngineSetupTest, FailedStepIsReportedOnceAndCleanedUp) {
    config = "[graphics]\nshow_frame_time_graph = true\n";
    const struct {
        const char *hint;
        std::string error;
    } cases[] = {
        {SDL_HINT_VIDEO_DRIVER, "[ENGINE] SDL3 initialization failed, error: "},
        {SDL_HINT_RENDER_DRIVER, "[ENGINE] SDL3: Renderer creation failed, error: "},
    };
    for (const auto &c : cases) {
        choose_driver(c.hint, "none-such");
        log.lines.clear();
        EXPECT_FALSE(start()) << c.error;
        EXPECT_EQ(engine, nullptr);
        EXPECT_EQ(SDL_WasInit(0), 0u);
        EXPECT_TRUE(log.only_error_starts(c.error));
        expect_saved({"show_frame_time_graph = true"});
        choose_driver(c.hint, std::string(c.hint) == SDL_HINT_RENDER_DRIVER ? "software" : "dummy");
    }
    write_file("file", "");
    set_environment("XDG_DATA_HOME", "file");
    log.lines.clear();
    EXPECT_FALSE(start());
    EXPECT_TRUE(log.only_error_starts("[STORAGE] SDL3: User storage setup failed, error: "));
    set_environment("XDG_DATA_HOME", nullptr);
    EXPECT_TRUE(start());
}

} // namespace
