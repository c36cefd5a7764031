// render_grid: a grid of equal pictures ("chunks") that static content is drawn into once and copied from in every
// frame, only those the view covers. Belongs to the renderer that made it and has to be freed before it. The chunks are
// render targets, whose content a renderer may lose: render_grid_is_lost tells, and the grid has to be filled again.
#pragma once

#include "lumarind/toolkit/tile_range.h"

#include <SDL3/SDL_atomic.h>
#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

struct SDL_Renderer;
struct SDL_Texture;

struct RenderGrid {
    Sint32 rows, cols;       // of chunks
    Sint32 chunk_w, chunk_h; // px
    SDL_Texture **chunks;    // owned, as are they; row by row
    Uint32 generation;       // of what was drawn into it, for who filled it
    SDL_AtomicInt lost;      // set by SDL's events
};

// A map's file of a few hundred kilobytes can ask for more memory than there is. This is a world of 2^29 pixels, such
// as 32768 × 16384.
inline constexpr int RENDER_GRID_MAX_MB = 2048;

// --- lifetime ---
RenderGrid *render_grid_new(SDL_Renderer *renderer, int rows, int cols, int chunk_w, int chunk_h); // null: reported
void render_grid_cleanup(RenderGrid **grid); // and nulls the caller's pointer; null pointers are fine

// --- filling: begin, draw in the chunk's own pixels, end also when the drawing failed. False: reported ---
bool render_grid_begin_chunk(SDL_Renderer *renderer, RenderGrid *grid, int row, int col, SDL_Texture **saved_target);
bool render_grid_end_chunk(SDL_Renderer *renderer, SDL_Texture *saved_target);

// --- drawing, the first chunk's corner at `origin`. False: reported, and the rest is not drawn ---
bool render_grid_draw_range(
    SDL_Renderer *renderer, const RenderGrid *grid, TileRange rows, TileRange cols, SDL_FPoint origin, float scale);
bool render_grid_draw(SDL_Renderer *renderer, const RenderGrid *grid, SDL_FPoint origin, float scale);

// --- questions ---
bool render_grid_is_lost(RenderGrid *grid);                             // the renderer has lost what it held
SDL_Texture *render_grid_get(const RenderGrid *grid, int row, int col); // null outside the grid
TileRange render_grid_visible_rows(const RenderGrid *grid, float view_y, float view_h, SDL_FPoint origin, float scale);
TileRange render_grid_visible_cols(const RenderGrid *grid, float view_x, float view_w, SDL_FPoint origin, float scale);
