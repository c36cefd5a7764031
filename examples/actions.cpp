// actions: a game's own input actions. J strikes, L burns; bindings can be changed in the configuration file.

#include "lumarind/lumarind.h"

#include <iterator>

enum Action { ACTION_STRIKE, ACTION_GUARD, ACTION_BURN, ACTION_COUNT };
static constexpr GameAction ACTIONS[] = {
    {"strike", "J, pad:x"}, {"guard", "K, pad:rightshoulder"}, {"burn", "L, pad:righttrigger"}};
static_assert(std::size(ACTIONS) == ACTION_COUNT, "an action's number is its index");
static constexpr const char *CLIPS[] = {"2_atk", "defend", "sp_atk"}; // the clip for each action

static AnimationSet *set;
static SpriteSheet *sheet;
static Animation knight;

static bool setup() {
    set = animation_set_load("assets/fireknight/sprites/fireknight.json");
    sheet = set ? sprite_sheet_new(engine_renderer(), set) : nullptr;
    if (!sheet) return false;
    return animation_init(&knight, set, animation_find_clip(set, "sp_atk"));
}

static void fixed_update(double dt) {
    animation_advance(&knight, dt);
    const char *next = knight.finished ? "idle" : nullptr;
    for (int action = 0; action < ACTION_COUNT; action++) {
        if (input_pressed(action)) next = CLIPS[action]; // true in one fixed step per press: none is lost
    }
    if (next) animation_select_clip(&knight, animation_find_clip(set, next));
}

static void tick() {
    SDL_Renderer *renderer = engine_renderer();
    fill_rect(renderer, nullptr, rgba(30, 22, 36, 255));
    sprite_sheet_draw(renderer, sheet, &knight, {-32, -60}, 3, SDL_FLIP_NONE);
    for (int action = 0; action < ACTION_COUNT; action++) {
        const SDL_Color lit = {255, 206, 110, 255}, dark = {150, 140, 160, 255};
        char text[160];
        SDL_snprintf(text, sizeof text, "%s:  %s", input_action_name(action), input_bindings_text(action));
        const SDL_Color color = input_held(action) ? lit : dark; // while the key is down
        engine_draw_text(
            engine_get_font_by_index(SHARED_FONT_UI), text, 30, 340 + 34 * static_cast<float>(action), color);
    }
}

static void cleanup() {
    sprite_sheet_cleanup(&sheet);
    animation_set_cleanup(&set);
}

static constexpr GameScreen SCREENS[] = {{"yard", {setup, fixed_update, tick, cleanup}}};

static const Game game = {
    .title = "Own actions",
    .id = "actions",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .actions = ACTIONS,
    .action_count = ACTION_COUNT,
    .ui_font = "assets/fonts/EuroStyle Normal.ttf",
    .ui_font_size = 20,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
