#include "support/stored.h"

#include "support/temporary_directory.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3_image/SDL_image.h>

#include <algorithm>
#include <cstdlib>

static constexpr int RASTERISER_STEP = 48; // tolerated difference per channel, of 255

// Returns whether the pixel is between a lighter and a darker neighbour, as anti-aliased ones are.
static bool _is_between(const Picture &picture, int x, int y) {
    const auto light = [&](int near_x, int near_y) {
        const int column = std::clamp(near_x, 0, picture->w - 1), row = std::clamp(near_y, 0, picture->h - 1);
        const Uint8 *pixel = row_of(picture, row) + 3 * column;
        return pixel[0] + pixel[1] + pixel[2];
    };
    bool lighter = false, darker = false;
    for (int i = 0; i < 9; i++) {
        const int there = light(x - 1 + i % 3, y - 1 + i / 3), here = light(x, y);
        lighter |= there > here;
        darker |= there < here;
    }
    return lighter && darker;
}

// Marks differing pixels in red on a dimmed copy of the stored picture, and returns their number.
static int _mark_differences(const Picture &shown, const Picture &stored, const Picture &marked) {
    int count = 0;
    for (int y = 0; y < stored->h; y++) {
        const Uint8 *actual = row_of(shown, y), *expected = row_of(stored, y);
        auto *out = const_cast<Uint8 *>(row_of(marked, y));
        for (int x = 0; x < stored->w; x++, actual += 3, expected += 3, out += 3) {
            int distance = 0; // the largest of the channels
            for (int i = 0; i < 3; i++) distance = std::max(distance, std::abs(actual[i] - expected[i]));
            const bool same = distance == 0 || (distance <= RASTERISER_STEP && _is_between(stored, x, y));
            for (int i = 0; i < 3; i++) out[i] = same ? expected[i] / 4 : i == 0 ? 255 : 0;
            count += same ? 0 : 1;
        }
    }
    return count;
}

testing::AssertionResult matches_stored(const Picture &picture, const std::string &name) {
    const std::string written = PICTURES_WRITTEN "/" + name;
    const Picture shown = as_rgb(picture), loaded(IMG_Load((PICTURES_STORED "/" + name + ".png").c_str()));
    const auto failed = [&](const std::string &why) {
        SDL_CreateDirectory(PICTURES_WRITTEN);
        IMG_SavePNG(shown.get(), (written + ".png").c_str());
        return testing::AssertionFailure() << name << ".png " << why << "; actual picture: " << written << ".png";
    };
    if (!loaded) return failed("is not stored");
    const Picture stored = as_rgb(loaded);
    if (shown->w != stored->w || shown->h != stored->h) return failed("has a different size");
    const Picture marked(SDL_CreateSurface(stored->w, stored->h, SDL_PIXELFORMAT_RGB24));
    const int count = _mark_differences(shown, stored, marked);
    if (count == 0) return testing::AssertionSuccess();
    const auto result = failed("differs in " + std::to_string(count) + " pixels");
    IMG_SavePNG(marked.get(), (written + ".difference.png").c_str());
    return result;
}

void expect_stored(const std::string &name, const std::string &text, const std::string &log) {
    if (!text.empty() && text == read_file(DIGESTS_STORED "/" + name)) return;
    write_file(DIGESTS_WRITTEN "/" + name, text);
    if (!log.empty()) write_file(DIGESTS_WRITTEN "/" + name + ".log", log);
    ADD_FAILURE() << "differs from the stored text: compare " << DIGESTS_WRITTEN << "/" << name;
}
