// Image files, loaded as a sprite sheet with 4 x 2 frames of 8 pixels and as a tileset with tiles of 8 pixels.
#include "fuzz/checksums.h"
#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/render_grid.h"
#include "lumarind/toolkit/sprite_sheet.h"
#include "lumarind/toolkit/tilemap.h"

#include <SDL3/SDL_render.h>

#include <iterator>

static constexpr int SIDE = 8; // px

static const char *picture_file(const uint8_t *data, size_t size) {
    std::vector<uint8_t> file(data, data + size);
    fuzz_fix_png_checksums(&file);
    return fuzz_memory_file(file.data(), file.size());
}

// --- sprite sheet ---

static constexpr Sint32 FRAME_MS[] = {10, 0, 10, 10, 10, 10, 10, 10};
static constexpr AnimationClip CLIPS[] = {
    {.name = "all", .first_frame = 0, .frame_count = 8, .frame_ms = FRAME_MS, .loop = true}};

static void draw_sheet(const SpriteSheet *sheet) {
    SDL_Renderer *renderer = engine_renderer();
    Animation animation = {};
    fuzz_check(animation_init(&animation, sheet->set, 0), "a set's first clip plays");
    for (int frame = 0; frame < CLIPS[0].frame_count; frame++) {
        const auto flip = static_cast<SDL_FlipMode>(frame % 4);
        fuzz_check(sprite_sheet_draw(renderer, sheet, &animation, {3, 5}, 2, flip), "a sheet's frames can be drawn");
        animation_next_frame(&animation);
    }
    sprite_sheet_draw_debug_sheet(renderer, sheet, &animation, {40, 0}, 3, {255, 0, 0, 255}, {0, 255, 0, 255});
    SDL_FlushRenderer(renderer);
}

int fuzz_sheet(const uint8_t *data, size_t size) {
    fuzz_start_engine();
    const AnimationSet set = {
        .path = picture_file(data, size),
        .frame_w = SIDE,
        .frame_h = SIDE,
        .columns = 4,
        .rows = 2,
        .clips = CLIPS,
        .clip_count = std::size(CLIPS),
    };
    SpriteSheet *sheet = sprite_sheet_new(engine_renderer(), &set);
    fuzz_check(sheet || fuzz_logged_errors() == 1, "a sheet that does not load is reported once");
    if (sheet) draw_sheet(sheet);
    sprite_sheet_cleanup(&sheet);
    return 0;
}

// --- tileset ---

static void draw_tiles(const Tilemap *map) {
    SDL_Renderer *renderer = engine_renderer();
    fuzz_check(tilemap_draw(renderer, map, {3, 5}), "a map can be drawn");
    RenderGrid *grid = tilemap_to_render_grid(renderer, map, 2);
    fuzz_check(grid != nullptr, "a map can be baked");
    fuzz_check(render_grid_draw(renderer, grid, {3, 5}, 2), "a baked grid can be drawn");
    SDL_FlushRenderer(renderer);
    render_grid_cleanup(&grid);
}

int fuzz_tileset(const uint8_t *data, size_t size) {
    static constexpr char LAYER[] = "1,2147483650,3\n0,536870914,1073741825\n1610612737,4,2\n";
    fuzz_start_engine();
    fuzz_set_game_file(reinterpret_cast<const uint8_t *>(LAYER), sizeof LAYER - 1);
    Tilemap *map = tilemap_new();
    fuzz_check(tilemap_load_csv(map, "layer.csv"), "the layer loads");
    const bool loaded = tilemap_load_tileset(map, engine_renderer(), picture_file(data, size), SIDE, SIDE, 1);
    fuzz_check(loaded || fuzz_logged_errors() == 1, "a tileset that does not load is reported once");
    fuzz_check(!loaded || map->columns * map->rows >= 4, "a tileset contains the tiles of the layer");
    if (loaded) draw_tiles(map);
    tilemap_cleanup(&map);
    return 0;
}
