// Clipped drawing, compared with drawing everything.

#include "lumarind/toolkit/sprite_batch.h"
#include "lumarind/toolkit/sprite_sheet.h"
#include "player/fireknight.h"
#include "support/call_faults.h"
#include "support/engine_fixture.h"
#include "toolkit/view_copy.h"

#include <SDL3/SDL_render.h>

#include <random>

namespace {

class ViewCopyTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(start({"--screen", "text-demo", "--window-size", "160x90"}));
        renderer = engine->renderer;
        sheet = sprite_sheet_new(renderer, &fireknight_animations);
        ASSERT_NE(sheet, nullptr);
    }
    void TearDown() override {
        sprite_sheet_cleanup(&sheet);
        EngineTest::TearDown();
    }
    template <typename Draw> Picture drawn(Draw draw, float render_scale = 1) const {
        SDL_SetRenderDrawColor(renderer, 10, 20, 30, 255);
        SDL_RenderClear(renderer);
        SDL_SetRenderScale(renderer, render_scale, render_scale);
        draw();
        SDL_SetRenderScale(renderer, 1, 1);
        return Picture(SDL_RenderReadPixels(renderer, nullptr));
    }
    SDL_Renderer *renderer = nullptr;
    SpriteSheet *sheet = nullptr;
};

TEST_F(ViewCopyTest, ClippedCopyMatchesWholeCopyAtAnyPosition) {
    std::mt19937 random(7);
    const auto number = [&](int low, int high) {
        return static_cast<float>(low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1)));
    };
    for (int i = 0; i < 400; i++) {
        const SDL_FRect src = {number(2000, 2090), number(200, 260), number(3, 13), number(3, 9)};
        const float texels[] = {1, 2, 8, 64, 2.5f, 0.5f};
        const float w = src.w * texels[random() % 6], h = src.h * texels[random() % 6];
        const float fraction = random() % 4 ? 0 : 0.25f;
        const SDL_FRect dst = {
            number(-static_cast<int>(w) - 9, 180) + fraction, number(-static_cast<int>(h) - 9, 100), w, h};
        const auto mode = static_cast<SDL_FlipMode>(i % 3); // none, horizontal, vertical
        const float render_scale = i % 5 ? 1 : number(2, 4);
        const Picture clipped =
            drawn([&] { EXPECT_TRUE(copy_texture_in_view(renderer, sheet->texture, &src, &dst, mode)); }, render_scale);
        const Picture whole = drawn(
            [&] { SDL_RenderTextureRotated(renderer, sheet->texture, &src, &dst, 0, nullptr, mode); }, render_scale);
        EXPECT_TRUE(same_pixels(clipped, whole)) << "round " << i;
    }
}

TEST_F(ViewCopyTest, DebugSheetMatchesSheetAtEverySizeAndOutlinesFrame) {
    Animation anim = {};
    animation_init(&anim, &fireknight_animations, FIREKNIGHT_J_DOWN);
    animation_set_frame(&anim, 2);
    constexpr SDL_Color RED = {255, 0, 0, 255}, GREEN = {0, 255, 0, 255};
    const SDL_FPoint pos = {-3, 20};
    const auto outline = [&](SDL_FRect rect, SDL_Color color) {
        const SDL_FRect around = {rect.x - 1, rect.y - 1, rect.w + 2, rect.h + 2};
        SDL_SetRenderDrawColor(renderer, color.r, color.g, color.b, 255);
        SDL_RenderRect(renderer, &around);
    };
    for (const bool logical : {false, true}) {
        for (const float scale : {0.01f, 0.02f, 0.02f, 0.013f, 1.0f}) {
            const Animation *marked = scale == 0.02f ? nullptr : &anim;
            const auto mode = logical ? SDL_LOGICAL_PRESENTATION_LETTERBOX : SDL_LOGICAL_PRESENTATION_DISABLED;
            SDL_SetRenderLogicalPresentation(renderer, 160, 90, mode);
            const Picture shown =
                drawn([&] { sprite_sheet_draw_debug_sheet(renderer, sheet, marked, pos, scale, RED, GREEN); });
            const Picture expected = drawn([&] {
                const SDL_FRect whole = {pos.x, pos.y, 8064 * scale, 1792 * scale};
                SDL_RenderTexture(renderer, sheet->texture, nullptr, &whole);
                outline(whole, RED);
                const SDL_FRect frame = {pos.x + 2 * 288 * scale, pos.y + 3 * 128 * scale, 288 * scale, 128 * scale};
                if (marked) outline(frame, GREEN);
            });
            EXPECT_TRUE(same_pixels(shown, expected)) << scale;
        }
    }
}

TEST_F(ViewCopyTest, BatchMatchesSingleSprites) {
    SpriteBatch *batch = sprite_batch_new(1); // it grows
    ASSERT_TRUE(batch);
    Uint64 random = 5;
    for (const float scale : {1.0f, 2.0f}) {
        sprite_batch_begin(batch, sheet);
        const Picture one_by_one = drawn([&] {
            for (int i = 0; i < 60; i++) {
                Animation animation = {};
                ASSERT_TRUE(
                    animation_init(&animation, &fireknight_animations, SDL_rand_r(&random, FIREKNIGHT_CLIP_COUNT)));
                animation_set_frame(&animation, SDL_rand_r(&random, 3));
                const SDL_FPoint pos = {
                    static_cast<float>(SDL_rand_r(&random, 300) - 200),
                    static_cast<float>(SDL_rand_r(&random, 150) - 100)};
                const auto flip = static_cast<SDL_FlipMode>(SDL_rand_r(&random, 3));
                EXPECT_TRUE(sprite_sheet_draw(renderer, sheet, &animation, pos, scale, flip));
                EXPECT_TRUE(sprite_batch_add(batch, &animation, pos, scale, flip));
            }
        });
        const Picture batched = drawn([&] { EXPECT_TRUE(sprite_batch_draw(renderer, batch)); });
        EXPECT_TRUE(same_pixels(batched, one_by_one)) << scale;
    }
    Animation other = {};
    sprite_batch_begin(batch, sheet);
    EXPECT_FALSE(sprite_batch_add(batch, &other, {0, 0}, 1, SDL_FLIP_NONE));
    EXPECT_TRUE(log.has("[SPRITE_SHEET] The animation is playing a different set from assets/"));
    EXPECT_TRUE(batch->count == 0 && sprite_batch_draw(renderer, batch));
    sprite_batch_cleanup(&batch);
    ASSERT_TRUE(animation_init(&other, &fireknight_animations, 0));
    expect_allocation_faults_survived(
        &log,
        [&] {
            batch = sprite_batch_new(1);
            if (!batch) return false;
            sprite_batch_begin(batch, sheet);
            for (int i = 0; i < 3; i++) {
                if (!sprite_batch_add(batch, &other, {0, 0}, 1, SDL_FLIP_NONE)) return false;
            }
            return true;
        },
        [&] { sprite_batch_cleanup(&batch); });
}

} // namespace
