// texture_store: reference-counted cache of textures. Main thread only. All textures must be released before their
// renderer is destroyed.
#pragma once

#include "lumarind/toolkit/image.h"
#include "lumarind/toolkit/reload.h"

struct SharedTexture {
    SDL_Texture *texture; // nearest-neighbour scaling; shared, so set other properties before each drawing
    Sint32 width, height; // px
    ImageAlphaMap alpha;

    // private
    SharedTexture *next;
    SDL_Renderer *renderer;
    char *path;
    Sint32 transparent;
    Sint32 holders;
    FileStamp stamp; // of the loaded version, for hot reload
};

inline constexpr Sint32 TEXTURE_STORE_NO_COLOR = -1;

// Loads the image or reuses it; with hot reload, a changed file gets a new entry. Pixels of colour `transparent`
// (0xRRGGBB, or TEXTURE_STORE_NO_COLOR) become transparent. Each get needs a release. Returns null with SDL's error
// set.
SharedTexture *texture_store_get(SDL_Renderer *renderer, const char *path, Sint32 transparent);
void texture_store_release(SharedTexture *shared); // null is ignored
