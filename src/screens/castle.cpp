#include "screens/castle.h"

#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/render_grid.h"
#include "lumarind/toolkit/tilemap.h"

static constexpr const char *TILESET_PATH = "assets/fireknight/tilemaps/old-dark-castle-interior-tileset.png";
static constexpr const char *LAYER_PATH = "assets/fireknight/tilemaps/castle-tilemap.csv";
static constexpr int TILE_SIZE = 16; // px
static constexpr Uint32 FIRST_GID = 1;
static constexpr int CHUNK_TILES = 16;
static constexpr double PAN_SPEED_X = 0.35; // rad/s
static constexpr double PAN_SPEED_Y = 0.9;

bool castle_load(Castle *castle, float scale) {
    SDL_Renderer *renderer = engine_renderer();
    castle->map = tilemap_new();
    if (!castle->map) return false;
    if (!tilemap_load_tileset(castle->map, renderer, TILESET_PATH, TILE_SIZE, TILE_SIZE, FIRST_GID)) return false;
    if (!tilemap_load_csv(castle->map, LAYER_PATH)) return false;
    tilemap_set_scale(castle->map, scale);
    castle->grid = tilemap_to_render_grid(renderer, castle->map, CHUNK_TILES);
    return castle->grid != nullptr;
}

void castle_cleanup(Castle *castle) {
    render_grid_cleanup(&castle->grid);
    tilemap_cleanup(&castle->map);
}

void castle_refresh(Castle *castle) {
    if (!render_grid_is_lost(castle->grid) && !tilemap_grid_is_stale(castle->map, castle->grid)) return;
    RenderGrid *fresh = tilemap_to_render_grid(engine_renderer(), castle->map, CHUNK_TILES);
    if (!fresh) return; // the error was reported; the old chunks are kept
    render_grid_cleanup(&castle->grid);
    castle->grid = fresh;
}

double castle_pan(double t, double speed) { return 0.5 - 0.5 * SDL_cos(t * speed); }

// Rounds to whole units, which keeps pixels sharp and chunks seamless.
static float _castle_origin(float map_size, float view_size, double pan) {
    const float slack = SDL_max(map_size - view_size, 0);
    return SDL_roundf(static_cast<float>(-static_cast<double>(slack) * pan));
}

void castle_draw_panning(Castle *castle, double t) {
    castle_refresh(castle);
    const Tilemap *map = castle->map;
    const RenderGrid *grid = castle->grid;
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    const SDL_FPoint origin = {
        _castle_origin(tilemap_width(map), width, castle_pan(t, PAN_SPEED_X)),
        _castle_origin(tilemap_height(map), height, castle_pan(t, PAN_SPEED_Y))};
    const TileRange rows = render_grid_visible_rows(grid, 0, height, origin, map->scale);
    const TileRange cols = render_grid_visible_cols(grid, 0, width, origin, map->scale);
    render_grid_draw_range(engine_renderer(), grid, rows, cols, origin, map->scale);
}
