// The physics screen's fixed step and frame. Each timed run of steps starts with a new scene in the given state,
// because bodies fall asleep during the measurement.

#include "app/demo_game.h"
#include "app/main_loop.h"
#include "lumarind/engine/engine.h"
#include "screens/physics_demo.h"

#include <SDL3/SDL_render.h>
#include <benchmark/benchmark.h>

#include <ctime>

namespace {

constexpr double STEP = 1.0 / 60;
constexpr int TIMED_STEPS = 30; // fewer than it takes the wall to fall asleep

bool start_screen(const char *size) {
    static char arguments[6][32] = {"LumarindEngine", "--no-config-save", "--screen", "physics-demo", "--window-size"};
    SDL_strlcpy(arguments[5], size, sizeof arguments[5]);
    char *argv[6];
    for (int i = 0; i < 6; i++) argv[i] = arguments[i];
    return main_loop_start(&demo_game, 6, argv) == MAIN_START_RUN;
}

enum SceneState { SCENE_AT_START, SCENE_WITH_DEBRIS, SCENE_ASLEEP }; // asleep: all but the ball and its chain

void drop_all_debris() {
    for (int i = 0; i < PHYSICS_DEMO_SPAWN_MAX; i++) {
        physics_demo_drop_debris(15 + 1.2f * static_cast<float>(i % 8), 4 + static_cast<float>(i / 8));
    }
}

void prepare(SceneState scene) {
    physics_demo_rebuild();
    if (scene != SCENE_AT_START) drop_all_debris();
    if (scene == SCENE_WITH_DEBRIS) {
        for (int i = 0; i < 110; i++) physics_demo_fixed_update(STEP); // the debris has landed, the wall is falling
    }
}

// CPU time of this process, hardly affected by other processes.
double cpu_seconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// An iteration's time is that of one fixed step.
void physics_step(benchmark::State &state) {
    const auto scene = static_cast<SceneState>(state.range(0));
    if (!start_screen("800x450")) return state.SkipWithError("the screen did not start");
    if (scene == SCENE_ASLEEP) {
        prepare(scene);
        for (int i = 0; i < 1800; i++) physics_demo_fixed_update(STEP);
    }
    int awake = 0;
    for (auto _ : state) {
        if (scene != SCENE_ASLEEP) prepare(scene);
        const double begin = cpu_seconds();
        for (int i = 0; i < TIMED_STEPS; i++) physics_demo_fixed_update(STEP);
        state.SetIterationTime((cpu_seconds() - begin) / TIMED_STEPS);
    }
    for (int i = 0; i < physics_demo->props->count; i++) awake += b2Body_IsAwake(physics_demo->props->items[i].body);
    state.counters["awake"] = awake;
    main_loop_stop();
}
BENCHMARK(physics_step)
    ->ArgName("scene")
    ->Arg(SCENE_AT_START)
    ->Arg(SCENE_WITH_DEBRIS)
    ->Arg(SCENE_ASLEEP)
    ->UseManualTime()
    ->Iterations(100)
    ->Unit(benchmark::kMicrosecond);

void physics_frame(benchmark::State &state) {
    if (!start_screen(state.range(0) == 450 ? "800x450" : "1280x720")) return state.SkipWithError("no screen");
    drop_all_debris();
    for (int i = 0; i < 30; i++) physics_demo_fixed_update(STEP);
    for (auto _ : state) {
        physics_demo_tick();
        SDL_FlushRenderer(engine_renderer()); // executes the queued render commands
    }
    main_loop_stop();
}
BENCHMARK(physics_frame)->ArgName("height")->Arg(450)->Arg(720)->Unit(benchmark::kMicrosecond);

} // namespace
