// Fades between screens: state changes, opacity and drawing, in the running program.

#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/transition.h"
#include "screens/screen_states.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_render.h>

#include <vector>

namespace {

constexpr double STEP = 1.0 / 60;

class TransitionTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(start() && frame());
    }
    static void steps(int count) {
        for (int i = 0; i < count; i++) transition_fixed_update(STEP);
    }
    bool all_black() const {
        const Picture shown = picture();
        return count_pixels(shown, {0, 0, 0, 255}) == shown->w * shown->h;
    }
};

TEST_F(TransitionTest, ChangesStateBehindBlackFrameAndFadesIn) {
    EXPECT_FALSE(all_black());
    ASSERT_TRUE(transition_fade_to(GAME_STATE_TEXT_DEMO, 0.25));
    std::vector<double> covers, drawn;
    int turn = 0; // frames until the state change is requested
    for (int i = 0; i < 40; i++) {
        ASSERT_TRUE(frame(STEP * 1.0001));
        turn += engine_get_state() == GAME_STATE_MAIN_MENU;
        covers.push_back(transition_cover(1));
        drawn.push_back(transition_cover(0));
        EXPECT_TRUE(all_black() || engine_get_state() == engine_get_prev_state()) << "the old screen's last frame";
    }
    EXPECT_EQ(turn, 14) << "the fifteenth frame has run fifteen steps";
    EXPECT_EQ(covers[14], 1.0);
    EXPECT_EQ(covers[15], 1.0) << "the new screen's first frame: no simulated time has passed";
    EXPECT_EQ(drawn[15], 1.0) << "it is drawn fully covered";
    EXPECT_NEAR(covers[16], 14.0 / 15, 1e-9);
    EXPECT_EQ(covers.back(), 0.0);
    EXPECT_FALSE(all_black());
}

TEST_F(TransitionTest, RequestDuringFadeInReversesFromCurrentOpacity) {
    ASSERT_TRUE(transition_fade_to(GAME_STATE_MAIN_MENU, 0.25)); // the current state
    EXPECT_FALSE(transition_fade_to(GAME_STATE_TEXTURE_DEMO, 1.0)) << "rejected during a fade-out";
    steps(1);
    EXPECT_NEAR(transition_cover(0.5), 0.5 / 15, 1e-12) << "interpolated between the last two steps";
    steps(14);
    EXPECT_EQ(transition_cover(0), 1.0) << "a full cover is not interpolated";
    transition_tick();
    EXPECT_EQ(engine_get_state(), GAME_STATE_MAIN_MENU);
    steps(5);
    EXPECT_NEAR(transition_cover(1), 10.0 / 15, 1e-9) << "fades in without a state change";
    ASSERT_TRUE(transition_fade_to(GAME_STATE_TEXT_DEMO, 0.25));
    EXPECT_NEAR(transition_cover(0), 10.0 / 15, 1e-9) << "no jump";
    steps(1);
    EXPECT_NEAR(transition_cover(1), 11.0 / 15, 1e-9);
    transition_screen_changed(GAME_STATE_QUIT);
    EXPECT_EQ(transition_cover(1), 0.0) << "a change to another state ends the fade";
}

TEST_F(TransitionTest, CoverFillsWindowAndRestoresDrawColour) {
    SDL_Renderer *renderer = engine_renderer();
    engine_set_logical_size(256, 144);
    ASSERT_TRUE(transition_fade_to(GAME_STATE_TEXT_DEMO, 0.1));
    steps(6);
    engine_apply_space(true);
    SDL_SetRenderDrawColor(renderer, 255, 0, 0, 255);
    SDL_RenderClear(renderer);
    engine_apply_space(false);
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_ADD);
    transition_tick();
    EXPECT_TRUE(all_black());
    SDL_BlendMode blend = SDL_BLENDMODE_NONE;
    SDL_Color color = {};
    SDL_GetRenderDrawBlendMode(renderer, &blend);
    SDL_GetRenderDrawColor(renderer, &color.r, &color.g, &color.b, &color.a);
    EXPECT_TRUE(blend == SDL_BLENDMODE_ADD && same_color(color, {255, 0, 0, 255}) && color.a == 255);
}

} // namespace
