#include "support/picture.h"

#include <SDL3/SDL_error.h>
#include <gtest/gtest.h>

SDL_Color pixel_at(const Picture &picture, int x, int y) {
    SDL_Color color = {};
    EXPECT_TRUE(SDL_ReadSurfacePixel(picture.get(), x, y, &color.r, &color.g, &color.b, &color.a)) << x << ", " << y;
    return color;
}

bool same_color(SDL_Color a, SDL_Color b) { return a.r == b.r && a.g == b.g && a.b == b.b; }

Picture as_rgb(const Picture &picture) { return Picture(SDL_ConvertSurface(picture.get(), SDL_PIXELFORMAT_RGB24)); }

const Uint8 *row_of(const Picture &rgb, int y) {
    return static_cast<const Uint8 *>(rgb->pixels) + static_cast<size_t>(y) * static_cast<size_t>(rgb->pitch);
}

template <typename Visit> static void each_pixel_of(const Picture &picture, SDL_Color color, Visit visit) {
    const Picture rgb = as_rgb(picture);
    for (int y = 0; y < rgb->h; y++) {
        const Uint8 *found = row_of(rgb, y);
        for (int x = 0; x < rgb->w; x++, found += 3) {
            if (found[0] == color.r && found[1] == color.g && found[2] == color.b) visit(x, y);
        }
    }
}

PictureBounds bounds_of(const Picture &picture, SDL_Color color) {
    PictureBounds bounds = {picture->w, picture->h, -1, -1};
    each_pixel_of(picture, color, [&](int x, int y) {
        bounds.left = SDL_min(bounds.left, x);
        bounds.right = SDL_max(bounds.right, x);
        bounds.top = SDL_min(bounds.top, y);
        bounds.bottom = SDL_max(bounds.bottom, y);
    });
    return bounds;
}

int count_pixels(const Picture &picture, SDL_Color color) {
    return count_pixels(picture, color, {0, 0, picture->w, picture->h});
}

int count_pixels(const Picture &picture, SDL_Color color, SDL_Rect area) {
    int count = 0;
    each_pixel_of(picture, color, [&](int x, int y) {
        const SDL_Point pixel = {x, y};
        count += SDL_PointInRect(&pixel, &area) ? 1 : 0;
    });
    return count;
}

bool same_pixels(const Picture &a, const Picture &b) {
    const Picture x = as_rgb(a), y = as_rgb(b);
    if (x->w != y->w || x->h != y->h) return false;
    for (int row = 0; row < x->h; row++) {
        if (SDL_memcmp(row_of(x, row), row_of(y, row), static_cast<size_t>(x->w) * 3) != 0) return false;
    }
    return true;
}
