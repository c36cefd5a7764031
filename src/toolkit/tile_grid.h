// tile_grid: one layer of tiles as a map editor exports it, a grid of global tile ids (GIDs), and its CSV text.
#pragma once

#include <SDL3/SDL_stdinc.h>

// The top bits of a GID turn its tile; the rest is the tile's id, 0 for an empty cell.
inline constexpr Uint32 TILE_FLIP_H = 0x80000000u;
inline constexpr Uint32 TILE_FLIP_V = 0x40000000u;
inline constexpr Uint32 TILE_FLIP_D = 0x20000000u; // transposed
inline constexpr Uint32 TILE_ID_MASK = 0x0FFFFFFFu;

struct TileGrid {
    Sint32 rows, cols;
    Uint32 *cells; // owned; rows × cols GIDs, row by row, with their flags
};

// --- lifetime: the caller owns a grid: tile_grid_cleanup, then SDL_free ---
TileGrid *tile_grid_new(int rows, int cols); // of empty cells. Null: reported
void tile_grid_cleanup(TileGrid *grid);      // frees the cells, not the record; null is fine

// Lines of decimal numbers separated by commas, all of one length; one comma may end a line. Blanks around numbers,
// blank lines and carriage returns at line ends do not count. Null: reported, with the line's number among those that
// are not blank.
TileGrid *tile_grid_parse_csv(const char *text);

// --- cells ---
Uint32 tile_grid_gid(const TileGrid *grid, int row, int col);         // 0 outside the grid
bool tile_grid_set_gid(TileGrid *grid, int row, int col, Uint32 gid); // false outside it
Uint32 tile_grid_max_gid(const TileGrid *grid);                       // the largest id, without flags
