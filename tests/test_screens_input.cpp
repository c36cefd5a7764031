// The input demo: counters that advance together, and the marker in its arena.

#include "input/input.h"
#include "support/input_demo_fixture.h"

namespace {

class InputDemoTest : public InputDemoFixture {};

TEST_F(InputDemoTest, OneTapIsOneStepAndOneTickAtAnyRate) {
    for (const int hz : {5, 60, 1000}) {
        ASSERT_TRUE(start_demo(hz));
        for (int tap = 0; tap < 12; tap++) {
            key_down(SDLK_SPACE);
            frames(15, 0.021);
        }
        EXPECT_TRUE(counters_show(INPUT_ACTION_JUMP, "12")) << hz;
        EXPECT_TRUE(counters_show(INPUT_ACTION_LEFT, "0")) << hz;
    }
}

TEST_F(InputDemoTest, TheMarkerRunsToTheEdgeAndOppositesCancel) {
    ASSERT_TRUE(start_demo());
    const int centre = marker().left;
    hold({SDL_SCANCODE_LEFT, SDL_SCANCODE_D});
    frames(20, 0.02);
    EXPECT_EQ(marker().left, centre);
    hold({SDL_SCANCODE_RIGHT});
    frames(60, 1.0 / 60);
    const int walked = marker().left - centre;
    EXPECT_NEAR(walked, 160, 4) << "a second at 160 units";
    hold({SDL_SCANCODE_RIGHT, SDL_SCANCODE_LSHIFT});
    frames(15, 1.0 / 60);
    EXPECT_NEAR(marker().left - centre - walked, 80, 8) << "twice as fast";
    frames(20, 0.2);
    EXPECT_EQ(marker().right, 640 - 16 - 1) << "flush with the arena's right edge";

    resize(400, 300);
    hold({});
    frames(3, 0.02);
    EXPECT_EQ(marker().right, 400 - 16 - 1) << "the next step brings it into the smaller arena";
}

TEST_F(InputDemoTest, PauseStopsTheMarkerButNotTheCountersNorTheFlash) {
    ASSERT_TRUE(start_demo());
    key_down(SDLK_P);
    frames(2, 0.02);
    const int left = marker().left;
    hold({SDL_SCANCODE_RIGHT});
    frames(10, 0.02);
    EXPECT_EQ(marker().left, left);
    EXPECT_TRUE(shows(24, 210, FLASH, "PAUSED"));
    EXPECT_TRUE(counters_show(INPUT_ACTION_PAUSE, "1"));
    key_down(SDLK_SPACE);
    frames(2, 0.02);
    EXPECT_LT(marker(FLASH).left, marker(FLASH).right);
    frames(15, 0.02);
    EXPECT_EQ(marker().left, left) << "a quarter second later it is the marker's own colour again";
    key_down(SDLK_P);
    frames(5, 0.02);
    EXPECT_GT(marker().left, left);
}

TEST_F(InputDemoTest, PressesOfTheFrameThatOpensTheScreenDoNotCount) {
    ASSERT_TRUE(start_screen("text-demo", "640x400"));
    key_down(SDLK_SPACE);
    engine->state = GAME_STATE_INPUT_DEMO;
    frames(5, 0.05);
    EXPECT_TRUE(counters_show(INPUT_ACTION_JUMP, "0"));
}

} // namespace
