// tile_grid: a tile layer: a grid of global tile ids (GIDs), and its CSV parser.
#pragma once

#include <SDL3/SDL_stdinc.h>

// The top bits of a GID are flip flags; the rest is the tile's id, 0 for an empty cell.
inline constexpr Uint32 TILE_FLIP_H = 0x80000000u;
inline constexpr Uint32 TILE_FLIP_V = 0x40000000u;
inline constexpr Uint32 TILE_FLIP_D = 0x20000000u; // transposed
inline constexpr Uint32 TILE_ID_MASK = 0x0FFFFFFFu;

struct TileGrid {
    Sint32 rows, cols;
    Uint32 *cells; // owned; rows × cols GIDs with flags, row by row
};

// --- lifetime: the caller owns the grid: tile_grid_cleanup, then SDL_free ---
TileGrid *tile_grid_new(int rows, int cols); // all cells empty. Reports errors
void tile_grid_cleanup(TileGrid *grid);      // frees the cells, not the record; null is ignored

// Parses lines of comma-separated decimal numbers, all of the same length; a trailing comma is allowed. Whitespace
// around numbers, blank lines and carriage returns are ignored. Reports errors with the line number, not counting blank
// lines.
TileGrid *tile_grid_parse_csv(const char *text);

// --- cells ---
Uint32 tile_grid_gid(const TileGrid *grid, int row, int col);         // 0 outside the grid
bool tile_grid_set_gid(TileGrid *grid, int row, int col, Uint32 gid); // false outside the grid
Uint32 tile_grid_max_gid(const TileGrid *grid);                       // the largest id, without flags
