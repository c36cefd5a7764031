// The text and the texture demo.

#include "support/engine_fixture.h"

namespace fs = std::filesystem;

namespace {

constexpr SDL_Color BLACK = {0, 0, 0, 255};
constexpr SDL_Color BLUE = {0, 128, 255, 255};

class DemoTest : public EngineTest {
protected:
    // The test's own assets instead of the project's.
    void copy_assets_without(const std::string &missing) {
        const fs::path real = fs::canonical("assets");
        fs::remove("assets");
        fs::copy(real, "assets", fs::copy_options::recursive);
        fs::remove(missing);
    }
};

// --- text demo ---

TEST_F(DemoTest, TheTextStaysInTheMiddleOfTheWindow) {
    ASSERT_TRUE(start({"--screen", "text-demo"}));
    for (const int height : {450, 321, 720}) {
        resize(2 * height, height);
        const PictureBounds bounds = bounds_of(shown(), BLUE);
        EXPECT_NEAR((bounds.left + bounds.right) / 2.0, height, 6) << height;
        EXPECT_NEAR((bounds.top + bounds.bottom) / 2.0, height / 2.0, 10) << height;
        EXPECT_GT(bounds.right - bounds.left, 250) << height;
    }
}

TEST_F(DemoTest, AMissingFontFailsTheTextDemoByName) {
    copy_assets_without("assets/fonts/Perfect DOS VGA 437 Win.ttf");
    EXPECT_FALSE(start({"--screen", "text-demo"}));
    EXPECT_TRUE(log.has("[FONTS] Font file not found (assets/fonts/Perfect DOS VGA 437 Win.ttf)"));
    EXPECT_EQ(engine, nullptr);
}

// --- texture demo ---

TEST_F(DemoTest, PicturesMoveInFixedStepsAndAreDrawnBetweenThem) {
    config += "[simulation]\nfixed_step_hz = 4\n"; // long steps show the interpolation
    ASSERT_TRUE(start({"--screen", "texture-demo"}));
    shown();
    const auto slider_at = [&](double seconds) { // the slider's part of the picture, left of the spinner
        const Picture drawn = shown(seconds);
        int x = 0;
        while (x < 210 && count_pixels(drawn, BLACK, {x, 0, 1, 250}) == 250) x++;
        return x;
    };
    const int at_rest = slider_at(0);
    EXPECT_EQ(slider_at(0.25), at_rest) << "one step has run and nothing of the next: drawn where it was before";
    const int half = slider_at(0.125), full = slider_at(0.1249);
    EXPECT_GT(half, at_rest) << "half a step later it is on its way";
    EXPECT_GT(full, half);
    EXPECT_NEAR(full - at_rest, 17, 1) << "of a sine of 25, at 0.75 s";
}

TEST_F(DemoTest, PicturesStaySharpAtFourTimes) {
    ASSERT_TRUE(start({"--screen", "texture-demo"}));
    const Picture drawn = shown();
    for (int y = 50; y < 178; y++) {
        for (int x = 75; x < 203; x++) {
            const SDL_Color block = pixel_at(drawn, 75 + (x - 75) / 4 * 4, 50 + (y - 50) / 4 * 4);
            ASSERT_TRUE(same_color(pixel_at(drawn, x, y), block)) << x << ", " << y;
        }
    }
    EXPECT_LT(count_pixels(drawn, BLACK), drawn->w * drawn->h - 10'000) << "both pictures are there";
}

TEST_F(DemoTest, AMissingOrBrokenPictureFailsTheTextureDemo) {
    copy_assets_without("assets/texture_demo/texture_b.png");
    EXPECT_FALSE(start({"--screen", "texture-demo"}));
    EXPECT_TRUE(log.has("[TEXTURE_DEMO] IMG_LoadTexture failed, error: "));
    write_file("assets/texture_demo/texture_b.png", "\x89PNG\r\n\x1a\nnot really");
    EXPECT_FALSE(start({"--screen", "texture-demo"}));
    for (const std::string &error : log.errors()) EXPECT_NE(error.find("texture_b.png"), error.npos) << error;
    EXPECT_TRUE(start({"--screen", "main-menu"})) << "the rest still works";
}

} // namespace
