// The profiler: phases recorded by the main loop, and the panel with a synthetic history, compared with stored
// pictures.

#include "diagnostics/profiler.h"
#include "diagnostics/profiler_internal.h"
#include "lumarind/config/config.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "screens/screen_states.h"
#include "support/call_faults.h"
#include "support/engine_fixture.h"
#include "support/stored.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_timer.h>

#include <cmath>

namespace {

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
        live->current = {}; // drawing has marked a phase with the real clock
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
    void feed_history() { // the newest frame last
        feed({{PHASE_TICK, 2}}, 70, 300);
        feed({{PHASE_TICK, 3}}, 1);
        feed({{PHASE_TICK, 4}}, 2);
        feed({{PHASE_TICK, 4}}, 1);
        feed({{PHASE_EVT, 2}, {PHASE_TICK, 4}, {PHASE_PRES, 2}}, 0);
    }

    static Picture draw() {
        engine_use_ui_space();
        SDL_SetRenderDrawColor(engine_renderer(), 90, 60, 30, 255);
        SDL_RenderClear(engine_renderer());
        profiler_tick();
        return Picture(SDL_RenderReadPixels(engine_renderer(), nullptr));
    }

    uint64_t clock = SDL_NS_PER_SECOND;
};

// --- recording ---

TEST_F(PanelTest, MainLoopMarksAllPhases) {
    ASSERT_TRUE(start());
    play("1");
    frame(3.5 / 60);
    play("F3 1");
    engine_set_state(GAME_STATE_TEXT_DEMO);
    play("1 1");
    const FrameProfile *live = &profiler->live;
    ASSERT_EQ(live->count, 4);
    EXPECT_EQ(frame_profile_at(live, 2)->steps, 3);
    for (int age = 0; age < 4; age++) {
        const uint32_t *ns = frame_profile_at(live, age)->phase_ns;
        for (const int phase : {PHASE_EVT, PHASE_FIX, PHASE_TICK, PHASE_OVL, PHASE_PRES, PHASE_SLEEP}) {
            EXPECT_GT(ns[phase], 0u) << PHASE_NAMES[phase];
        }
        EXPECT_EQ(ns[PHASE_PANEL] > 0, age < 2) << "only while shown, age " << age;
        EXPECT_EQ(ns[PHASE_SWAP] > 0, age == 0) << "only in the frame with the screen change, age " << age;
    }
    play("F4 1");
    EXPECT_TRUE(profiler->frozen);
    EXPECT_TRUE(log.has("[PROFILER] DEBUG: Toggled: frozen: 1"));
    frame();
    EXPECT_EQ(live->count, profiler->frozen_copy.count + 1) << "recording continues";
}

// --- pictures ---

struct Scene {
    const char *name;
    int width, height;
    std::vector<Slice> newest; // slices of the last frame; empty: feed_history() instead
    std::string graphics;
    int ui_scale = 1;
    double scale_ms = 8; // of the chart
};
const std::vector<Slice> OVERFULL = {{PHASE_EVT, 150}, {PHASE_TICK, 150}, {PHASE_PRES, 150}};
const Scene SCENES[] = {
    {"panel_640x208", 640, 208, {}, ""},
    {"panel_640x389", 640, 389, {}, "fps_limit = 1\n"},
    {"panel_640x390", 640, 390, {}, "vsync_enable = true\n"},
    {"panel_1100x500", 1100, 500, {}, ""},
    {"panel_211x400", 211, 400, {}, ""},
    {"panel_twice", 640, 400, {}, "fps_limit = 250\n", 2},
    {"panel_budget", 637, 400, {{PHASE_TICK, 7.9}}, "fps_limit = 250\n"},
    {"panel_budget_at_top", 637, 400, {{PHASE_TICK, 16}}, "fps_limit = 60\n", 1, 16.7},
    {"panel_budget_above", 637, 400, {{PHASE_TICK, 16}}, "fps_limit = 59\n", 1, 16.7},
    {"panel_not_slow", 640, 400, {{PHASE_TICK, 250}}, "", 1, 200},
    {"panel_slow", 640, 400, OVERFULL, "", 1, 200},
};

TEST_F(PanelTest, ScenesMatchStoredPictures) {
    for (const Scene &scene : SCENES) {
        ASSERT_TRUE(start_view(scene.width, scene.height, scene.graphics, scene.ui_scale));
        if (scene.newest.empty()) feed_history();
        if (!scene.newest.empty()) feed({{PHASE_TICK, 2}}, 1, 300);
        if (!scene.newest.empty()) feed(scene.newest);
        EXPECT_TRUE(matches_stored(draw(), scene.name));
        EXPECT_EQ(profiler->scale_ms, scene.scale_ms);
    }
    feed({{PHASE_TICK, 99}}, 1, 286); // the slow frames have left the chart
    draw();
    EXPECT_EQ(profiler->scale_ms, 100.0);
    profiler_toggle_freeze();
    feed({{PHASE_PRES, 30}}, 2, 300);
    EXPECT_TRUE(matches_stored(draw(), "panel_frozen"));
    profiler_toggle_freeze();
    EXPECT_TRUE(matches_stored(draw(), "panel_thawed")); // includes frames recorded while frozen
}

TEST_F(PanelTest, TooSmallViewIsLoggedOncePerEpisode) {
    ASSERT_TRUE(start_view(199, 600));
    const struct {
        int width, height, times_logged;
    } views[] = {{199, 600, 1}, {199, 600, 1}, {200, 207, 1}, {200, 208, 1}, {640, 207, 2}};
    for (const auto &view : views) {
        resize(view.width, view.height);
        const Picture drawn = draw();
        EXPECT_EQ(count_pixels(drawn, {90, 60, 30, 255}) == drawn->w * drawn->h, view.height != 208);
        EXPECT_EQ(log.count("too small for the panel, which needs at least 200x208."), view.times_logged);
    }
    EXPECT_EQ(log.count("[PROFILER] Window is 199x600, too small"), 1);
}

TEST_F(PanelTest, BudgetIsUpdatedWhenDisplayChanges) {
    ASSERT_TRUE(start_view(640, 400, "fps_limit = 0\n"));
    draw();
    cfg_set_fps_limit(50);
    draw();
    EXPECT_EQ(profiler->budget_ms, 0);
    resize(641, 400); // as after a move to another display
    draw();
    EXPECT_EQ(profiler->budget_ms, 20);
}

// --- side effects ---

TEST_F(PanelTest, DrawingAllocatesNothingAndRestoresBlendMode) {
    ASSERT_TRUE(start_view(1100, 400, "fps_limit = 1000000\n")); // room for all 512 columns
    frame();
    allocation_faults_arm(1, true); // any own allocation would fail and be counted
    frames(600);
    EXPECT_EQ(call_faults_disarm(), 0);
    EXPECT_EQ(profiler->live.count, 512);
    SDL_SetRenderDrawBlendMode(engine_renderer(), SDL_BLENDMODE_ADD);
    profiler_tick();
    SDL_BlendMode blend = SDL_BLENDMODE_NONE;
    SDL_GetRenderDrawBlendMode(engine_renderer(), &blend);
    EXPECT_EQ(blend, SDL_BLENDMODE_ADD);
    EXPECT_TRUE(log.errors().empty());
}

TEST_F(PanelTest, CallsWithoutSetupAreIgnored) {
    ASSERT_TRUE(start());
    profiler_cleanup();
    profiler_cleanup();
    for (const int phase : {PHASE_EVT, PHASE_SLEEP}) profiler_mark(phase); // ignored
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
}

} // namespace
