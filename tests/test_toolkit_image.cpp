// Pictures of each kind, and those that ask for more than there is.

#include "support/temporary_directory.h"
#include "toolkit/image.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_surface.h>
#include <SDL3_image/SDL_image.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

class ImageTest : public ::testing::Test {
protected:
    std::string load(const std::string &content) {
        write_file("picture", content);
        SDL_Texture *texture = image_load_texture(renderer.get(), "picture");
        const std::string error = texture ? "picture: " : SDL_GetError();
        SDL_DestroyTexture(texture); // null is fine
        EXPECT_TRUE(error.starts_with("picture: ")) << error;
        return error.substr(9);
    }

    TemporaryDirectory directory;
    std::unique_ptr<SDL_Surface, decltype(&SDL_DestroySurface)> surface{
        SDL_CreateSurface(64, 32, SDL_PIXELFORMAT_RGB24), SDL_DestroySurface};
    std::unique_ptr<SDL_Renderer, decltype(&SDL_DestroyRenderer)> renderer{
        SDL_CreateSoftwareRenderer(surface.get()), SDL_DestroyRenderer};
};

TEST_F(ImageTest, ASizeBeyondTheLimitIsRefusedBeforeAnythingIsDecoded) {
    ASSERT_TRUE(IMG_SavePNG(surface.get(), "png"));
    ASSERT_TRUE(IMG_SaveJPG(surface.get(), "jpeg", 90));
    ASSERT_TRUE(IMG_SaveBMP(surface.get(), "bmp"));
    const struct {
        const char *file;
        std::string before_size, size; // the latter is written in the place of the picture's own
        const char *told;
    } cases[] = {
        {"png", "IHDR", {"\0\0\x75\x30\0\0\x75\x30", 8}, "30000x30000"},
        {"png", "IHDR", {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 8}, "4294967295x4294967295"},
        {"png", "IHDR", {"\0\0\x20\0\0\0\x20\1", 8}, "8192x8193"},
        {"jpeg", {"\xFF\xC0\0\x11\x08", 5}, "\xFF\xFF\x75\x30", "30000x65535"},
        {"bmp", {"\x28\0\0\0", 4}, "\x30\x75\1\1\xD0\x8A\xFF\xFF", "16872752x30000"},
    };
    for (const auto &c : cases) {
        std::string content = read_file(c.file);
        EXPECT_EQ(load(content), "") << c.file << " of its own size";
        const size_t at = content.find(c.before_size);
        ASSERT_NE(at, content.npos) << c.file;
        content.replace(at + c.before_size.size(), c.size.size(), c.size);
        EXPECT_EQ(load(content), std::string("a picture of ") + c.told + " is too large: 67108864 pixels at the most");
        content.resize(at + c.before_size.size() + 1);
        EXPECT_NE(load(content), "") << c.file << " cut short";
    }
}

TEST_F(ImageTest, OtherKindsAreRefused) {
    ASSERT_TRUE(IMG_SavePNG(surface.get(), "png"));
    std::string grey = read_file("png");
    grey.replace(24, 2, std::string("\x10\0", 2)); // the bits, and the kind of colours
    EXPECT_EQ(load(grey), "a PNG in grey with 16 bits a pixel is not supported: save it with 8");
    for (const char *content : {"", "GIF89a\xC0%", "P6 1 1 255 abc", "<svg/>"}) {
        EXPECT_EQ(load(content), "no PNG, JPEG or BMP picture") << content;
    }
}

} // namespace
