// save: a number saved between runs. Jump (Space) finds a coin; quit with Escape and start again.

#include "lumarind/lumarind.h"

#include <SDL3/SDL_storage.h>

static constexpr char SAVE[] = "saves/purse.txt"; // in the user's folder
static int coins;

static bool setup() {
    coins = 21;
    if (!SDL_GetStoragePathInfo(storage_user(), SAVE, nullptr)) return true; // the first time
    char *text = storage_read_user_file(SAVE);
    if (!text) return false; // reported; startup fails, so that the old save is not overwritten
    coins = SDL_max(SDL_atoi(text), 0);
    SDL_free(text);
    return true;
}

static void save() { // atomic: a crash does not lose the old save
    char text[16];
    storage_write_user_file(SAVE, text, static_cast<size_t>(SDL_snprintf(text, sizeof text, "%d\n", coins)));
}

static void tick() {
    if (input_pressed(INPUT_ACTION_JUMP)) {
        coins++;
        save();
    }
    SDL_Renderer *renderer = engine_renderer();
    fill_rect(renderer, nullptr, rgba(38, 24, 34, 255));
    for (int i = 0; i < coins && i < 10 * 16; i++) { // stacks of sixteen
        const int stack = i / 16, height = i % 16;
        const float x = 60 + 72 * static_cast<float>(stack), y = 390 - 16 * static_cast<float>(height);
        const SDL_FRect rim = {x - 26, y, 52, 14}, shine = {x - 26, y, 52, 5}, spot = {x - 18, y, 8, 5};
        fill_rect(renderer, &rim, rgba(176, 112, 40, 255));
        fill_rect(renderer, &shine, rgba(246, 190, 74, 255));
        fill_rect(renderer, &spot, rgba(255, 240, 186, 255));
    }
    char text[48];
    SDL_snprintf(text, sizeof text, "%d coins. Space finds another.", coins);
    engine_draw_text(engine_get_font_by_index(SHARED_FONT_UI), text, 34, 30, {255, 222, 120, 255});
}

static void cleanup() {} // nothing to free

static constexpr GameScreen SCREENS[] = {{"purse", {.setup = setup, .tick = tick, .cleanup = cleanup}}};

static const Game game = {
    .title = "Saving and loading",
    .id = "save",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .ui_font = "assets/fonts/EuroStyle Normal.ttf",
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
