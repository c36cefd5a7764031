// image: picture files as textures: PNG, JPEG and BMP.
#pragma once

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

struct SDL_Renderer;
struct SDL_Surface;
struct SDL_Texture;

// A picture is decoded whole, at 4 bytes a pixel and more than once: a file of a few bytes can ask for gigabytes.
inline constexpr int IMAGE_MAX_PIXELS = 64 << 20;

// Null, with SDL's error saying which file and why: the file is missing, of another kind, broken or too large. The
// caller owns the texture.
SDL_Texture *image_load_texture(SDL_Renderer *renderer, const char *path);
SDL_Surface *image_load_surface(const char *path); // the same in memory; the caller owns it

// --- what the alpha of a picture's parts is like, which decides how they may be blended ---
enum ImageAlpha : Uint8 {
    IMAGE_CLEAR,   // every pixel is transparent
    IMAGE_CUTOUT,  // each is either transparent or opaque
    IMAGE_BLENDED, // some are neither
    IMAGE_OPAQUE,  // every pixel is opaque
};

// The alpha of every pixel, boiled down to two bits.
struct ImageAlphaMap {
    Sint32 width, height; // px
    Sint32 pitch;         // bytes to a row
    Uint8 *bits;          // owned; four pixels to a byte
};

bool image_alpha_map_make(SDL_Surface *surface, ImageAlphaMap *map); // false: no memory; `map` is then empty
void image_alpha_map_cleanup(ImageAlphaMap *map);                    // safe to call twice
// Of the part of `area` within the picture; without any, IMAGE_CLEAR.
ImageAlpha image_alpha_of(const ImageAlphaMap *map, SDL_Rect area);
