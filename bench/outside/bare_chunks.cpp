// Baseline for the tile map screen: a bare loop that blends the same baked chunks with the same pan, in a window of
// 1280 × 720.
//   lumarind_bare_chunks FRAMES

#include "lumarind/core/storage.h"
#include "lumarind/toolkit/render_grid.h"
#include "lumarind/toolkit/tilemap.h"

#include <SDL3/SDL.h>

#include <cstdlib>

static constexpr int WIDTH = 1280, HEIGHT = 720;
static constexpr float MAP_SCALE = 3;

static RenderGrid *bake_castle(SDL_Renderer *renderer, SDL_FPoint *map_size) {
    Tilemap *map = storage_setup() ? tilemap_new() : nullptr;
    if (!map) return nullptr;
    RenderGrid *grid = nullptr;
    if (tilemap_load_tileset(
            map, renderer, "assets/fireknight/tilemaps/old-dark-castle-interior-tileset.png", 16, 16, 1) &&
        tilemap_load_csv(map, "assets/fireknight/tilemaps/castle-tilemap.csv")) {
        grid = tilemap_to_render_grid(renderer, map, 16);
        tilemap_set_scale(map, MAP_SCALE);
        for (int i = 0; grid && i < grid->rows * grid->cols; i++) { // always blended: opaque chunks are not detected
            SDL_SetTextureBlendMode(grid->chunks[i], SDL_BLENDMODE_BLEND);
        }
        *map_size = {tilemap_width(map), tilemap_height(map)};
    }
    tilemap_cleanup(&map);
    return grid;
}

static float pan(float slack, double t, double speed) {
    return SDL_roundf(static_cast<float>(-static_cast<double>(slack) * (0.5 - 0.5 * SDL_cos(t * speed))));
}

static void draw_chunks(SDL_Renderer *renderer, const RenderGrid *grid, SDL_FPoint map_size, double t) {
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
    const float size = static_cast<float>(grid->chunk_w) * MAP_SCALE;
    const float left = pan(map_size.x - WIDTH, t, 0.35), top = pan(map_size.y - HEIGHT, t, 0.9);
    for (int i = 0; i < grid->rows * grid->cols; i++) {
        const SDL_FRect dst = {
            left + static_cast<float>(i % grid->cols) * size, top + static_cast<float>(i / grid->cols) * size, size,
            size};
        const bool visible = dst.x < WIDTH && dst.y < HEIGHT && dst.x + size > 0 && dst.y + size > 0;
        if (visible) SDL_RenderTexture(renderer, grid->chunks[i], nullptr, &dst);
    }
}

int main(int argc, char *argv[]) {
    SDL_Window *window = SDL_Init(SDL_INIT_VIDEO) ? SDL_CreateWindow("bare", WIDTH, HEIGHT, 0) : nullptr;
    SDL_Renderer *renderer = SDL_CreateRenderer(window, nullptr);
    SDL_FPoint map_size = {};
    const RenderGrid *grid = renderer ? bake_castle(renderer, &map_size) : nullptr;
    if (!grid) return 1;
    const Uint64 start = SDL_GetTicksNS();
    for (int frames = argc > 1 ? std::atoi(argv[1]) : 60; frames > 0; frames--) {
        SDL_Event event = {};
        while (SDL_PollEvent(&event)) {
        }
        draw_chunks(renderer, grid, map_size, static_cast<double>(SDL_GetTicksNS() - start) / 1e9);
        SDL_RenderPresent(renderer);
    }
    SDL_DestroyRenderer(renderer); // OpenGL may have deferred drawing until now
    SDL_Quit();
    return 0;
}
