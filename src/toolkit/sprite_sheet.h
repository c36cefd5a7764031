// sprite_sheet: the texture of an animation set, checked against the set, and drawing of an animation's current frame.
// Owned by one renderer and must be freed before it.
#pragma once

#include "lumarind/toolkit/animation.h"

#include <SDL3/SDL_pixels.h>
#include <SDL3/SDL_surface.h>

struct SDL_Renderer;
struct SDL_Texture;

struct SpriteFrame {
    SDL_FRect src;                  // on the sheet, px
    float left, top, right, bottom; // texture coordinates, 0 to 1
    SDL_FPoint offset;              // of src within the untrimmed frame, px
};

struct SpriteSheet {
    SDL_Texture *texture; // owned
    const AnimationSet *set;
    SpriteFrame *frames;        // owned; precomputed, so that drawing needs no division
    Sint32 frame_count;         // of `frames`
    float width, height;        // of the texture, px
    mutable SpriteFrame beyond; // the last frame queried that is not in `frames`
    // Cache of the scaled-down debug sheet; empty until drawn.
    mutable SDL_Texture *preview;    // owned
    mutable SDL_FPoint preview_size; // size of `preview`, output pixels
    SpriteSheet *fresh;              // owned; only during hot reload of the set
};

// --- lifetime ---
SpriteSheet *sprite_sheet_new(SDL_Renderer *renderer, const AnimationSet *set); // reports errors
void sprite_sheet_cleanup(SpriteSheet **sheet); // sets the pointer to null; null is ignored

// --- drawing: `pos` is the frame's top-left corner ---
bool sprite_sheet_draw(
    SDL_Renderer *renderer, const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale,
    SDL_FlipMode flip); // reports errors
SDL_FRect sprite_sheet_dest_rect(const SpriteSheet *sheet, SDL_FPoint pos, float scale);
// The animation's current frame and its destination in sprite_sheet_draw. Reports errors.
struct SpritePlace {
    const SpriteFrame *frame; // owned by the sheet; valid until the next call
    SDL_FRect dst;
};
bool sprite_sheet_place(
    const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale, SDL_FlipMode flip,
    SpritePlace *place);

// --- debugging: outlines of one unit, just outside the framed area ---
void sprite_sheet_draw_frame_outline(
    SDL_Renderer *renderer, const SpriteSheet *sheet, SDL_FPoint pos, float scale, SDL_Color color);
// Draws the whole sheet and outlines the animation's current frame on it.
void sprite_sheet_draw_debug_sheet(
    SDL_Renderer *renderer, const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale,
    SDL_Color sheet_color, SDL_Color frame_color);
