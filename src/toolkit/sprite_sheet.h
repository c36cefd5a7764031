// sprite_sheet: the image an animation set describes, checked against it, and the drawing of an animation's current
// frame. Belongs to its renderer and has to be freed before it.
#pragma once

#include "lumarind/toolkit/animation.h"

#include <SDL3/SDL_pixels.h>
#include <SDL3/SDL_surface.h>

struct SDL_Renderer;
struct SDL_Texture;

struct SpriteFrame {
    SDL_FRect src;                  // on the sheet, px
    float left, top, right, bottom; // the same in shares of its width and height
    SDL_FPoint offset;              // of what is on the sheet within the whole frame, px
};

struct SpriteSheet {
    SDL_Texture *texture; // owned
    const AnimationSet *set;
    SpriteFrame *frames;        // owned; of the sheet's frames, so that nothing is divided when they are drawn
    Sint32 frame_count;         // of `frames`
    float width, height;        // of the texture, px
    mutable SpriteFrame beyond; // the one asked for last of those that `frames` does not have
    // A cache of the debug sheet, made by drawing it; both of it empty until then.
    mutable SDL_Texture *preview;    // owned
    mutable SDL_FPoint preview_size; // what it was made for, output pixels
    SpriteSheet *fresh;              // owned; only while the set's file is loaded anew
};

// --- lifetime ---
SpriteSheet *sprite_sheet_new(SDL_Renderer *renderer, const AnimationSet *set); // null: reported
void sprite_sheet_cleanup(SpriteSheet **sheet); // and nulls the caller's pointer; null pointers are fine

// --- drawing: `pos` is the frame's top-left corner ---
bool sprite_sheet_draw(
    SDL_Renderer *renderer, const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale,
    SDL_FlipMode flip); // false: reported
SDL_FRect sprite_sheet_dest_rect(const SpriteSheet *sheet, SDL_FPoint pos, float scale);
// The animation's current frame, and where sprite_sheet_draw draws what the sheet has of it. False: reported.
struct SpritePlace {
    const SpriteFrame *frame; // the sheet's, until the next call
    SDL_FRect dst;
};
bool sprite_sheet_place(
    const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale, SDL_FlipMode flip,
    SpritePlace *place);

// --- debugging: outlines of one unit, just outside what they frame ---
void sprite_sheet_draw_frame_outline(
    SDL_Renderer *renderer, const SpriteSheet *sheet, SDL_FPoint pos, float scale, SDL_Color color);
// The whole sheet, and the animation's current frame on it.
void sprite_sheet_draw_debug_sheet(
    SDL_Renderer *renderer, const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale,
    SDL_Color sheet_color, SDL_Color frame_color);
