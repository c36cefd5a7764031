// Animation clips, and sprite sheets that do or do not fit their set.

#include "engine/engine.h"
#include "support/allocation_faults.h"
#include "support/engine_fixture.h"
#include "toolkit/fireknight.h"
#include "toolkit/reload.h"
#include "toolkit/sprite_sheet.h"

#include <SDL3/SDL_render.h>
#include <SDL3_image/SDL_image.h>

#include <cmath>

namespace {

constexpr Sint32 MS[] = {100, 50, 200, 0, 30};
constexpr Sint32 EVEN_MS[] = {100, 100, 100};
constexpr AnimationClip CLIPS[] = {
    {"uneven", 0, 3, MS, true},
    {"once", 1, 3, EVEN_MS, false},
    {"holds", 0, 5, MS, true},
    {"bare", 0, 3, nullptr, true}};
constexpr AnimationSet SET = {"sheet.png", 8, 4, 2, 3, CLIPS, 4};

Animation playing(const AnimationSet *set, int clip) {
    Animation anim = {};
    EXPECT_TRUE(animation_init(&anim, set, clip));
    return anim;
}

// --- animation ---

TEST(AnimationTest, TheFireknightsClipsAreWhereTheSheetHasThem) {
    const AnimationSet *set = &fireknight_animations;
    ASSERT_EQ(set->clip_count, 14);
    for (int clip = 0; clip < set->clip_count; clip++) {
        const AnimationClip *row = &set->clips[clip];
        EXPECT_EQ(row->first_frame, 28 * clip);
        EXPECT_LE(row->frame_count, 28);
        EXPECT_EQ(animation_find_clip(set, row->name), clip);
    }
    EXPECT_EQ(animation_find_clip(set, "dance"), -1);
    EXPECT_EQ(animation_find_clip(nullptr, "x") + animation_find_clip(set, nullptr), -2);
    Animation anim = playing(set, FIREKNIGHT_JUMP);
    animation_set_frame(&anim, 3);
    EXPECT_EQ(animation_sheet_frame(&anim), 115);
    const SDL_FRect rect = animation_frame_rect(&anim);
    EXPECT_TRUE(rect.x == 864 && rect.y == 512 && rect.w == 288 && rect.h == 128);
}

TEST(AnimationTest, TimeMovesFramesOnceThroughTheClipAtMost) {
    Animation idle = playing(&fireknight_animations, FIREKNIGHT_IDLE);
    animation_advance(&idle, 0.25);
    EXPECT_TRUE(idle.frame == 2 && std::abs(idle.elapsed_ms - 50) < 1e-9);
    animation_restart(&idle);
    animation_advance(&idle, 10);
    EXPECT_TRUE(idle.frame == 0 && idle.elapsed_ms == 0);
    animation_advance(&idle, 0.1);
    EXPECT_EQ(idle.frame, 1) << "exactly one duration is one frame";

    Animation roll = playing(&fireknight_animations, FIREKNIGHT_ROLL);
    animation_advance(&roll, 0.8);
    EXPECT_TRUE(roll.frame == 7 && roll.finished && !roll.playing && roll.elapsed_ms == 0);
    animation_play(&roll);
    animation_pause(&roll);
    for (const double dt : {1.0, 0.0, -1.0, static_cast<double>(NAN)}) animation_advance(&roll, dt);
    EXPECT_EQ(roll.frame, 7);
    animation_next_frame(&roll);
    EXPECT_EQ(roll.frame, 0);
    animation_prev_frame(&roll);
    EXPECT_TRUE(roll.frame == 7 && !roll.finished);
    animation_set_frame(&roll, 8);
    EXPECT_EQ(roll.frame, 7);
    for (const auto &[ms, frame] : {std::pair{99.0, 0}, {100, 1}, {149, 1}, {150, 2}, {349, 2}, {350, 0}}) {
        Animation uneven = playing(&SET, 0);
        animation_advance(&uneven, ms / 1000);
        EXPECT_EQ(uneven.frame, frame) << ms;
    }
    Animation holds = playing(&SET, 2);
    animation_advance(&holds, 100);
    EXPECT_EQ(holds.frame, 3) << "a frame without a duration holds";
}

TEST(AnimationTest, WhatIsNoAnimationIsRefusedOrLeftAlone) {
    const LogCapture log;
    Animation anim = {};
    const AnimationSet no_clips = {nullptr, 8, 4, 2, 3, nullptr, 4}, no_cells = {"flat", 8, 0, 2, 3, CLIPS, 4};
    EXPECT_FALSE(animation_init(nullptr, &SET, 0) || animation_init(&anim, nullptr, 0));
    EXPECT_FALSE(animation_init(&anim, &no_clips, 0) || animation_init(&anim, &no_cells, 0));
    EXPECT_FALSE(animation_select_clip(&anim, 0));
    EXPECT_EQ(
        log.errors(), (std::vector<std::string>{
                          "[ANIMATION] No animation to initialise", "[ANIMATION] No animation set given",
                          "[ANIMATION] Set '(unnamed)' holds no clips",
                          "[ANIMATION] Set 'flat' has a 2x3 grid of 8x0 frames, which has no cells",
                          "[ANIMATION] No animation to select a clip on"}));
    anim = playing(&fireknight_animations, FIREKNIGHT_RUN);
    EXPECT_FALSE(animation_select_clip(&anim, 14));
    EXPECT_TRUE(
        log.has("[ANIMATION] Clip 14 is outside the 14 clips of 'assets/fireknight/sprites/fireknight_288x128.png'"));
    EXPECT_EQ(anim.clip, FIREKNIGHT_RUN);
    for (const auto operation : {animation_play, animation_pause, animation_restart}) operation(nullptr);
    animation_advance(nullptr, 1);
    Animation bare = playing(&SET, 3);
    animation_advance(&bare, 1);
    EXPECT_EQ(bare.frame, 0);
    EXPECT_EQ(animation_sheet_frame(nullptr), -1);
    EXPECT_EQ(animation_frame_rect(nullptr).w, 0);
}

// --- sheets ---

class SheetTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(start({"--screen", "text-demo"}));
    }
    void TearDown() override {
        sprite_sheet_cleanup(&sheet);
        EngineTest::TearDown();
    }
    static void save_sheet(int width, int height) { // each frame in a colour of its own, its left half darker
        const Picture image(SDL_CreateSurface(width, height, SDL_PIXELFORMAT_RGBA32));
        for (int y = 0; y < height; y++) {
            for (int x = 0; x < width; x++) {
                const int frame = y / 4 * 2 + x / 8;
                SDL_WriteSurfacePixel(
                    image.get(), x, y, static_cast<Uint8>(40 * frame + 20), x % 8 < 4 ? 100 : 200, 50, 255);
            }
        }
        ASSERT_TRUE(IMG_SavePNG(image.get(), "sheet.png"));
    }
    SpriteSheet *sheet = nullptr;
};

TEST_F(SheetTest, DrawsTheCurrentFrameSharpAndFlipped) {
    save_sheet(16, 12);
    sheet = sprite_sheet_new(engine_renderer(), &SET);
    ASSERT_NE(sheet, nullptr);
    Animation anim = playing(&SET, 1); // its first frame is the sheet's second
    animation_next_frame(&anim);
    for (const bool flipped : {false, true}) {
        SDL_SetRenderDrawColor(engine_renderer(), 0, 0, 0, 255);
        SDL_RenderClear(engine_renderer());
        ASSERT_TRUE(sprite_sheet_draw(
            engine_renderer(), sheet, &anim, {10, 20}, 3, flipped ? SDL_FLIP_HORIZONTAL : SDL_FLIP_NONE));
        sprite_sheet_draw_frame_outline(engine_renderer(), sheet, {10, 20}, 3, {255, 255, 255, 255});
        const Picture drawn = picture();
        const PictureBounds dark = bounds_of(drawn, {100, 100, 50, 255}), light = bounds_of(drawn, {100, 200, 50, 255});
        const PictureBounds left = {10, 20, 21, 31}, right = {22, 20, 33, 31};
        EXPECT_EQ(dark, flipped ? right : left);
        EXPECT_EQ(light, flipped ? left : right);
        EXPECT_EQ(bounds_of(drawn, {255, 255, 255, 255}), (PictureBounds{9, 19, 34, 32})) << "the outline";
    }
    const AnimationSet twin = SET;
    const Animation other = playing(&twin, 1);
    EXPECT_FALSE(sprite_sheet_draw(engine_renderer(), sheet, &other, {0, 0}, 1, SDL_FLIP_NONE));
    EXPECT_TRUE(log.has("[SPRITE_SHEET] The animation is playing a different set from sheet.png"));
    EXPECT_FALSE(sprite_sheet_draw(engine_renderer(), nullptr, &anim, {0, 0}, 1, SDL_FLIP_NONE));
    anim.clip = 99;
    EXPECT_FALSE(sprite_sheet_draw(engine_renderer(), sheet, &anim, {0, 0}, 1, SDL_FLIP_NONE));
    EXPECT_TRUE(log.has("[SPRITE_SHEET] The animation has no current frame"));
    EXPECT_EQ(sprite_sheet_dest_rect(nullptr, {1, 1}, 2).w, 0);
}

TEST_F(SheetTest, AnImageThatDoesNotFitIsRefusedByName) {
    save_sheet(16, 11);
    EXPECT_EQ(sprite_sheet_new(engine_renderer(), &SET), nullptr);
    EXPECT_TRUE(log.has(
        "[SPRITE_SHEET] sheet.png is 16x11, but its set describes a 2x3 grid of 8x4 frames, which is "
        "16x12. Regenerate it with tools/aseprite_json_to_c"));
    for (const char *content : {"", "no picture at all", "\x89PNG\r\n\x1a\n\0\0\0\rIHDR"}) {
        write_file("sheet.png", content);
        log.lines.clear();
        EXPECT_EQ(sprite_sheet_new(engine_renderer(), &SET), nullptr);
        EXPECT_TRUE(log.has("[SPRITE_SHEET] IMG_LoadTexture failed for sheet.png, error: "));
    }
    EXPECT_EQ(sprite_sheet_new(nullptr, &SET), nullptr);
    save_sheet(16, 12);
    expect_allocation_faults_survived(
        &log, [&] { return (sheet = sprite_sheet_new(engine_renderer(), &SET)) != nullptr; },
        [&] { sprite_sheet_cleanup(&sheet); });
}

TEST_F(SheetTest, ASheetFollowsItsPicture) {
    reload_set(true, 0);
    save_sheet(16, 12);
    sheet = sprite_sheet_new(engine_renderer(), &SET);
    ASSERT_NE(sheet, nullptr);
    const SpriteSheet *before = sheet;
    const SDL_Texture *first = sheet->texture;
    for (const bool cut : {true, false}) {
        save_sheet(16, cut ? 11 : 12);
        if (cut) write_file("sheet.png", read_file("sheet.png") + "x"); // in the same second, another size
        reload_tick();
        EXPECT_EQ(sheet->texture == first, cut) << "a picture that does not fit leaves the old one";
    }
    EXPECT_EQ(sheet, before);
    const Animation anim = playing(&SET, 0);
    EXPECT_TRUE(sprite_sheet_draw(engine_renderer(), sheet, &anim, {0, 0}, 1, SDL_FLIP_NONE));
    reload_set(false);
}

} // namespace
