// Starting and stopping the engine: what is brought up from the configuration, what is written back, and what is left
// when a step fails.

#include "app/args.h"
#include "diagnostics/profiler_internal.h"
#include "engine/drawing_space.h"
#include "engine/engine.h"
#include "engine/frame.h"
#include "engine/setup.h"
#include "engine/text.h"
#include "input/input.h"
#include "support/allocation_faults.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_init.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

namespace {

constexpr const char *CONFIG_PATH = "config/lumarind-engine.ini";

class EngineSetupTest : public EngineTest {
protected:
    static void expect_saved(std::initializer_list<const char *> lines) {
        const std::string file = read_file(CONFIG_PATH);
        for (const char *line : lines) EXPECT_NE(file.find(line), file.npos) << line;
    }
};

TEST_F(EngineSetupTest, StartsOnceAndSaysWhatItFound) {
    ASSERT_TRUE(start());
    const Engine *first = engine;
    EXPECT_TRUE(engine_start("another")) << "a second start changes nothing";
    EXPECT_EQ(engine, first);
    EXPECT_STREQ(engine_get_title(), "Lumarind Engine v0.0.1");
    engine_set_title("renamed");
    EXPECT_STREQ(engine_get_title(), "renamed");
    engine_set_system_cursor(SDL_SYSTEM_CURSOR_CROSSHAIR);
    EXPECT_EQ(engine_get_system_cursor_type(), SDL_SYSTEM_CURSOR_DEFAULT) << "there are two";
    EXPECT_TRUE(log.has("[ENGINE] Video driver: dummy, renderer: software"));
    EXPECT_TRUE(log.has("[ENGINE] Display scale: 1.00, UI scale: 1"));
    EXPECT_TRUE(log.errors().empty());
    stop();
    EXPECT_EQ(engine, nullptr);
    engine_stop();
    EXPECT_EQ(log.lines.back().text, "[ENGINE] SDL3 shutdown");
    EXPECT_EQ(SDL_WasInit(0), 0u);
}

TEST_F(EngineSetupTest, QuestionsWithoutAnEngineFindNothing) {
    float width = 1, height = 1;
    for (const bool stopped : {false, true}) {
        if (stopped) {
            ASSERT_TRUE(start());
            stop();
        }
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
        EXPECT_TRUE(width == 0 && height == 0);
        engine_text_size(nullptr, &width, &height);
        EXPECT_TRUE(width == 0 && height == 0);
    }
}

TEST_F(EngineSetupTest, WritesGeometryAndPanelFlagBackAndLeavesTheRest) {
    config = "[graphics]\nvsync_enable = false\nui_scale = 2\n[window]\nwidth = 640\nheight = 360\nborderless = true\n"
             "[input]\njump = K, nonsense\n";
    ASSERT_TRUE(start());
    EXPECT_EQ(engine_ui_scale(), 2);
    EXPECT_TRUE(SDL_GetWindowFlags(engine_window()) & SDL_WINDOW_BORDERLESS);
    resize(700, 400);
    key_down(SDLK_F3);
    frame();
    EXPECT_TRUE(log.has("[ENGINE] DEBUG: Toggled: show_frame_time_graph: 1"));
    stop();
    expect_saved(
        {"width = 700", "height = 400", "show_frame_time_graph = true", "borderless = true", "ui_scale = 2",
         "vsync_enable = false", "jump = K, nonsense"});
}

TEST_F(EngineSetupTest, TheCommandLineSizeIsForThisRunOnly) {
    config = "[graphics]\nvsync_enable = false\nui_scale = 2\n[window]\nx = 11\ny = 22\nwidth = 640\nheight = 360\n"
             "maximized = true\n";
    ASSERT_TRUE(start({"--window-size", "801x450", "--ui-scale", "3"}));
    int width = 0, height = 0;
    SDL_GetWindowSize(engine_window(), &width, &height);
    EXPECT_TRUE(width == 801 && height == 450) << width << " x " << height;
    EXPECT_FALSE(SDL_GetWindowFlags(engine_window()) & SDL_WINDOW_MAXIMIZED);
    EXPECT_EQ(engine_ui_scale(), 3);
    float view_width = 0;
    engine_view_size(&view_width, nullptr);
    EXPECT_EQ(view_width, 267);
    stop();
    expect_saved({"x = 11", "y = 22", "width = 640", "height = 360", "maximized = true", "ui_scale = 2"});
}

TEST_F(EngineSetupTest, VsyncWinsOverTheFrameRateLimit) {
    const struct {
        const char *graphics;
        int vsync;
        Uint64 period; // ns
    } cases[] = {
        {"vsync_enable = true\nfps_limit = 120\n", 1, 0},
        {"vsync_enable = false\nfps_limit = 60\n", 0, 16'666'666},
        {"vsync_enable = false\nfps_limit = -1\n", 0, 0}};
    for (const auto &c : cases) {
        config = std::string("[graphics]\n") + c.graphics + "[simulation]\nfixed_step_hz = 0\n";
        ASSERT_TRUE(start());
        int vsync = -1;
        SDL_GetRenderVSync(engine_renderer(), &vsync);
        EXPECT_EQ(vsync, c.vsync) << c.graphics;
        EXPECT_EQ(engine->frame_period, c.period) << c.graphics;
        EXPECT_EQ(engine_fixed_delta(), 1.0 / 60);
    }
}

TEST_F(EngineSetupTest, ARefusedVsyncFailsWithItsOwnLine) {
    ASSERT_TRUE(start());
    EXPECT_FALSE(engine_set_vsync_mode(7));
    EXPECT_TRUE(log.only_error_starts("[GAME] SDL3: Setting V-Sync mode failed, mode: 7, error: "));
}

TEST_F(EngineSetupTest, NoVideoDriverIsReportedAndNothingIsLeft) {
    choose_driver(SDL_HINT_VIDEO_DRIVER, "none-such");
    EXPECT_FALSE(start());
    EXPECT_EQ(engine, nullptr);
    EXPECT_TRUE(log.only_error_starts("[ENGINE] SDL3 initialization failed, error: "));
    EXPECT_EQ(read_file(CONFIG_PATH), config) << "a start that never read the settings does not write them";
    choose_driver(SDL_HINT_VIDEO_DRIVER, "dummy");
    EXPECT_TRUE(start());
}

TEST_F(EngineSetupTest, AFailedStartKeepsThePanelFlag) {
    config = "[graphics]\nvsync_enable = false\nshow_frame_time_graph = true\n";
    choose_driver(SDL_HINT_RENDER_DRIVER, "none-such");
    EXPECT_FALSE(start());
    EXPECT_TRUE(log.has("[ENGINE] SDL3: Renderer creation failed, error: "));
    expect_saved({"show_frame_time_graph = true"});
}

TEST_F(EngineSetupTest, SurvivesEachAllocationFailing) {
    write_file(CONFIG_PATH, config);
    char name[] = "LumarindEngine";
    char *argv[] = {name};
    args_parse(1, argv);
    expect_allocation_faults_survived(&log, [] { return engine_start("title"); }, engine_stop);
}

} // namespace
