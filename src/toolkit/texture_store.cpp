#include "lumarind/toolkit/texture_store.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_surface.h>

static SharedTexture *g_texture_store; // head of a linked list

static SharedTexture *_texture_store_find(const SDL_Renderer *renderer, const char *path, Sint32 transparent) {
    for (SharedTexture *shared = g_texture_store; shared; shared = shared->next) {
        const bool same_kind = shared->renderer == renderer && shared->transparent == transparent;
        if (!same_kind || SDL_strcmp(shared->path, path) != 0) continue;
        if (!reload_is_enabled() || file_stamp_same(shared->stamp, file_stamp_of_path(path))) return shared;
    }
    return nullptr;
}

// Returns a copy with pixels of the colour made transparent; destroys `surface`.
static SDL_Surface *_texture_store_apply_color_key(SDL_Surface *surface, Sint32 transparent) {
    const auto part = [transparent](int shift) { return static_cast<Uint8>(transparent >> shift & 255); };
    SDL_SetSurfaceColorKey(surface, true, SDL_MapSurfaceRGB(surface, part(16), part(8), part(0)));
    SDL_Surface *cut = SDL_ConvertSurface(surface, SDL_PIXELFORMAT_RGBA32);
    SDL_DestroySurface(surface);
    return cut;
}

static bool _texture_store_fill(SharedTexture *shared, const char *path) {
    SDL_Surface *surface = image_load_surface(path);
    if (surface && shared->transparent != TEXTURE_STORE_NO_COLOR) {
        surface = _texture_store_apply_color_key(surface, shared->transparent);
    }
    if (!surface) return false;
    shared->width = surface->w;
    shared->height = surface->h;
    shared->texture = SDL_CreateTextureFromSurface(shared->renderer, surface);
    const bool filled = shared->texture && image_alpha_map_make(surface, &shared->alpha);
    SDL_DestroySurface(surface);
    if (filled) SDL_SetTextureScaleMode(shared->texture, SDL_SCALEMODE_NEAREST);
    return filled;
}

static void _texture_store_free(SharedTexture *shared) {
    if (shared->texture) SDL_DestroyTexture(shared->texture);
    image_alpha_map_cleanup(&shared->alpha);
    SDL_free(shared->path);
    SDL_free(shared);
}

SharedTexture *texture_store_get(SDL_Renderer *renderer, const char *path, Sint32 transparent) {
    SharedTexture *shared = _texture_store_find(renderer, path, transparent);
    if (shared) {
        shared->holders++;
        return shared;
    }
    shared = static_cast<SharedTexture *>(SDL_calloc(1, sizeof *shared));
    if (!shared) return nullptr;
    shared->renderer = renderer;
    shared->transparent = transparent;
    shared->holders = 1;
    if (reload_is_enabled()) shared->stamp = file_stamp_of_path(path);
    shared->path = SDL_strdup(path);
    if (!shared->path || !_texture_store_fill(shared, path)) {
        _texture_store_free(shared);
        return nullptr;
    }
    shared->next = g_texture_store;
    g_texture_store = shared;
    return shared;
}

void texture_store_release(SharedTexture *shared) {
    if (!shared || --shared->holders > 0) return;
    for (SharedTexture **at = &g_texture_store; *at; at = &(*at)->next) {
        if (*at != shared) continue;
        *at = shared->next;
        break;
    }
    _texture_store_free(shared);
}
