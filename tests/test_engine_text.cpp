// Drawing spaces, fonts, texts and the FPS read-out.

#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "support/engine_fixture.h"
#include "support/stored.h"

#include <SDL3/SDL_render.h>
#include <SDL3_ttf/SDL_ttf.h>

#include <tuple>

namespace {

constexpr const char *PIXEL_FONT = "assets/fonts/Perfect DOS VGA 437 Win.ttf";

class TextTest : public EngineTest {
protected:
    bool start_at_scale(int scale) {
        config = "[graphics]\nvsync_enable = false\nui_scale = " + std::to_string(scale) + "\n";
        return start({"--screen", "text-demo", "--window-size", "640x480"});
    }
};

// --- spaces ---

TEST_F(TextTest, ViewSizeIsWindowInUiUnitsOrLogicalSize) {
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
    expect_view(320, 240, 2, false); // for an overlay on a logical screen
    ASSERT_TRUE(engine_set_logical_size(0, 0));
    expect_view(320, 240, 2, false);
}

// --- fonts ---

TEST_F(TextTest, FontsOpenAtOutputSizeAndListHoldsEight) {
    ASSERT_TRUE(start_at_scale(2));
    EXPECT_EQ(TTF_GetFontSize(engine_get_font_by_index(SHARED_FONT_UI)), 64);
    EXPECT_EQ(TTF_GetFontSize(engine_get_font_by_index(SHARED_FONT_UI_HEADING)), 96);
    EXPECT_TRUE(!engine_get_font_by_index(2) && !engine_get_font_by_index(-1));
    TTF_Font *font = engine_get_font_by_index(SHARED_FONT_UI);
    for (int slot = 2; slot < MAX_FONTS; slot++) EXPECT_EQ(engine_add_font(font_copy(font)), slot);
    TTF_Font *ninth = font_copy(font);
    EXPECT_EQ(engine_add_font(ninth), -1);
    EXPECT_TRUE(log.has("[ENGINE] Maximum number of fonts reached: fonts: MAX_FONTS=8"));
    font_cleanup(ninth);
    font_cleanup(nullptr);
    EXPECT_FALSE(font_copy(nullptr) || font_set_size(nullptr, 10));
    EXPECT_TRUE(log.has("[FONTS] Font copying failed, error: "));
    EXPECT_TRUE(log.has("[FONTS] Unable to change font size, error: "));
    engine_set_active_font(font);
    EXPECT_EQ(engine_get_font(), font);
}

TEST_F(TextTest, CachedFontIsReusedOnlyIfUnchanged) {
    ASSERT_TRUE(start_at_scale(1));
    write_file("own.ttf", read_file(PIXEL_FONT));
    EXPECT_TRUE(font_file_exists("own.ttf"));
    TTF_Font *font = font_open("own.ttf", 20), *second = font_open("own.ttf", 20);
    EXPECT_NE(font, second) << "a font in use is not shared";
    const auto settings = [](TTF_Font *of) {
        return std::tuple(
            TTF_GetFontStyle(of), TTF_GetFontKerning(of), TTF_GetFontWrapAlignment(of), TTF_GetFontLineSkip(of),
            TTF_GetFontDirection(of), TTF_GetFontScript(of));
    };
    const auto as_new = settings(font);
    TTF_SetFontStyle(font, TTF_STYLE_UNDERLINE); // does not change the font's generation
    TTF_SetFontKerning(font, false);
    TTF_SetFontWrapAlignment(font, TTF_HORIZONTAL_ALIGN_CENTER);
    TTF_SetFontLineSkip(font, 99);
    TTF_SetFontDirection(font, TTF_DIRECTION_RTL);
    TTF_SetFontScript(font, TTF_StringToTag("Arab"));
    TTF_AddFallbackFont(font, second);
    TTF_SetFontLineSkip(second, 99); // alone: a change of the style resets it
    font_cleanup(font);
    font_cleanup(second);
    EXPECT_EQ(font_open("own.ttf", 20), font);
    EXPECT_EQ(font_open("own.ttf", 20), second) << "a reused font is in use again";
    EXPECT_TRUE(settings(font) == as_new && settings(second) == as_new);
    font_cleanup(second);
    font_set_size(font, 40);
    font_cleanup(font);
    TTF_Font *larger = font_open("own.ttf", 21); // while a font of size 20 is cached
    font = font_open("own.ttf", 20);
    EXPECT_TRUE(TTF_GetFontSize(font) == 20 && TTF_GetFontSize(larger) == 21);
    font_cleanup(font);
    font_cleanup(larger);
    write_file("own.ttf", "another file");
    EXPECT_EQ(font_open("own.ttf", 20), nullptr);
    for (int i = 0; i < 3 * FONT_CACHE_SIZE; i++) font_cleanup(font_open(PIXEL_FONT, static_cast<float>(8 + i)));
}

// --- texts ---

TEST_F(TextTest, TextsAreTruncatedMeasuredAndDestroyedOnce) {
    ASSERT_TRUE(start_at_scale(3));
    TTF_Font *font = font_open(PIXEL_FONT, 16);
    TTF_Text *text = engine_prepare_text(font, "Hello World!, cut", 12, {255, 255, 0, 255});
    EXPECT_STREQ(text->text, "Hello World!");
    float width = 0, height = 0;
    engine_text_size(text, &width, &height);
    EXPECT_TRUE(width == 12 * 8 && height == 16) << "in UI units";
    engine_render_text(text, 10.3f, 5);
    SDL_GetRenderScale(engine_renderer(), &width, nullptr);
    EXPECT_EQ(width, 3) << "the render scale is restored";
    engine_cleanup_text(&text);
    EXPECT_EQ(text, nullptr);
    engine_cleanup_text(&text);
    engine_cleanup_text(nullptr);
    for (Uint32 c = 0x20; c <= 0xFF; c++) { // Latin-1
        const bool control = c >= 0x7F && c <= 0x9F;
        EXPECT_TRUE(control || (TTF_FontHasGlyph(font, c) && TTF_FontHasGlyph(engine_get_font_by_index(0), c))) << c;
    }
    font_cleanup(font);
}

// --- FPS read-out ---

TEST_F(TextTest, FpsReadOutColourDependsOnRate) {
    config += "show_fps = true\nui_scale = 2\n";
    ASSERT_TRUE(start_screen("text-demo", "640x300"));
    engine->fps_window_start = SDL_MAX_UINT64 / 2; // never due: the test updates it itself
    for (const int fps : {30, 29, 15, 14}) {
        engine->fps = fps;
        engine->fps_delta = 1.0 / 60;
        engine_update_fps();
        EXPECT_TRUE(matches_stored(shown(), "fps_" + std::to_string(fps)));
    }
    engine->fps = 2'000'000'000;
    engine->fps_delta = 1e300;
    engine_update_fps();
    EXPECT_EQ(std::string(engine->fps_text).size(), 63u) << "truncated, no overflow";
}

} // namespace
