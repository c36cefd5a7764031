// Frame capture: which frames are captured, file names, contents, and write errors.

#include "diagnostics/capture_internal.h"
#include "engine/frame.h"
#include "lumarind/core/error.h"
#include "lumarind/diagnostics/capture.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_render.h>
#include <SDL3_image/SDL_image.h>

#include <algorithm>
#include <cctype>

namespace fs = std::filesystem;

namespace {

constexpr int WIDTH = 640, HEIGHT = 420; // large enough for the panel at UI scale 2

class CaptureTest : public EngineTest {
protected:
    CaptureTest() { config += "[window]\nwidth = 640\nheight = 420\n"; }

    static std::vector<std::string> files(const fs::path &folder = "captures") {
        std::vector<std::string> names;
        std::error_code none;
        for (const auto &entry : fs::directory_iterator(folder, none)) names.push_back(entry.path().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    // Ends a captured frame in which the screen has drawn a different colour in every pixel. Returns the picture before
    // overlays.
    Picture capture_pattern() const {
        capture_request();
        engine_use_ui_space();
        const Picture pattern(SDL_CreateSurface(WIDTH, HEIGHT, SDL_PIXELFORMAT_RGB24));
        for (int y = 0; y < HEIGHT; y++) {
            Uint8 *row = static_cast<Uint8 *>(pattern->pixels) + y * pattern->pitch;
            for (int x = 0; x < WIDTH * 3; x++) row[x] = static_cast<Uint8>(x * 7 + y * 13 + x * y);
        }
        SDL_Texture *texture = SDL_CreateTextureFromSurface(engine_renderer(), pattern.get());
        SDL_RenderTexture(engine_renderer(), texture, nullptr, nullptr);
        Picture bare = picture();
        SDL_DestroyTexture(texture);
        engine_apply_space(false);
        engine_tick();
        return bare;
    }
};

// --- names ---

TEST_F(CaptureTest, PathsContainTimeAndFrameNumber) {
    const SDL_DateTime time = {2024, 3, 9, 7, 5, 1, 0, 0, 0};
    char path[CAPTURE_PATH_MAX];
    ASSERT_TRUE(capture_build_path(path, sizeof path, "some/where", &time, UINT64_MAX, CAPTURE_FORMAT_JPEG));
    EXPECT_STREQ(path, "some/where/capture-20240309-070501-18446744073709551615.jpg");
    const std::string longest(CAPTURE_PATH_MAX - 1 - SDL_strlen("/capture-20240309-070501-000001.png"), 'x');
    EXPECT_TRUE(capture_build_path(path, sizeof path, longest.c_str(), &time, 1, CAPTURE_FORMAT_PNG));
    EXPECT_FALSE(capture_build_path(path, sizeof path, (longest + "x").c_str(), &time, 1, CAPTURE_FORMAT_PNG));
    EXPECT_FALSE(capture_build_path(nullptr, sizeof path, "d", &time, 1, CAPTURE_FORMAT_PNG));
    EXPECT_FALSE(capture_build_path(path, 0, "d", &time, 1, CAPTURE_FORMAT_PNG));
    EXPECT_FALSE(capture_build_path(path, sizeof path, nullptr, nullptr, 1, CAPTURE_FORMAT_PNG));
}

// --- which frames ---

TEST_F(CaptureTest, FrameDueForSeveralReasonsIsSavedOnce) {
    config += "[capture]\ndirectory = deep/er\n";
    ASSERT_TRUE(start({"--capture-at", "4", "--capture-every", "4"}));
    play("3");
    EXPECT_TRUE(files("deep/er").empty());
    play("F12 ~F12 3 F12 3"); // frame 4 is due for three reasons, frame 7 by key press, frame 8 as every fourth
    engine->frame_number = 1'234'566;
    play("F12 1");
    std::vector<std::string> numbers;
    for (const std::string &file : files("deep/er")) {
        const std::string prefix = "deep/er/capture-dddddddd-dddddd-";
        std::string form = file.substr(0, prefix.size());
        for (char &c : form) c = std::isdigit(static_cast<unsigned char>(c)) ? 'd' : c;
        EXPECT_EQ(form, prefix);
        numbers.push_back(file.substr(prefix.size()));
        EXPECT_EQ(log.count("[CAPTURE] Saved: " + file), 1);
    }
    std::sort(numbers.begin(), numbers.end());
    EXPECT_EQ(numbers, (std::vector<std::string>{"000004.png", "000007.png", "000008.png", "1234567.png"}));
    EXPECT_TRUE(log.errors().empty());
}

// --- contents ---

TEST_F(CaptureTest, FilesContainRenderedPixelsWithAndWithoutOverlays) {
    for (const int round : {0, 1, 2, 3, 4, 5}) {
        const bool overlays = round % 2, logical = round / 2 == 1;
        const int quality = round < 4 ? 0 : round < 5 ? 20 : 90; // of a JPEG; 0: a PNG
        SCOPED_TRACE(round);
        config += "[graphics]\nshow_fps = true\nui_scale = 2\nshow_frame_time_graph = true\n[capture]\ninclude_fps = ";
        config += overlays ? "true\n" : "false\n";
        if (quality) config += "format = JPEG\njpeg_quality = " + std::to_string(quality) + "\n";
        ASSERT_TRUE(start());
        frames(2);
        if (logical) engine_set_logical_size(256, 144); // 512 × 288, centred in the window
        engine_update_fps();
        const Picture bare = capture_pattern(), shown = picture();
        EXPECT_FALSE(same_pixels(bare, shown)) << "overlays were drawn";
        ASSERT_EQ(files().size(), 1u);
        const std::string file = files().front();
        if (quality) { // encoded and decoded by the library
            ASSERT_TRUE(IMG_SaveJPG(as_rgb(overlays ? shown : bare).get(), "expected.jpg", quality));
            EXPECT_TRUE(file.ends_with(".jpg") && read_file(file) == read_file("expected.jpg"));
        } else {
            const Picture saved(IMG_Load(file.c_str()));
            EXPECT_EQ(saved->format, SDL_PIXELFORMAT_RGB24) << "no alpha channel";
            EXPECT_TRUE(same_pixels(saved, overlays ? shown : bare));
        }
        fs::remove_all("captures");
    }
}

// --- failures: reported once, the frame continues, and the next request tries again ---

TEST_F(CaptureTest, FailedCaptureIsReportedOnceWithReason) {
    write_file("taken", "a file");
    config += "[capture]\ndirectory = taken/below\n";
    ASSERT_TRUE(start());
    log.lines.clear();
    play("F12 1");
    EXPECT_TRUE(frame());
    ASSERT_TRUE(log.only_error_starts("[CAPTURE] Unable to create directory: taken/below, error: "));
    EXPECT_EQ(engine_get_error(), log.errors().front());
    fs::remove("taken");
    play("F12 1");
    EXPECT_EQ(files("taken/below").size(), 1u);
}

} // namespace
