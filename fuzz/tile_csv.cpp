// CSV files of tile layers, loaded through a tile map.
#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "lumarind/toolkit/tilemap.h"

#include <string>

// Reads every cell and returns the largest id.
static Uint32 walk_cells(const TileGrid *grid, std::string *csv) {
    Uint32 max = 0;
    for (int row = 0; row < grid->rows; row++) {
        for (int col = 0; col < grid->cols; col++) {
            const Uint32 gid = tile_grid_gid(grid, row, col);
            const DecodedTile tile = tile_decode_gid(gid, 1, 16);
            max = SDL_max(max, gid & TILE_ID_MASK);
            fuzz_check((tile.index < 0) == ((gid & TILE_ID_MASK) == 0), "a cell has a tile unless it is empty");
            fuzz_check(tile.index < 0 || tile.row * 16 + tile.col == tile.index, "row and column match the index");
            *csv += (col > 0 ? "," : "") + std::to_string(gid);
        }
        *csv += '\n';
    }
    return max;
}

static bool same_cells(const TileGrid *a, const TileGrid *b) {
    if (a->rows != b->rows || a->cols != b->cols) return false;
    const size_t count = static_cast<size_t>(a->rows) * static_cast<size_t>(a->cols);
    return SDL_memcmp(a->cells, b->cells, count * sizeof *a->cells) == 0;
}

static void check_layer(const Tilemap *map) {
    const TileGrid *grid = map->layer;
    fuzz_check(grid->rows > 0 && grid->cols > 0, "a layer has cells");
    std::string csv;
    fuzz_check(walk_cells(grid, &csv) == tile_grid_max_gid(grid), "the largest id is correct");
    fuzz_check(
        tile_grid_gid(grid, grid->rows, 0) == 0 && tile_grid_gid(grid, 0, -1) == 0, "cells outside the grid are empty");
    fuzz_note_text(csv.c_str());
    fuzz_check(tilemap_width(map) > 0 || map->tile_w == 0, "a layer has a width");
    TileGrid *again = tile_grid_parse_csv(csv.c_str());
    fuzz_check(again && same_cells(grid, again), "a layer survives a round trip through CSV");
    tile_grid_cleanup(again);
    SDL_free(again);
}

int fuzz_tile_csv(const uint8_t *data, size_t size) {
    fuzz_start();
    fuzz_set_game_file(data, size);
    Tilemap *map = tilemap_new();
    fuzz_load_begins();
    const bool loaded = tilemap_load_csv(map, "layer.csv");
    fuzz_load_ends();
    fuzz_check(loaded == (map->layer != nullptr), "a layer exists only if loading succeeded");
    fuzz_check(loaded || fuzz_logged_errors() > 0, "a layer that does not load is reported");
    if (map->layer) check_layer(map);
    tilemap_cleanup(&map);
    return 0;
}
