// Tile layers from CSV, GIDs, ranges, and the drawing of maps: orientations, chunks, culling, seams.

#include "engine/engine.h"
#include "support/allocation_faults.h"
#include "support/engine_fixture.h"
#include "toolkit/reload.h"
#include "toolkit/render_grid.h"
#include "toolkit/tilemap.h"

#include <SDL3/SDL_render.h>
#include <SDL3_image/SDL_image.h>

#include <cmath>
#include <random>

namespace {

using Rows = std::vector<std::vector<Uint32>>;

Rows rows_of(const TileGrid *grid) {
    Rows rows;
    for (int row = 0; grid && row < grid->rows; row++) {
        rows.emplace_back();
        for (int col = 0; col < grid->cols; col++) rows.back().push_back(tile_grid_gid(grid, row, col));
    }
    return rows;
}

void destroy(TileGrid *grid) {
    tile_grid_cleanup(grid);
    SDL_free(grid);
}

Rows parse(const std::string &text) {
    TileGrid *grid = tile_grid_parse_csv(text.c_str());
    const Rows rows = rows_of(grid);
    destroy(grid);
    return rows;
}

// --- CSV ---

TEST(TileGridCsv, TakesWhatMapEditorsWrite) {
    EXPECT_EQ(parse("1,2,3,\n4,5,6"), (Rows{{1, 2, 3}, {4, 5, 6}})) << "a comma may end a line";
    EXPECT_EQ(parse("\n1,2\r\n \t\n\r\n3 ,\t4\r\n\n"), (Rows{{1, 2}, {3, 4}})) << "blank lines and line ends";
    EXPECT_EQ(parse("4294967295,0000000000007"), (Rows{{4294967295u, 7}}));
    EXPECT_EQ(parse("7"), (Rows{{7}}));
}

TEST(TileGridCsv, NamesTheLineItRefuses) {
    const LogCapture log;
    const std::pair<std::string, std::vector<const char *>> cases[] = {
        {"Malformed value on CSV line 1",
         {"1,,2", ",1", ",", "1,2,,", "4294967296", "99999999999999999999999", "1 2", "1\r,2"}},
        {"Malformed value on CSV line 2", {"1\n-2", "1\n\n\n+2"}},
        {"Malformed value on CSV line 3", {"1\n2\n0x3"}},
        {"CSV line 2 has 1 values, expected 2", {"1,2\n\n3"}},
        {"CSV holds no tile rows", {"", " \t\n\r\n"}},
        {"No CSV text to parse", {nullptr}},
    };
    for (const auto &[message, texts] : cases) {
        for (const char *text : texts) {
            EXPECT_EQ(tile_grid_parse_csv(text), nullptr) << message;
            EXPECT_EQ(log.lines.back().text, "[TILE_GRID] " + message);
        }
    }
    EXPECT_EQ(tile_grid_new(0, 4), nullptr);
    EXPECT_EQ(log.lines.back().text, "[TILE_GRID] A grid of 4x0 has no cells");
}

TEST(TileGridCsv, NoiseIsReadOrRefusedWithAReason) {
    LogCapture log;
    std::mt19937 random(42);
    const std::string alphabet = "0123456789,,,\n\n\r \t-x";
    int accepted = 0;
    for (int round = 0; round < 4000; round++) {
        std::string text = "12,34,5\n6,7,8,\r\n\n 9 ,10,4294967295\n";
        for (unsigned i = 0; i <= random() % 3; i++)
            text[random() % text.size()] = alphabet[random() % alphabet.size()];
        const Rows rows = parse(text);
        ASSERT_EQ(rows.empty(), log.lines.size() > 0) << text;
        accepted += rows.empty() ? 0 : 1;
        if (!rows.empty() && text.find_first_of("-x") != text.npos) FAIL() << text;
        log.lines.clear();
    }
    EXPECT_GT(accepted, 300);
}

TEST(TileGridCells, StayWithinTheGrid) {
    TileGrid *grid = tile_grid_parse_csv("1,2147483653\n536870915,4");
    EXPECT_EQ(tile_grid_max_gid(grid), 5u) << "flags do not count";
    for (const auto &[row, col] : {std::pair{-1, 0}, {0, -1}, {2, 0}, {0, 2}}) {
        EXPECT_FALSE(tile_grid_gid(grid, row, col) != 0 || tile_grid_set_gid(grid, row, col, 9));
    }
    EXPECT_TRUE(tile_grid_set_gid(grid, 1, 1, 9));
    EXPECT_EQ(tile_grid_max_gid(grid), 9u);
    tile_grid_cleanup(grid);
    EXPECT_EQ(tile_grid_gid(grid, 0, 0) + tile_grid_max_gid(grid) + tile_grid_max_gid(nullptr), 0u);
    destroy(grid);
}

// --- GIDs and ranges ---

TEST(TileDecoding, WhatIsNoTileOfTheSetIsEmpty) {
    const DecodedTile bit28 = tile_decode_gid(0x10000003, 1, 4);
    EXPECT_TRUE(bit28.index == 2 && bit28.angle == 0 && bit28.flip == SDL_FLIP_NONE) << "no flag of orientation";
    const struct {
        Uint32 gid, first_gid;
        int columns;
    } cases[] = {{0, 1, 4}, {TILE_FLIP_H, 1, 4}, {3, 4, 4}, {3, 1, 0}};
    for (const auto &c : cases) {
        const DecodedTile none = tile_decode_gid(c.gid, c.first_gid, c.columns);
        EXPECT_TRUE(none.index == -1 && none.row == -1 && none.col == -1 && none.flip == SDL_FLIP_NONE) << c.gid;
    }
}

TEST(TileRanges, ClampAndCover) {
    const auto is = [](TileRange r, int first, int end) { return r.first == first && r.end == end; };
    EXPECT_TRUE(is(tile_range_clamp({-3, 50}, 10), 0, 10));
    EXPECT_TRUE(is(tile_range_clamp({7, 2}, 10), 7, 7));
    EXPECT_TRUE(is(tile_range_clamp({2, 5}, -1), 0, 0));
    EXPECT_TRUE(is(tile_range_covering(0, 1280, -100, 256, 3, 10), 0, 2));
    EXPECT_TRUE(is(tile_range_covering(0, 512, 0, 256, 1, 10), 0, 2)) << "an end on a boundary";
    EXPECT_TRUE(is(tile_range_covering(0, 100, 200, 256, 1, 10), 0, 0)) << "beyond the view";
    EXPECT_TRUE(is(tile_range_covering(0, 100, -600, 256, 1, 10), 2, 3));
    for (const float scale : {0.0f, -1.0f, NAN}) EXPECT_TRUE(is(tile_range_covering(0, 9, 0, 16, scale, 9), 0, 0));
    EXPECT_TRUE(is(tile_range_covering(0, 1e30f, -1e30f, 16, 1, 9), 9, 9)) << "far beyond any cell number";
    const TileCoord left = tile_coord_at(-1, 33, 0, 0, 16, 16, 2), none = tile_coord_at(5, 5, 0, 0, 16, 16, 0);
    EXPECT_TRUE(left.row == 1 && left.col == -1 && none.row == 0 && none.col == 0);
}

// --- maps ---

class TilemapTest : public EngineTest {
protected:
    static constexpr int TILE = 8;

    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(start({"--screen", "text-demo", "--window-size", "400x300"}));
        directory.use_as_game_files();
        save_tileset();
        map = tilemap_new();
    }
    void TearDown() override {
        render_grid_cleanup(&grid);
        tilemap_cleanup(&map);
        EngineTest::TearDown();
    }

    // Four opaque tiles of noise in a row: no two pixels of a tile are alike but by chance.
    void save_tileset() {
        std::mt19937 random(1);
        tileset.reset(SDL_CreateSurface(4 * TILE, TILE, SDL_PIXELFORMAT_RGBA32));
        for (int y = 0; y < TILE; y++) {
            for (int x = 0; x < 4 * TILE; x++) {
                SDL_WriteSurfacePixel(
                    tileset.get(), x, y, static_cast<Uint8>(32 + random() % 200), static_cast<Uint8>(random()),
                    static_cast<Uint8>(random()), 255);
            }
        }
        ASSERT_TRUE(IMG_SavePNG(tileset.get(), "tiles.png"));
    }
    bool load(const std::string &csv, Uint32 first_gid = 1) {
        write_file("layer.csv", csv);
        return tilemap_load_tileset(map, engine_renderer(), "tiles.png", TILE, TILE, first_gid) &&
               tilemap_load_csv(map, "layer.csv");
    }
    bool load_random(int rows, int cols, unsigned seed) {
        std::mt19937 random(seed);
        std::string csv;
        for (int row = 0; row < rows; row++) {
            for (int col = 0; col < cols; col++)
                csv += std::to_string((random() & 0xE0000000u) | (1 + random() % 4)) + ",";
            csv += "\n";
        }
        return load(csv);
    }
    static void clear() {
        SDL_SetRenderDrawColor(engine_renderer(), 0, 255, 0, 255);
        SDL_RenderClear(engine_renderer());
    }

    Picture tileset;
    Tilemap *map = nullptr;
    RenderGrid *grid = nullptr;
};

TEST_F(TilemapTest, EveryOrientationIsTheTurnedTile) {
    for (Uint32 flags = 0; flags < 8; flags++) {
        ASSERT_TRUE(load(std::to_string(flags << 29 | 2)));
        for (const int scale : {1, 3}) {
            clear();
            tilemap_set_scale(map, static_cast<float>(scale));
            ASSERT_TRUE(tilemap_draw(engine_renderer(), map, {5, 7}));
            const Picture drawn = picture();
            for (int y = 0; y < TILE * scale; y++) {
                for (int x = 0; x < TILE * scale; x++) { // the source of a drawn pixel: mirror, then transpose
                    int sx = flags & 4 ? TILE - 1 - x / scale : x / scale;
                    int sy = flags & 2 ? TILE - 1 - y / scale : y / scale;
                    if (flags & 1) std::swap(sx, sy);
                    ASSERT_TRUE(same_color(pixel_at(drawn, 5 + x, 7 + y), pixel_at(tileset, TILE + sx, sy)))
                        << "flags " << flags << " at " << x << ", " << y << ", scale " << scale;
                }
            }
        }
    }
}

TEST_F(TilemapTest, ChunksShowWhatTilesShowWithoutSeamsAndOnlyTheVisibleOnesAreNeeded) {
    std::mt19937 random(9);
    for (int round = 0; round < 12; round++) {
        const int rows = 1 + static_cast<int>(random() % 40), cols = 1 + static_cast<int>(random() % 60);
        ASSERT_TRUE(load_random(rows, cols, static_cast<unsigned>(random())));
        const float scale = static_cast<float>(1 + random() % 3);
        tilemap_set_scale(map, scale);
        EXPECT_EQ(tilemap_width(map), scale * static_cast<float>(cols * TILE));
        render_grid_cleanup(&grid);
        grid = tilemap_to_render_grid(engine_renderer(), map, 1 + static_cast<int>(random() % 9));
        ASSERT_NE(grid, nullptr);
        const SDL_FPoint origin = {static_cast<float>(random() % 300) - 200, static_cast<float>(random() % 300) - 200};
        clear();
        ASSERT_TRUE(tilemap_draw(engine_renderer(), map, origin));
        const Picture tiles = picture();
        const SDL_Rect view = {0, 0, 400, 300};
        const SDL_Rect whole = {
            static_cast<int>(origin.x), static_cast<int>(origin.y), static_cast<int>(tilemap_width(map)),
            static_cast<int>(tilemap_height(map))};
        SDL_Rect covered = {};
        SDL_GetRectIntersection(&view, &whole, &covered);
        EXPECT_EQ(count_pixels(tiles, {0, 255, 0, 255}), 400 * 300 - covered.w * covered.h) << "no seams";
        clear();
        ASSERT_TRUE(render_grid_draw(engine_renderer(), grid, origin, scale));
        EXPECT_TRUE(same_pixels(picture(), tiles)) << "all chunks, round " << round;
        clear();
        const TileRange visible_rows = render_grid_visible_rows(grid, 0, 300, origin, scale);
        const TileRange visible_cols = render_grid_visible_cols(grid, 0, 400, origin, scale);
        ASSERT_TRUE(render_grid_draw_range(engine_renderer(), grid, visible_rows, visible_cols, origin, scale));
        EXPECT_TRUE(same_pixels(picture(), tiles)) << "visible chunks, round " << round;
        for (int row = visible_rows.first; row < visible_rows.end; row++) { // and none of them is out of view
            const float top = origin.y + static_cast<float>(row * grid->chunk_h) * scale;
            EXPECT_TRUE(top < 300 && top + static_cast<float>(grid->chunk_h) * scale > 0);
        }
    }
}

TEST_F(TilemapTest, ChunksOfOpaqueTilesLeaveTheGapsOfTurnedOnesOpen) {
    const Picture opaque(SDL_ConvertSurface(tileset.get(), SDL_PIXELFORMAT_RGB24));
    ASSERT_TRUE(IMG_SavePNG(opaque.get(), "opaque.png"));
    write_file("layer.csv", "1,1,1\n1," + std::to_string(TILE_FLIP_D | 2) + ",1\n1,1,1\n");
    for (const int tile_w : {TILE, 2 * TILE}) { // turned about its centre, an oblong tile does not cover its cell
        ASSERT_TRUE(tilemap_load_tileset(map, engine_renderer(), "opaque.png", tile_w, TILE, 1));
        ASSERT_TRUE(tilemap_load_csv(map, "layer.csv"));
        render_grid_cleanup(&grid);
        grid = tilemap_to_render_grid(engine_renderer(), map, 3);
        clear();
        ASSERT_TRUE(tilemap_draw(engine_renderer(), map, {5, 7}));
        const Picture tiles = picture();
        const SDL_Rect turned = {5 + tile_w, 7 + TILE, tile_w, TILE};
        EXPECT_EQ(count_pixels(tiles, {0, 255, 0, 255}, turned), (tile_w - TILE) * TILE);
        clear();
        ASSERT_TRUE(render_grid_draw(engine_renderer(), grid, {5, 7}, 1));
        EXPECT_TRUE(same_pixels(picture(), tiles)) << "tiles " << tile_w << " wide";
    }
}

TEST_F(TilemapTest, OneTransparentPixelKeepsAChunkBlended) {
    for (const Uint8 alpha : {Uint8{255}, Uint8{0}}) {
        SDL_WriteSurfacePixel(tileset.get(), 2 * TILE + 5, 3, 9, 9, 9, alpha);
        ASSERT_TRUE(IMG_SavePNG(tileset.get(), "tiles.png"));
        ASSERT_TRUE(load("1,2\n3,4\n"));
        render_grid_cleanup(&grid);
        grid = tilemap_to_render_grid(engine_renderer(), map, 2);
        SDL_BlendMode blend = SDL_BLENDMODE_INVALID;
        SDL_GetTextureBlendMode(render_grid_get(grid, 0, 0), &blend);
        EXPECT_EQ(blend, alpha ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND);
        clear();
        ASSERT_TRUE(render_grid_draw(engine_renderer(), grid, {0, 0}, 1));
        EXPECT_EQ(count_pixels(picture(), {0, 255, 0, 255}, {0, 0, 2 * TILE, 2 * TILE}), alpha ? 0 : 1);
    }
}

TEST_F(TilemapTest, LoadingChecksTilesetAndLayerAgainstEachOther) {
    const struct {
        const char *path;
        int tile_w;
        const char *message;
    } tilesets[] = {
        {"tiles.png", 0, "[TILEMAP] A tile size of 0x8 is not usable"},
        {"missing.png", 8, "[TILEMAP] IMG_LoadTexture failed for missing.png, error: "},
        {"tiles.png", 5, "[TILEMAP] Tileset tiles.png is 32x8, which does not divide by 5x8. Tileset margin and "},
    };
    for (const auto &c : tilesets) {
        EXPECT_FALSE(tilemap_load_tileset(map, engine_renderer(), c.path, c.tile_w, 8, 1));
        EXPECT_TRUE(log.has(c.message)) << c.message;
    }
    EXPECT_EQ(map->tileset, nullptr);
    EXPECT_FALSE(tilemap_draw(engine_renderer(), map, {0, 0}));
    EXPECT_EQ(tilemap_to_render_grid(engine_renderer(), map, 16), nullptr);

    EXPECT_FALSE(load("1,5"));
    EXPECT_TRUE(log.has("[TILEMAP] The map uses GID 5 but the tileset only holds 4 tiles from GID 1, so the highest "));
    EXPECT_EQ(tilemap_width(map), 16) << "the layer stays";
    EXPECT_TRUE(load("1,5", 2));
    write_file("layer.csv", "1,x");
    EXPECT_FALSE(tilemap_load_csv(map, "layer.csv"));
    EXPECT_TRUE(log.has("[TILEMAP] Could not parse tile layer: layer.csv"));
    EXPECT_EQ(map->layer->cols, 2) << "the old layer stays";
    for (const float scale : {0.0f, -2.0f, NAN}) tilemap_set_scale(map, scale);
    EXPECT_EQ(map->scale, 1.0f);
    EXPECT_EQ(tilemap_to_render_grid(engine_renderer(), map, 0), nullptr);
}

TEST_F(TilemapTest, RenderGridsRefuseWhatTheyAreNot) {
    SDL_Renderer *renderer = engine_renderer();
    EXPECT_EQ(render_grid_new(renderer, 0, 1, 8, 8), nullptr);
    EXPECT_EQ(render_grid_new(renderer, 1, 1, 8, 0), nullptr);
    EXPECT_TRUE(log.has("[RENDER_GRID] A grid of 1x0 chunks of 8x8 px is not usable"));
    EXPECT_EQ(render_grid_new(renderer, 2'000'000'000, 1'000'000'000, 256, 256), nullptr);
    EXPECT_EQ(render_grid_new(renderer, 62500, 1, 256, 256), nullptr);
    EXPECT_TRUE(log.has("[RENDER_GRID] A grid of 1x62500 chunks of 256x256 px would take 15625 MB, more than 2048"));
    EXPECT_EQ(render_grid_new(nullptr, 1, 2, 8, 8), nullptr);
    EXPECT_TRUE(log.has("[RENDER_GRID] Could not create chunk 1 of 2, error: "));
    ASSERT_TRUE(load_random(20, 35, 1));
    grid = tilemap_to_render_grid(renderer, map, 16);
    ASSERT_NE(grid, nullptr);
    EXPECT_TRUE(grid->rows == 2 && grid->cols == 3 && grid->chunk_w == 128);
    EXPECT_EQ(render_grid_get(grid, -1, 0), nullptr);
    EXPECT_EQ(render_grid_get(grid, 0, 3), nullptr);
    EXPECT_EQ(SDL_GetRenderTarget(renderer), nullptr) << "baking gives the window back";
    SDL_Texture *saved = nullptr;
    EXPECT_FALSE(render_grid_begin_chunk(renderer, grid, 2, 0, &saved));
    EXPECT_EQ(SDL_GetRenderTarget(renderer), nullptr);
    EXPECT_TRUE(render_grid_draw_range(renderer, grid, {-5, 50}, {-5, 50}, {0, 0}, 1));
}

TEST_F(TilemapTest, MapsFollowTheirFilesAndKeepWhatTheyHaveWhileThoseAreBroken) {
    reload_set(true, 0);
    EXPECT_TRUE(load("1,2"));
    grid = tilemap_to_render_grid(engine_renderer(), map, 4);
    const auto follow = [this] {
        const Uint32 generation = map->generation;
        reload_tick();
        return map->generation - generation;
    };
    EXPECT_EQ(follow(), 0u);
    for (const char *broken : {"1,x", "1,9", ""}) {
        log.lines.clear();
        write_file("layer.csv", broken);
        EXPECT_EQ(follow() + follow(), 0u);
        EXPECT_GE(log.errors().size(), 1u) << broken;
        EXPECT_EQ(tile_grid_gid(map->layer, 0, 1), 2u) << "the old layer stays after " << broken;
    }
    write_file("layer.csv", "3,4,1\n");
    EXPECT_EQ(follow(), 1u);
    EXPECT_TRUE(tile_grid_gid(map->layer, 0, 1) == 4 && tilemap_grid_is_stale(map, grid));
    render_grid_cleanup(&grid);
    grid = tilemap_to_render_grid(engine_renderer(), map, 4);
    EXPECT_FALSE(tilemap_grid_is_stale(map, grid));
    write_file("tiles.png", "no picture");
    EXPECT_EQ(follow(), 0u);
    EXPECT_TRUE(map->columns == 4 && tilemap_draw(engine_renderer(), map, {0, 0}));
    const Picture wide(SDL_CreateSurface(6 * TILE, TILE, SDL_PIXELFORMAT_RGBA32));
    ASSERT_TRUE(IMG_SavePNG(wide.get(), "tiles.png"));
    EXPECT_EQ(follow(), 1u);
    EXPECT_EQ(map->columns, 6);
    tilemap_cleanup(&map);
    write_file("layer.csv", "1");
    reload_tick(); // nobody follows any more
    reload_set(false);
    map = tilemap_new();
}

TEST_F(TilemapTest, LoadingAndBakingSurviveEachAllocationFailing) {
    write_file("layer.csv", "1,2\n3,4\n");
    tilemap_cleanup(&map);
    expect_allocation_faults_survived(
        &log,
        [&] {
            map = tilemap_new();
            if (!map || !tilemap_load_tileset(map, engine_renderer(), "tiles.png", TILE, TILE, 1)) return false;
            if (!tilemap_load_csv(map, "layer.csv")) return false;
            grid = tilemap_to_render_grid(engine_renderer(), map, 1);
            return grid != nullptr;
        },
        [&] {
            render_grid_cleanup(&grid);
            tilemap_cleanup(&map);
        });
}

} // namespace
