// Image files of each format, and files that declare too large a size.

#include "lumarind/toolkit/image.h"
#include "support/picture.h"
#include "support/stored.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>
#include <SDL3_image/SDL_image.h>
#include <gtest/gtest.h>

#include <string>

namespace {

// Returns "" if the image can be loaded, else the error.
std::string load(SDL_Renderer *renderer, const std::string &content) {
    write_file("picture", content);
    SDL_Texture *texture = image_load_texture(renderer, "picture");
    const std::string error = texture ? "picture: " : SDL_GetError();
    SDL_DestroyTexture(texture); // ignores null
    EXPECT_TRUE(error.starts_with("picture: ")) << error;
    return error.substr(9);
}

TEST(ImageTest, RejectsTooLargeAndUnsupportedImagesBeforeDecoding) {
    const TemporaryDirectory directory;
    const Picture surface(SDL_CreateSurface(64, 32, SDL_PIXELFORMAT_RGB24));
    SDL_Renderer *renderer = SDL_CreateSoftwareRenderer(surface.get());
    ASSERT_TRUE(
        IMG_SavePNG(surface.get(), "png") && IMG_SaveJPG(surface.get(), "jpeg", 90) &&
        IMG_SaveBMP(surface.get(), "bmp"));
    const auto too_large = [](const std::string &size) {
        return "an image of " + size + " is too large: at most 67108864 pixels";
    };
    const struct {
        const char *file;
        std::string before, part, error; // `part` is overwritten after `before`
    } cases[] = {
        {"png", "IHDR", {"\0\0\x75\x30\0\0\x75\x30", 8}, too_large("30000x30000")},
        {"png", "IHDR", {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 8}, too_large("4294967295x4294967295")},
        {"png", "IHDR", {"\0\0\x20\0\0\0\x20\1", 8}, too_large("8192x8193")},
        {"jpeg", {"\xFF\xC0\0\x11\x08", 5}, "\xFF\xFF\x75\x30", too_large("30000x65535")},
        {"bmp", {"\x28\0\0\0", 4}, "\x30\x75\1\1\xD0\x8A\xFF\xFF", too_large("16872752x30000")},
        {"bmp", {"\x36\0\0\0", 4}, {"\x0C\0\0\0\xFE\xFF\xFF\xFF", 8}, too_large("65534x65535")},
        {"png",
         {"\0\0\0\x40\0\0\0\x20", 8},
         {"\x10\0", 2}, // bit depth and colour type
         "a 16-bit grayscale PNG is not supported: save it with 8 bits"},
    };
    for (const auto &c : cases) {
        std::string content = read_file(c.file);
        if (std::string(c.file) == "jpeg") content.insert(2, "\xFF\xFE\0\2", 4); // an empty comment
        EXPECT_EQ(load(renderer, content), "") << c.file << " with its own size";
        const size_t at = content.find(c.before);
        ASSERT_NE(at, content.npos) << c.file;
        content.replace(at + c.before.size(), c.part.size(), c.part);
        EXPECT_EQ(load(renderer, content), c.error);
        content.resize(at + c.before.size() + 1);
        EXPECT_NE(load(renderer, content), "") << c.file << " truncated";
    }
    std::string truncated;
    const std::string bmp = read_file("bmp"), old_bmp = bmp.substr(0, 14) + std::string("\x0C\0\0\0\1\0\1\0", 8);
    for (const std::string &content : {read_file("png"), bmp, old_bmp}) {
        for (size_t length = 0; length < 40; length++) {
            const std::string error = load(renderer, content.substr(0, length));
            truncated += error.starts_with("the file is trunc") ? "t" : "-"; // or another error
        }
        truncated += "\n";
    }
    expect_stored("truncated-images.txt", truncated);
    std::string jpeg = read_file("jpeg");
    const size_t frame = jpeg.find({"\xFF\xC0\0\x11\x08", 5});
    for (int marker = 0xBF; marker <= 0xD0; marker++) { // all kinds of JPEG frames are measured
        jpeg.replace(frame + 1, 8, {static_cast<char>(marker), 0, 0x11, 8, '\xFF', '\xFF', 0x75, 0x30});
        const bool is_frame = marker == 0xC0 || (marker > 0xC0 && marker < 0xD0 && marker % 4 != 0);
        EXPECT_EQ(load(renderer, jpeg) == too_large("30000x65535"), is_frame) << marker;
    }
    for (const char *content : {"", "GIF89a\xC0%", "P6 1 1 255 abc", "<svg/>"}) {
        EXPECT_EQ(load(renderer, content), "not a PNG, JPEG or BMP image") << content;
    }
    SDL_DestroyRenderer(renderer);
}

} // namespace
