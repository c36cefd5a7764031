// The three screens that show the castle and the knight.

#include "screens/castle.h"
#include "support/engine_fixture.h"
#include "toolkit/render_grid.h"

#include <SDL3/SDL_render.h>

namespace {

constexpr SDL_Color VIEW_OUTLINE = {255, 193, 7, 255}, BOX = {32, 32, 32, 255}, OUTLINE = {120, 216, 254, 255};

class CastleScreensTest : public EngineTest {
protected:
    bool start_at(const char *screen, const char *size = "800x450", int ui_scale = 1) {
        return start({"--screen", screen, "--window-size", size, "--ui-scale", std::to_string(ui_scale)}) && frame();
    }
};

TEST_F(CastleScreensTest, TheCastleFillsTheViewWhereverItHasPanned) {
    for (const int ui_scale : {1, 2, 3}) {
        ASSERT_TRUE(start_at("tilemap-demo", "801x451", ui_scale));
        Picture before = shown();
        for (int i = 0; i < 6; i++) {
            for (int k = 0; k < 20; k++) frame(0.25);
            const Picture now = shown(0.11);
            EXPECT_FALSE(same_pixels(before, now)) << "it moves";
            EXPECT_EQ(count_pixels(now, {0, 0, 0, 255}), 0) << "no gap, at UI scale " << ui_scale;
            before.reset(SDL_DuplicateSurface(now.get()));
        }
    }
}

TEST_F(CastleScreensTest, LostTargetsAreBakedAgain) {
    ASSERT_TRUE(start({"--screen", "text-demo"}));
    Castle castle = {};
    ASSERT_TRUE(castle_load(&castle, 3));
    castle_draw_panning(&castle, 0);
    const Picture before = picture();
    SDL_Texture *saved = nullptr;
    ASSERT_TRUE(render_grid_begin_chunk(engine->renderer, castle.grid, 0, 0, &saved)); // wipes it
    ASSERT_TRUE(render_grid_end_chunk(engine->renderer, saved));
    SDL_RenderClear(engine->renderer);
    castle_draw_panning(&castle, 0);
    EXPECT_FALSE(same_pixels(before, picture()));
    SDL_Event event = {};
    event.type = SDL_EVENT_RENDER_TARGETS_RESET;
    ASSERT_TRUE(SDL_PushEvent(&event));
    castle_draw_panning(&castle, 0);
    EXPECT_TRUE(same_pixels(before, picture()));
    castle_cleanup(&castle);
    castle_cleanup(&castle);
    EXPECT_TRUE(SDL_PushEvent(&event)) << "nobody listens any more";
}

TEST_F(CastleScreensTest, TheLogicalViewIsScaledByWholeNumbersUnderACrispLabel) {
    ASSERT_TRUE(start_at("logical-demo", "1024x600"));
    const Picture drawn = shown(); // 4 times 256 × 144, in the middle
    EXPECT_EQ(bounds_of(drawn, VIEW_OUTLINE), (PictureBounds{0, 12, 1023, 587}));
    const PictureBounds box = bounds_of(drawn, BOX);
    EXPECT_TRUE(box.right == 1024 - 10 - 2 && box.bottom == 600 - 10 - 2) << box.right << ", " << box.bottom;
    resize(700, 500);
    EXPECT_EQ(bounds_of(shown(), BOX).right, 700 - 10 - 2);
    EXPECT_TRUE(log.errors().empty());
}

TEST_F(CastleScreensTest, PAndStartPauseTheLogicalView) {
    ASSERT_TRUE(start_at("logical-demo", "1024x600"));
    for (int k = 0; k < 8; k++) frame(0.25);
    key_down(SDLK_P);
    key_down(SDLK_P, SDL_KMOD_NONE, true);
    frame(0.05);
    frame(0.05);
    const Picture paused = shown(0.05);
    const Picture later = shown(0.2);
    EXPECT_TRUE(same_pixels(paused, later)) << "held P toggles once";
    const int wide = bounds_of(paused, BOX).right - bounds_of(paused, BOX).left;
    gamepad_down(SDL_GAMEPAD_BUTTON_START);
    frame(0.2);
    const Picture running = shown(0.2);
    EXPECT_FALSE(same_pixels(paused, running));
    EXPECT_LT(bounds_of(running, BOX).right - bounds_of(running, BOX).left, wide) << "the shorter label";
}

TEST_F(CastleScreensTest, TheSpriteScreenLaysItselfOutAndAnswersItsKeys) {
    ASSERT_TRUE(start_at("sprite-demo", "1280x720"));
    const PictureBounds frame_outline = bounds_of(shown(), OUTLINE);
    EXPECT_TRUE(frame_outline.left <= 351 && frame_outline.top == 19) << "scale 2 at (352, 20)";
    key_down(SDLK_PERIOD); // pauses
    key_down(SDLK_2);
    const Picture paused = shown(0.2);
    EXPECT_TRUE(same_pixels(paused, shown(0.25)));
    EXPECT_EQ(bounds_of(paused, OUTLINE), (PictureBounds{351, 19, 351 + 577, 19 + 257})) << "without the sheet";
    for (const SDL_Keycode key : {SDLK_F, SDLK_PERIOD, SDLK_COMMA, SDLK_F}) {
        const Picture before(SDL_DuplicateSurface(picture().get()));
        key_down(key);
        EXPECT_FALSE(same_pixels(before, shown())) << SDL_GetKeyName(key);
    }
    key_down(SDLK_1);
    EXPECT_EQ(count_pixels(shown(), OUTLINE), 0);
    key_down(SDLK_LEFT); // to the last clip
    key_down(SDLK_SPACE);
    frames(7, 0.25);
    const auto line = [](float y, const char *text) {
        return shows(20, y, {167, 202, 230, 255}, text, {20, 22, 28, 255});
    };
    EXPECT_TRUE(line(356, "clip 14/14  death      frame 13/13   100 ms   sheet frame 376"));
    EXPECT_TRUE(line(368, "paused   finished   facing right   auto-cycle off"));
    EXPECT_TRUE(line(380, "left/right clip   space play   , . step   f flip   r resume cycle   1 outline   2 sheet"));
    key_down(SDLK_SPACE);
    frame();
    EXPECT_TRUE(line(356, "clip 14/14  death      frame 1/13   100 ms   sheet frame 364   ")) << "replayed";
    key_down(SDLK_RIGHT); // comes round
    key_down(SDLK_R);
    frames(13, 0.25);
    EXPECT_TRUE(line(356, "clip 2/14  run        frame ")) << "three seconds later";
    EXPECT_TRUE(line(368, "playing   looping   facing right   auto-cycle on"));
    const Picture playing = shown();
    EXPECT_FALSE(same_pixels(playing, shown(0.2)));
    EXPECT_TRUE(log.errors().empty());
}

} // namespace
