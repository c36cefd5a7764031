// Parsing of binding texts, and delivery of presses: each once to the frame and once to the fixed steps.

#include "lumarind/config/config.h"
#include "lumarind/engine/timestep.h"
#include "lumarind/input/input.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_keyboard.h>

#include <random>

namespace {

class InputTest : public EngineTest {
protected:
    std::set<int> pressed_after(const std::string &word) { // in the frame that polls the event
        play(word);
        frame();
        std::set<int> pressed;
        for (int action = -1; action <= INPUT_ACTION_COUNT; action++) {
            if (input_pressed(action)) pressed.insert(action);
        }
        return pressed;
    }
};

// --- binding texts ---

TEST_F(InputTest, SkipsFifthBindingAndStoresTextUnchanged) {
    config += "[input]\njump = A,B,C,D, E ,nonsense\n";
    ASSERT_TRUE(start_screen("input-demo"));
    EXPECT_EQ(log.count("[INPUT] Some bindings for \"jump\" were not recognised"), 1);
    EXPECT_EQ(log.count("[INPUT] More than 4 bindings, \"E\" skipped"), 1);
    EXPECT_STREQ(input_bindings_text(INPUT_ACTION_JUMP), "A,B,C,D, E ,nonsense");
    EXPECT_TRUE(pressed_after("D").contains(INPUT_ACTION_JUMP));
    EXPECT_TRUE(pressed_after("E").empty());
    ASSERT_TRUE(input_bind(INPUT_ACTION_JUMP, "A")); // replaces the bindings B to D
    EXPECT_FALSE(input_bind(INPUT_ACTION_JUMP, "A, nonsense"));
    EXPECT_TRUE(pressed_after("+B").empty());
    EXPECT_FALSE(input_held(INPUT_ACTION_JUMP));
    EXPECT_TRUE(pressed_after("+A").contains(INPUT_ACTION_JUMP));
    EXPECT_TRUE(input_held(INPUT_ACTION_JUMP));
    for (const int none : {-1, static_cast<int>(INPUT_ACTION_COUNT)}) {
        EXPECT_TRUE(!input_bind(none, "A") && !input_held(none) && !*input_bindings_text(none));
    }
}

// --- presses ---

TEST_F(InputTest, PressesAreEdgeTriggeredForKeysButtonsAndAxes) {
    config += "[input]\nrun = Space, pad:b\nattack = pad:righttrigger\n";
    ASSERT_TRUE(start_screen("input-demo"));
    constexpr int LEFT = INPUT_ACTION_LEFT, RIGHT = INPUT_ACTION_RIGHT;
    const std::pair<const char *, std::set<int>> cases[] = {
        {"Space", {INPUT_ACTION_JUMP, INPUT_ACTION_RUN}}, // a key bound to two actions
        {"~Space", {}},
        {"-Space", {}},
        {"F9", {}},
        {"pad:b", {INPUT_ACTION_RUN}},
        {"pad:plug", {}},
        {"pad:leftx=.55", {}}, // 0.47 after the deadzone
        {"pad:leftx=.66", {RIGHT}},
        {"pad:leftx=.9", {}},
        {"pad:leftx=.66", {}},
        {"pad:leftx=.49", {}},
        {"pad:leftx=.66", {RIGHT}},
        {"pad:leftx=-1", {LEFT}}, // from one extreme to the other
        {"pad:leftx=1", {RIGHT}},
        {"pad:righttrigger=.5", {}}, // triggers have no deadzone
        {"pad:righttrigger=.51", {INPUT_ACTION_ATTACK}},
        {"pad:unplug pad:plug 1 pad:leftx=1", {RIGHT}}, // a new controller starts at rest
    };
    for (const auto &[word, pressed] : cases) EXPECT_EQ(pressed_after(word), pressed) << word;
    EXPECT_TRUE(input_held(RIGHT) && !input_held(LEFT));
    play("pad:unplug 1");
    EXPECT_FALSE(input_held(RIGHT)) << "released when the controller is removed";
    input_cleanup();
    EXPECT_TRUE(pressed_after("+Space").empty() && !input_held(INPUT_ACTION_JUMP));
}

// Presses further apart than a frame and a step are delivered once to both, at any pair of rates, with stalls, and with
// three events per frame; presses in a frame that changes the screen are discarded.
TEST_F(InputTest, EveryPressIsDeliveredOnceToTicksAndOnceToSteps) {
    ASSERT_TRUE(start());
    SDL_Event space = {};
    space.type = SDL_EVENT_KEY_DOWN;
    space.key.scancode = SDL_SCANCODE_SPACE;
    std::mt19937 random(11);
    for (const double frames_per_step : {0.1, 0.37, 0.5, 1.0, 1.6, 3.0, 10.0}) {
        constexpr double STEP = 1.0 / 60;
        Timestep ts = {};
        timestep_init(&ts, 60);
        int presses = 0, ticks = 0, steps = 0;
        double quiet = 1; // s since the last press
        for (int i = 0; i < 20'000; i++) {
            const double dt =
                random() % 50 == 0 ? 0.3 : STEP / frames_per_step * (0.5 + static_cast<double>(random() % 1000) / 1000);
            timestep_advance(&ts, dt);
            quiet += dt;
            input_frame_start();
            if (i < 19'900 && quiet > 0.6 && random() % 3 == 0) { // longer than any frame and any step
                for (unsigned events = 0; events <= random() % 3; events++) input_handle_event(&space);
                quiet = 0;
                const bool screen_changes = random() % 5 == 0;
                if (screen_changes) input_clear_presses();
                presses += !screen_changes;
            }
            while (timestep_consume_step(&ts)) {
                input_fixed_step_begin();
                steps += input_pressed(INPUT_ACTION_JUMP);
                input_fixed_step_end();
            }
            ticks += input_pressed(INPUT_ACTION_JUMP);
        }
        EXPECT_GT(presses, 20) << frames_per_step;
        EXPECT_EQ(ticks, presses) << frames_per_step;
        EXPECT_EQ(steps, presses) << frames_per_step;
    }
}

} // namespace
