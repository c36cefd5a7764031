// map: a level from a map editor, with a camera that follows a firefly. Arrow keys, or a gamepad.

#include "lumarind/lumarind.h"

#include <SDL3/SDL_render.h>

static constexpr double SPEED = 220; // px/s
static TileWorld *world;
static Camera camera;
static double x, y, previous_x, previous_y; // of the firefly, world pixels

static bool setup() {
    world = tile_world_load(engine_renderer(), "assets/fireknight/tilemaps/castle-tilemap.tmx");
    if (!world) return false;
    camera = camera_make(
        1, {0, 0, static_cast<float>(world->cols * world->tile_w),
            static_cast<float>(world->rows * world->tile_h)}); // the map's bounds
    x = previous_x = 1290;
    y = previous_y = 400;
    camera_center(&camera, {1290, 400}, 400, 225);
    return true;
}

static void fixed_update(double dt) {
    previous_x = x;
    previous_y = y;
    x += SPEED * dt * (input_held(INPUT_ACTION_RIGHT) - input_held(INPUT_ACTION_LEFT));
    y += SPEED * dt * (input_held(INPUT_ACTION_DOWN) - input_held(INPUT_ACTION_UP));
    x = SDL_clamp(x, 0, world->cols * world->tile_w);
    y = SDL_clamp(y, 0, world->rows * world->tile_h);
}

static void tick() {
    SDL_Renderer *renderer = engine_renderer();
    const double t = engine_fixed_alpha();
    const SDL_FPoint firefly = {
        static_cast<float>(timestep_lerp(previous_x, x, t)), static_cast<float>(timestep_lerp(previous_y, y, t))};
    camera_follow(&camera, firefly, 400, 225); // moves when the firefly leaves the dead zone
    const TileWorldView view = {camera_area(&camera), 1};
    fill_rect(renderer, nullptr, rgba(0, 0, 0, 255));
    tile_world_advance(world, engine_fps_delta());
    tile_world_draw(renderer, world, &view);

    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_ADD);
    const SDL_FPoint at = camera_to_view(&camera, firefly);
    for (float radius = 15; radius >= 3; radius -= 3) fill_circle(renderer, at.x, at.y, radius, rgba(56, 42, 16, 255));
    fill_circle(renderer, at.x, at.y, 2, rgba(255, 246, 214, 255));
}

static void cleanup() { tile_world_cleanup(&world); }

static constexpr GameScreen SCREENS[] = {{"castle", {setup, fixed_update, tick, cleanup, 400, 225}}};

static const Game game = {
    .title = "A map under a camera",
    .id = "map",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .window_width = 1200,
    .window_height = 675,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
