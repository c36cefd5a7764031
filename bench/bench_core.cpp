// Fixed-timestep accumulator and hit tests.

#include "lumarind/engine/timestep.h"
#include "lumarind/toolkit/colliders.h"

#include <benchmark/benchmark.h>

static void fixed_timestep_frame(benchmark::State &state) {
    Timestep ts = {};
    timestep_init(&ts, 60);
    for (auto _ : state) {
        timestep_advance(&ts, 1.0 / 60);
        while (timestep_consume_step(&ts)) benchmark::DoNotOptimize(ts.accumulator);
    }
}
BENCHMARK(fixed_timestep_frame);

static void point_against_rectangles(benchmark::State &state) {
    ColliderRects *rects = colliders_new_rects();
    for (int i = 0; i < state.range(0); i++) {
        const SDL_FRect rect = {static_cast<float>(i) * 20, 0, 16, 16};
        colliders_rects_add(rects, &rect);
    }
    const SDL_FPoint miss = {-1, -1}; // no hit, so the whole set is searched
    for (auto _ : state) benchmark::DoNotOptimize(colliders_point_inside_rect(&miss, rects));
    state.SetItemsProcessed(state.iterations() * state.range(0));
    colliders_rects_cleanup(rects);
    SDL_free(rects);
}
BENCHMARK(point_against_rectangles)->Arg(100)->Arg(1000)->Arg(10000);
