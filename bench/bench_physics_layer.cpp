// Overhead of the layer on Box2D 2.4: steps of the physics screen alternate with steps of the same scene that call 2.4
// directly.

#include "app/demo_game.h"
#include "app/main_loop.h"
#include "bench_direct.h"
#include "screens/physics_demo.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <ctime>
#include <vector>

namespace {

constexpr double STEP = 1.0 / 60;
constexpr int FIRST_LINK = 3, BALL = 15;

// A copy of the scene as built by the screen.
DirectScene *direct_copy() {
    std::vector<DirectBody> bodies;
    for (int i = 0; i < physics_demo->props->count; i++) {
        const PhysicsProp &prop = physics_demo->props->items[i];
        const bool chain = i >= FIRST_LINK && i <= BALL;
        bodies.push_back(
            {.dynamic = b2Body_GetType(prop.body) == b2_dynamicBody,
             .x = prop.prev_position.x,
             .y = prop.prev_position.y,
             .angle = std::atan2(prop.prev_rotation.s, prop.prev_rotation.c),
             .velocity_x = 0,
             .velocity_y = 0,
             .half_w = prop.half_w,
             .half_h = prop.half_h,
             .radius = prop.radius,
             .density = !chain      ? 1.0f
                        : i == BALL ? 20.0f
                                    : 8.0f,
             .group = chain ? -1 : 0});
    }
    std::vector<DirectPin> pins = {{2, FIRST_LINK, 8.8f - bodies[2].x, 11 - bodies[2].y, 0, 0.28f}};
    for (int i = FIRST_LINK; i < BALL; i++) pins.push_back({i, i + 1, 0, -0.28f, 0, i + 1 == BALL ? 0.55f : 0.28f});
    return direct_scene_new(bodies.data(), static_cast<int>(bodies.size()), pins.data(), static_cast<int>(pins.size()));
}

// In CPU time, hardly affected by other processes.
template <typename Work> double timed(Work work) {
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

void physics_layer_share(benchmark::State &state) {
    char name[] = "LumarindEngine", save[] = "--no-config-save", screen[] = "--screen", demo[] = "physics-demo";
    char *argv[] = {name, save, screen, demo};
    if (main_loop_start(&demo_game, 4, argv) != MAIN_START_RUN) return state.SkipWithError("the screen did not start");
    double layer = 0, direct = 0;
    for (auto _ : state) {
        physics_demo_rebuild();
        DirectScene *scene = direct_copy();
        double layer_now = 0;
        for (int step = 0; step < 120; step++) {
            const auto by_layer = [] { physics_demo_fixed_update(STEP); };
            const auto by_library = [&] { direct_scene_step(scene, static_cast<float>(STEP), 4); };
            if (step % 2 == 0) layer_now += timed(by_layer);
            direct += timed(by_library);
            if (step % 2 == 1) layer_now += timed(by_layer);
        }
        layer += layer_now;
        state.SetIterationTime(layer_now / 120);
        float x = 0, y = 0;
        direct_scene_position(scene, BALL, &x, &y);
        const b2Vec2 ball = b2Body_GetPosition(physics_demo->ball);
        direct_scene_free(scene);
        if (std::hypot(ball.x - x, ball.y - y) > 0.05f) state.SkipWithError("the two scenes differ");
    }
    state.counters["share_percent"] = 100 * (layer / direct - 1);
    main_loop_stop();
}
BENCHMARK(physics_layer_share)->UseManualTime()->Iterations(60)->Unit(benchmark::kMicrosecond);

} // namespace
