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
static TTF_Text *greeting, *visits;

static bool setup() {
    if (wanted_name) cfg_set_setting("name", wanted_name);
    const int visit = forget ? 1 : static_cast<int>(cfg_get_setting_number("visits")) + 1;
    cfg_set_setting_number("visits", visit); // written on exit, unless --no-config-save is given
    char first[160], second[64];
    SDL_snprintf(first, sizeof first, "Welcome, %s", cfg_get_setting("name"));
    SDL_snprintf(second, sizeof second, "This is visit number %d.", visit);
    greeting = engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI_HEADING), first, 0, {255, 224, 160, 255});
    visits = engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI), second, 0, {190, 170, 160, 255});
    torch = picture_load("assets/texture_demo/texture_a.png");
    return greeting && visits && torch;
}

static void draw_centred(TTF_Text *text, float y) {
    float view_width = 0, width = 0;
    engine_view_size(&view_width, nullptr);
    engine_text_size(text, &width, nullptr);
    engine_render_text(text, (view_width - width) / 2, y);
}

static void tick() {
    SDL_Renderer *renderer = engine_renderer();
    fill_rect(renderer, nullptr, rgba(34, 22, 26, 255));
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    picture_draw(torch, 50, height / 2 - 144, {.scale = 3});
    picture_draw(torch, width - 50 - 90, height / 2 - 144, {.scale = 3, .flip = SDL_FLIP_HORIZONTAL});
    draw_centred(greeting, height / 2 - 60);
    draw_centred(visits, height / 2 + 10);
}

static void cleanup() {
    engine_cleanup_text(&greeting);
    engine_cleanup_text(&visits);
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
