// Drawing that leaves out what nobody sees, against drawing all of it.

#include "support/allocation_faults.h"
#include "support/engine_fixture.h"
#include "toolkit/fireknight.h"
#include "toolkit/sprite_batch.h"
#include "toolkit/sprite_sheet.h"
#include "toolkit/view_copy.h"

#include <SDL3/SDL_render.h>

namespace {

class ViewCopyTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(start({"--screen", "text-demo", "--window-size", "160x90"}));
        renderer = engine->renderer;
        clear();
    }
    void clear() const {
        SDL_SetRenderDrawColor(renderer, 10, 20, 30, 255);
        SDL_RenderClear(renderer);
    }
    SDL_Renderer *renderer = nullptr;
};

SDL_Texture *noise_texture(SDL_Renderer *renderer) {
    Picture noise(SDL_CreateSurface(13, 9, SDL_PIXELFORMAT_RGBA32));
    Uint64 random = 7;
    for (int i = 0; i < 13 * 9; i++) {
        const Uint32 bits = SDL_rand_bits_r(&random);
        SDL_WriteSurfacePixel(
            noise.get(), i % 13, i / 13, static_cast<Uint8>(bits), static_cast<Uint8>(bits >> 8),
            static_cast<Uint8>(bits >> 16), static_cast<Uint8>(bits >> 24));
    }
    SDL_Texture *texture = SDL_CreateTextureFromSurface(renderer, noise.get());
    SDL_SetTextureScaleMode(texture, SDL_SCALEMODE_NEAREST);
    return texture;
}

TEST_F(ViewCopyTest, DrawsThePixelsOfAWholeCopyWhereverItLies) {
    struct Case {
        SDL_FRect src, dst;
        float render_scale;
    };
    constexpr Case CASES[] = {
        {{0, 0, 13, 9}, {10, 10, 13, 9}, 1},        {{0, 0, 13, 9}, {-7, -4, 104, 72}, 1},
        {{0, 0, 13, 9}, {100, 50, 104, 72}, 1},     {{2, 1, 8, 8}, {-333, -111, 512, 512}, 1},
        {{2, 1, 8, 8}, {-100, -60, 200, 200}, 3},   {{0, 0, 13, 9}, {-13, -9, 39, 27}, 5},
        {{0, 0, 13, 9}, {-5.5f, 3.25f, 52, 36}, 1}, {{0, 0, 13, 9}, {-9, -9, 170, 100}, 1},
        {{0, 0, 13, 9}, {200, 10, 26, 18}, 1},      {{0, 0, 13, 9}, {-26, 10, 26, 18}, 1},
    };
    SDL_Texture *texture = noise_texture(renderer);
    for (const Case &c : CASES) {
        for (const SDL_FlipMode flip : {SDL_FLIP_NONE, SDL_FLIP_HORIZONTAL, SDL_FLIP_VERTICAL}) {
            SCOPED_TRACE(testing::Message() << "case " << &c - CASES << ", flip " << flip);
            Picture pictures[2];
            for (Picture &drawn : pictures) {
                SDL_SetRenderScale(renderer, 1, 1);
                clear();
                SDL_SetRenderScale(renderer, c.render_scale, c.render_scale);
                if (&drawn == pictures) {
                    EXPECT_TRUE(copy_texture_in_view(renderer, texture, &c.src, &c.dst, flip));
                } else {
                    SDL_RenderTextureRotated(renderer, texture, &c.src, &c.dst, 0, nullptr, flip);
                }
                SDL_SetRenderScale(renderer, 1, 1);
                drawn.reset(SDL_RenderReadPixels(renderer, nullptr));
            }
            EXPECT_TRUE(same_pixels(pictures[0], pictures[1]));
        }
    }
    SDL_DestroyTexture(texture);
}

TEST_F(ViewCopyTest, TheSmallDebugSheetShowsThePixelsOfTheSheetAtEverySize) {
    constexpr SDL_Color RED = {255, 0, 0, 255};
    SpriteSheet *sheet = sprite_sheet_new(renderer, &fireknight_animations);
    ASSERT_NE(sheet, nullptr);
    for (const float scale : {0.01f, 0.02f, 0.02f, 0.013f}) {
        const SDL_FPoint pos = {-3, 20};
        clear();
        sprite_sheet_draw_debug_sheet(renderer, sheet, nullptr, pos, scale, RED, RED);
        const Picture small(SDL_RenderReadPixels(renderer, nullptr));
        clear();
        const SDL_FRect whole = {pos.x, pos.y, 8064 * scale, 1792 * scale};
        const SDL_FRect outline = {whole.x - 1, whole.y - 1, whole.w + 2, whole.h + 2};
        SDL_RenderTexture(renderer, sheet->texture, nullptr, &whole);
        SDL_SetRenderDrawColor(renderer, 255, 0, 0, 255);
        SDL_RenderRect(renderer, &outline);
        EXPECT_TRUE(same_pixels(small, Picture(SDL_RenderReadPixels(renderer, nullptr)))) << scale;
    }
    sprite_sheet_cleanup(&sheet);
}

TEST_F(ViewCopyTest, ABatchShowsThePixelsOfSpritesDrawnOneByOne) {
    SpriteSheet *sheet = sprite_sheet_new(renderer, &fireknight_animations);
    SpriteBatch *batch = sprite_batch_new(1); // it grows
    ASSERT_TRUE(sheet && batch);
    Uint64 random = 5;
    for (const float scale : {1.0f, 2.0f}) {
        clear();
        sprite_batch_begin(batch, sheet);
        for (int i = 0; i < 60; i++) {
            Animation animation = {};
            ASSERT_TRUE(animation_init(&animation, &fireknight_animations, SDL_rand_r(&random, FIREKNIGHT_CLIP_COUNT)));
            animation_set_frame(&animation, SDL_rand_r(&random, 3));
            const SDL_FPoint pos = {
                static_cast<float>(SDL_rand_r(&random, 300) - 200), static_cast<float>(SDL_rand_r(&random, 150) - 100)};
            const auto flip = static_cast<SDL_FlipMode>(SDL_rand_r(&random, 3));
            EXPECT_TRUE(sprite_sheet_draw(renderer, sheet, &animation, pos, scale, flip));
            EXPECT_TRUE(sprite_batch_add(batch, &animation, pos, scale, flip));
        }
        const Picture one_by_one(SDL_RenderReadPixels(renderer, nullptr));
        clear();
        EXPECT_TRUE(sprite_batch_draw(renderer, batch));
        EXPECT_TRUE(same_pixels(Picture(SDL_RenderReadPixels(renderer, nullptr)), one_by_one)) << scale;
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
    sprite_sheet_cleanup(&sheet);
}

} // namespace
