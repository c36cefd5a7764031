// settings: a game's own settings and command-line options: try --help and --name Ember.

#include "lumarind/lumarind.h"

#include <SDL3/SDL_render.h>

static constexpr GameSetting SETTINGS[] = {{"name", "stranger"}, {"visits", "0"}};

// Options are applied before settings are loaded: this option's value is stored until the screen is set up.
static const char *wanted_name;
static bool forget;
static constexpr GameOption OPTIONS[] = {
    {"--name", "name", "Greet by this name from now on.",
     [](const char *value) { return (wanted_name = value) != nullptr; }},
    {"--forget", nullptr, "Count the visits from 1 again.", [](const char *) { return forget = true; }},
};

static SDL_Texture *torch;

static bool setup() {
    if (wanted_name) cfg_set_setting("name", wanted_name);
    const int visit = forget ? 1 : static_cast<int>(cfg_get_setting_number("visits")) + 1;
    cfg_set_setting_number("visits", visit); // written on exit, unless --no-config-save is given
    torch = picture_load("assets/texture_demo/texture_a.png");
    return torch != nullptr;
}

static void tick() {
    SDL_Renderer *renderer = engine_renderer();
    fill_rect(renderer, nullptr, rgba(34, 22, 26, 255));
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    picture_draw(torch, 50, height / 2 - 144, {.scale = 3});
    picture_draw(torch, width - 50 - 90, height / 2 - 144, {.scale = 3, .flip = SDL_FLIP_HORIZONTAL});
    char greeting[160], visits[64];
    SDL_snprintf(greeting, sizeof greeting, "Welcome, %s", cfg_get_setting("name"));
    SDL_snprintf(visits, sizeof visits, "This is visit number %.0f.", cfg_get_setting_number("visits"));
    TTF_Font *large = engine_get_font_by_index(SHARED_FONT_UI_HEADING),
             *font = engine_get_font_by_index(SHARED_FONT_UI);
    engine_draw_text(large, greeting, width / 2, height / 2 - 60, {255, 224, 160, 255}, TEXT_CENTER);
    engine_draw_text(font, visits, width / 2, height / 2 + 10, {190, 170, 160, 255}, TEXT_CENTER);
}

static void cleanup() {
    SDL_DestroyTexture(torch);
    torch = nullptr;
}

static constexpr GameScreen SCREENS[] = {{"door", {.setup = setup, .tick = tick, .cleanup = cleanup}}};

static const Game game = {
    .title = "Own settings and options",
    .id = "settings",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .settings = SETTINGS,
    .setting_count = 2,
    .options = OPTIONS,
    .option_count = 2,
    .ui_font = "assets/fonts/EuroStyle Normal.ttf",
    .ui_font_size = 24,
    .heading_font_size = 34,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
