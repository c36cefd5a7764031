// sprite_batch: batched drawing: many sprites of one sheet in a single render call. Sprites are drawn in the order they
// were added, with the same pixels as sprite_sheet_draw. Main thread only.
#pragma once

#include "lumarind/toolkit/sprite_sheet.h"

#include <SDL3/SDL_pixels.h>

struct SDL_Vertex;

struct SpriteBatch {
    const SpriteSheet *sheet; // borrowed until the batch is drawn
    Sint32 count, capacity;   // sprites
    SDL_Vertex *vertices;     // owned; four per sprite
    Sint32 *indices;          // owned; six per sprite, constant
};

// --- lifetime ---
SpriteBatch *sprite_batch_new(int capacity);    // initial capacity in sprites; it grows. Reports errors
void sprite_batch_cleanup(SpriteBatch **batch); // sets the pointer to null; null is ignored

// --- a frame: begin, add, draw ---
void sprite_batch_begin(SpriteBatch *batch, const SpriteSheet *sheet); // empties it
// `pos` is the frame's top-left corner, as for sprite_sheet_draw. Reports an error, adding nothing, for an
// animation of another set or without a current frame, or if out of memory.
bool sprite_batch_add(
    SpriteBatch *batch, const Animation *anim, SDL_FPoint pos, float scale, SDL_FlipMode flip,
    SDL_FColor tint = {1, 1, 1, 1});
bool sprite_batch_draw(SDL_Renderer *renderer, const SpriteBatch *batch); // an empty one draws nothing; reports errors
