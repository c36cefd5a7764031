// view_copy: clipped drawing of magnified textures, without cost for parts outside the view.
#pragma once

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_surface.h>

struct SDL_Renderer;
struct SDL_Texture;

// Draws the same pixels as SDL_RenderTexture, or with a flip SDL_RenderTextureRotated at angle 0, but omits texels
// outside the view where it pays: SDL's software renderer first magnifies the whole copy if it crosses the view's edge,
// which takes seconds for a screen of chunks at 24 output pixels per texel. Null for `src`: the whole texture.
bool copy_texture_in_view(
    SDL_Renderer *renderer, SDL_Texture *texture, const SDL_FRect *src, const SDL_FRect *dst,
    SDL_FlipMode flip = SDL_FLIP_NONE);

// Called by the engine once per frame: discards cached renderer state.
void view_copy_new_frame();
