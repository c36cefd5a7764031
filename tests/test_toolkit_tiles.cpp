// Cells of tile layers, GIDs, ranges, and drawing of tile maps: flips, chunks, culling, seams.

#include "lumarind/core/storage.h"
#include "lumarind/settings/menu.h"
#include "lumarind/toolkit/animation_set.h"
#include "lumarind/toolkit/reload.h"
#include "lumarind/toolkit/render_grid.h"
#include "lumarind/toolkit/sprite_batch.h"
#include "lumarind/toolkit/tile_world.h"
#include "lumarind/toolkit/tilemap.h"
#include "support/log_capture.h"
#include "support/picture.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_render.h>
#include <SDL3_image/SDL_image.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace {

// --- cells ---

TEST(TileGridCells, AccessOutsideGridIsIgnored) {
    const LogCapture log;
    EXPECT_FALSE(tile_grid_new(0, 4) || tile_grid_new(4, 0) || tile_grid_parse_csv(nullptr));
    EXPECT_TRUE(log.has("[TILE_GRID] A grid of 4x0 has no cells") && log.has("[TILE_GRID] No CSV text to parse"));
    TileGrid *grid = tile_grid_parse_csv("1,2147483653\n536870915,4");
    EXPECT_EQ(tile_grid_max_gid(grid), 5u) << "flags are ignored";
    for (const auto &[row, col] : {std::pair{-1, 1}, {0, -1}, {2, 0}, {0, 2}})
        EXPECT_FALSE(tile_grid_gid(grid, row, col) != 0 || tile_grid_set_gid(grid, row, col, 9));
    EXPECT_TRUE(tile_grid_set_gid(grid, 1, 1, 9) && tile_grid_max_gid(grid) == 9);
    tile_grid_cleanup(grid);
    EXPECT_EQ(tile_grid_gid(grid, 0, 0) + tile_grid_max_gid(grid) + tile_grid_max_gid(nullptr), 0u);
    SDL_free(grid);
}

TEST(Cleanup, NullIsIgnored) {
    EXPECT_EQ(menu_tick(nullptr, nullptr, 1, {}).taken, MenuAnswer{}.taken) << "without a setup";
    EXPECT_FALSE(tile_grid_gid(nullptr, 0, 0) || render_grid_get(nullptr, 0, 0));
    tile_grid_cleanup(nullptr);
    tilemap_cleanup(nullptr);
    render_grid_cleanup(nullptr);
    sprite_batch_cleanup(nullptr);
    sprite_sheet_cleanup(nullptr);
    animation_set_cleanup(nullptr);
    tile_world_cleanup(nullptr);
}

// --- GIDs and ranges ---

TEST(TileRanges, DecodeClampAndCover) {
    const struct {
        Uint32 gid, first_gid;
        int columns, index, row, col;
    } gids[] = {{0, 1, 4, -1, -1, -1}, {TILE_FLIP_H, 1, 4, -1, -1, -1}, {3, 4, 4, -1, -1, -1}, {3, 1, 0, -1, -1, -1},
                {4, 4, 4, 0, 0, 0},    {0x10000007, 1, 4, 6, 1, 2},     {3, 1, 1, 2, 2, 0}}; // bit 28 is ignored
    for (const auto &c : gids) {
        const DecodedTile tile = tile_decode_gid(c.gid, c.first_gid, c.columns);
        EXPECT_TRUE(tile.index == c.index && tile.row == c.row && tile.col == c.col) << c.gid;
        EXPECT_TRUE(tile.angle == 0 && tile.flip == SDL_FLIP_NONE) << c.gid;
    }
    const std::pair<TileRange, TileRange> ranges[] = {
        {tile_range_clamp({-3, 50}, 10), {0, 10}},
        {tile_range_clamp({7, 2}, 10), {7, 7}},
        {tile_range_clamp({2, 5}, -1), {0, 0}},
        {tile_range_covering(0, 1280, -100, 256, 3, 10), {0, 2}},
        {tile_range_covering(0, 512, 0, 256, 1, 10), {0, 2}},   // ends on a boundary
        {tile_range_covering(0, 100, 200, 256, 1, 10), {0, 0}}, // beyond the view
        {tile_range_covering(0, 100, -600, 256, 1, 10), {2, 3}},
        {tile_range_covering(0, 9, 0, 16, 0, 9), {0, 0}},
        {tile_range_covering(0, 9, 0, 16, NAN, 9), {0, 0}},
        {tile_range_covering(0, 1e30f, -1e30f, 16, 1, 9), {9, 9}}}; // far beyond any cell index
    for (const auto &[actual, expected] : ranges)
        EXPECT_TRUE(actual.first == expected.first && actual.end == expected.end) << &actual;
    const std::pair<TileCoord, TileCoord> cells[] = {
        {tile_coord_at(-1, 33, 0, 0, 16, 16, 2), {1, -1}},
        {tile_coord_at(70, 90, 20, 10, 10, 20, 2), {2, 2}},
        {tile_coord_at(5, 5, 0, 0, 0, 1, 1), {0, 0}},
        {tile_coord_at(5, 5, 0, 0, 1, 0, 1), {0, 0}},
        {tile_coord_at(1e30f, -1e30f, 0, 0, 1, 1, 1), {-(1 << 30), 1 << 30}}};
    for (const auto &[actual, expected] : cells)
        EXPECT_TRUE(actual.row == expected.row && actual.col == expected.col) << actual.row;
}

// --- maps ---

class TilemapTest : public ::testing::Test {
protected:
    static constexpr int TILE = 8, VIEW_W = 200, VIEW_H = 150;
    static constexpr SDL_Color GREEN = {0, 255, 0, 255};

    void SetUp() override { // noise tiles in four columns and two rows, in images with and without transparency
        ASSERT_TRUE(storage_setup());
        directory.use_as_game_files();
        for (int i = 0; i < 8 * TILE * TILE; i++) {
            const auto noise = [&] { return static_cast<Uint8>(random() % 200); };
            const bool clear = i == (TILE + 3) * 4 * TILE + 3 * TILE + 5; // one pixel in the last tile
            SDL_WriteSurfacePixel(
                tileset.get(), i % (4 * TILE), i / (4 * TILE), noise(), noise(), noise(), clear ? 0 : 255);
        }
        const Picture without_alpha(SDL_ConvertSurface(tileset.get(), SDL_PIXELFORMAT_RGB24));
        ASSERT_TRUE(IMG_SavePNG(tileset.get(), "tiles.png") && IMG_SavePNG(without_alpha.get(), "opaque.png"));
    }
    void TearDown() override {
        render_grid_cleanup(&grid);
        tilemap_cleanup(&map);
        SDL_DestroyRenderer(renderer);
        storage_cleanup();
    }
    bool load(const std::string &csv, Uint32 first_gid = 1, const char *path = "tiles.png", int tile_w = TILE) {
        write_file("layer.csv", csv);
        tilemap_load_tileset(map, renderer, path, tile_w, TILE, first_gid); // may not match the previous layer
        return tilemap_load_csv(map, "layer.csv");
    }
    template <typename Draw> Picture drawn(Draw draw) const {
        SDL_SetRenderDrawColor(renderer, 0, 255, 0, 255);
        SDL_RenderClear(renderer);
        EXPECT_TRUE(draw());
        return Picture(SDL_RenderReadPixels(renderer, nullptr));
    }
    SDL_Color expected_at(int x, int y, int scale) const { // px from the map's corner
        const int col = x / (scale * TILE), row = y / (scale * TILE);
        const Uint32 gid = x < 0 || y < 0 ? 0 : tile_grid_gid(map->layer, row, col), id = gid & TILE_ID_MASK;
        if (id == 0) return GREEN;
        int in_x = x / scale % TILE, in_y = y / scale % TILE; // flipped, then transposed
        if (gid & TILE_FLIP_H) in_x = TILE - 1 - in_x;
        if (gid & TILE_FLIP_V) in_y = TILE - 1 - in_y;
        if (gid & TILE_FLIP_D) std::swap(in_x, in_y);
        const int index = static_cast<int>(id - map->first_gid);
        const SDL_Color color = pixel_at(tileset, index % 4 * TILE + in_x, index / 4 * TILE + in_y);
        return color.a == 0 && !opaque ? GREEN : color;
    }
    int number(int low, int high) { return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1)); }

    bool opaque = false; // the loaded image has no alpha channel
    std::mt19937 random{9};
    TemporaryDirectory directory;
    LogCapture log;
    Picture target{SDL_CreateSurface(VIEW_W, VIEW_H, SDL_PIXELFORMAT_XRGB8888)};
    Picture tileset{SDL_CreateSurface(4 * TILE, 2 * TILE, SDL_PIXELFORMAT_RGBA32)};
    SDL_Renderer *renderer = SDL_CreateSoftwareRenderer(target.get());
    Tilemap *map = tilemap_new();
    RenderGrid *grid = nullptr;
};

TEST_F(TilemapTest, FlipsAreDrawnAndChunksMatchTiles) {
    for (int round = 0; round < 24; round++) {
        SCOPED_TRACE(round);
        const int first_gid = number(1, 3), fewest = round % 3 ? 0 : 1; // with or without empty cells
        // Rotated about its centre, an oblong tile leaves its cell and covers others: test within one chunk.
        const bool oblong = round % 4 == 3;
        const int rows = oblong ? 9 : number(1, 40), cols = oblong ? 9 : number(1, 40), scale = number(1, 3);
        std::string csv;
        for (int cell = 0; cell < rows * cols; cell++) {
            const int id = number(fewest, oblong ? 4 : 8);
            const auto turns = random() & (oblong && cell / 7 != 5 ? 0xC0000000u : 0xE0000000u);
            csv += std::to_string(turns | static_cast<unsigned>(id ? id + first_gid - 1 : 0));
            csv += cell % cols == cols - 1 ? ",\n" : ",";
        }
        opaque = round % 2;
        ASSERT_TRUE(
            load(csv, static_cast<Uint32>(first_gid), opaque ? "opaque.png" : "tiles.png", oblong ? 2 * TILE : TILE));
        const auto size = static_cast<float>(scale);
        tilemap_set_scale(map, size);
        EXPECT_EQ(tilemap_width(map), static_cast<float>(scale * cols * map->tile_w));
        EXPECT_EQ(tilemap_height(map), static_cast<float>(scale * rows * TILE));
        const int left = number(-150, 50), top = number(-150, 50);
        const SDL_FPoint origin = {static_cast<float>(left), static_cast<float>(top)};
        const Picture tiles = drawn([&] { return tilemap_draw(renderer, map, origin); });
        for (int i = 0; !oblong && i < VIEW_W * VIEW_H; i++) {
            const int x = i % VIEW_W, y = i / VIEW_W;
            ASSERT_TRUE(same_color(pixel_at(tiles, x, y), expected_at(x - left, y - top, scale))) << x << ", " << y;
        }
        render_grid_cleanup(&grid);
        grid = tilemap_to_render_grid(renderer, map, oblong ? 9 : number(1, 9));
        ASSERT_NE(grid, nullptr);
        EXPECT_TRUE(same_pixels(drawn([&] { return render_grid_draw(renderer, grid, origin, size); }), tiles));
        const TileRange ys = render_grid_visible_rows(grid, 0, VIEW_H, origin, size);
        const TileRange xs = render_grid_visible_cols(grid, 0, VIEW_W, origin, size);
        const Picture visible = drawn([&] { return render_grid_draw_range(renderer, grid, ys, xs, origin, size); });
        EXPECT_TRUE(same_pixels(visible, tiles));
        EXPECT_TRUE(ys.first == ys.end || top + (ys.end - 1) * grid->chunk_h * scale < VIEW_H)
            << "a chunk outside the view is drawn";
    }
}

TEST_F(TilemapTest, InvalidInputIsReportedByName) {
    EXPECT_FALSE(tilemap_load_tileset(map, renderer, "tiles.png", 0, 8, 1));
    EXPECT_FALSE(tilemap_load_tileset(map, renderer, "tiles.png", 8, 0, 1));
    EXPECT_FALSE(tilemap_load_tileset(map, renderer, "missing.png", 8, 8, 1));
    EXPECT_FALSE(tilemap_load_tileset(map, renderer, "tiles.png", 5, 8, 1));
    EXPECT_FALSE(tilemap_load_tileset(map, renderer, "tiles.png", 8, 5, 1));
    EXPECT_FALSE(map->tileset || tilemap_draw(renderer, map, {0, 0}) || tilemap_to_render_grid(renderer, map, 16));
    EXPECT_EQ(tilemap_width(map) + tilemap_height(map), 0);
    EXPECT_FALSE(load("1,9"));
    EXPECT_TRUE(tilemap_width(map) == 16 && load("1,9", 2)) << "the layer is kept";
    write_file("layer.csv", "1,x");
    EXPECT_FALSE(tilemap_load_csv(map, "layer.csv"));
    EXPECT_EQ(map->layer->cols, 2) << "the old layer is kept";
    for (const float scale : {0.0f, -2.0f, NAN}) tilemap_set_scale(map, scale);
    EXPECT_TRUE(map->scale == 1.0f && !tilemap_to_render_grid(renderer, map, 0));
    EXPECT_FALSE(render_grid_new(renderer, 0, 1, 8, 8) || render_grid_new(renderer, 1, 0, 8, 8));
    EXPECT_FALSE(render_grid_new(renderer, 1, 1, 0, 8) || render_grid_new(renderer, 1, 1, 8, 0));
    EXPECT_FALSE(render_grid_new(renderer, 2'000'000'000, 1'000'000'000, 256, 256));
    EXPECT_FALSE(render_grid_new(renderer, 62500, 1, 256, 256) || render_grid_new(nullptr, 1, 2, 8, 8));
    grid = render_grid_new(renderer, 2, 3, 8, 8);
    SDL_Texture *saved = nullptr;
    for (const auto &[row, col] : {std::pair{-1, 1}, {0, -1}, {2, 0}, {0, 3}}) {
        EXPECT_FALSE(render_grid_get(grid, row, col) || render_grid_begin_chunk(renderer, grid, row, col, &saved));
    }
    EXPECT_EQ(SDL_GetRenderTarget(renderer), nullptr);
    EXPECT_TRUE(render_grid_draw_range(renderer, grid, {-5, 50}, {-5, 50}, {0, 0}, 1));
    for (const char *message :
         {"[TILEMAP] IMG_LoadTexture failed for missing.png, error: ",
          "[TILEMAP] Tileset tiles.png is 32x16, which does not divide by 5x8. Tileset margin and ",
          "The map uses GID 9 but the tileset only holds 8 tiles from GID 1, so the highest it can draw is 8",
          "[TILEMAP] Could not parse tile layer: layer.csv",
          "[RENDER_GRID] A grid of 1x0 chunks of 8x8 px is not usable",
          "[RENDER_GRID] A grid of 1x62500 chunks of 256x256 px would take 15625 MB, more than 2048",
          "[RENDER_GRID] Could not create chunk 1 of 2, error: ", "[RENDER_GRID] No chunk at row -1 col 1"}) {
        EXPECT_TRUE(log.has(message)) << message;
    }
    EXPECT_EQ(log.errors().size(), 22u);
}

TEST_F(TilemapTest, HotReloadReplacesMapsAndIgnoresInvalidFiles) {
    reload_set(true, 0);
    EXPECT_TRUE(load("1,2"));
    std::filesystem::create_directory("elsewhere"); // images are read from here, other files from its parent
    std::filesystem::rename("tiles.png", "elsewhere/tiles.png");
    std::filesystem::current_path("elsewhere");
    grid = tilemap_to_render_grid(renderer, map, 4);
    const auto reloads = [this] {
        const Uint32 generation = map->generation;
        reload_tick();
        return map->generation - generation;
    };
    EXPECT_EQ(reloads(), 0u);
    for (const char *broken : {"1,x", "1,9", ""}) {
        log.lines.clear();
        write_file("../layer.csv", broken);
        EXPECT_EQ(reloads() + reloads(), 0u);
        EXPECT_GE(log.errors().size(), 1u) << broken;
        EXPECT_EQ(tile_grid_gid(map->layer, 0, 1), 2u) << "the old layer is kept after " << broken;
    }
    write_file("../layer.csv", "3,4,1\n");
    EXPECT_EQ(reloads(), 1u);
    EXPECT_TRUE(tile_grid_gid(map->layer, 0, 1) == 4 && tilemap_grid_is_stale(map, grid));
    render_grid_cleanup(&grid);
    grid = tilemap_to_render_grid(renderer, map, 4);
    EXPECT_FALSE(tilemap_grid_is_stale(map, grid));
    write_file("tiles.png", "no picture");
    EXPECT_EQ(reloads(), 0u);
    EXPECT_TRUE(map->columns == 4 && tilemap_draw(renderer, map, {0, 0}));
    const Picture wide(SDL_CreateSurface(6 * TILE, TILE, SDL_PIXELFORMAT_RGBA32));
    ASSERT_TRUE(IMG_SavePNG(wide.get(), "tiles.png"));
    EXPECT_EQ(reloads(), 1u);
    EXPECT_EQ(map->columns, 6);
    tilemap_cleanup(&map);
    write_file("../layer.csv", "1");
    reload_tick(); // no file is watched after cleanup
    reload_set(false);
    map = tilemap_new();
}

} // namespace
