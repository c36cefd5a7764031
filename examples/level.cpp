// level: a body that runs and jumps through a level made of characters. Left, Right, jump (Space), or a gamepad.

#include "lumarind/lumarind.h"

#include <SDL3/SDL_render.h>

static constexpr int ROWS = 4, COLS = 20;
static constexpr char LEVEL[ROWS][COLS + 1] = {
    "              ####  ", //
    "        ###         ", //
    "   ###        ##    ", //
    "######   ###########", // the ground, with a pit
};
static constexpr float TILE = 16, STOREY = 32, GRAVITY = 900, JUMP = 300, RUN = 120; // px, px, px/s², px/s

static ColliderRects solid; // an empty set
static SDL_Texture *stones, *knight;
static PlayerBody body;

static bool setup() {
    for (int i = 0; i < ROWS * COLS; i++) {
        const int row = i / COLS, col = i % COLS;
        const SDL_FRect tile = {TILE * static_cast<float>(col), STOREY * static_cast<float>(row + 1), TILE, TILE};
        if (LEVEL[row][col] == '#' && !colliders_rects_add(&solid, &tile)) return false;
    }
    player_body_init(&body, {66, 80}, 16, 38);
    stones = picture_load("assets/fireknight/tilemaps/old-dark-castle-interior-tileset.png");
    knight = picture_load("assets/fireknight/sprites/fireknight_288x128.png"); // rows of frames: idle, run, ...
    return stones && knight;
}

static void fixed_update(double dt) {
    body.prev_pos = body.pos;
    const int direction = input_held(INPUT_ACTION_RIGHT) - input_held(INPUT_ACTION_LEFT);
    body.vel.x = RUN * static_cast<float>(direction);
    body.vel.y = SDL_min(body.vel.y + GRAVITY * static_cast<float>(dt), 400);
    if (body.grounded && input_pressed(INPUT_ACTION_JUMP)) body.vel.y = -JUMP;
    player_body_step(&body, dt, &solid, nullptr);
    if (body.pos.y > 230) player_body_init(&body, {66, 0}, 16, 38); // fell down a pit
}

static void tick() {
    fill_rect(engine_renderer(), nullptr, rgba(24, 22, 40, 255));
    for (int i = 0; i < solid.count; i++)
        picture_draw(stones, solid.items[i].x, solid.items[i].y, {.cell = {solid.items[i].x, 0, TILE, TILE}});
    const SDL_FPoint feet = timestep_lerp_point(body.prev_pos, body.pos, engine_fixed_alpha());
    const float x = SDL_roundf(feet.x) - 144, y = SDL_roundf(feet.y) - 128, row = body.vel.x == 0 ? 0.0f : 128.0f;
    const SDL_FRect frame = {288 * SDL_floorf(SDL_fmodf(feet.x / 16 + 20, 8)), row, 288, 128};
    picture_draw(knight, x, y, {.cell = frame, .flip = body.vel.x < 0 ? SDL_FLIP_HORIZONTAL : SDL_FLIP_NONE});
}

static void cleanup() {
    SDL_DestroyTexture(stones);
    SDL_DestroyTexture(knight);
    stones = knight = nullptr;
    colliders_rects_cleanup(&solid);
}

static constexpr GameScreen SCREENS[] = {{"level", {setup, fixed_update, tick, cleanup, 320, 144}}};

static const Game game = {
    .title = "A body in a level",
    .id = "level",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .window_width = 960,
    .window_height = 432,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
