// ghost: run to the flag beside a replay of the best run. Left, Right, jump (Space), or a gamepad.

#include "lumarind/lumarind.h"

#include <SDL3/SDL_render.h>

static constexpr float GRAVITY = 900, JUMP = 300, RUN = 120, FLAG_X = 296; // px/s², px/s, px/s, px
static SDL_FRect ground[] = {{0, 140, 90, 36}, {124, 140, 60, 36}, {214, 116, 30, 60}, {262, 140, 58, 36}};
static const ColliderRects solid = {.capacity = 4, .count = 4, .grow_by = 0, .items = ground};

// A run is the position after each fixed step, independent of the frame rate.
struct Run {
    SDL_FPoint places[60 * 60];
    int steps;
};
static Run run, best;
static PlayerBody body;
static SDL_Texture *knight;

static void begin() {
    player_body_init(&body, {24, 140}, 16, 38);
    run.steps = 0;
}

static bool setup() {
    begin();
    knight = picture_load("assets/fireknight/sprites/fireknight_288x128.png"); // rows of frames: idle, run, ...
    return knight != nullptr;
}

static void fixed_update(double dt) {
    body.prev_pos = body.pos;
    body.vel.x = RUN * static_cast<float>(input_held(INPUT_ACTION_RIGHT) - input_held(INPUT_ACTION_LEFT));
    body.vel.y += GRAVITY * static_cast<float>(dt);
    if (body.grounded && input_pressed(INPUT_ACTION_JUMP)) body.vel.y = -JUMP;
    player_body_step(&body, dt, &solid, nullptr);
    run.places[run.steps++] = body.pos;
    const bool won = body.pos.x >= FLAG_X, lost = body.pos.y > 220 || run.steps == SDL_arraysize(run.places);
    if (won && (best.steps == 0 || run.steps < best.steps)) best = run;
    if (won || lost) begin();
}

static void draw_knight(SDL_FPoint feet, Uint8 alpha) {
    const SDL_FRect frame = {288 * SDL_floorf(SDL_fmodf(feet.x / 16 + 20, 8)), 128, 288, 128};
    SDL_SetTextureAlphaMod(knight, alpha);
    picture_draw(knight, SDL_roundf(feet.x) - 144, SDL_roundf(feet.y) - 128, {.cell = frame});
}

static void tick() {
    SDL_Renderer *renderer = engine_renderer();
    fill_rect(renderer, nullptr, rgba(30, 34, 60, 255));
    for (const SDL_FRect &block : ground) fill_rect(renderer, &block, rgba(86, 78, 96, 255));
    const SDL_FRect flag = {FLAG_X, 92, 2, 48};
    fill_rect(renderer, &flag, rgba(214, 72, 56, 255));
    if (best.steps > 0) draw_knight(best.places[SDL_min(run.steps, best.steps - 1)], 90);
    draw_knight(timestep_lerp_point(body.prev_pos, body.pos, engine_fixed_alpha()), 255);
}

static void cleanup() { SDL_DestroyTexture(knight); }

static constexpr GameScreen SCREENS[] = {{"track", {setup, fixed_update, tick, cleanup, 320, 176}}};

static const Game game = {
    .title = "A race against a ghost",
    .id = "ghost",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .window_width = 960,
    .window_height = 528,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
