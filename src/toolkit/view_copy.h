// view_copy: draws magnified textures without paying for what lies outside the view.
#pragma once

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_surface.h>

struct SDL_Renderer;
struct SDL_Texture;

// SDL_RenderTexture, and with a flip SDL_RenderTextureRotated by no angle: the same pixels. Texels outside the view are
// left out where it pays: SDL's software renderer first magnifies a copy that crosses the view's edge as a whole: at 24
// output pixels to a texel that is seconds for a screen of chunks. `src` null: the whole texture.
bool copy_texture_in_view(
    SDL_Renderer *renderer, SDL_Texture *texture, const SDL_FRect *src, const SDL_FRect *dst,
    SDL_FlipMode flip = SDL_FLIP_NONE);

// The engine's, once per frame: renderers are asked anew how they draw.
void view_copy_new_frame();
