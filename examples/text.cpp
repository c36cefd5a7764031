// text: a changing prepared text: a story that types itself, letter by letter. Jump (Space) turns the page.

#include "lumarind/lumarind.h"

#include <iterator>

static constexpr const char *PAGES[] = {
    "The gate fell shut behind her.\nSomewhere above, a bell rang twice.",
    "\"Twice,\" said the knight, \"is once more\nthan a bell without a rope should ring.\"",
    "So they went up to see who pulled it.",
};
static constexpr double LETTERS_PER_SECOND = 40;

static TTF_Text *heading, *story;
static size_t page;
static double letters; // shown so far

static bool setup() {
    page = 0;
    letters = 0;
    heading =
        engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI_HEADING), "The Bell", 0, {232, 190, 110, 255});
    story = engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI), "", 0, {224, 220, 208, 255});
    return heading && story;
}

static void tick() {
    if (input_pressed(INPUT_ACTION_JUMP)) {
        page = (page + 1) % std::size(PAGES);
        letters = 0;
    }
    letters = SDL_min(letters + LETTERS_PER_SECOND * engine_fps_delta(), static_cast<double>(SDL_strlen(PAGES[page])));
    char shown[256];
    SDL_utf8strlcpy(shown, PAGES[page], SDL_min(static_cast<size_t>(letters) + 1, sizeof shown));
    engine_set_text(story, shown); // only a changed text is laid out again

    SDL_Renderer *renderer = engine_renderer();
    fill_rect(renderer, nullptr, rgba(24, 22, 28, 255));
    const SDL_FRect margin = {56, 60, 3, 330};
    fill_rect(renderer, &margin, rgba(140, 60, 50, 255));
    engine_render_text(heading, 80, 60);
    engine_render_text(story, 80, 150);
}

static void cleanup() {
    engine_cleanup_text(&story);
    engine_cleanup_text(&heading);
}

static constexpr GameScreen SCREENS[] = {{"story", {.setup = setup, .tick = tick, .cleanup = cleanup}}};

static const Game game = {
    .title = "A text that changes",
    .id = "text",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .ui_font = "assets/fonts/EuroStyle Normal.ttf",
    .ui_font_size = 26,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
