// render_grid: a grid of render targets ("chunks") into which static content is drawn once; each frame only the visible
// chunks are copied. Owned by one renderer and must be freed before it. A renderer may lose the contents of render
// targets: when render_grid_is_lost returns true, fill the grid again.
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
    SDL_Texture **chunks;    // owned, as are the textures; row by row
    Uint32 generation;       // of the content drawn; for use by the caller
    SDL_AtomicInt lost;      // set to 1 by an event watch
};

// Limits memory: a map file of a few hundred kilobytes can declare more than there is. Enough for 2^29 pixels, such as
// 32768 × 16384.
inline constexpr int RENDER_GRID_MAX_MB = 2048;

// --- lifetime ---
RenderGrid *render_grid_new(SDL_Renderer *renderer, int rows, int cols, int chunk_w, int chunk_h); // reports errors
void render_grid_cleanup(RenderGrid **grid); // sets the pointer to null; null is ignored

// --- filling: begin, draw in pixels of the chunk, end (also after an error). Both report errors ---
bool render_grid_begin_chunk(SDL_Renderer *renderer, RenderGrid *grid, int row, int col, SDL_Texture **saved_target);
bool render_grid_end_chunk(SDL_Renderer *renderer, SDL_Texture *saved_target);

// --- drawing, with the first chunk's corner at `origin`; both stop at the first error and report it ---
bool render_grid_draw_range(
    SDL_Renderer *renderer, const RenderGrid *grid, TileRange rows, TileRange cols, SDL_FPoint origin, float scale);
bool render_grid_draw(SDL_Renderer *renderer, const RenderGrid *grid, SDL_FPoint origin, float scale);

// --- queries ---
bool render_grid_is_lost(RenderGrid *grid);                             // the chunks' contents are lost
SDL_Texture *render_grid_get(const RenderGrid *grid, int row, int col); // null outside the grid
TileRange render_grid_visible_rows(const RenderGrid *grid, float view_y, float view_h, SDL_FPoint origin, float scale);
TileRange render_grid_visible_cols(const RenderGrid *grid, float view_x, float view_w, SDL_FPoint origin, float scale);
