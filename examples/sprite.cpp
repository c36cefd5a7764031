// sprite: an animated knight, exported by a sprite editor, runs with the input actions Left and Right, or a gamepad.

#include "lumarind/lumarind.h"

static AnimationSet *set;
static SpriteSheet *sheet;
static Animation knight;
static double x, previous_x; // of the feet; drawn interpolated between the last two steps
static bool faces_left;

static bool setup() {
    x = previous_x = 130;
    set = animation_set_load("assets/fireknight/sprites/fireknight.json");
    sheet = set ? sprite_sheet_new(engine_renderer(), set) : nullptr;
    return sheet && animation_init(&knight, set, animation_find_clip(set, "idle"));
}

static void fixed_update(double dt) {
    const int direction = input_held(INPUT_ACTION_RIGHT) - input_held(INPUT_ACTION_LEFT);
    previous_x = x;
    x = SDL_clamp(x + 140 * direction * dt, 20, 300);
    if (direction != 0) faces_left = direction < 0;
    const int clip = animation_find_clip(set, direction == 0 ? "idle" : "run");
    if (clip != knight.clip) animation_select_clip(&knight, clip);
    animation_advance(&knight, dt);
}

static void tick() {
    SDL_Renderer *renderer = engine_renderer();
    fill_rect(renderer, nullptr, rgba(27, 30, 52, 255));
    fill_circle(renderer, 236, 52, 24, rgba(236, 228, 200, 255)); // the moon,
    fill_circle(renderer, 60, 230, 130, rgba(38, 42, 74, 255));   // two hills
    fill_circle(renderer, 260, 250, 140, rgba(48, 50, 88, 255));  //
    const SDL_FRect ground = {0, 150, 320, 30};
    fill_rect(renderer, &ground, rgba(18, 20, 34, 255));

    // A frame is 288 × 128 px, with the feet in the middle of its lower edge.
    const float feet = static_cast<float>(timestep_lerp(previous_x, x, engine_fixed_alpha()));
    const SDL_FPoint corner = {SDL_roundf(feet) - 144, 152 - 128};
    sprite_sheet_draw(renderer, sheet, &knight, corner, 1, faces_left ? SDL_FLIP_HORIZONTAL : SDL_FLIP_NONE);
}

static void cleanup() {
    sprite_sheet_cleanup(&sheet);
    animation_set_cleanup(&set);
}

static constexpr GameScreen SCREENS[] = {{"field", {setup, fixed_update, tick, cleanup, 320, 180}}};

static const Game game = {
    .title = "A sprite that runs",
    .id = "sprite",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .window_width = 960,
    .window_height = 540,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
