// The frame: game state, event callbacks, hot keys, fixed steps and frame time.

#include "engine/frame.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/transition.h"
#include "screens/screen_states.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_timer.h>

namespace {

std::string g_calls;

bool note_a(SDL_Event *) { return g_calls += 'a', true; }
bool note_b(SDL_Event *) { return g_calls += 'b', true; }
bool note_c_and_end(SDL_Event *) { return g_calls += 'c', false; }
bool note_text(SDL_Event *, void *text) { return g_calls += static_cast<const char *>(text), true; }
bool note_nothing(SDL_Event *, void *) { return true; }

class FrameTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        g_calls.clear();
    }
};

// --- game state ---

TEST_F(FrameTest, StateRequestsChainAndAcknowledgingResetsTimestep) {
    ASSERT_TRUE(start());
    EXPECT_EQ(engine_get_state(), GAME_STATE_MAIN_MENU);
    EXPECT_EQ(engine_get_prev_state(), GAME_STATE_MAIN_MENU);
    log.lines.clear();
    engine_set_state(GAME_STATE_MAIN_MENU);
    EXPECT_TRUE(log.lines.empty()) << "a request for the current state is ignored";
    engine_set_state(GAME_STATE_TEXT_DEMO);
    engine_set_state(GAME_STATE_TEXTURE_DEMO);
    EXPECT_EQ(engine_get_prev_state(), GAME_STATE_TEXT_DEMO);
    engine->timestep.accumulator = 0.1;
    engine->last_frame_ticks = 0;
    engine_state_change_handled();
    EXPECT_EQ(engine_get_prev_state(), GAME_STATE_TEXTURE_DEMO);
    EXPECT_EQ(engine->timestep.accumulator, 0.0);
    EXPECT_GT(engine->last_frame_ticks, 0u);
    EXPECT_TRUE(log.has("[ENGINE] DEBUG: GAME STATE: 3 -> 4"));
    EXPECT_TRUE(log.has("[ENGINE] DEBUG: GAME STATE HANDLED: 5"));
    engine_set_state(GAME_STATE_MAIN_MENU); // the screen that is set up
    engine_state_change_handled();
}

// --- callbacks ---

TEST_F(FrameTest, CallbacksRunInOrderUntilOneReturnsFalse) {
    ASSERT_TRUE(start());
    frame(); // drains start-up events, such as those of audio devices
    for (const EventCallback cb : {note_a, note_b, note_a, note_c_and_end, note_b}) {
        ASSERT_TRUE(engine_add_callback(SDL_EVENT_KEY_DOWN, cb));
    }
    EXPECT_EQ(callback_array_index_of(&engine->callbacks[SDL_EVENT_KEY_DOWN], note_b), 2)
        << "after the menu's callback";
    play("F3 1");
    EXPECT_EQ(g_calls, "abac");
    EXPECT_TRUE(engine_get_show_frame_time_graph()) << "hot keys are handled in any case";
    EXPECT_EQ(engine_event().type, static_cast<Uint32>(SDL_EVENT_KEY_DOWN));

    g_calls.clear();
    ASSERT_TRUE(engine_remove_callback(SDL_EVENT_KEY_DOWN, note_c_and_end));
    ASSERT_TRUE(engine_remove_callback(SDL_EVENT_KEY_DOWN, note_a));
    ASSERT_TRUE(engine_remove_callback(SDL_EVENT_KEY_DOWN, note_c_and_end)) << "removing a missing callback succeeds";
    play("F5 1");
    EXPECT_EQ(g_calls.size(), 3u) << "one a and two b are left, in any order";
    char texts[][2] = {"D", "E", "F"};
    for (char *text : texts) ASSERT_TRUE(engine_add_callback(SDL_EVENT_KEY_DOWN, note_text, text));
    ASSERT_TRUE(engine_remove_callback(SDL_EVENT_KEY_UP, note_text, texts[1])) << "not added with this type";
    ASSERT_TRUE(engine_remove_callback(SDL_EVENT_KEY_DOWN, note_nothing, texts[1])) << "nor with this function";
    ASSERT_TRUE(engine_remove_callback(SDL_EVENT_KEY_DOWN, note_text, texts[1]));
    play("F5 1");
    EXPECT_EQ(g_calls.substr(6), "DF");
}

TEST_F(FrameTest, UnsupportedEventTypesAreNotDispatched) {
    ASSERT_TRUE(start());
    EXPECT_TRUE(engine_add_callback(0x1307, note_a));
    EXPECT_FALSE(engine_add_callback(0x1308, note_a));
    EXPECT_FALSE(engine_remove_callback(SDL_EVENT_USER, note_a));
    EXPECT_TRUE(log.has("[ENGINE] Attempting to add a callback for a type that is not supported: 0x1308"));
    EXPECT_TRUE(log.has("[ENGINE] Attempting to remove a callback for a type that is not supported: 0x8000"));
    for (const Uint32 type : {0x1307u, 0x1308u, static_cast<Uint32>(SDL_EVENT_USER), 0xFFFFu}) push_event(type);
    frame();
    EXPECT_EQ(g_calls, "a");
}

// --- hot keys ---

TEST_F(FrameTest, CtrlQQuitsAndEscapeFadesToMenuOrQuits) {
    ASSERT_TRUE(start({"--screen", "texture-demo"}));
    play("Q 1 Escape Escape 6");
    EXPECT_NEAR(transition_cover(1), 0.4, 1e-9) << "a second press does not restart the fade";
    play("40");
    EXPECT_EQ(engine_get_state(), GAME_STATE_MAIN_MENU);
    EXPECT_EQ(transition_cover(1), 0.0);
    play("Escape");
    EXPECT_FALSE(frame());
    ASSERT_TRUE(start({"--screen", "text-demo"}));
    play("ctrl:Q");
    EXPECT_FALSE(frame());
    ASSERT_TRUE(start({"--screen", "text-demo"}));
    push_event(SDL_EVENT_QUIT);
    EXPECT_FALSE(frame());
}

// --- frame time ---

TEST_F(FrameTest, FpsReadOutIsUpdatedOncePerSecond) {
    ASSERT_TRUE(start());
    EXPECT_TRUE(engine_frame_number() == 0 && engine->fps_color.a == 0);
    engine->fps_window_start = SDL_GetTicksNS();
    frames(3);
    EXPECT_EQ(engine_frame_number(), 3u);
    EXPECT_STREQ(engine->fps_text, "");
    engine->frames = 28;
    engine->fps_window_start = SDL_GetTicksNS() - SDL_NS_PER_SECOND;
    frame();
    EXPECT_EQ(engine->fps, 29);
    EXPECT_EQ(std::string(engine->fps_text).find("FPS: 29, delta: 0."), 0u);
    EXPECT_EQ(engine->frames, 0);
}

TEST_F(FrameTest, FrameRateLimitWaitsAndCanBeRemoved) {
    ASSERT_TRUE(start());
    engine_set_target_fps(50);
    const Uint64 before = SDL_GetTicksNS();
    frames(3);
    const Uint64 last = SDL_GetTicksNS();
    frame();
    const Uint64 after = SDL_GetTicksNS();
    EXPECT_GE(after - before, 4 * SDL_NS_PER_SECOND / 50 - 1000);
    EXPECT_GE(engine_fps_delta(), 0.02) << "the whole frame, including the wait";
    EXPECT_LE(engine_fps_delta(), static_cast<double>(after - last) / 1e9);
    engine_set_target_fps(0);
    EXPECT_EQ(engine->frame_period, 0u);
}

TEST_F(FrameTest, SimulationFollowsRealTimeClampedToQuarterSecond) {
    const struct {
        int hz;
        Uint64 ms;
        int steps;
    } cases[] = {{64, 2000, 16}, {20, 125, 2}, {5, 210, 1}, {3, 200, 0}};
    for (const auto &c : cases) {
        config += "[simulation]\nfixed_step_hz = " + std::to_string(c.hz) + "\n";
        ASSERT_TRUE(start());
        engine->last_frame_ticks = SDL_GetTicksNS() - SDL_MS_TO_NS(c.ms);
        engine_frame_start();
        int steps = 0;
        while (engine_fixed_step_consume()) steps++;
        EXPECT_EQ(steps, c.steps) << c.hz;
    }
    EXPECT_TRUE(engine_fixed_alpha() >= 0.6 && engine_fixed_alpha() <= 0.75);
    ASSERT_TRUE(start());
    engine->last_frame_ticks = 0; // the first frame
    engine_frame_start();
    EXPECT_EQ(engine->timestep.accumulator, 0);
    EXPECT_GT(engine->last_frame_ticks, 0u);
}

} // namespace
