// The input demo in a real window, with a keyboard that is really held: events and SDL's keyboard state agree.

#include "input/input_actions.h"
#include "support/desktop.h"
#include "support/input_demo_fixture.h"

#include <SDL3/SDL_hints.h>

namespace {

class InputWindowTest : public InputDemoFixture {
protected:
    void SetUp() override {
        InputDemoFixture::SetUp();
        choose_driver(SDL_HINT_VIDEO_DRIVER, "x11");
        choose_driver(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    }
    void TearDown() override {
        xdotool("keyup Right keyup Shift_L");
        InputDemoFixture::TearDown();
    }
    bool focus() {
        const std::string window = find_window("Lumarind Engine v0.0.1");
        xdotool("windowfocus --sync " + window);
        frames(5, 0.02);
        return !window.empty();
    }
};

TEST_F(InputWindowTest, TwentyTapsAreTwentyStepsAndTwentyTicks) {
    for (const int hz : {7, 240}) { // fewer and more steps than frames
        ASSERT_TRUE(start_demo(hz) && focus());
        for (int tap = 0; tap < 20; tap++) {
            xdotool("key space");
            frames(12, 0.02);
        }
        EXPECT_TRUE(counters_show(INPUT_ACTION_JUMP, "20")) << hz;
        stop();
    }
}

TEST_F(InputWindowTest, RightAndShiftRunTheMarkerToTheArenasEdge) {
    ASSERT_TRUE(start_demo() && focus());
    const int centre = marker().left;
    xdotool("keydown Right");
    frames(5, 0.02);
    const int walking = marker().left - centre;
    EXPECT_GT(walking, 0);
    xdotool("keydown Shift_L");
    frames(100, 0.02);
    EXPECT_EQ(marker().right, 640 - 16 - 1);
    xdotool("keyup Right keyup Shift_L");
    frames(2, 0.02);
    xdotool("keydown Left");
    frames(5, 0.02);
    xdotool("keyup Left");
    EXPECT_LT(marker().right, 640 - 16 - 1) << "and back";
}

} // namespace
