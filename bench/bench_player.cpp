// The player's fixed step, in the castle and among many rectangles.

#include "lumarind/core/storage.h"
#include "player/player.h"

#include <benchmark/benchmark.h>

static constexpr double DT = 1.0 / 60;
static constexpr SDL_FPoint SPAWN = {100, 416};
static constexpr float FALLEN_OUT = 544; // feet below the level, px

struct Level {
    ColliderRects rects = {};
    ColliderTris tris = {};
    ~Level() {
        colliders_rects_cleanup(&rects);
        colliders_tris_cleanup(&tris);
    }
};

// Runs back and forth, jumps, rolls and attacks; respawns after a fall.
static void step_player(Player *player, Level *level, int tick) {
    const bool left = tick / 400 % 3 == 2;
    const PlayerIntent intent = {
        .move_x = left ? -1.0f : 1.0f,
        .jump = tick % 50 == 0,
        .roll = tick % 170 == 0,
        .attack = tick % 290 == 0 ? 1 : 0};
    player_fixed_update(player, &intent, &level->rects, &level->tris, DT);
    if (player->body.pos.y > FALLEN_OUT) player_init(player, SPAWN, &level->rects, &level->tris);
}

static void run(benchmark::State &state, Level *level) {
    Player player = {};
    player_init(&player, SPAWN, &level->rects, &level->tris);
    int tick = 0;
    for (auto _ : state) step_player(&player, level, tick++);
    state.SetItemsProcessed(state.iterations()); // steps
}

static void player_step_in_the_castle(benchmark::State &state) {
    Level level;
    storage_setup();
    if (!colliders_load_csv(
            &level.rects, &level.tris, nullptr, nullptr, "assets/fireknight/tilemaps/castle-tilemap-collisions.csv",
            1)) {
        state.SkipWithError("the castle is missing");
    }
    storage_cleanup();
    run(state, &level);
}
BENCHMARK(player_step_in_the_castle);

// On a floor of this many adjacent rectangles; a query without a hit searches all of them.
static void player_step_among_rectangles(benchmark::State &state) {
    Level level;
    for (auto i = state.range(0); i > 0; i--) {
        const SDL_FRect rect = {static_cast<float>(i) * 16, SPAWN.y, 16, 16};
        colliders_rects_add(&level.rects, &rect);
    }
    run(state, &level);
}
BENCHMARK(player_step_among_rectangles)->Arg(100)->Arg(1000)->Arg(10000);
