// picture: loads an image file as a texture and draws it, or one cell of it. Main thread only.
#pragma once

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_surface.h>

struct SDL_Texture;

enum PictureFilter {
    PICTURE_NEAREST, // sharp pixels
    PICTURE_LINEAR,  // smooth; neighbouring cells of an image bleed into each other
};

// Loads the asset at this path. The caller destroys it with SDL_DestroyTexture. Reports errors.
SDL_Texture *picture_load(const char *path, PictureFilter filter = PICTURE_NEAREST);

struct PictureDraw {
    SDL_FRect cell = {}; // part of the image, px; width 0: all of it
    float scale = 1;
    SDL_FlipMode flip = SDL_FLIP_NONE;
    double angle = 0; // degrees clockwise about the centre
};

// Draws it with the top-left corner at x, y in the current drawing space. Reports errors.
bool picture_draw(SDL_Texture *picture, float x, float y, const PictureDraw &how = {});
