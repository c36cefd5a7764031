// The input demo and the platformer in a real window, with a keyboard that is really held: events and SDL's keyboard
// state agree.

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

// --- the platformer, in the same kind of window ---

class PlatformerWindowTest : public InputWindowTest {
protected:
    static constexpr SDL_Color BODY = {80, 255, 112, 255}; // its outline
};

TEST_F(PlatformerWindowTest, RightAndJumpMoveThePlayerAndTheCameraFollows) {
    config = "[graphics]\nvsync_enable = false\nshow_fps = false\nui_scale = 1\n";
    ASSERT_TRUE(start({"--screen", "platformer-demo", "--window-size", "800x450"}) && frame() && focus());
    const PictureBounds spawn = bounds_of(picture(), BODY);
    xdotool("keydown Right");
    frames(20, 1.0001 / 60);
    const PictureBounds running = bounds_of(picture(), BODY);
    EXPECT_GT(running.left, spawn.left + 150);
    EXPECT_LT(running.bottom, spawn.bottom) << "up the first step";
    xdotool("key space"); // over the first ledge
    frames(20, 1.0001 / 60);
    EXPECT_LT(bounds_of(picture(), BODY).bottom, spawn.bottom - 40) << "up to the dead zone's upper edge";
    frames(80, 1.0001 / 60);
    const PictureBounds beyond = bounds_of(picture(), BODY);
    EXPECT_NEAR((beyond.left + beyond.right) / 2, 0.65 * 800, 2) << "the camera keeps the feet at its dead zone's edge";
}

} // namespace
