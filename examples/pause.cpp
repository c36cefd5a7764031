// pause: Escape pauses the game and opens a menu. Up and Down select, jump (Space) activates.

#include "lumarind/lumarind.h"

#include <SDL3/SDL_render.h>

enum Entry { ENTRY_GO_ON, ENTRY_AGAIN, ENTRY_QUIT, ENTRY_COUNT };
static constexpr const char *ENTRIES[] = {"Go on", "Begin again", "Quit"};

static SDL_Texture *wheel;
static int chosen;
static float distance; // rolled by the wheel, UI units

static bool setup() { // also called by engine_restart_state, after cleanup
    distance = 340;
    wheel = picture_load("assets/texture_demo/texture_b.png");
    return wheel != nullptr;
}

static bool escape() { // true: handled, Escape does not quit
    engine_set_paused(!engine_is_paused());
    chosen = ENTRY_GO_ON;
    return true;
}

static void fixed_update(double dt) { distance += 90 * static_cast<float>(dt); } // not called while paused

static void choose() {
    if (chosen == ENTRY_GO_ON) engine_set_paused(false);
    if (chosen == ENTRY_AGAIN) engine_restart_state(); // also ends the pause
    if (chosen == ENTRY_QUIT) engine_set_state(GAME_STATE_QUIT);
}

static void tick() {
    SDL_Renderer *renderer = engine_renderer();
    SDL_FRect view = {};
    engine_view_size(&view.w, &view.h);
    fill_rect(renderer, nullptr, rgba(44, 50, 84, 255));
    const SDL_FRect road = {0, view.h - 80, view.w, 80};
    fill_rect(renderer, &road, rgba(28, 24, 40, 255));
    const float x = SDL_fmodf(distance, view.w + 264) - 264; // the wheel is 264 units wide, and rolls
    picture_draw(wheel, x, road.y - 264, {.scale = 3, .angle = distance / 132 * 180 / SDL_PI_D});
    if (!engine_is_paused()) return;

    chosen = (chosen + ENTRY_COUNT + input_pressed(INPUT_ACTION_DOWN) - input_pressed(INPUT_ACTION_UP)) % ENTRY_COUNT;
    if (input_pressed(INPUT_ACTION_JUMP)) choose();
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    fill_rect(renderer, &view, rgba(10, 8, 20, 190));
    for (int i = 0; i < ENTRY_COUNT; i++) {
        const SDL_Color bright = {255, 220, 150, 255}, dim = {160, 148, 166, 255};
        const float y = view.h / 2 - 80 + 55 * static_cast<float>(i);
        TTF_Font *font = engine_get_font_by_index(SHARED_FONT_UI);
        engine_draw_text(font, ENTRIES[i], view.w / 2, y, i == chosen ? bright : dim, TEXT_CENTER);
    }
}

static void cleanup() {
    SDL_DestroyTexture(wheel);
    wheel = nullptr;
}

static constexpr GameScreen SCREENS[] = {{"road", {setup, fixed_update, tick, cleanup}}};

static const Game game = {
    .title = "A pause menu",
    .id = "pause",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .ui_font = "assets/fonts/EuroStyle Normal.ttf",
    .escape = escape,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
