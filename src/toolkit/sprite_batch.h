// sprite_batch: many sprites of one sheet handed to the renderer in a single call, which costs it less than one call
// each. The sprites are drawn in the order they were added, with the pixels of sprite_sheet_draw. Main thread only.
#pragma once

#include "lumarind/toolkit/sprite_sheet.h"

#include <SDL3/SDL_pixels.h>

struct SDL_Vertex;

struct SpriteBatch {
    const SpriteSheet *sheet; // of the sprites added; has to outlive their drawing
    Sint32 count, capacity;   // sprites
    SDL_Vertex *vertices;     // owned; four to a sprite
    Sint32 *indices;          // owned; six to a sprite, always the same
};

// --- lifetime ---
SpriteBatch *sprite_batch_new(int capacity);    // sprites it has room for at first; it grows. Null: reported
void sprite_batch_cleanup(SpriteBatch **batch); // and nulls the caller's pointer; null pointers are ignored

// --- a frame: begin, add, draw ---
void sprite_batch_begin(SpriteBatch *batch, const SpriteSheet *sheet); // empties it
// `pos` is the frame's top left corner, as for sprite_sheet_draw. Returns false and reports the error, without adding,
// for an animation of another set or without a current frame, and for lack of memory.
bool sprite_batch_add(
    SpriteBatch *batch, const Animation *anim, SDL_FPoint pos, float scale, SDL_FlipMode flip,
    SDL_FColor tint = {1, 1, 1, 1});
bool sprite_batch_draw(SDL_Renderer *renderer, const SpriteBatch *batch); // false: reported. An empty one draws nothing
