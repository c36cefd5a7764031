#include "lumarind/toolkit/image.h"

#include "lumarind/core/files.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_iostream.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_surface.h>
#include <SDL3_image/SDL_image.h>

#include <cstddef>
#include <cstdlib>

struct ImageSize {
    Uint32 width, height; // px
};

// --- image size from the file header, read before decoding allocates memory; false if the file is truncated ---

static bool _image_seek(SDL_IOStream *file, Sint64 at) { return SDL_SeekIO(file, at, SDL_IO_SEEK_SET) == at; }

static bool _image_measure_png(SDL_IOStream *file, ImageSize *size) {
    return _image_seek(file, 16) && SDL_ReadU32BE(file, &size->width) && SDL_ReadU32BE(file, &size->height);
}

static bool _image_measure_bmp(SDL_IOStream *file, ImageSize *size) {
    constexpr Uint32 SHORT_HEAD = 12; // size of the oldest header, which has 16-bit fields
    Uint32 head = 0;
    Sint32 width = 0, height = 0; // height is negative for top-down images
    Uint16 short_width = 0, short_height = 0;
    if (!_image_seek(file, 14) || !SDL_ReadU32LE(file, &head)) return false;
    if (head == SHORT_HEAD) {
        if (!SDL_ReadU16LE(file, &short_width) || !SDL_ReadU16LE(file, &short_height)) return false;
        *size = {short_width, short_height};
        return true;
    }
    if (!SDL_ReadS32LE(file, &width) || !SDL_ReadS32LE(file, &height)) return false;
    const auto length = [](Sint32 number) { return static_cast<Uint32>(std::abs(static_cast<long long>(number))); };
    *size = {length(width), length(height)};
    return true;
}

// Start-of-frame markers: three of the 16 codes have other meanings.
static bool _image_is_jpeg_frame(Uint8 marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// Skips segments up to the start of frame.
static bool _image_measure_jpeg(SDL_IOStream *file, ImageSize *size) {
    Uint8 marker = 0, precision = 0;
    Uint16 length = 0, width = 0, height = 0;
    if (!_image_seek(file, 2)) return false;
    for (;;) {
        do {
            if (!SDL_ReadU8(file, &marker)) return false;
        } while (marker == 0xFF); // fill bytes
        if (!SDL_ReadU16BE(file, &length) || length < 2) return false;
        if (_image_is_jpeg_frame(marker)) break;
        if (SDL_SeekIO(file, length - 2, SDL_IO_SEEK_CUR) < 0) return false;
    }
    if (!SDL_ReadU8(file, &precision) || !SDL_ReadU16BE(file, &height) || !SDL_ReadU16BE(file, &width)) return false;
    *size = {width, height};
    return true;
}

// --- loading ---

// SDL_image allocates half the row size for such files and writes beyond the surface.
static bool _image_is_deep_grey(SDL_IOStream *png) {
    Uint8 depth = 0, color_type = 0;
    return _image_seek(png, 24) && SDL_ReadU8(png, &depth) && SDL_ReadU8(png, &color_type) && depth == 16 &&
           color_type == 0;
}

static SDL_Surface *_image_load_png(SDL_IOStream *file) {
    if (!_image_is_deep_grey(file)) return _image_seek(file, 0) ? IMG_LoadPNG_IO(file) : nullptr;
    SDL_SetError("a 16-bit grayscale PNG is not supported: save it with 8 bits");
    return nullptr;
}

struct ImageKind {
    bool (*is)(SDL_IOStream *file);
    bool (*measure)(SDL_IOStream *file, ImageSize *size);
    SDL_Surface *(*load)(SDL_IOStream *file);
};
// SDL_image supports more formats, but corrupt files of some never finish loading (an 8-byte GIF takes all memory), and
// the size of most is unknown before decoding.
static constexpr ImageKind IMAGE_KINDS[] = {
    {IMG_isPNG, _image_measure_png, _image_load_png},
    {IMG_isJPG, _image_measure_jpeg, IMG_LoadJPG_IO},
    {IMG_isBMP, _image_measure_bmp, IMG_LoadBMP_IO},
};

static SDL_Surface *_image_decode(SDL_IOStream *file, const ImageKind &kind) {
    ImageSize size = {};
    if (!kind.measure(file, &size) || !_image_seek(file, 0)) {
        SDL_SetError("the file is truncated before the image size");
        return nullptr;
    }
    if (Uint64{size.width} * size.height <= IMAGE_MAX_PIXELS) return kind.load(file);
    SDL_SetError("an image of %ux%u is too large: at most %d pixels", size.width, size.height, IMAGE_MAX_PIXELS);
    return nullptr;
}

static SDL_Surface *_image_load(SDL_IOStream *file) {
    for (const ImageKind &kind : IMAGE_KINDS) {
        if (kind.is(file)) return _image_decode(file, kind); // `is` restores the file position
    }
    SDL_SetError("not a PNG, JPEG or BMP image");
    return nullptr;
}

// SDL's errors name a missing file, but not a corrupt one.
static void _image_name_in_error(const char *path) {
    char reason[256]; // a copy, because SDL_SetError overwrites the text it would read
    SDL_strlcpy(reason, SDL_GetError(), sizeof reason);
    SDL_SetError("%s: %s", path, reason);
}

SDL_Surface *image_load_surface(const char *path) {
    SDL_IOStream *file = SDL_IOFromFile(files_asset(path).text, "rb");
    if (!file) return nullptr;
    SDL_Surface *surface = _image_load(file);
    SDL_CloseIO(file);
    if (!surface) _image_name_in_error(path);
    return surface;
}

SDL_Texture *image_load_texture(SDL_Renderer *renderer, const char *path) {
    SDL_Surface *surface = image_load_surface(path);
    if (!surface) return nullptr;
    SDL_Texture *texture = SDL_CreateTextureFromSurface(renderer, surface);
    SDL_DestroySurface(surface);
    if (!texture) _image_name_in_error(path);
    return texture;
}

// --- alpha ---

// Two bits per pixel, which are or-ed to classify an area.
static constexpr unsigned SEEN_CLEAR = 1, SEEN_OPAQUE = 2, SEEN_BETWEEN = SEEN_CLEAR | SEEN_OPAQUE;
static constexpr int PIXELS_PER_BYTE = 4;

static void _image_read_alpha_row(const Uint8 *rgba, int width, Uint8 *bits) {
    for (int x = 0; x < width; x++) {
        const Uint8 alpha = rgba[4 * x + 3];
        const unsigned seen = alpha == 0 ? SEEN_CLEAR : alpha == 255 ? SEEN_OPAQUE : SEEN_BETWEEN;
        bits[x / PIXELS_PER_BYTE] |= static_cast<Uint8>(seen << (x % PIXELS_PER_BYTE * 2));
    }
}

bool image_alpha_map_make(SDL_Surface *surface, ImageAlphaMap *map) {
    *map = {};
    const int pitch = (surface->w + PIXELS_PER_BYTE - 1) / PIXELS_PER_BYTE;
    auto *bits = static_cast<Uint8 *>(SDL_calloc(static_cast<size_t>(surface->h), static_cast<size_t>(pitch)));
    SDL_Surface *rgba = bits ? SDL_ConvertSurface(surface, SDL_PIXELFORMAT_RGBA32) : nullptr;
    if (!rgba) {
        SDL_free(bits);
        return false;
    }
    for (int y = 0; y < surface->h; y++) {
        const auto *row = static_cast<const Uint8 *>(rgba->pixels) + static_cast<std::ptrdiff_t>(y) * rgba->pitch;
        _image_read_alpha_row(row, surface->w, bits + static_cast<std::ptrdiff_t>(y) * pitch);
    }
    SDL_DestroySurface(rgba);
    *map = {.width = surface->w, .height = surface->h, .pitch = pitch, .bits = bits};
    return true;
}

void image_alpha_map_cleanup(ImageAlphaMap *map) {
    SDL_free(map->bits);
    *map = {};
}

ImageAlpha image_alpha_of(const ImageAlphaMap *map, SDL_Rect area) {
    const SDL_Rect whole = {0, 0, map->width, map->height};
    bool clear = false, opaque = false;
    if (!SDL_GetRectIntersection(&whole, &area, &area)) return IMAGE_CLEAR;
    for (int y = area.y; y < area.y + area.h; y++) {
        const Uint8 *row = map->bits + static_cast<std::ptrdiff_t>(y) * map->pitch;
        for (int x = area.x; x < area.x + area.w; x++) {
            const unsigned seen = row[x / PIXELS_PER_BYTE] >> (x % PIXELS_PER_BYTE * 2) & SEEN_BETWEEN;
            if (seen == SEEN_BETWEEN) return IMAGE_BLENDED;
            clear = clear || seen == SEEN_CLEAR;
            opaque = opaque || seen == SEEN_OPAQUE;
        }
    }
    return !opaque ? IMAGE_CLEAR : clear ? IMAGE_CUTOUT : IMAGE_OPAQUE;
}
