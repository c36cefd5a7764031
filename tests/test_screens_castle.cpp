// The castle shared by three screens, after the renderer has lost its render targets.

#include "lumarind/toolkit/render_grid.h"
#include "screens/castle.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_render.h>

namespace {

class CastleTest : public EngineTest {};

TEST_F(CastleTest, LostRenderTargetsAreBakedAgain) {
    ASSERT_TRUE(start({"--screen", "text-demo"}));
    Castle castle = {};
    ASSERT_TRUE(castle_load(&castle, 3));
    castle_draw_panning(&castle, 0);
    const Picture before = picture();
    SDL_Texture *saved = nullptr;
    ASSERT_TRUE(render_grid_begin_chunk(engine->renderer, castle.grid, 0, 0, &saved)); // clears it
    ASSERT_TRUE(render_grid_end_chunk(engine->renderer, saved));
    SDL_RenderClear(engine->renderer);
    castle_draw_panning(&castle, 0);
    EXPECT_FALSE(same_pixels(before, picture()));
    push_event(SDL_EVENT_RENDER_TARGETS_RESET);
    castle_draw_panning(&castle, 0);
    EXPECT_TRUE(same_pixels(before, picture()));
    castle_cleanup(&castle);
    castle_cleanup(&castle);
    push_event(SDL_EVENT_RENDER_TARGETS_RESET); // no longer watched
}

} // namespace
