// tilemap: a tile layer and the tileset image it is drawn with. Draws any part of itself, and bakes itself into a
// render grid, which is what a screen draws in every frame. Main thread only.
#pragma once

#include "lumarind/toolkit/tile_grid.h"
#include "lumarind/toolkit/tile_range.h"

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_surface.h>

struct RenderGrid;
struct SDL_Renderer;
struct SDL_Texture;

// What a GID means for a tileset. Index, row and col are -1 where there is nothing to draw.
struct DecodedTile {
    Sint32 index, row, col; // in the tileset
    double angle;           // degrees, clockwise about the cell's centre, after the flip
    SDL_FlipMode flip;
};
DecodedTile tile_decode_gid(Uint32 gid, Uint32 first_gid, int columns);

struct Tilemap {
    SDL_Texture *tileset;  // owned; null until one is loaded
    Sint32 tile_w, tile_h; // px
    Sint32 columns, rows;  // of the tileset, in tiles
    Uint32 first_gid;      // the GID of the tileset's first tile
    TileGrid *layer;       // owned; null until one is loaded
    float scale;           // above 0
    Uint32 generation;     // rises when changed files have replaced the tileset or the layer (toolkit/reload.h)
    Uint8 *opaque;         // owned; of each tile of the tileset, whether all of its pixels are opaque
};

// --- lifetime ---
Tilemap *tilemap_new();              // null: reported
void tilemap_cleanup(Tilemap **map); // and nulls the caller's pointer; null pointers are fine

// --- loading, in either order, each as often as wanted. False: reported; the old part stays, but for a new one that
// is fine in itself and does not go with the other ---
bool tilemap_load_tileset(
    Tilemap *map, SDL_Renderer *renderer, const char *path, int tile_w, int tile_h, Uint32 first_gid);
bool tilemap_load_csv(Tilemap *map, const char *path);
bool tilemap_check_gid_bounds(const Tilemap *map); // whether the tileset holds every tile the layer names
void tilemap_set_scale(Tilemap *map, float scale); // ignored unless above 0

// --- drawing, the layer's corner at `origin`. False: reported, and the rest is not drawn ---
bool tilemap_draw_range(
    SDL_Renderer *renderer, const Tilemap *map, TileRange rows, TileRange cols, SDL_FPoint origin, float scale);
bool tilemap_draw(SDL_Renderer *renderer, const Tilemap *map, SDL_FPoint origin); // all of it, at the map's scale

// Chunks of chunk_tiles × chunk_tiles tiles at scale 1. The caller owns the result. Null: reported.
RenderGrid *tilemap_to_render_grid(SDL_Renderer *renderer, const Tilemap *map, int chunk_tiles);
bool tilemap_grid_is_stale(const Tilemap *map, const RenderGrid *grid); // the map shows something else since

// --- size at the map's scale; 0 without a layer ---
float tilemap_width(const Tilemap *map);
float tilemap_height(const Tilemap *map);
