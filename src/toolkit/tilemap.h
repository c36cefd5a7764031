// tilemap: a tile layer with its tileset image. Draws a range of tiles directly, or bakes the layer into a render grid,
// which is faster to draw each frame. Main thread only.
#pragma once

#include "lumarind/toolkit/tile_grid.h"
#include "lumarind/toolkit/tile_range.h"

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_surface.h>

struct RenderGrid;
struct SDL_Renderer;
struct SDL_Texture;

// A decoded GID. Index, row and col are -1 if there is nothing to draw.
struct DecodedTile {
    Sint32 index, row, col; // in the tileset
    double angle;           // degrees clockwise about the cell's centre, applied after the flip
    SDL_FlipMode flip;
};
DecodedTile tile_decode_gid(Uint32 gid, Uint32 first_gid, int columns);

struct Tilemap {
    SDL_Texture *tileset;  // owned; null until one is loaded
    Sint32 tile_w, tile_h; // px
    Sint32 columns, rows;  // of the tileset, in tiles
    Uint32 first_gid;      // GID of the tileset's first tile
    TileGrid *layer;       // owned; null until one is loaded
    float scale;           // above 0
    Uint32 generation;     // incremented when hot reload replaces the tileset or layer (toolkit/reload.h)
    Uint8 *opaque;         // owned; per tile, whether all of its pixels are opaque
};

// --- lifetime ---
Tilemap *tilemap_new();              // reports errors
void tilemap_cleanup(Tilemap **map); // sets the pointer to null; null is ignored

// --- loading, in either order, also repeatedly. Both report errors. A failed load keeps the old part; a loaded part is
// kept even if the layer has GIDs outside the tileset, which is an error ---
bool tilemap_load_tileset(
    Tilemap *map, SDL_Renderer *renderer, const char *path, int tile_w, int tile_h, Uint32 first_gid);
bool tilemap_load_csv(Tilemap *map, const char *path);
bool tilemap_check_gid_bounds(const Tilemap *map); // reports an error if the layer has GIDs outside the tileset
void tilemap_set_scale(Tilemap *map, float scale); // ignored unless above 0

// --- drawing, with the layer's corner at `origin`; both stop at the first error and report it ---
bool tilemap_draw_range(
    SDL_Renderer *renderer, const Tilemap *map, TileRange rows, TileRange cols, SDL_FPoint origin, float scale);
bool tilemap_draw(SDL_Renderer *renderer, const Tilemap *map, SDL_FPoint origin); // the whole layer, at the map's scale

// Bakes into chunks of chunk_tiles × chunk_tiles tiles at scale 1. The caller owns the grid. Reports errors.
RenderGrid *tilemap_to_render_grid(SDL_Renderer *renderer, const Tilemap *map, int chunk_tiles);
bool tilemap_grid_is_stale(const Tilemap *map, const RenderGrid *grid); // the map has changed since it was baked

// --- size at the map's scale; 0 without a layer ---
float tilemap_width(const Tilemap *map);
float tilemap_height(const Tilemap *map);
