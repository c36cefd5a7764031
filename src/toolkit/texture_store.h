// texture_store: pictures loaded once, however many tilesets and worlds show them. A picture is kept while somebody
// holds it. Main thread only. All pictures have to be released before their renderer is destroyed.
#pragma once

#include "lumarind/toolkit/image.h"
#include "lumarind/toolkit/reload.h"

struct SharedTexture {
    SDL_Texture *texture; // with nearest-neighbour scaling; whoever changes its other settings sets them before drawing
    Sint32 width, height; // px
    ImageAlphaMap alpha;

    // The store's own.
    SharedTexture *next;
    SDL_Renderer *renderer;
    char *path;
    Sint32 transparent;
    Sint32 holders;
    FileStamp stamp; // where files are followed, of the version it shows
};

inline constexpr Sint32 TEXTURE_STORE_NO_COLOR = -1;

// The picture of this path; where files are followed, a new one when its file has changed. `transparent` (0xRRGGBB, or
// TEXTURE_STORE_NO_COLOR) is a colour that counts as transparent. Each get needs a release. Null: there is no such
// picture, or no memory; SDL's error says why.
SharedTexture *texture_store_get(SDL_Renderer *renderer, const char *path, Sint32 transparent);
void texture_store_release(SharedTexture *shared); // null is ignored
