// Playback of animation clips, and sprite sheets that do or do not match their set.

#include "lumarind/toolkit/reload.h"
#include "lumarind/toolkit/sprite_sheet.h"
#include "player/fireknight.h"
#include "support/log_capture.h"
#include "support/picture.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_render.h>
#include <SDL3_image/SDL_image.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr Sint32 MS[] = {100, 50, 200, 0, 30}, EVEN_MS[] = {100, 100, 100}, ORDER[] = {5, 0, 2};
constexpr AnimationClip CLIPS[] = {
    {"uneven", 0, 3, MS, true},
    {"once", 1, 3, EVEN_MS, false},
    {"holds", 0, 5, MS, true},
    {"bare", 0, 3, nullptr, true},
    {"ordered", 0, 3, EVEN_MS, true, ORDER}};
constexpr AnimationSet SET = {"sheet.png", 8, 4, 2, 3, CLIPS, 5};

constexpr Sint32 AnimationSet::*GRID[] = {
    &AnimationSet::frame_w, &AnimationSet::frame_h, &AnimationSet::columns, &AnimationSet::rows};

Animation playing(const AnimationSet *set, int clip) {
    Animation anim = {};
    EXPECT_TRUE(animation_init(&anim, set, clip));
    return anim;
}

// --- animation ---

TEST(AnimationTest, RandomOperationsMatchRecordedHash) {
    const LogCapture log;
    constexpr Uint64 HASHES[] = {0xf8cf34c016bfb286, 0x3131c011fafb864e};
    for (const AnimationSet *set : {&SET, &fireknight_animations}) {
        std::mt19937 random(3);
        Uint64 hash = 0;
        std::vector<AnimationClip> clips(set->clips, set->clips + set->clip_count);
        AnimationSet reloaded = *set;
        reloaded.clips = clips.data();
        Animation anim = playing(&reloaded, 0);
        int number = 0;
        const auto advance = [&] { animation_advance(&anim, number < 0 ? double(NAN) : number * 0.025); };
        const std::function<void()> operations[] = {
            advance,
            advance,
            advance,
            [&] { animation_next_frame(&anim); },
            [&] { animation_prev_frame(&anim); },
            [&] { animation_select_clip(&anim, number); },
            [&] { animation_set_frame(&anim, number); },
            [&] { number < 4 ? animation_pause(&anim) : animation_play(&anim); },
            [&] { animation_restart(&anim); },
            [&] { // as by hot reload
                const int clip = number % set->clip_count, most = set->clips[SDL_max(clip, 0)].frame_count;
                clips[SDL_max(clip, 0)].frame_count = SDL_clamp(number / 2, 0, most);
            }};
        for (int i = 0; i < 20000; i++) {
            number = static_cast<int>(random() % 30) - 1;
            operations[random() % std::size(operations)]();
            const SDL_FRect rect = animation_frame_rect(&anim);
            for (const double part :
                 {double(anim.clip), double(anim.frame), std::round(anim.elapsed_ms), double(anim.playing),
                  double(anim.finished), double(animation_sheet_frame(&anim)), double(rect.x), double(rect.y),
                  double(rect.w), double(rect.h)}) {
                hash = (hash ^ static_cast<Uint64>(part)) * 1099511628211u;
            }
        }
        EXPECT_EQ(hash, HASHES[set != &SET]) << std::hex << "0x" << hash;
        for (int i = 0; i < set->clip_count; i++) EXPECT_EQ(animation_find_clip(set, set->clips[i].name), i);
    }
}

TEST(AnimationTest, InvalidAnimationsAreRejectedOrIgnored) {
    const LogCapture log;
    Animation anim = {};
    const AnimationSet no_clips = {nullptr, 8, 4, 2, 3, nullptr, 5};
    EXPECT_FALSE(animation_init(nullptr, &SET, 0) || animation_init(&anim, nullptr, 0));
    EXPECT_FALSE(animation_init(&anim, &no_clips, 0) || animation_select_clip(&anim, 0));
    EXPECT_EQ(
        log.errors(),
        (std::vector<std::string>{
            "[ANIMATION] No animation to initialise", "[ANIMATION] No animation set given",
            "[ANIMATION] Set '(unnamed)' holds no clips", "[ANIMATION] No animation to select a clip on"}));
    for (const auto size : GRID) {
        AnimationSet no_cells = SET;
        no_cells.*size = 0;
        EXPECT_FALSE(animation_init(&anim, &no_cells, 0));
    }
    EXPECT_TRUE(log.has("[ANIMATION] Set 'sheet.png' has a 2x3 grid of 8x0 frames, which has no cells"));
    const AnimationSet smallest = {"dot", 1, 1, 1, 1, CLIPS, 5};
    EXPECT_TRUE(animation_init(&anim, &smallest, 0));
    anim = playing(&SET, 1);
    EXPECT_FALSE(animation_select_clip(&anim, 5));
    EXPECT_TRUE(log.has("[ANIMATION] Clip 5 is outside the 5 clips of 'sheet.png'"));
    EXPECT_EQ(
        animation_find_clip(&SET, "dance") + animation_find_clip(nullptr, "x") + animation_find_clip(&SET, nullptr),
        -3);
    for (const auto operation : {animation_play, animation_pause, animation_restart}) operation(nullptr);
    animation_advance(nullptr, 1);
    EXPECT_TRUE(animation_sheet_frame(nullptr) == -1 && animation_frame_rect(nullptr).w == 0);
    const Animation unusable[] = {
        {}, {&no_clips, 0, 0, 0, true, false}, {&SET, -1, 0, 0, true, false}, {&SET, 5, 0, 0, true, false}};
    for (const Animation &each : unusable) EXPECT_EQ(animation_sheet_frame(&each), -1);
}

// --- sheets ---

TEST(SpriteSheetTest, RejectsMismatchedImageAndAnimationOfOtherSet) {
    const TemporaryDirectory directory;
    const LogCapture log;
    const Picture target(SDL_CreateSurface(64, 64, SDL_PIXELFORMAT_RGB24));
    SDL_Renderer *renderer = SDL_CreateSoftwareRenderer(target.get());
    SpriteSheet *sheet = nullptr;
    reload_set(true, 0);
    const AnimationSet twin = SET, nameless = {nullptr, 8, 4, 2, 3, CLIPS, 5};
    for (const int size : {1, 0}) {
        const Picture image(SDL_CreateSurface(16 + size, 12 - size, SDL_PIXELFORMAT_RGBA32));
        ASSERT_TRUE(IMG_SavePNG(image.get(), "sheet.png"));
        sheet = sprite_sheet_new(renderer, &SET);
        EXPECT_EQ(sheet == nullptr, size == 1);
    }
    EXPECT_FALSE(sprite_sheet_new(nullptr, &SET) || sprite_sheet_new(renderer, nullptr));
    EXPECT_FALSE(sprite_sheet_new(renderer, &nameless));
    for (const auto size : GRID) {
        AnimationSet no_cells = SET;
        no_cells.*size = 0;
        EXPECT_FALSE(sprite_sheet_new(renderer, &no_cells));
    }
    Animation anim = playing(&SET, 1), other = playing(&twin, 1);
    const auto draw = [&](const Animation *shown) {
        return sprite_sheet_draw(renderer, sheet, shown, {0, 0}, 1, SDL_FLIP_NONE);
    };
    EXPECT_TRUE(draw(&anim));
    anim.clip = 99;
    EXPECT_FALSE(draw(&other) || draw(&anim) || draw(nullptr));
    EXPECT_TRUE(log.has("sheet.png is 17x11, but its set describes a 2x3 grid of 8x4 frames, which is 16x12. "));
    EXPECT_TRUE(log.has("The animation is playing a different set from sheet.png") && log.errors().size() == 11);
    const SDL_Texture *first = sheet->texture;
    for (const int height : {11, 12}) { // hot reload of the sheet; the first version does not fit
        IMG_SavePNG(Picture(SDL_CreateSurface(16, height, SDL_PIXELFORMAT_RGBA32)).get(), "sheet.png");
        if (height == 11)
            write_file("sheet.png", read_file("sheet.png") + "x"); // changes the size within the same second
        reload_tick();
        EXPECT_EQ(sheet->texture == first, height == 11);
        anim.clip = 1;
        EXPECT_TRUE(draw(&anim));
    }
    Uint64 checked_ms = 0;
    reload_set(true, 60000);
    EXPECT_TRUE(reload_is_due(&checked_ms) && !reload_is_due(&checked_ms)) << "once per interval";
    reload_set(false);
    sprite_sheet_cleanup(&sheet);
    EXPECT_EQ(sprite_sheet_dest_rect(sheet, {1, 1}, 2).w, 0);
    SDL_DestroyRenderer(renderer);
}

} // namespace
