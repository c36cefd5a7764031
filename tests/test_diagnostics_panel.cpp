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

#include <cmath>

namespace {

constexpr SDL_Color BLACK = {0, 0, 0, 255};

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

    static Picture draw() {
        engine_use_ui_space();
        SDL_SetRenderDrawColor(engine_renderer(), 0, 0, 0, 255);
        SDL_RenderClear(engine_renderer());
        profiler_tick();
        return Picture(SDL_RenderReadPixels(engine_renderer(), nullptr));
    }

    static bool filled(const Picture &picture, SDL_Rect area, SDL_Color color) {
        return count_pixels(picture, color, area) == area.w * area.h;
    }

    // On the panel's backdrop, with nothing behind it.
    static bool panel_shows(int x, int y, const std::string &text, SDL_Color color = TEXT_COLOR) {
        const SDL_Color backdrop = pixel_at(draw(), 0, y);
        return shows(static_cast<float>(x), static_cast<float>(y), color, text + " ", backdrop);
    }
    static bool shows_label(int y, const std::string &text, SDL_Color color = TEXT_COLOR) { // left of the chart
        return panel_shows(46 - 8 * static_cast<int>(text.size()), y, " " + text, color);
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

TEST_F(PanelTest, ThePanelIsAsHighAsItsTier) {
    const struct {
        int width, height, panel, chart, strips;
    } cases[] = {{640, 208, 83, 60, 0}, {640, 389, 83, 60, 0}, {640, 390, 156, 100, 1}, {1280, 720, 156, 100, 1}};
    for (const auto &c : cases) {
        SCOPED_TRACE(std::to_string(c.width) + " x " + std::to_string(c.height));
        ASSERT_TRUE(start_view(c.width, c.height));
        feed({{PHASE_TICK, 1}}, 1, 512);
        const Picture shown = draw();
        const int top = c.height - c.panel, chart_top = top + 17, chart_bottom = chart_top + c.chart;
        EXPECT_TRUE(filled(shown, {0, 0, c.width, top}, BLACK));
        EXPECT_EQ(count_pixels(shown, BLACK, {0, top, c.width, c.panel}), 0);
        EXPECT_EQ(bounds_of(shown, GRIDLINE_COLOR), (PictureBounds{62, chart_top, c.width - 7, chart_bottom}));
        const PictureBounds bars = bounds_of(shown, PHASE_COLORS[PHASE_TICK]);
        EXPECT_EQ(bars.top, chart_top + c.chart / 2) << "1 ms at a scale of 2";
        EXPECT_EQ(bars.bottom, chart_bottom - 1 + c.strips * 32) << "the legend's swatch, if there is one";
        const std::string win = std::to_string(std::min((c.width - 68) / 2, 512));
        EXPECT_TRUE(panel_shows(6, top + 6, "avg 1.0  min 1.0  max 1.0  1% low 1.0 ms   win " + win + "f   uncapped"));
    }
}

TEST_F(PanelTest, AViewTooSmallShowsNothingAndSaysSoOncePerEpisode) {
    ASSERT_TRUE(start_view(199, 600));
    const struct {
        int width, height, told;
    } views[] = {{199, 600, 1}, {199, 600, 1}, {640, 207, 1}, {640, 360, 1}, {640, 207, 2}};
    for (const auto &view : views) {
        resize(view.width, view.height);
        EXPECT_EQ(filled(draw(), {0, 0, view.width, view.height}, BLACK), view.height != 360);
        EXPECT_EQ(log.count("too small for the panel, which needs at least 200x208."), view.told);
    }
    EXPECT_EQ(log.count("[PROFILER] Window is 199x600, too small"), 1);
    EXPECT_EQ(log.count("[PROFILER] Window is 640x207, too small"), 1);
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
    const struct {
        int age;
        FrameProfilePhase phase;
        int top, bottom; // rows, the last one included
    } bars[] = {{0, PHASE_EVT, 336, 360},  {0, PHASE_TICK, 286, 335}, {0, PHASE_PRES, 262, 285},
                {1, PHASE_TICK, 311, 360}, {4, PHASE_TICK, 336, 360}, {285, PHASE_TICK, 336, 360}};
    for (const auto &bar : bars) {
        const SDL_Rect area = {column(bar.age), bar.top, 2, bar.bottom - bar.top + 1};
        EXPECT_TRUE(filled(shown, area, PHASE_COLORS[bar.phase])) << "age " << bar.age;
        const SDL_Rect all = {area.x, CHART_TOP, 2, CHART_BOTTOM - CHART_TOP};
        EXPECT_EQ(count_pixels(shown, PHASE_COLORS[bar.phase], all), area.w * area.h) << "age " << bar.age;
    }
    struct Strip {
        int age, steps, jitter;
    };
    for (const Strip &strip : {Strip{0, 0, 2}, {1, 1, 0}, {2, 2, 1}, {3, 1, 1}, {4, 3, 0}, {285, 3, 0}}) {
        EXPECT_TRUE(filled(shown, {column(strip.age), STEPS, 2, 8}, STEP_COLORS[strip.steps])) << strip.age;
        EXPECT_TRUE(filled(shown, {column(strip.age), JITTER, 2, 8}, JITTER_COLORS[strip.jitter])) << strip.age;
    }
    EXPECT_TRUE(panel_shows(6, TOP + 6, "avg 2.0  min 2.0  max 8.0  1% low 6.0 ms   win 286f   uncapped"));
    for (const auto &[label, y] :
         {std::pair{"8.0", CHART_TOP}, {"0", CHART_BOTTOM - 8}, {"steps", STEPS}, {"jitter", JITTER}}) {
        EXPECT_TRUE(shows_label(y, label)) << label;
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
    EXPECT_TRUE(shows_label(307, "4.0", pixel_at(shown, 62, 311)));

    const auto limit_to = [](int fps) {
        cfg_set_fps_limit(fps);
        profiler->budget_ms = profiler_resolve_budget_ms();
    };
    limit_to(60);
    feed({{PHASE_TICK, 16}});
    EXPECT_GT(pixel_at(draw(), 62, 261).r, 150) << "16.67 of 16.7 ms: right at the top";
    EXPECT_TRUE(is_dark(draw(), {0, 258, 62, 3})) << "and without a label";
    limit_to(59);
    EXPECT_TRUE(is_dark(draw(), {0, 258, 640, 3})) << "above the scale there is no line";

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
    EXPECT_TRUE(filled(shown, {632, 262, 2, 2}, PIP_COLOR)) << "under the grid line";
    EXPECT_TRUE(filled(shown, {632, 264, 2, 97}, PHASE_COLORS[PHASE_TICK]));
    EXPECT_EQ(count_pixels(shown, PIP_COLOR, {62, CHART_TOP, 572, 100}), 4) << "250 ms is not slow yet";
    feed({{PHASE_EVT, 150}, {PHASE_TICK, 150}, {PHASE_PRES, 150}});
    const Picture over = draw();
    EXPECT_TRUE(filled(over, {632, 286, 2, 75}, PHASE_COLORS[PHASE_EVT]));
    EXPECT_TRUE(filled(over, {632, 264, 2, 22}, PHASE_COLORS[PHASE_TICK]));
    EXPECT_TRUE(is_dark(over, {632, 258, 2, 3})) << "nothing rises above the chart";
    feed({{PHASE_TICK, 99}}, 1, 286); // now it is out of sight
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
    const Picture frozen = draw();
    const SDL_Rect word = {634 - 48, 250, 48, 8};
    EXPECT_TRUE(panel_shows(word.x, word.y, "FROZEN", FROZEN_COLOR));
    for (const Picture *picture : {&live, &frozen}) SDL_FillSurfaceRect(picture->get(), &word, 0);
    EXPECT_TRUE(same_pixels(live, frozen));
    profiler_toggle_freeze();
    EXPECT_TRUE(panel_shows(6, 250, "avg 30.0  min 30.0  max 30.0  1% low 30.0 ms   win 286f   uncapped"))
        << "back to what was recorded meanwhile";
    EXPECT_EQ(count_pixels(draw(), FROZEN_COLOR, word), 0);
}

TEST_F(HistoryTest, TwiceTheUiScaleIsTheSamePictureTwiceAsLarge) {
    std::vector<SDL_Color> single; // a surface cannot be read any more once SDL has quit
    for (const int scale : {1, 2}) {
        ASSERT_TRUE(start_view(640, 400, "fps_limit = 250\n", scale));
        feed({{PHASE_TICK, 2}}, 70, 300); // heights are whole units: a half would show only at the larger scale
        feed({{PHASE_EVT, 2}, {PHASE_TICK, 4}, {PHASE_PRES, 2}}, 0, 2);
        const Picture shown = draw();
        for (int i = 0; i < shown->w * shown->h; i++) {
            const int x = i % shown->w, y = i / shown->w;
            const SDL_Color color = pixel_at(shown, x, y);
            if (scale == 1) single.push_back(color);
            ASSERT_TRUE(same_color(color, single[static_cast<size_t>(y / scale * 640 + x / scale)])) << x << ", " << y;
        }
    }
}

TEST_F(HistoryTest, TheLegendDropsWhatDoesNotFit) {
    for (const auto &[width, items] : {std::pair{436, 8}, {435, 7}, {212, 4}, {211, 3}, {200, 3}}) {
        ASSERT_TRUE(start_view(width, 400));
        const Picture shown = draw();
        for (int phase = 0; phase < PHASE_COUNT; phase++) {
            const int found = count_pixels(shown, PHASE_COLORS[phase], {0, LEGEND, width, 14});
            EXPECT_EQ(found, phase < items ? 36 : 0) << width << " " << phase;
        }
    }
}

// --- budget and mode ---

TEST_F(HistoryTest, BudgetAndModeComeFromTheSettings) {
    const struct {
        const char *graphics;
        double budget_ms;
        const char *mode;
    } cases[] = {
        {"fps_limit = 60\n", 1000.0 / 60, "limit 60"},
        {"fps_limit = 30\nvsync_enable = true\n", 1000.0 / 30, "vsync"},
        {"fps_limit = 0\n", 0, "uncapped"}};
    for (const auto &c : cases) {
        ASSERT_TRUE(start_view(640, 400, c.graphics));
        EXPECT_EQ(profiler->budget_ms, c.budget_ms) << c.graphics;
        EXPECT_TRUE(
            panel_shows(6, TOP + 6, std::string("avg 0.0  min 0.0  max 0.0  1% low 0.0 ms   win 0f   ") + c.mode));
    }
    cfg_set_fps_limit(50);
    draw();
    EXPECT_EQ(profiler->budget_ms, 0);
    resize(641, 400); // perhaps on another display
    draw();
    EXPECT_EQ(profiler->budget_ms, 20);
}

// --- what it leaves alone ---

TEST_F(PanelTest, ShownFramesAllocateNothingAndKeepTheBlendMode) {
    allocation_faults_install();
    ASSERT_TRUE(start_view(1100, 400, "fps_limit = 1000000\n")); // room for all 512 columns
    frame();
    allocation_faults_arm(1, true); // whatever the program allocates now would fail, and be counted
    frames(600);
    EXPECT_EQ(allocation_faults_disarm(), 0);
    EXPECT_EQ(profiler->live.count, 512);
    SDL_SetRenderDrawBlendMode(engine_renderer(), SDL_BLENDMODE_ADD);
    profiler_tick();
    SDL_BlendMode blend = SDL_BLENDMODE_NONE;
    SDL_GetRenderDrawBlendMode(engine_renderer(), &blend);
    EXPECT_EQ(blend, SDL_BLENDMODE_ADD);
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
    ProfilerRects *rects = profiler_rects_new(1, 1);
    const SDL_FRect square = {0, 0, 50, 50};
    profiler_rects_add(rects, &square);
    const Picture before = picture();
    profiler_set_color(engine_renderer(), PIP_COLOR);
    profiler_flush_rects(engine_renderer(), rects, PIP_COLOR);
    profiler_debug_text_right(engine_renderer(), 50, 0, "shown");
    EXPECT_TRUE(rects->count == 1 && same_pixels(before, picture()));
    profiler_free_rects(&rects);
    expect_allocation_faults_survived(&log, profiler_setup, profiler_cleanup);
}

} // namespace
