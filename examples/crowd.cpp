// crowd: 150 marching knights, drawn in a single render call.

#include "lumarind/lumarind.h"

static constexpr int COUNT = 150;
static Animation soldiers[COUNT];
static float places[COUNT], speeds[COUNT]; // px, px/s
static AnimationSet *set;
static SpriteSheet *sheet;
static SpriteBatch *batch;

static bool setup() {
    set = animation_set_load("assets/fireknight/sprites/fireknight.json");
    sheet = set ? sprite_sheet_new(engine_renderer(), set) : nullptr;
    batch = sprite_batch_new(COUNT);
    if (!sheet || !batch) return false;
    Random random = random_make(4);
    for (int i = 0; i < COUNT; i++) {
        places[i] = random_float(&random, -40, 520);
        speeds[i] = random_float(&random, 50, 70);
        if (!animation_init(&soldiers[i], set, animation_find_clip(set, "run"))) return false;
        animation_set_frame(&soldiers[i], random_below(&random, 8)); // not in step
    }
    return true;
}

static void fixed_update(double dt) {
    for (int i = 0; i < COUNT; i++) {
        places[i] += speeds[i] * static_cast<float>(dt);
        if (places[i] > 520) places[i] -= 560;
        animation_advance(&soldiers[i], dt);
    }
}

static void tick() {
    SDL_Renderer *renderer = engine_renderer();
    fill_rect(renderer, nullptr, rgba(96, 70, 74, 255));
    const SDL_FRect field = {0, 86, 480, 184};
    fill_rect(renderer, &field, rgba(52, 40, 46, 255));
    sprite_batch_begin(batch, sheet);
    for (int i = 0; i < COUNT; i++) { // drawing order: from far to near
        const float near = static_cast<float>(i) / COUNT, shade = 0.35f + 0.65f * near;
        const SDL_FPoint corner = {SDL_roundf(places[i]) - 144, SDL_roundf(92 + 172 * near) - 128};
        sprite_batch_add(batch, &soldiers[i], corner, 1, SDL_FLIP_NONE, {shade, shade * 0.96f, shade * 0.94f, 1});
    }
    sprite_batch_draw(renderer, batch);
}

static void cleanup() {
    sprite_batch_cleanup(&batch);
    sprite_sheet_cleanup(&sheet);
    animation_set_cleanup(&set);
}

static constexpr GameScreen SCREENS[] = {{"field", {setup, fixed_update, tick, cleanup, 480, 270}}};

static const Game game = {
    .title = "A crowd in one call",
    .id = "crowd",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .window_width = 960,
    .window_height = 540,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
