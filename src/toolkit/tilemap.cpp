#include "lumarind/toolkit/tilemap.h"

#include "lumarind/core/error.h"
#include "lumarind/core/storage.h"
#include "lumarind/toolkit/image.h"
#include "lumarind/toolkit/reload.h"
#include "lumarind/toolkit/render_grid.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

// --- GIDs ---

static constexpr DecodedTile EMPTY_TILE = {.index = -1, .row = -1, .col = -1, .angle = 0, .flip = SDL_FLIP_NONE};

struct Orientation {
    double angle = 0;
    SDL_FlipMode flip = SDL_FLIP_NONE;
};
// Indexed by the three flip flags as bits: H 4, V 2, D 1.
static constexpr Orientation ORIENTATIONS[8] = {
    {.angle = 0, .flip = SDL_FLIP_NONE},       {.angle = 90, .flip = SDL_FLIP_VERTICAL},
    {.angle = 0, .flip = SDL_FLIP_VERTICAL},   {.angle = 270, .flip = SDL_FLIP_NONE},
    {.angle = 0, .flip = SDL_FLIP_HORIZONTAL}, {.angle = 90, .flip = SDL_FLIP_NONE},
    {.angle = 180, .flip = SDL_FLIP_NONE},     {.angle = 90, .flip = SDL_FLIP_HORIZONTAL},
};

DecodedTile tile_decode_gid(Uint32 gid, Uint32 first_gid, int columns) {
    const Uint32 id = gid & TILE_ID_MASK;
    if (id == 0 || id < first_gid || columns <= 0) return EMPTY_TILE;
    const Orientation &turned = ORIENTATIONS[gid >> 29]; // the flags are the top three bits, in this order
    const auto index = static_cast<Sint32>(id - first_gid);
    return {
        .index = index,
        .row = index / columns,
        .col = index % columns,
        .angle = turned.angle,
        .flip = turned.flip,
    };
}

// --- lifetime ---

Tilemap *tilemap_new() {
    auto *map = static_cast<Tilemap *>(SDL_calloc(1, sizeof(Tilemap)));
    if (!map) {
        engine_error("[TILEMAP] Memory allocation failed, error: %s", SDL_GetError());
        return nullptr;
    }
    map->scale = 1.0f;
    return map;
}

static void _tilemap_free_layer(Tilemap *map) {
    tile_grid_cleanup(map->layer);
    SDL_free(map->layer);
    map->layer = nullptr;
}

void tilemap_cleanup(Tilemap **map) {
    if (!map || !*map) return;
    reload_forget(*map);
    if ((*map)->tileset) SDL_DestroyTexture((*map)->tileset);
    SDL_free((*map)->opaque);
    _tilemap_free_layer(*map);
    SDL_free(*map);
    *map = nullptr;
}

// --- hot reload: on failure the old part is kept ---

static void _tilemap_reload_tileset(void *owner, const char *path) {
    auto *map = static_cast<Tilemap *>(owner);
    const Tilemap old = *map;
    map->tileset = nullptr;
    map->opaque = nullptr;
    SDL_Renderer *renderer = SDL_GetRendererFromTexture(old.tileset);
    const bool loaded = tilemap_load_tileset(map, renderer, path, old.tile_w, old.tile_h, old.first_gid);
    const Tilemap discarded = loaded ? old : *map;
    if (discarded.tileset) SDL_DestroyTexture(discarded.tileset);
    SDL_free(discarded.opaque);
    if (!loaded) *map = old;
    if (loaded) map->generation++;
}

static void _tilemap_reload_csv(void *owner, const char *path) {
    auto *map = static_cast<Tilemap *>(owner);
    TileGrid *old = map->layer;
    map->layer = nullptr;
    const bool loaded = tilemap_load_csv(map, path);
    TileGrid *discarded = loaded ? old : map->layer;
    tile_grid_cleanup(discarded);
    SDL_free(discarded);
    if (!loaded) map->layer = old;
    if (loaded) map->generation++;
}

// --- loading ---

// Checks that the image divides into whole tiles and stores its size in tiles.
static bool
_tilemap_measure_tileset(SDL_Texture *tileset, const char *path, int tile_w, int tile_h, int *columns, int *rows) {
    float width = 0, height = 0;
    if (!SDL_GetTextureSize(tileset, &width, &height)) {
        return engine_error("[TILEMAP] SDL_GetTextureSize failed for %s, error: %s", path, SDL_GetError());
    }
    const int w = static_cast<int>(width), h = static_cast<int>(height);
    if (w % tile_w != 0 || h % tile_h != 0) {
        return engine_error(
            "[TILEMAP] Tileset %s is %dx%d, which does not divide by %dx%d. Tileset margin and spacing are not "
            "supported.",
            path, w, h, tile_w, tile_h);
    }
    *columns = w / tile_w;
    *rows = h / tile_h;
    return true;
}

// Finds the tiles that can be copied without blending. Returns null with SDL's error set if out of memory.
static Uint8 *_tilemap_find_opaque(SDL_Surface *picture, int tile_w, int tile_h, int columns, int rows) {
    ImageAlphaMap alpha = {};
    const auto count = static_cast<size_t>(columns) * static_cast<size_t>(rows);
    auto *opaque = image_alpha_map_make(picture, &alpha) ? static_cast<Uint8 *>(SDL_calloc(count, 1)) : nullptr;
    for (int i = 0; opaque && i < columns * rows; i++) {
        const SDL_Rect tile = {i % columns * tile_w, i / columns * tile_h, tile_w, tile_h};
        opaque[i] = image_alpha_of(&alpha, tile) == IMAGE_OPAQUE;
    }
    image_alpha_map_cleanup(&alpha);
    return opaque;
}

bool tilemap_load_tileset(
    Tilemap *map, SDL_Renderer *renderer, const char *path, int tile_w, int tile_h, Uint32 first_gid) {
    if (tile_w < 1 || tile_h < 1) {
        return engine_error("[TILEMAP] A tile size of %dx%d is not usable", tile_w, tile_h);
    }
    const FileStamp stamp = reload_stamp(path, false);
    SDL_Surface *picture = image_load_surface(path);
    SDL_Texture *tileset = picture ? SDL_CreateTextureFromSurface(renderer, picture) : nullptr;
    int columns = 0, rows = 0;
    bool usable = tileset || engine_error("[TILEMAP] IMG_LoadTexture failed for %s, error: %s", path, SDL_GetError());
    usable = usable && _tilemap_measure_tileset(tileset, path, tile_w, tile_h, &columns, &rows);
    Uint8 *opaque = usable ? _tilemap_find_opaque(picture, tile_w, tile_h, columns, rows) : nullptr;
    SDL_DestroySurface(picture); // ignores null
    if (usable && !opaque) engine_error("[TILEMAP] Memory allocation failed, error: %s", SDL_GetError());
    if (!opaque) {
        if (tileset) SDL_DestroyTexture(tileset);
        return false;
    }
    SDL_SetTextureScaleMode(tileset, SDL_SCALEMODE_NEAREST);
    if (map->tileset) SDL_DestroyTexture(map->tileset);
    SDL_free(map->opaque);
    map->tileset = tileset;
    map->opaque = opaque;
    map->tile_w = tile_w;
    map->tile_h = tile_h;
    map->columns = columns;
    map->rows = rows;
    map->first_gid = first_gid;
    reload_follow(map, _tilemap_reload_tileset, path, false, stamp);
    return tilemap_check_gid_bounds(map);
}

bool tilemap_load_csv(Tilemap *map, const char *path) {
    const FileStamp stamp = reload_stamp(path, true);
    char *text = storage_read_game_file(path);
    if (!text) return false;
    TileGrid *layer = tile_grid_parse_csv(text);
    SDL_free(text);
    if (!layer) return engine_error("[TILEMAP] Could not parse tile layer: %s", path);
    _tilemap_free_layer(map);
    map->layer = layer;
    reload_follow(map, _tilemap_reload_csv, path, true, stamp);
    return tilemap_check_gid_bounds(map);
}

bool tilemap_check_gid_bounds(const Tilemap *map) {
    if (!map->tileset || !map->layer) return true; // checked once the other part is loaded
    const Uint32 count = static_cast<Uint32>(map->columns) * static_cast<Uint32>(map->rows);
    const Uint32 highest = count + map->first_gid - 1;
    const Uint32 max = tile_grid_max_gid(map->layer);
    if (highest >= max) return true;
    return engine_error(
        "[TILEMAP] The map uses GID %u but the tileset only holds %u tiles from GID %u, so the highest it can draw is "
        "%u",
        max, count, map->first_gid, highest);
}

void tilemap_set_scale(Tilemap *map, float scale) {
    if (scale > 0) map->scale = scale;
}

// --- drawing ---

static bool
_tilemap_draw_tile(SDL_Renderer *renderer, const Tilemap *map, const DecodedTile &tile, const SDL_FRect *dst) {
    const float w = static_cast<float>(map->tile_w), h = static_cast<float>(map->tile_h);
    const SDL_FRect src = {static_cast<float>(tile.col) * w, static_cast<float>(tile.row) * h, w, h};
    const SDL_FPoint center = {0.5f * dst->w, 0.5f * dst->h};
    return SDL_RenderTextureRotated(renderer, map->tileset, &src, dst, tile.angle, &center, tile.flip);
}

bool tilemap_draw_range(
    SDL_Renderer *renderer, const Tilemap *map, TileRange rows, TileRange cols, SDL_FPoint origin, float scale) {
    if (!map->layer || !map->tileset) {
        return engine_error("[TILEMAP] Nothing to draw, the tileset or the tile layer is missing");
    }
    rows = tile_range_clamp(rows, map->layer->rows);
    cols = tile_range_clamp(cols, map->layer->cols);
    const float w = static_cast<float>(map->tile_w) * scale, h = static_cast<float>(map->tile_h) * scale;
    for (int row = rows.first; row < rows.end; row++) {
        for (int col = cols.first; col < cols.end; col++) {
            const Uint32 gid = tile_grid_gid(map->layer, row, col);
            const DecodedTile tile = tile_decode_gid(gid, map->first_gid, map->columns);
            if (tile.index < 0) continue;
            const SDL_FRect dst = {
                origin.x + static_cast<float>(col) * w, origin.y + static_cast<float>(row) * h, w, h};
            if (_tilemap_draw_tile(renderer, map, tile, &dst)) continue;
            return engine_error("[TILEMAP] Could not draw tile at row %d col %d, error: %s", row, col, SDL_GetError());
        }
    }
    return true;
}

bool tilemap_draw(SDL_Renderer *renderer, const Tilemap *map, SDL_FPoint origin) {
    if (!map->layer) return engine_error("[TILEMAP] Nothing to draw, the tile layer is missing");
    return tilemap_draw_range(renderer, map, {0, map->layer->rows}, {0, map->layer->cols}, origin, map->scale);
}

// --- baking ---

// Returns whether opaque tiles cover the whole chunk, which then can be copied without blending.
static bool _tilemap_fills(const Tilemap *map, TileRange rows, TileRange cols) {
    if (rows.end > map->layer->rows || cols.end > map->layer->cols) return false;
    const bool oblong = map->tile_w != map->tile_h;
    for (int row = rows.first; row < rows.end; row++) {
        for (int col = cols.first; col < cols.end; col++) {
            const Uint32 gid = tile_grid_gid(map->layer, row, col);
            const int tile = tile_decode_gid(gid, map->first_gid, map->columns).index;
            if (tile < 0 || tile >= map->columns * map->rows || !map->opaque[tile]) return false;
            if (oblong && (gid & TILE_FLIP_D)) return false; // rotated about its centre, it leaves gaps in its cell
        }
    }
    return true;
}

static bool _tilemap_bake_chunk(SDL_Renderer *renderer, const Tilemap *map, RenderGrid *grid, int row, int col, int n) {
    SDL_Texture *saved_target = nullptr;
    if (!render_grid_begin_chunk(renderer, grid, row, col, &saved_target)) return false;
    const SDL_FPoint origin = {static_cast<float>(-col * grid->chunk_w), static_cast<float>(-row * grid->chunk_h)};
    const TileRange rows = {row * n, (row + 1) * n}, cols = {col * n, (col + 1) * n};
    const bool drawn = tilemap_draw_range(renderer, map, rows, cols, origin, 1.0f);
    if (!render_grid_end_chunk(renderer, saved_target) || !drawn) return false;
    if (_tilemap_fills(map, rows, cols)) {
        SDL_SetTextureBlendMode(render_grid_get(grid, row, col), SDL_BLENDMODE_NONE);
    }
    return true;
}

RenderGrid *tilemap_to_render_grid(SDL_Renderer *renderer, const Tilemap *map, int chunk_tiles) {
    if (!map->layer || !map->tileset) {
        engine_error("[TILEMAP] Cannot bake, the tileset or the tile layer is missing");
        return nullptr;
    }
    if (chunk_tiles <= 0) {
        engine_error("[TILEMAP] A chunk of %d tiles is not usable", chunk_tiles);
        return nullptr;
    }
    const int rows = (map->layer->rows + chunk_tiles - 1) / chunk_tiles;
    const int cols = (map->layer->cols + chunk_tiles - 1) / chunk_tiles;
    RenderGrid *grid = render_grid_new(renderer, rows, cols, map->tile_w * chunk_tiles, map->tile_h * chunk_tiles);
    for (int row = 0; grid && row < rows; row++) {
        for (int col = 0; grid && col < cols; col++) {
            if (!_tilemap_bake_chunk(renderer, map, grid, row, col, chunk_tiles)) render_grid_cleanup(&grid);
        }
    }
    if (grid) grid->generation = map->generation;
    return grid;
}

bool tilemap_grid_is_stale(const Tilemap *map, const RenderGrid *grid) { return grid->generation != map->generation; }

// --- size ---

float tilemap_width(const Tilemap *map) {
    if (!map->layer) return 0;
    return map->scale * (static_cast<float>(map->layer->cols) * static_cast<float>(map->tile_w));
}

float tilemap_height(const Tilemap *map) {
    if (!map->layer) return 0;
    return map->scale * (static_cast<float>(map->layer->rows) * static_cast<float>(map->tile_h));
}
