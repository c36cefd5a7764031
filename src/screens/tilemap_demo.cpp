// Bakes a tile map into chunks once; each frame copies only the visible chunks, whatever the map's size.

#include "screens/tilemap_demo.h"

#include "lumarind/core/error.h"
#include "lumarind/core/state_hash.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/timestep.h"
#include "screens/castle.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

static constexpr float MAP_SCALE = 3;

struct TilemapDemo {
    Castle castle;
    double time, prev_time; // s, after and before the last fixed step
};
static TilemapDemo *tilemap_demo;

bool tilemap_demo_setup() {
    if (tilemap_demo) return true;
    tilemap_demo = static_cast<TilemapDemo *>(SDL_calloc(1, sizeof *tilemap_demo));
    if (!tilemap_demo) return engine_error("[TILEMAP_DEMO] Memory allocation failed, error: %s", SDL_GetError());
    return castle_load(&tilemap_demo->castle, MAP_SCALE);
}

void tilemap_demo_fixed_update(double dt) {
    tilemap_demo->prev_time = tilemap_demo->time;
    tilemap_demo->time += dt;
}

Uint64 tilemap_demo_state_hash() {
    return state_hash_of(STATE_HASH_START, tilemap_demo->time, tilemap_demo->prev_time);
}

void tilemap_demo_tick() {
    SDL_Renderer *renderer = engine_renderer();
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
    const double t = timestep_lerp(tilemap_demo->prev_time, tilemap_demo->time, engine_fixed_alpha());
    castle_draw_panning(&tilemap_demo->castle, t);
}

void tilemap_demo_cleanup() {
    if (!tilemap_demo) return;
    castle_cleanup(&tilemap_demo->castle);
    SDL_free(tilemap_demo);
    tilemap_demo = nullptr;
}
