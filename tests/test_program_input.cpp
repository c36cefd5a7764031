// The input demo and the platformer in a real window with real key presses: events and SDL's keyboard state agree.

#include "support/desktop.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_render.h>

namespace {

class InputWindowTest : public EngineTest {
protected:
    static constexpr SDL_Color BODY = {80, 255, 112, 255};

    void SetUp() override {
        EngineTest::SetUp();
        choose_driver(SDL_HINT_VIDEO_DRIVER, "x11");
        choose_driver(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    }
    bool start_focused(const std::string &screen, const std::string &size, int fixed_step_hz = 60) {
        config += "[simulation]\nfixed_step_hz = " + std::to_string(fixed_step_hz) + "\n";
        if (!start_screen(screen, size)) return false;
        const std::string window = find_window("Lumarind Engine v0.0.1");
        xdotool("windowfocus --sync " + window);
        frames(5, 0.02);
        return !window.empty();
    }
};

TEST_F(InputWindowTest, TwentyTapsAreCountedOnceInStepsAndOnceInTicks) {
    for (const int hz : {7, 240}) { // fewer and more steps than frames
        ASSERT_TRUE(start_focused("input-demo", "640x400", hz));
        for (int tap = 0; tap < 20; tap++) {
            xdotool("key space");
            frames(12, 0.02);
        }
        const Picture before = picture();
        for (const float x : {144.0f, 200.0f}) { // drawing jump's counters again must not change the picture
            const SDL_FRect area = {x, 90 + 12 * 4, 3 * 8, 8};
            SDL_SetRenderDrawColor(engine->renderer, 20, 24, 30, 255);
            SDL_RenderFillRect(engine->renderer, &area);
            SDL_SetRenderDrawColor(engine->renderer, 208, 220, 230, 255);
            SDL_RenderDebugText(engine->renderer, area.x, area.y, "20");
        }
        EXPECT_TRUE(same_pixels(before, picture())) << hz;
        stop();
    }
}

TEST_F(InputWindowTest, RightAndJumpMoveThePlayer) {
    ASSERT_TRUE(start_focused("platformer-demo", "800x450"));
    const PictureBounds spawn = bounds_of(picture(), BODY);
    xdotool("keydown Right");
    frames(20, 1.0001 / 60);
    EXPECT_GT(bounds_of(picture(), BODY).left, spawn.left + 150);
    xdotool("keyup Right");
    xdotool("key space");
    frames(20, 1.0001 / 60);
    EXPECT_LT(bounds_of(picture(), BODY).bottom, spawn.bottom - 40) << "up to the dead zone's upper edge";
}

} // namespace
