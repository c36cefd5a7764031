// Bindings from text, and the delivery of presses: each once to the frame, once to the fixed steps.

#include "config/config.h"
#include "core/log.h"
#include "engine/timestep.h"
#include "input/gamepad.h"
#include "input/input.h"
#include "support/allocation_faults.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

class InputTest : public ::testing::Test {
protected:
    void SetUp() override {
        log_setup(); // lets warnings through
        ASSERT_TRUE(cfg_setup());
        cfg_set_defaults();
        ASSERT_TRUE(gamepad_setup());
        ASSERT_TRUE(input_setup());
        log.lines.clear();
    }
    ~InputTest() override {
        input_cleanup();
        gamepad_cleanup();
        cfg_cleanup();
        log_cleanup();
    }

    static void key(SDL_Scancode scancode, bool repeat = false, SDL_EventType type = SDL_EVENT_KEY_DOWN) {
        SDL_Event event = {};
        event.key.type = type;
        event.key.scancode = scancode;
        event.key.repeat = repeat;
        input_handle_event(&event);
    }
    static void axis(int axis, float value) {
        SDL_Event event = {};
        event.gaxis.type = SDL_EVENT_GAMEPAD_AXIS_MOTION;
        event.gaxis.axis = static_cast<Uint8>(axis);
        event.gaxis.value = static_cast<Sint16>(value * 32767);
        input_handle_event(&event);
    }
    static bool pressed_since(int action) { // in the frame so far; a new one begins
        const bool pressed = input_pressed(action);
        input_frame_start();
        return pressed;
    }
    static bool pressed_in_a_step(int action) {
        input_fixed_step_begin();
        const bool pressed = input_pressed(action);
        input_fixed_step_end();
        return pressed;
    }

    TemporaryDirectory directory;
    LogCapture log;
};

// --- binding texts ---

TEST_F(InputTest, PiecesAreTakenOrLeftOutByName) {
    using Names = std::vector<std::string>;
    const struct {
        std::string text;
        int count;
        Names skipped;
    } cases[] = {
        {" , ,\t,", 0, {}},
        {"  Left Shift  ,space", 2, {}},
        {"PAD:LeftX-, Pad:righttrigger,pad:dpleft,pad:righty+", 4, {}},
        {"pad:leftx", 0, {"pad:leftx"}},
        {"pad:lefttrigger+, A", 1, {"pad:lefttrigger+"}},
        {"pad:+leftx+, pad:-lefttrigger", 2, {}}, // SDL passes over a sign in front
        {"pad:, pad:+, pad", 0, {"pad:", "pad:+", "pad"}},
        {"pad: a, No Such Key", 0, {"pad: a", "No Such Key"}},
        {std::string(63, 'x'), 0, {std::string(63, 'x')}},
        {"A" + std::string(63, 'x'), 0, {"A" + std::string(62, 'x')}}};
    for (const auto &c : cases) {
        log.lines.clear();
        InputBinding bindings[INPUT_MAX_BINDINGS];
        EXPECT_EQ(input_parse_bindings(c.text.c_str(), bindings, INPUT_MAX_BINDINGS), c.count) << c.text;
        Names lines;
        for (const std::string &name : c.skipped) lines.push_back("[INPUT] Unknown binding \"" + name + "\", skipped");
        EXPECT_EQ(log.at_least(SDL_LOG_PRIORITY_INFO), lines) << c.text;
    }
    for (int action = 0; action < INPUT_ACTION_COUNT; action++) {
        EXPECT_TRUE(input_bind(action, input_default_bindings_text(action))) << action;
    }
}

TEST_F(InputTest, AFifthBindingIsLeftOutAndTheTextIsKeptAsWritten) {
    EXPECT_FALSE(input_bind(INPUT_ACTION_JUMP, "A,B,C,D, E ,nonsense"));
    EXPECT_TRUE(log.has("[INPUT] More than 4 bindings, \"E\" skipped"));
    EXPECT_STREQ(input_bindings_text(INPUT_ACTION_JUMP), "A,B,C,D, E ,nonsense");
    key(SDL_SCANCODE_D);
    EXPECT_TRUE(pressed_since(INPUT_ACTION_JUMP));
    key(SDL_SCANCODE_E);
    EXPECT_FALSE(pressed_since(INPUT_ACTION_JUMP));

    input_cleanup();
    ASSERT_TRUE(input_setup());
    EXPECT_EQ(log.count("[INPUT] Some bindings for \"jump\" were not recognised"), 1);
    EXPECT_FALSE(input_bind(INPUT_ACTION_COUNT, "A"));
    EXPECT_STREQ(input_bindings_text(-1), "");
}

// --- presses ---

TEST_F(InputTest, APressIsAnEdgeOfOneOfTheActionsKeys) {
    key(SDL_SCANCODE_SPACE, true);
    key(SDL_SCANCODE_SPACE, false, SDL_EVENT_KEY_UP);
    key(SDL_SCANCODE_F9);
    for (int action = 0; action < INPUT_ACTION_COUNT; action++) EXPECT_FALSE(input_pressed(action)) << action;
    input_bind(INPUT_ACTION_RUN, "Space");
    key(SDL_SCANCODE_SPACE);
    EXPECT_TRUE(input_pressed(INPUT_ACTION_RUN)) << "one key may belong to two actions";
    EXPECT_TRUE(pressed_since(INPUT_ACTION_JUMP));
    EXPECT_FALSE(input_pressed(INPUT_ACTION_JUMP));
    EXPECT_FALSE(input_pressed(-1) || input_pressed(INPUT_ACTION_COUNT) || input_held(INPUT_ACTION_COUNT));
    input_cleanup();
    key(SDL_SCANCODE_SPACE);
    EXPECT_FALSE(input_pressed(INPUT_ACTION_JUMP) || input_held(INPUT_ACTION_JUMP));
}

TEST_F(InputTest, AStickPressesWhenItCrossesBehindTheDeadzone) {
    const auto raw_for = [](float value) { return value * 0.85f + 0.15f; }; // undoes the deadzone's stretch
    const SDL_GamepadAxis x = SDL_GAMEPAD_AXIS_LEFTX;
    axis(x, 0.55f); // 0.47 behind the deadzone
    EXPECT_FALSE(pressed_since(INPUT_ACTION_RIGHT));
    axis(x, raw_for(0.6f));
    EXPECT_TRUE(pressed_since(INPUT_ACTION_RIGHT));
    for (const float value : {0.9f, 0.6f, 0.8f}) axis(x, raw_for(value));
    EXPECT_FALSE(pressed_since(INPUT_ACTION_RIGHT)) << "wobbling beyond the threshold";
    axis(x, raw_for(0.4f));
    axis(x, raw_for(0.6f));
    EXPECT_TRUE(pressed_since(INPUT_ACTION_RIGHT));
    axis(x, -1);
    EXPECT_TRUE(pressed_since(INPUT_ACTION_LEFT)) << "from one end to the other";
    axis(x, 1);
    EXPECT_TRUE(pressed_since(INPUT_ACTION_RIGHT));
    SDL_Event removed = {};
    removed.type = SDL_EVENT_GAMEPAD_REMOVED;
    input_handle_event(&removed);
    axis(x, 1);
    EXPECT_TRUE(pressed_since(INPUT_ACTION_RIGHT)) << "a new controller starts from rest";
    axis(77, 1);

    ASSERT_TRUE(input_bind(INPUT_ACTION_ATTACK, "pad:righttrigger"));
    axis(SDL_GAMEPAD_AXIS_RIGHT_TRIGGER, 0.5f);
    EXPECT_FALSE(pressed_since(INPUT_ACTION_ATTACK)) << "triggers have no deadzone";
    axis(SDL_GAMEPAD_AXIS_RIGHT_TRIGGER, 0.51f);
    EXPECT_TRUE(pressed_since(INPUT_ACTION_ATTACK));
}

// Presses far enough apart to be told apart by frames and steps are each counted once by both, at any pair of rates,
// with stalls, and with three events in a frame; those in a frame that changes the screen by neither.
TEST_F(InputTest, EveryPressIsCountedOnceByTicksAndOnceBySteps) {
    std::mt19937 random(11);
    for (const double frames_per_step : {0.1, 0.37, 0.5, 1.0, 1.6, 3.0, 10.0}) {
        constexpr double STEP = 1.0 / 60;
        Timestep ts = {};
        timestep_init(&ts, 60);
        int presses = 0, ticks = 0, steps = 0;
        double quiet = 1; // s since the last press
        const auto one_frame = [&](bool may_press) {
            const double dt =
                random() % 50 == 0 ? 0.3 : STEP / frames_per_step * (0.5 + static_cast<double>(random() % 1000) / 1000);
            timestep_advance(&ts, dt);
            quiet += dt;
            input_frame_start();
            if (may_press && quiet > 0.6 && random() % 3 == 0) { // longer than any frame and any step
                for (unsigned i = 0; i <= random() % 3; i++) key(SDL_SCANCODE_SPACE);
                quiet = 0;
                if (random() % 5 == 0) {
                    input_clear_presses();
                } else {
                    presses++;
                }
            }
            while (timestep_consume_step(&ts)) steps += pressed_in_a_step(INPUT_ACTION_JUMP) ? 1 : 0;
            ticks += input_pressed(INPUT_ACTION_JUMP) ? 1 : 0;
        };
        for (int i = 0; i < 20'000; i++) one_frame(true);
        for (int i = 0; i < 50; i++) one_frame(false); // the last press reaches its step
        EXPECT_GT(presses, 20) << frames_per_step;
        EXPECT_EQ(ticks, presses) << frames_per_step;
        EXPECT_EQ(steps, presses) << frames_per_step;
    }
}

TEST_F(InputTest, SetUpSurvivesEachAllocationFailing) {
    input_cleanup();
    expect_allocation_faults_survived(&log, input_setup, input_cleanup);
}

} // namespace
