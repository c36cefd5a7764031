// picture: a picture file as a texture, and drawing it, or one cell of it, in one call. Main thread only.
#pragma once

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_surface.h>

struct SDL_Texture;

enum PictureFilter {
    PICTURE_NEAREST, // sharp pixels
    PICTURE_LINEAR,  // smooth; drawn as cells of one picture, neighbours bleed into each other
};

// The asset of this path. The caller's: SDL_DestroyTexture. Null: reported.
SDL_Texture *picture_load(const char *path, PictureFilter filter = PICTURE_NEAREST);

struct PictureDraw {
    SDL_FRect cell = {}; // px of the picture; 0 wide: all of it
    float scale = 1;
    SDL_FlipMode flip = SDL_FLIP_NONE;
    double angle = 0; // degrees clockwise, about the middle
};

// Its top-left corner at x, y in the current drawing space. False: reported.
bool picture_draw(SDL_Texture *picture, float x, float y, const PictureDraw &how = {});
