// image: loads PNG, JPEG and BMP files as textures or surfaces.
#pragma once

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

struct SDL_Renderer;
struct SDL_Surface;
struct SDL_Texture;

// Limits decoding, which takes at least 4 bytes per pixel: a file of a few bytes can declare gigabytes.
inline constexpr int IMAGE_MAX_PIXELS = 64 << 20;

// Returns null if the file is missing, of another format, corrupt or too large; SDL's error names the file and the
// reason. The caller owns the texture.
SDL_Texture *image_load_texture(SDL_Renderer *renderer, const char *path);
SDL_Surface *image_load_surface(const char *path); // the same as a surface; the caller owns it

// --- alpha classes of parts of an image, which decide how they may be blended ---
enum ImageAlpha : Uint8 {
    IMAGE_CLEAR,   // every pixel is transparent
    IMAGE_CUTOUT,  // every pixel is transparent or opaque
    IMAGE_BLENDED, // some pixels are translucent
    IMAGE_OPAQUE,  // every pixel is opaque
};

// The alpha class of every pixel, in two bits.
struct ImageAlphaMap {
    Sint32 width, height; // px
    Sint32 pitch;         // bytes per row
    Uint8 *bits;          // owned; four pixels per byte
};

bool image_alpha_map_make(SDL_Surface *surface, ImageAlphaMap *map); // false: out of memory; `map` is then empty
void image_alpha_map_cleanup(ImageAlphaMap *map);                    // safe to call twice
// The class of the part of `area` inside the image; IMAGE_CLEAR if it is empty.
ImageAlpha image_alpha_of(const ImageAlphaMap *map, SDL_Rect area);
