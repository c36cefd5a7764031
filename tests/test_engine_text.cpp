// Drawing spaces, fonts, texts and the FPS read-out.

#include "engine/drawing_space.h"
#include "engine/engine.h"
#include "engine/text.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>
#include <SDL3_ttf/SDL_ttf.h>

#include <cmath>

namespace {

constexpr const char *PIXEL_FONT = "assets/fonts/Perfect DOS VGA 437 Win.ttf";
constexpr SDL_Color INK = {255, 255, 0, 255};

class TextTest : public EngineTest {
protected:
    bool start_at_scale(int scale) {
        config = "[graphics]\nvsync_enable = false\nui_scale = " + std::to_string(scale) + "\n";
        return start({"--screen", "text-demo", "--window-size", "640x480"});
    }
    void clear() const {
        SDL_SetRenderDrawColor(engine_renderer(), 0, 0, 0, 255);
        SDL_RenderClear(engine_renderer());
    }
};

// --- spaces ---

TEST_F(TextTest, TheViewIsTheWindowInUiUnitsOrTheLogicalSize) {
    ASSERT_TRUE(start_at_scale(2));
    float width = 0, height = 0, scale_x = 0, scale_y = 0;
    engine_view_size(&width, &height);
    EXPECT_EQ(width, 320);
    EXPECT_EQ(height, 240);

    ASSERT_TRUE(engine_set_logical_size(256, 144));
    EXPECT_TRUE(engine_in_logical_space());
    engine_view_size(&width, nullptr);
    engine_view_size(nullptr, &height);
    EXPECT_EQ(width, 256);
    EXPECT_EQ(height, 144);
    SDL_GetRenderScale(engine_renderer(), &scale_x, &scale_y);
    EXPECT_EQ(scale_x, 1);

    engine_use_ui_space();
    EXPECT_FALSE(engine_in_logical_space());
    engine_view_size(&width, &height);
    EXPECT_EQ(width, 320) << "an overlay on a logical screen sees the UI view";
    ASSERT_TRUE(engine_set_logical_size(0, 0));
    SDL_GetRenderScale(engine_renderer(), &scale_x, &scale_y);
    EXPECT_EQ(scale_x, 2);
    EXPECT_EQ(scale_y, 2);
}

// --- fonts ---

TEST_F(TextTest, FontsAreOpenedAtOutputSizeAndListedUpToEight) {
    ASSERT_TRUE(start_at_scale(2));
    EXPECT_EQ(TTF_GetFontSize(engine_get_font_by_index(SHARED_FONT_UI)), 64);
    EXPECT_EQ(TTF_GetFontSize(engine_get_font_by_index(SHARED_FONT_UI_HEADING)), 96);
    EXPECT_EQ(engine_get_font_by_index(2), nullptr);
    EXPECT_EQ(engine_get_font_by_index(-1), nullptr);
    TTF_Font *font = engine_get_font_by_index(SHARED_FONT_UI);
    for (int slot = 2; slot < MAX_FONTS; slot++) EXPECT_EQ(engine_add_font(font_copy(font)), slot);
    TTF_Font *ninth = font_copy(font);
    EXPECT_EQ(engine_add_font(ninth), -1);
    EXPECT_TRUE(log.has("[ENGINE] Maximum number of fonts reached: fonts: MAX_FONTS=8"));
    font_cleanup(ninth);
    font_cleanup(nullptr);
    engine_set_active_font(font);
    EXPECT_EQ(engine_get_font(), font);
}

TEST_F(TextTest, WhatIsNoFontIsReportedByItsPath) {
    ASSERT_TRUE(start_at_scale(1));
    write_file("broken.ttf", "this is no font");
    EXPECT_EQ(font_open("missing.ttf", 32), nullptr);
    EXPECT_EQ(font_open("broken.ttf", 32), nullptr);
    EXPECT_EQ(font_copy(nullptr), nullptr);
    EXPECT_TRUE(log.has("[FONTS] Font file not found (missing.ttf)"));
    EXPECT_TRUE(log.has("[FONTS] Setting up font: broken.ttf"));
    EXPECT_TRUE(log.has("[FONTS] Font loading failed, error: "));
    EXPECT_TRUE(log.has("[FONTS] Font copying failed, error: "));
    EXPECT_FALSE(font_set_size(nullptr, 10));
    EXPECT_TRUE(log.has("[FONTS] Unable to change font size, error: "));
}

// --- texts ---

TEST_F(TextTest, TextLandsOnWholeOutputPixelsInBothSpaces) {
    for (const int scale : {1, 2, 3}) {
        ASSERT_TRUE(start_at_scale(scale));
        TTF_Font *font = font_open(PIXEL_FONT, 16);
        TTF_Text *text = engine_prepare_text(font, "\xE2\x96\x88", 0, INK); // a full block: 8 × 16 units of ink
        ASSERT_NE(text, nullptr);
        float width = 0, height = 0;
        engine_text_size(text, &width, &height);
        EXPECT_EQ(width, 8) << scale;
        EXPECT_EQ(height, 16) << scale;

        clear();
        engine_render_text(text, 10.3f, 5);
        const int left = static_cast<int>(std::lround(10.3f * static_cast<float>(scale)));
        PictureBounds bounds = bounds_of(picture(), INK);
        EXPECT_EQ(bounds.left, left) << scale;
        EXPECT_EQ(bounds.top, 5 * scale) << scale;
        EXPECT_EQ(bounds.right - bounds.left + 1, 8 * scale) << scale;
        EXPECT_EQ(bounds.bottom - bounds.top + 1, 16 * scale) << scale;
        float after = 0;
        SDL_GetRenderScale(engine_renderer(), &after, nullptr);
        EXPECT_EQ(after, static_cast<float>(scale)) << "the space's scale is back";

        engine_cleanup_text(&text);
        EXPECT_EQ(text, nullptr);
        engine_cleanup_text(&text);
        engine_cleanup_text(nullptr);
        font_cleanup(font);
        stop();
    }
}

TEST_F(TextTest, ATextThatCannotBeMadeIsReported) {
    ASSERT_TRUE(start_at_scale(1));
    const char bad[] = "abcdef";
    TTF_Text *text = engine_prepare_text(engine_get_font_by_index(0), bad, 3, INK);
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(text->text, "abc") << "a length cuts the text";
    engine_cleanup_text(&text);
}

// --- shared assets at size ---

TEST_F(TextTest, BothFontsHoldLatinOneAndThePixelFontIsPixelExact) {
    ASSERT_TRUE(start_at_scale(1));
    TTF_Font *pixel_font = font_open(PIXEL_FONT, 48);
    for (TTF_Font *font : {engine_get_font_by_index(SHARED_FONT_UI), pixel_font}) {
        for (Uint32 c = 0x20; c <= 0xFF; c++) {
            EXPECT_TRUE((c >= 0x7F && c <= 0x9F) || TTF_FontHasGlyph(font, c)) << std::hex << c;
        }
    }
    TTF_Text *text = engine_prepare_text(pixel_font, "Hello World!", 0, INK);
    clear();
    engine_render_text(text, 0, 0);
    const Picture drawn = picture();
    EXPECT_GT(count_pixels(drawn, INK), 1000);
    EXPECT_EQ(count_pixels(drawn, INK) + count_pixels(drawn, {0, 0, 0, 255}), 640 * 480) << "no half-lit pixel";
    for (int y = 0; y < 48; y++) {
        for (int x = 0; x < 288; x++) {
            ASSERT_EQ(pixel_at(drawn, x, y).r, pixel_at(drawn, x / 3 * 3, y / 3 * 3).r) << x << ", " << y;
        }
    }
    engine_cleanup_text(&text);
    font_cleanup(pixel_font);
}

// --- FPS read-out ---

TEST_F(TextTest, TheReadOutIsColouredByTheRateAndSitsTopRight) {
    config = "[graphics]\nvsync_enable = false\nshow_fps = true\nui_scale = 2\n";
    ASSERT_TRUE(start({"--screen", "text-demo", "--window-size", "640x480"}));
    engine->fps_window_start = SDL_MAX_UINT64 / 2; // never due: the test calls the update itself
    const struct {
        int fps;
        SDL_Color color;
    } cases[] = {
        {30, {76, 175, 80, 255}}, {29, {255, 152, 0, 255}}, {15, {255, 152, 0, 255}}, {14, {244, 67, 54, 255}}};
    for (const auto &c : cases) {
        engine->fps = c.fps;
        engine_update_fps();
        clear();
        engine_draw_fps();
        const PictureBounds bounds = bounds_of(picture(), c.color);
        EXPECT_GE(bounds.left, 640 - 2 * 230) << c.fps;
        EXPECT_LT(bounds.left, 640 - 2 * 230 + 16) << c.fps;
        EXPECT_GE(bounds.top, 20) << c.fps;
        EXPECT_LT(bounds.bottom, 36) << c.fps;
    }
    engine->fps = 2'000'000'000;
    engine->fps_delta = 1e300;
    engine_update_fps();
    EXPECT_EQ(std::string(engine->fps_text).size(), 63u) << "cut, not overrun";
}

} // namespace
