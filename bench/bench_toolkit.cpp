// Tile layers: loading, baking, and a frame of a panning map, on the software renderer.

#include "bench/repeated_castle.h"
#include "engine/setup.h"
#include "lumarind/core/storage.h"
#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/render_grid.h"
#include "lumarind/toolkit/tile_world.h"
#include "lumarind/toolkit/tilemap.h"
#include "screens/castle.h"

#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_storage.h>
#include <benchmark/benchmark.h>

#include <string>

static constexpr float VIEW_WIDTH = 1280, VIEW_HEIGHT = 720;

static std::string layer_csv(int rows, int cols) { // like a map editor's: small and large numbers, with flip flags
    std::string csv;
    for (int row = 0; row < rows; row++) {
        for (int col = 0; col < cols; col++) {
            const bool flagged = (row * 7 + col * 3) % 5 == 0;
            csv += std::to_string((flagged ? TILE_FLIP_H : 0u) | static_cast<Uint32>(1 + (row * 31 + col) % 200));
            csv += ',';
        }
        csv += '\n';
    }
    return csv;
}

static void parse_tile_csv(benchmark::State &state) {
    const std::string csv = layer_csv(512, 512);
    for (auto _ : state) {
        TileGrid *grid = tile_grid_parse_csv(csv.c_str());
        benchmark::DoNotOptimize(grid->cells[0]);
        tile_grid_cleanup(grid);
        SDL_free(grid);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(csv.size()));
}
BENCHMARK(parse_tile_csv);

// --- on a renderer ---

class CastleBench : public benchmark::Fixture {
public:
    void SetUp(benchmark::State &state) override {
        SDL_SetHintWithPriority(SDL_HINT_RENDER_DRIVER, "software", SDL_HINT_OVERRIDE);
        if (!engine_start("bench")) return state.SkipWithError("no engine");
        SDL_SetRenderVSync(engine_renderer(), 0);
        SDL_Renderer *renderer = engine_renderer();
        target = SDL_CreateTexture(
            renderer, SDL_PIXELFORMAT_XRGB8888, SDL_TEXTUREACCESS_TARGET, static_cast<int>(VIEW_WIDTH),
            static_cast<int>(VIEW_HEIGHT));
        SDL_SetRenderTarget(renderer, target);
        if (!castle_load(&castle, 3)) state.SkipWithError("no castle");
    }
    void TearDown(benchmark::State &) override {
        castle_cleanup(&castle);
        SDL_DestroyTexture(target);
        engine_stop();
    }

    // Draws one frame of a pan over the whole map.
    static void draw_frame(const RenderGrid *grid, float scale, int step) {
        const float width = static_cast<float>(grid->cols * grid->chunk_w) * scale - VIEW_WIDTH;
        const float height = static_cast<float>(grid->rows * grid->chunk_h) * scale - VIEW_HEIGHT;
        const float at = static_cast<float>(step % 97) / 97;
        const SDL_FPoint origin = {-SDL_roundf(width * at), -SDL_roundf(height * at)};
        render_grid_draw_range(
            engine_renderer(), grid, render_grid_visible_rows(grid, 0, VIEW_HEIGHT, origin, scale),
            render_grid_visible_cols(grid, 0, VIEW_WIDTH, origin, scale), origin, scale);
        SDL_FlushRenderer(engine_renderer());
    }

    Castle castle = {};
    SDL_Texture *target = nullptr;
};

BENCHMARK_DEFINE_F(CastleBench, bake_castle)(benchmark::State &state) {
    for (auto _ : state) {
        RenderGrid *grid = tilemap_to_render_grid(engine_renderer(), castle.map, 16);
        SDL_FlushRenderer(engine_renderer());
        render_grid_cleanup(&grid);
    }
}
BENCHMARK_REGISTER_F(CastleBench, bake_castle)->Unit(benchmark::kMillisecond);

BENCHMARK_DEFINE_F(CastleBench, pan_castle)(benchmark::State &state) {
    int step = 0;
    for (auto _ : state) draw_frame(castle.grid, 3, step++);
}
BENCHMARK_REGISTER_F(CastleBench, pan_castle)->Unit(benchmark::kMicrosecond);

BENCHMARK_DEFINE_F(CastleBench, pan_1024_tiles_square)(benchmark::State &state) {
    TileGrid *layer = castle.map->layer; // the castle, repeated
    castle.map->layer = tile_grid_new(1024, 1024);
    for (int row = 0; row < 1024; row++) {
        for (int col = 0; col < 1024; col++) {
            tile_grid_set_gid(castle.map->layer, row, col, tile_grid_gid(layer, row % layer->rows, col % layer->cols));
        }
    }
    RenderGrid *grid = tilemap_to_render_grid(engine_renderer(), castle.map, 16);
    int step = 0;
    for (auto _ : state) draw_frame(grid, 3, step++);
    render_grid_cleanup(&grid);
    tile_grid_cleanup(layer);
    SDL_free(layer);
}
BENCHMARK_REGISTER_F(CastleBench, pan_1024_tiles_square)->Unit(benchmark::kMicrosecond)->Iterations(2000);

BENCHMARK_DEFINE_F(CastleBench, load_tile_map_csv)(benchmark::State &state) { // with its tileset and image
    constexpr const char *NAME = "bench-1024.tmx";
    if (!write_repeated_castle(NAME, 1024, 1024)) return state.SkipWithError("the map could not be written");
    Uint64 size = 0;
    SDL_GetStorageFileSize(storage_game(), NAME, &size);
    for (auto _ : state) {
        TileWorld *world = tile_world_load(engine_renderer(), NAME);
        if (!world) return state.SkipWithError("the map does not load");
        tile_world_cleanup(&world);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(size));
}
BENCHMARK_REGISTER_F(CastleBench, load_tile_map_csv)->Unit(benchmark::kMillisecond);

BENCHMARK_DEFINE_F(CastleBench, one_view_tile_by_tile)(benchmark::State &state) {
    for (auto _ : state) {
        tilemap_draw_range(engine_renderer(), castle.map, {0, 15}, {0, 27}, {0, 0}, 3);
        SDL_FlushRenderer(engine_renderer());
    }
}
BENCHMARK_REGISTER_F(CastleBench, one_view_tile_by_tile)->Unit(benchmark::kMicrosecond);
