// Pictures read back from the renderer, and queries on their pixels. Alpha is ignored.
#pragma once

#include <SDL3/SDL_surface.h>

#include <memory>

struct SurfaceDeleter {
    void operator()(SDL_Surface *surface) const { SDL_DestroySurface(surface); }
};
using Picture = std::unique_ptr<SDL_Surface, SurfaceDeleter>;

struct PictureBounds {
    int left, top, right, bottom; // inclusive; empty if right is below left
    bool operator==(const PictureBounds &) const = default;
};

SDL_Color pixel_at(const Picture &picture, int x, int y);
bool same_color(SDL_Color a, SDL_Color b);
PictureBounds bounds_of(const Picture &picture, SDL_Color color); // of pixels of exactly this colour
int count_pixels(const Picture &picture, SDL_Color color);
int count_pixels(const Picture &picture, SDL_Color color, SDL_Rect area);
bool same_pixels(const Picture &a, const Picture &b); // equal size and colours
Picture as_rgb(const Picture &picture);               // three bytes per pixel
const Uint8 *row_of(const Picture &rgb, int y);
