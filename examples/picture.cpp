// picture: draws a picture in one call, with nearest-neighbour filtering on the left and linear on the right.

#include "lumarind/lumarind.h"

#include <SDL3/SDL_render.h>

static SDL_Texture *sharp, *smooth;
static double angle; // degrees

static bool setup() {
    sharp = picture_load("assets/texture_demo/texture_b.png"); // 88 × 88 px
    smooth = picture_load("assets/texture_demo/texture_b.png", PICTURE_LINEAR);
    return sharp && smooth;
}

static void tick() {
    set_color(engine_renderer(), rgba(24, 24, 38, 255));
    SDL_RenderClear(engine_renderer());
    angle += 12 * engine_fps_delta();
    picture_draw(sharp, 24, 49, {.scale = 4, .angle = angle});
    picture_draw(smooth, 424, 49, {.scale = 4, .angle = angle});
}

static void cleanup() {
    SDL_DestroyTexture(sharp);
    SDL_DestroyTexture(smooth);
    sharp = smooth = nullptr;
}

static constexpr GameScreen SCREENS[] = {{"windows", {.setup = setup, .tick = tick, .cleanup = cleanup}}};

static const Game game = {
    .title = "A picture, sharp and smooth",
    .id = "picture",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
