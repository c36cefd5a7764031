// Sprite sheets exported by a sprite editor: slices, reloading, and trimmed frames, which must be drawn like untrimmed
// ones. What the loader reads and refuses is covered by the digests of the fuzz seeds.

#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/animation_set.h"
#include "lumarind/toolkit/reload.h"
#include "lumarind/toolkit/sprite_batch.h"
#include "player/fireknight.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_render.h>
#include <SDL3_image/SDL_image.h>

namespace {

class AnimationSetTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(start({"--screen", "text-demo", "--window-size", "300x140"}));
    }
    void TearDown() override {
        sprite_sheet_cleanup(&sheet);
        animation_set_cleanup(&set);
        EngineTest::TearDown();
    }
    bool load(const std::string &json) {
        directory.use_as_game_files();
        animation_set_cleanup(&set);
        write_file("a/sheet.json", json);
        set = animation_set_load("a/sheet.json");
        return set != nullptr;
    }
    static Picture drawn(const SpriteSheet *of, const Animation *anim, SDL_FlipMode flip, bool in_batch = false) {
        SpriteBatch *batch = sprite_batch_new(1);
        SDL_SetRenderDrawColor(engine_renderer(), 0, 255, 0, 255);
        SDL_RenderClear(engine_renderer());
        sprite_batch_begin(batch, of);
        EXPECT_TRUE(
            in_batch ? sprite_batch_add(batch, anim, {3, 5}, 1, flip) && sprite_batch_draw(engine_renderer(), batch)
                     : sprite_sheet_draw(engine_renderer(), of, anim, {3, 5}, 1, flip));
        sprite_batch_cleanup(&batch);
        return Picture(SDL_RenderReadPixels(engine_renderer(), nullptr));
    }

    AnimationSet *set = nullptr;
    SpriteSheet *sheet = nullptr;
};

// same_pixels for two pictures of equal size and format; faster, for a thousand comparisons.
bool same_rgb(const Picture &a, const Picture &b) {
    const SDL_PixelFormatDetails *format = SDL_GetPixelFormatDetails(a->format);
    const Uint32 colors = format->Rmask | format->Gmask | format->Bmask;
    const auto *p = static_cast<const Uint32 *>(a->pixels), *q = static_cast<const Uint32 *>(b->pixels);
    if (a->format != b->format || format->bytes_per_pixel != 4 || a->pitch != a->w * 4) return false;
    for (int i = 0; i < a->w * a->h; i++) {
        if ((p[i] ^ q[i]) & colors) return false;
    }
    return true;
}

// Frames with distinct durations: 10, 20, ... ms.
std::string frames_json(int count) {
    std::string json;
    for (int i = 0; i < count; i++) {
        json += (i ? ",\"f" : "\"f") + std::to_string(i) + R"(":{"frame":{"x":)" + std::to_string(4 * i) +
                R"(,"y":0,"w":4,"h":3},"duration":)" + std::to_string(10 * (i + 1)) + "}";
    }
    return "\"frames\":{" + json + "}";
}

std::string with_meta(const std::string &frames, const std::string &meta) {
    return "{" + frames + R"(,"meta":{"image":"sheet.png","app":"x","layers":[])" + (meta.empty() ? "" : "," + meta) +
           "}}";
}

TEST_F(AnimationSetTest, ExportedKnightDrawsSamePixelsAsItsTable) {
    set = animation_set_load("assets/fireknight/sprites/fireknight.json");
    ASSERT_NE(set, nullptr);
    sheet = sprite_sheet_new(engine_renderer(), set);
    SpriteSheet *table = sprite_sheet_new(engine_renderer(), &fireknight_animations);
    ASSERT_TRUE(sheet && table);
    ASSERT_EQ(set->clip_count, FIREKNIGHT_CLIP_COUNT);
    int frames = 0;
    for (int clip = 0; clip < set->clip_count; clip++) {
        const AnimationClip *row = &set->clips[clip], *expected = &fireknight_animations.clips[clip];
        EXPECT_STREQ(row->name, expected->name);
        ASSERT_EQ(row->frame_count, expected->frame_count);
        EXPECT_EQ(row->loop, expected->loop);
        for (int i = 0; i < row->frame_count; i++, frames++) {
            Animation loaded = {}, constant = {};
            EXPECT_EQ(row->frame_ms[i], expected->frame_ms[i]);
            ASSERT_TRUE(animation_init(&loaded, set, clip) && animation_init(&constant, &fireknight_animations, clip));
            animation_set_frame(&loaded, i);
            animation_set_frame(&constant, i);
            for (const SDL_FlipMode flip : {SDL_FLIP_NONE, SDL_FLIP_HORIZONTAL, SDL_FLIP_VERTICAL}) {
                if (flip != SDL_FLIP_NONE && i % 8 != 3) continue;
                const Picture a = drawn(sheet, &loaded, flip), b = drawn(table, &constant, flip);
                ASSERT_TRUE(same_rgb(a, b)) << row->name << ", frame " << i << ", flip " << flip;
                ASSERT_TRUE(i % 8 != 3 || same_rgb(drawn(sheet, &loaded, flip, true), a))
                    << "in a batch: " << row->name << ", frame " << i << ", flip " << flip;
            }
        }
    }
    EXPECT_EQ(frames, 163);
    const AnimationSliceKey *feet = animation_slice_at(animation_set_find_slice(set, "feet"), 7);
    ASSERT_NE(feet, nullptr);
    EXPECT_TRUE(feet->has_pivot && feet->pivot.x == 144 && feet->pivot.y == 128);
    EXPECT_EQ(sprite_sheet_dest_rect(sheet, {0, 0}, 2).w, 576) << "the untrimmed frame's size";
    sprite_sheet_cleanup(&table);
}

TEST_F(AnimationSetTest, ImageMustHoldAllFrames) {
    ASSERT_TRUE(load(with_meta(
        R"("frames":[{"filename":"b","frame":{"x":0,"y":0,"w":2,"h":3},"trimmed":true,"rotated":false,
           "spriteSourceSize":{"x":5,"y":1,"w":2,"h":3},"sourceSize":{"w":8,"h":6},"duration":70},
           {"filename":"a","frame":{"x":2,"y":0,"w":4,"h":4}}])",
        R"("size":{"w":6,"h":4})")));
    const Picture small(SDL_CreateSurface(5, 4, SDL_PIXELFORMAT_RGBA32));
    ASSERT_TRUE(IMG_SavePNG(small.get(), "a/sheet.png"));
    EXPECT_EQ(sprite_sheet_new(engine_renderer(), set), nullptr);
    EXPECT_TRUE(log.has("[SPRITE_SHEET] a/sheet.png is 5x4, but frame 1 of its set ends at 6, 4: export both again"));
}

TEST_F(AnimationSetTest, SetAndSheetAreHotReloadedTogether) {
    const auto save_picture = [](int width) {
        IMG_SavePNG(Picture(SDL_CreateSurface(width, 3, SDL_PIXELFORMAT_RGBA32)).get(), "a/sheet.png");
    };
    reload_set(true, 0);
    ASSERT_TRUE(load(with_meta(frames_json(3), "")));
    save_picture(12);
    sheet = sprite_sheet_new(engine_renderer(), set);
    Animation anim = {};
    ASSERT_TRUE(sheet && animation_init(&anim, set, 0));
    animation_set_frame(&anim, 2);
    const std::string two_clips = R"("frameTags":[{"name":"a","from":0,"to":0},{"name":"b","from":0,"to":0}])";
    const struct {
        std::string json; // empty: the image changes
        int width, frames, picture;
        const char *error;
    } steps[] = {
        {with_meta(frames_json(4), ""), 0, 3, 12, "a/sheet.png is 12x3, but frame 3 of its set ends at 16, 3"},
        {"", 16, 4, 16, nullptr}, // now they match
        {"{", 0, 4, 16, "a/sheet.json: invalid JSON"},
        {"", 8, 4, 16, "a/sheet.json: invalid JSON"},
        {with_meta(frames_json(2), two_clips), 0, 2, 8, nullptr},
        {with_meta(frames_json(1), ""), 0, 2, 8, "a/sheet.json: 1 clips, but 2 are in use"},
    };
    for (const auto &step : steps) {
        log.lines.clear();
        if (step.width > 0) save_picture(step.width);
        if (!step.json.empty()) write_file("a/sheet.json", step.json);
        for (int i = 0; i < 3; i++) reload_tick();
        EXPECT_EQ(log.errors().size(), step.error ? 1u : 0u) << "reported once";
        EXPECT_TRUE(!step.error || log.has(step.error)) << step.error;
        EXPECT_TRUE(set->rows == step.frames && sheet->frame_count == step.frames) << set->rows;
        EXPECT_EQ(sheet->texture->w, step.picture);
        EXPECT_TRUE(sprite_sheet_draw(engine_renderer(), sheet, &anim, {0, 0}, 1, SDL_FLIP_NONE));
    }
    animation_advance(&anim, 0);
    EXPECT_EQ(anim.frame, 0) << "a clip that became shorter restarts";
    animation_set_cleanup(&set);
    reload_set(false);
}

} // namespace
