// The profiler: what the main loop records, and the panel drawn from a history made up here, read back as pixels.

#include "config/config.h"
#include "diagnostics/profiler.h"
#include "diagnostics/profiler_internal.h"
#include "engine/drawing_space.h"
#include "engine/engine.h"
#include "support/allocation_faults.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_timer.h>
#include <SDL3/SDL_video.h>

#include <cmath>

namespace {

constexpr SDL_Color BLACK = {0, 0, 0, 255};
constexpr SDL_Color WHITE = {255, 255, 255, 255}; // in nothing the panel draws

struct Slice {
    FrameProfilePhase phase;
    double ms;
};

class PanelTest : public EngineTest {
protected:
    bool start_view(int width, int height, const std::string &graphics = "", int ui_scale = 1) {
        config = "[graphics]\nvsync_enable = false\nshow_fps = false\nshow_frame_time_graph = true\n" + graphics +
                 "ui_scale = " + std::to_string(ui_scale) + "\n[window]\nwidth = " + std::to_string(width * ui_scale) +
                 "\nheight = " + std::to_string(height * ui_scale) + "\n";
        return start();
    }

    void feed(const std::vector<Slice> &slices, int steps = 1, int times = 1) {
        FrameProfile *live = &profiler->live;
        if (!live->started) frame_profile_boundary(live, clock);
        live->current = {}; // drawing has marked its phase by the real clock
        live->phase_start = clock;
        for (int i = 0; i < times; i++) {
            for (const Slice &slice : slices) {
                frame_profile_mark(live, slice.phase, clock);
                clock += static_cast<uint64_t>(std::llround(slice.ms * 1e6));
            }
            for (int step = 0; step < steps; step++) frame_profile_count_step(live);
            frame_profile_boundary(live, clock);
        }
    }

    static Picture read_window() {
        Picture read(SDL_RenderReadPixels(engine_renderer(), nullptr));
        EXPECT_NE(read, nullptr);
        return read;
    }

    static Picture draw() {
        engine_use_ui_space();
        SDL_SetRenderDrawColor(engine_renderer(), 0, 0, 0, 255);
        SDL_RenderClear(engine_renderer());
        profiler_tick();
        return read_window();
    }

    static int count_in(const Picture &picture, SDL_Rect area, SDL_Color color) {
        int count = 0;
        for (int y = area.y; y < area.y + area.h; y++) {
            for (int x = area.x; x < area.x + area.w; x++) count += same(pixel_at(picture, x, y), color) ? 1 : 0;
        }
        return count;
    }

    static bool same(SDL_Color a, SDL_Color b) { return a.r == b.r && a.g == b.g && a.b == b.b; }

    // Whether the characters from (x, y) on, in the colour, are exactly this text: drawn over in another colour, it
    // leaves none of that colour in the area.
    static bool shows_text(SDL_Rect area, SDL_Color color, const std::string &text, int x, int y) {
        const int before = count_in(draw(), area, color);
        SDL_SetRenderDrawColor(engine_renderer(), WHITE.r, WHITE.g, WHITE.b, WHITE.a);
        SDL_RenderDebugText(engine_renderer(), static_cast<float>(x), static_cast<float>(y), text.c_str());
        const Picture after = read_window();
        return before > 0 && count_in(after, area, color) == 0 && count_in(after, area, WHITE) == before;
    }

    uint64_t clock = SDL_NS_PER_SECOND;
};

// --- recording ---

TEST_F(PanelTest, TheLoopMarksItsPhases) {
    ASSERT_TRUE(start());
    frame();
    frame(3.5 / 60);
    key_down(SDLK_F3);
    frame();
    engine_set_state(GAME_STATE_TEXT_DEMO);
    frame();
    frame();
    const FrameProfile *live = &profiler->live;
    ASSERT_EQ(live->count, 4);
    EXPECT_EQ(frame_profile_at(live, 2)->steps, 3);
    for (int age = 0; age < 4; age++) {
        const uint32_t *ns = frame_profile_at(live, age)->phase_ns;
        for (const int phase : {PHASE_EVT, PHASE_FIX, PHASE_TICK, PHASE_OVL, PHASE_PRES, PHASE_SLEEP}) {
            EXPECT_GT(ns[phase], 0u) << PHASE_NAMES[phase];
        }
        EXPECT_EQ(ns[PHASE_PANEL] > 0, age < 2) << "only while it is shown, age " << age;
        EXPECT_EQ(ns[PHASE_SWAP] > 0, age == 0) << "only in the frame that switches, age " << age;
    }
    key_down(SDLK_F4);
    frame();
    EXPECT_TRUE(profiler->frozen);
    frame();
    EXPECT_EQ(live->count, profiler->frozen_copy.count + 1) << "recording goes on";
}

// --- tiers ---

TEST_F(PanelTest, TiersDependOnTheView) {
    struct Case {
        int width, height;
        PanelTier tier;
    };
    for (const Case &c :
         {Case{640, 360, PANEL_COMPACT},
          {640, 400, PANEL_FULL},
          {199, 600, PANEL_TOO_SMALL},
          {200, 600, PANEL_FULL},
          {640, 207, PANEL_TOO_SMALL},
          {640, 208, PANEL_COMPACT},
          {640, 389, PANEL_COMPACT},
          {640, 390, PANEL_FULL},
          {0, 0, PANEL_TOO_SMALL}}) {
        EXPECT_EQ(profiler_tier_for(c.width, c.height), c.tier) << c.width << " x " << c.height;
    }
}

TEST_F(PanelTest, ThePanelIsAsHighAsItsTier) {
    struct Case {
        int width, height, panel, chart, strips;
    };
    for (const Case &c : {Case{640, 360, 83, 60, 0}, {640, 400, 156, 100, 1}, {1280, 720, 156, 100, 1}}) {
        SCOPED_TRACE(std::to_string(c.width) + " x " + std::to_string(c.height));
        ASSERT_TRUE(start_view(c.width, c.height));
        feed({{PHASE_TICK, 1}}, 1, 512);
        const Picture shown = draw();
        const int top = c.height - c.panel;
        EXPECT_EQ(count_in(shown, {0, 0, c.width, top}, BLACK), c.width * top);
        EXPECT_EQ(count_in(shown, {0, top, c.width, c.panel}, BLACK), 0);
        const PictureBounds grid = bounds_of(shown, GRIDLINE_COLOR);
        EXPECT_EQ(grid.left, 62);
        EXPECT_EQ(grid.right, c.width - 7);
        EXPECT_EQ(grid.top, top + 17);
        EXPECT_EQ(grid.bottom, top + 17 + c.chart);
        const PictureBounds bars = bounds_of(shown, PHASE_COLORS[PHASE_TICK]);
        EXPECT_EQ(bars.top, top + 17 + c.chart / 2) << "1 ms at a scale of 2";
        EXPECT_EQ(bars.bottom, top + 17 + c.chart - 1 + c.strips * 32) << "the legend's swatch, if there is one";
        const int win = std::min((c.width - 68) / 2, 512);
        const std::string text =
            "avg 1.0  min 1.0  max 1.0  1% low 1.0 ms   win " + std::to_string(win) + "f   uncapped";
        EXPECT_TRUE(shows_text({0, top, c.width, 16}, TEXT_COLOR, text, 6, top + 6)) << text;
        stop();
    }
}

TEST_F(PanelTest, AViewTooSmallShowsNothingAndSaysSoOncePerEpisode) {
    const char *told[] = {
        "[PROFILER] Window is 199x600, too small for the panel, which needs at least 200x208.",
        "[PROFILER] Window is 640x207, too small for the panel, which needs at least 200x208."};
    ASSERT_TRUE(start_view(199, 600));
    for (int i = 0; i < 3; i++) EXPECT_EQ(count_pixels(draw(), BLACK), 199 * 600);
    EXPECT_EQ(log.count(told[0]), 1);
    SDL_SetWindowSize(engine_window(), 640, 207);
    SDL_SyncWindow(engine_window());
    EXPECT_EQ(count_pixels(draw(), BLACK), 640 * 207);
    EXPECT_EQ(log.count("too small"), 1) << "the same episode";
    SDL_SetWindowSize(engine_window(), 640, 360);
    SDL_SyncWindow(engine_window());
    EXPECT_LT(count_pixels(draw(), BLACK), 640 * 360);
    SDL_SetWindowSize(engine_window(), 640, 207);
    SDL_SyncWindow(engine_window());
    draw();
    EXPECT_EQ(log.count(told[1]), 1);
    EXPECT_EQ(log.count("too small"), 2);
}

// --- the full panel ---

bool is_dark(const Picture &picture, SDL_Rect area) {
    for (int y = area.y; y < area.y + area.h; y++) {
        for (int x = area.x; x < area.x + area.w; x++) {
            if (pixel_at(picture, x, y).r >= 50) return false;
        }
    }
    return true;
}

class HistoryTest : public PanelTest { // 640 x 400: the chart goes from 62 to 634 and from 261 to 361
protected:
    static constexpr int TOP = 244, CHART_TOP = 261, CHART_BOTTOM = 361, STEPS = 364, JITTER = 375, LEGEND = 386;
    static constexpr SDL_Rect STATISTICS = {0, TOP, 640, 16};

    void feed_history() { // the newest last
        feed({{PHASE_TICK, 2}}, 70, 300);
        feed({{PHASE_TICK, 3}}, 1);
        feed({{PHASE_TICK, 4}}, 2);
        feed({{PHASE_TICK, 4}}, 1);
        feed({{PHASE_EVT, 2}, {PHASE_TICK, 4}, {PHASE_PRES, 2}}, 0);
    }
    static int column(int age) { return 632 - 2 * age; } // its left pixel
};

TEST_F(HistoryTest, ColumnsAndStripsShowTheHistory) {
    ASSERT_TRUE(start_view(640, 400));
    feed_history();
    const Picture shown = draw();
    EXPECT_EQ(profiler->scale_ms, 8.0);
    struct Bar {
        int age;
        FrameProfilePhase phase;
        int top, bottom; // rows, the last one included
    };
    for (const Bar &bar :
         {Bar{0, PHASE_EVT, 336, 360},
          {0, PHASE_TICK, 286, 335},
          {0, PHASE_PRES, 262, 285},
          {1, PHASE_TICK, 311, 360},
          {4, PHASE_TICK, 336, 360},
          {285, PHASE_TICK, 336, 360}}) {
        const SDL_Rect area = {column(bar.age), bar.top, 2, bar.bottom - bar.top + 1};
        EXPECT_EQ(count_in(shown, area, PHASE_COLORS[bar.phase]), area.w * area.h) << "age " << bar.age;
        const SDL_Rect all = {area.x, CHART_TOP, 2, CHART_BOTTOM - CHART_TOP};
        EXPECT_EQ(count_in(shown, all, PHASE_COLORS[bar.phase]), area.w * area.h) << "age " << bar.age;
    }
    struct Strip {
        int age, steps, jitter;
    };
    for (const Strip &strip : {Strip{0, 0, 2}, {1, 1, 0}, {2, 2, 1}, {3, 1, 1}, {4, 3, 0}, {285, 3, 0}}) {
        EXPECT_EQ(count_in(shown, {column(strip.age), STEPS, 2, 8}, STEP_COLORS[strip.steps]), 16) << strip.age;
        EXPECT_EQ(count_in(shown, {column(strip.age), JITTER, 2, 8}, JITTER_COLORS[strip.jitter]), 16) << strip.age;
    }
    const std::string text = "avg 2.0  min 2.0  max 8.0  1% low 6.0 ms   win 286f   uncapped";
    EXPECT_TRUE(shows_text(STATISTICS, TEXT_COLOR, text, 6, TOP + 6));
    for (const auto &[label, y] :
         {std::pair{"8.0", CHART_TOP}, {"0", CHART_BOTTOM - 8}, {"steps", STEPS}, {"jitter", JITTER}}) {
        const int left = 54 - 8 * static_cast<int>(SDL_strlen(label));
        EXPECT_TRUE(shows_text({0, y, 62, 8}, TEXT_COLOR, label, left, y)) << label;
    }
}

TEST_F(HistoryTest, TheBudgetIsADashedLineWithALabel) {
    ASSERT_TRUE(start_view(640, 400, "fps_limit = 250\n"));
    feed({{PHASE_TICK, 2}}, 1, 300);
    feed({{PHASE_TICK, 7.9}}, 1, 1);
    const Picture shown = draw(); // 4 of 8 ms: half-way
    for (int x = 62; x < 632; x++) {
        const bool dash = (x - 62) % 8 < 4;
        EXPECT_EQ(pixel_at(shown, x, 311).r > 150, dash) << x;
        EXPECT_LT(pixel_at(shown, x, 310).r, 50) << x;
        EXPECT_LT(pixel_at(shown, x, 312).r, 50) << x;
    }
    const SDL_Rect label = {0, 307, 62, 8};
    const SDL_Color color = pixel_at(shown, 62, 311);
    EXPECT_TRUE(shows_text(label, color, "4.0", 54 - 24, 307));

    cfg_set_fps_limit(60);
    profiler->budget_ms = profiler_resolve_budget_ms();
    feed({{PHASE_TICK, 16}});
    EXPECT_GT(pixel_at(draw(), 62, 261).r, 150) << "16.67 of 16.7 ms: right at the top";
    EXPECT_TRUE(is_dark(draw(), {0, 258, 62, 3})) << "and without a label";
    cfg_set_fps_limit(59);
    profiler->budget_ms = profiler_resolve_budget_ms();
    EXPECT_TRUE(is_dark(draw(), {0, 258, 640, 3})) << "above the scale there is no line";
    stop();

    ASSERT_TRUE(start_view(638, 400, "fps_limit = 1000\n"));
    const Picture cut = draw();
    EXPECT_GT(pixel_at(cut, 631, 311).r, 150);
    EXPECT_LT(pixel_at(cut, 632, 311).r, 50) << "the last dash ends with the chart";
}

TEST_F(HistoryTest, ASlowFrameGetsAPipAndTheWholeScale) {
    ASSERT_TRUE(start_view(640, 400));
    feed({{PHASE_TICK, 250}}, 1, 2);
    feed({{PHASE_TICK, 300}});
    const Picture shown = draw();
    EXPECT_EQ(profiler->scale_ms, 200.0);
    EXPECT_EQ(count_in(shown, {632, 262, 2, 2}, PIP_COLOR), 4) << "under the grid line";
    EXPECT_EQ(count_in(shown, {632, 264, 2, 97}, PHASE_COLORS[PHASE_TICK]), 2 * 97);
    EXPECT_EQ(count_in(shown, {62, CHART_TOP, 572, 100}, PIP_COLOR), 4) << "250 ms is not slow yet";
    feed({{PHASE_EVT, 150}, {PHASE_TICK, 150}, {PHASE_PRES, 150}});
    const Picture over = draw();
    EXPECT_EQ(count_in(over, {632, 286, 2, 75}, PHASE_COLORS[PHASE_EVT]), 2 * 75);
    EXPECT_EQ(count_in(over, {632, 264, 2, 22}, PHASE_COLORS[PHASE_TICK]), 2 * 22);
    EXPECT_TRUE(is_dark(over, {632, 258, 2, 3})) << "nothing rises above the chart";
    feed({{PHASE_TICK, 99}}, 1, 285);
    draw();
    EXPECT_EQ(profiler->scale_ms, 200.0) << "still visible";
    feed({{PHASE_TICK, 99}});
    draw();
    EXPECT_EQ(profiler->scale_ms, 100.0);
}

TEST_F(HistoryTest, FreezingKeepsThePictureWhileRecordingGoesOn) {
    ASSERT_TRUE(start_view(640, 400));
    feed_history();
    const Picture live = draw();
    profiler_toggle_freeze();
    EXPECT_TRUE(log.has("[PROFILER] DEBUG: Toggled: frozen: 1"));
    frame_profile_init(&profiler->live);
    feed({{PHASE_PRES, 30}}, 2, 300);
    profiler->frozen = false;
    draw();
    EXPECT_EQ(profiler->scale_ms, 33.3);
    profiler->frozen = true;
    profiler->scale_ms = 0;
    const Picture frozen = draw();
    const int text_left = 634 - 48;
    for (int y = 0; y < 400; y++) {
        for (int x = 0; x < 640; x++) {
            const bool in_text = x >= text_left && x < 634 && y >= 250 && y < 258;
            ASSERT_TRUE(in_text || same(pixel_at(live, x, y), pixel_at(frozen, x, y))) << x << ", " << y;
        }
    }
    EXPECT_TRUE(shows_text(STATISTICS, FROZEN_COLOR, "FROZEN", text_left, 250));
    profiler_toggle_freeze();
    const std::string text = "avg 30.0  min 30.0  max 30.0  1% low 30.0 ms   win 286f   uncapped";
    EXPECT_TRUE(shows_text(STATISTICS, TEXT_COLOR, text, 6, 250)) << "back to what was recorded meanwhile";
    EXPECT_EQ(count_in(draw(), STATISTICS, FROZEN_COLOR), 0);
}

TEST_F(HistoryTest, TwiceTheUiScaleIsTheSamePictureTwiceAsLarge) {
    Picture pictures[2];
    for (int i = 0; i < 2; i++) {
        ASSERT_TRUE(start_view(640, 400, "fps_limit = 250\n", i + 1));
        feed({{PHASE_TICK, 2}}, 70, 300); // heights are whole units: a half would show only at the larger scale
        feed({{PHASE_EVT, 2}, {PHASE_TICK, 4}, {PHASE_PRES, 2}}, 0, 2);
        pictures[i] = draw();
        stop();
    }
    for (int y = 0; y < 800; y++) {
        for (int x = 0; x < 1280; x++) {
            ASSERT_TRUE(same(pixel_at(pictures[0], x / 2, y / 2), pixel_at(pictures[1], x, y))) << x << ", " << y;
        }
    }
}

TEST_F(PanelTest, TheLegendDropsWhatDoesNotFit) {
    struct Case {
        int width, items;
    };
    for (const Case &c : {Case{436, 8}, {435, 7}, {212, 4}, {211, 3}, {200, 3}}) {
        ASSERT_TRUE(start_view(c.width, 400));
        const Picture shown = draw();
        for (int phase = 0; phase < PHASE_COUNT; phase++) {
            const int expected = phase < c.items ? 36 : 0;
            EXPECT_EQ(count_in(shown, {0, 386, c.width, 14}, PHASE_COLORS[phase]), expected) << c.width << " " << phase;
        }
        stop();
    }
}

// --- budget and mode ---

TEST_F(HistoryTest, BudgetAndModeComeFromTheSettings) {
    struct Case {
        const char *graphics;
        double budget_ms;
        const char *mode;
    };
    for (const Case &c :
         {Case{"fps_limit = 60\n", 1000.0 / 60, "limit 60"},
          {"fps_limit = 0\n", 0, "uncapped"},
          {"fps_limit = 30\nvsync_enable = true\n", 1000.0 / 30, "vsync"}}) {
        ASSERT_TRUE(start_view(640, 400, c.graphics));
        EXPECT_EQ(profiler->budget_ms, c.budget_ms) << c.graphics;
        const std::string text = std::string("avg 0.0  min 0.0  max 0.0  1% low 0.0 ms   win 0f   ") + c.mode;
        EXPECT_TRUE(shows_text(STATISTICS, TEXT_COLOR, text, 6, TOP + 6)) << text;
        stop();
    }
}

TEST_F(PanelTest, TheBudgetIsFoundAgainWhenTheViewChanges) {
    ASSERT_TRUE(start_view(640, 400));
    draw();
    cfg_set_fps_limit(50);
    draw();
    EXPECT_EQ(profiler->budget_ms, 0);
    SDL_SetWindowSize(engine_window(), 641, 400);
    SDL_SyncWindow(engine_window());
    draw();
    EXPECT_EQ(profiler->budget_ms, 20);
}

// --- what it leaves alone ---

TEST_F(PanelTest, TheBlendModeIsRestored) {
    ASSERT_TRUE(start_view(640, 400));
    SDL_SetRenderDrawBlendMode(engine_renderer(), SDL_BLENDMODE_ADD);
    profiler_tick();
    SDL_BlendMode blend = SDL_BLENDMODE_NONE;
    SDL_GetRenderDrawBlendMode(engine_renderer(), &blend);
    EXPECT_EQ(blend, SDL_BLENDMODE_ADD);
}

TEST_F(PanelTest, ShownFramesAllocateNothing) {
    allocation_faults_install();
    ASSERT_TRUE(start_view(1100, 400, "fps_limit = 1000000\n")); // room for all 512 columns
    frame();
    allocation_faults_arm(1, true); // whatever the program allocates now would fail, and be counted
    frames(600);
    EXPECT_EQ(allocation_faults_disarm(), 0);
    EXPECT_EQ(profiler->live.count, 512);
    EXPECT_TRUE(log.errors().empty());
}

TEST_F(PanelTest, SetupSurvivesEachAllocationFailing) {
    ASSERT_TRUE(start());
    profiler_cleanup();
    profiler_cleanup();
    for (const int phase : {PHASE_EVT, PHASE_SLEEP}) profiler_mark(phase); // nothing to do it to
    profiler_frame_boundary(1);
    profiler_count_step();
    profiler_toggle_freeze();
    profiler_tick();
    expect_allocation_faults_survived(&log, profiler_setup, profiler_cleanup);
}

} // namespace
