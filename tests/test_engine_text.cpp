// Drawing spaces, fonts, texts and the FPS read-out.

#include "engine/drawing_space.h"
#include "engine/engine.h"
#include "engine/text.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_render.h>
#include <SDL3_ttf/SDL_ttf.h>

#include <cmath>
#include <tuple>

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
    const auto expect_view = [](float width, float height, float scale, bool logical) {
        SDL_FPoint view = {}, scales = {};
        engine_view_size(&view.x, nullptr);
        engine_view_size(nullptr, &view.y);
        SDL_GetRenderScale(engine_renderer(), &scales.x, &scales.y);
        EXPECT_TRUE(view.x == width && view.y == height) << view.x << " x " << view.y;
        EXPECT_TRUE(scales.x == scale && scales.y == scale) << scales.x;
        EXPECT_EQ(engine_in_logical_space(), logical);
    };
    expect_view(320, 240, 2, false);
    ASSERT_TRUE(engine_set_logical_size(256, 144));
    expect_view(256, 144, 1, true);
    engine_use_ui_space();
    expect_view(320, 240, 2, false); // as an overlay on a logical screen sees it
    ASSERT_TRUE(engine_set_logical_size(0, 0));
    expect_view(320, 240, 2, false);
}

// --- fonts ---

TEST_F(TextTest, FontsAreOpenedAtOutputSizeAndListedUpToEight) {
    ASSERT_TRUE(start_at_scale(2));
    EXPECT_EQ(TTF_GetFontSize(engine_get_font_by_index(SHARED_FONT_UI)), 64);
    EXPECT_EQ(TTF_GetFontSize(engine_get_font_by_index(SHARED_FONT_UI_HEADING)), 96);
    for (const int none : {2, -1}) EXPECT_EQ(engine_get_font_by_index(none), nullptr);
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

TEST_F(TextTest, AFontGivenBackIsOpenedAgainOnlyIfItIsStillTheSame) {
    ASSERT_TRUE(start_at_scale(1));
    write_file("own.ttf", read_file(PIXEL_FONT));
    TTF_Font *font = font_open("own.ttf", 20), *beside = font_open("own.ttf", 20);
    EXPECT_NE(font, beside) << "two owners share none";
    const auto settings = [](TTF_Font *of) {
        return std::tuple(
            TTF_GetFontStyle(of), TTF_GetFontKerning(of), TTF_GetFontWrapAlignment(of), TTF_GetFontLineSkip(of),
            TTF_GetFontDirection(of), TTF_GetFontScript(of));
    };
    const auto as_new = settings(font);
    TTF_SetFontStyle(font, TTF_STYLE_UNDERLINE); // what an owner may do without the generation showing it
    TTF_SetFontKerning(font, false);
    TTF_SetFontWrapAlignment(font, TTF_HORIZONTAL_ALIGN_CENTER);
    TTF_SetFontLineSkip(font, 99);
    TTF_SetFontDirection(font, TTF_DIRECTION_RTL);
    TTF_SetFontScript(font, TTF_StringToTag("Arab"));
    TTF_AddFallbackFont(font, beside);
    font_cleanup(font);
    font_cleanup(beside);
    EXPECT_EQ(font_open("own.ttf", 20), font);
    EXPECT_EQ(settings(font), as_new);
    TTF_Font *larger = font_open("own.ttf", 21);
    EXPECT_EQ(TTF_GetFontSize(larger), 21);
    font_set_size(font, 40);
    TTF_SetFontStyle(larger, TTF_STYLE_BOLD);
    font_cleanup(font);
    font_cleanup(larger);
    font = font_open("own.ttf", 20);
    larger = font_open("own.ttf", 21);
    EXPECT_EQ(TTF_GetFontSize(font), 20);
    EXPECT_EQ(TTF_GetFontStyle(larger), TTF_STYLE_NORMAL);
    font_cleanup(font);
    font_cleanup(larger);
    write_file("own.ttf", "another file");
    EXPECT_EQ(font_open("own.ttf", 20), nullptr);
    for (int i = 0; i < 3 * KEPT_FONTS; i++) font_cleanup(font_open(PIXEL_FONT, static_cast<float>(8 + i)));
}

TEST_F(TextTest, WhatIsNoFontIsReportedByItsPath) {
    ASSERT_TRUE(start_at_scale(1));
    write_file("broken.ttf", "this is no font");
    EXPECT_EQ(font_open("missing.ttf", 32), nullptr);
    EXPECT_EQ(font_open("broken.ttf", 32), nullptr);
    EXPECT_EQ(font_copy(nullptr), nullptr);
    EXPECT_FALSE(font_set_size(nullptr, 10));
    for (const char *line :
         {"[FONTS] Font file not found (missing.ttf)", "[FONTS] Setting up font: broken.ttf",
          "[FONTS] Font loading failed, error: ", "[FONTS] Font copying failed, error: ",
          "[FONTS] Unable to change font size, error: "}) {
        EXPECT_TRUE(log.has(line)) << line;
    }
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
        EXPECT_TRUE(width == 8 && height == 16) << scale;
        clear();
        engine_render_text(text, 10.3f, 5);
        const int left = static_cast<int>(std::lround(10.3f * static_cast<float>(scale))), top = 5 * scale;
        EXPECT_EQ(bounds_of(picture(), INK), (PictureBounds{left, top, left + 8 * scale - 1, top + 16 * scale - 1}));
        float after = 0;
        SDL_GetRenderScale(engine_renderer(), &after, nullptr);
        EXPECT_EQ(after, static_cast<float>(scale)) << "the space's scale is back";

        engine_cleanup_text(&text);
        EXPECT_EQ(text, nullptr);
        engine_cleanup_text(&text);
        engine_cleanup_text(nullptr);
        font_cleanup(font);
    }
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
    TTF_Text *text = engine_prepare_text(pixel_font, "Hello World!, cut", 12, INK);
    EXPECT_STREQ(text->text, "Hello World!");
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
    config += "show_fps = true\nui_scale = 2\n";
    ASSERT_TRUE(start_screen("text-demo", "640x480"));
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
        EXPECT_TRUE(bounds.left >= 640 - 2 * 230 && bounds.left < 640 - 2 * 230 + 16) << c.fps;
        EXPECT_TRUE(bounds.top >= 20 && bounds.bottom < 36) << c.fps;
    }
    engine->fps = 2'000'000'000;
    engine->fps_delta = 1e300;
    engine_update_fps();
    EXPECT_EQ(std::string(engine->fps_text).size(), 63u) << "cut, not overrun";
}

} // namespace
