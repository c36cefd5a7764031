// The smallest screen: one text in a font of its own, centred in the view.

#include "screens/text_demo.h"

#include "lumarind/core/error.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

static constexpr const char *FONT_PATH = "assets/fonts/Perfect DOS VGA 437 Win.ttf";
static constexpr float FONT_SIZE = 48;
static constexpr const char *TEXT = "Hello World!";
static constexpr SDL_Color TEXT_COLOR = {0, 128, 255, 255};

struct TextDemo {
    TTF_Font *font; // owned, as is the text
    TTF_Text *text; // null if preparing it failed: the screen is then black
    float x, y;     // where it was last drawn
};
static TextDemo *text_demo;

bool text_demo_setup() {
    if (text_demo) return true;
    text_demo = static_cast<TextDemo *>(SDL_calloc(1, sizeof *text_demo));
    if (!text_demo) return engine_error("[TEXT_DEMO] Memory allocation failed, error: %s", SDL_GetError());
    text_demo->font = font_open(FONT_PATH, FONT_SIZE);
    if (!text_demo->font) return false;
    text_demo->text = engine_prepare_text(text_demo->font, TEXT, SDL_strlen(TEXT), TEXT_COLOR);
    return true;
}

void text_demo_tick() {
    SDL_Renderer *renderer = engine_renderer();
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
    if (!text_demo->text) return;

    float text_width = 0, text_height = 0, view_width = 0, view_height = 0;
    engine_text_size(text_demo->text, &text_width, &text_height);
    engine_view_size(&view_width, &view_height);
    text_demo->x = (view_width - text_width) / 2;
    text_demo->y = (view_height - text_height) / 2;
    engine_render_text(text_demo->text, text_demo->x, text_demo->y);
}

void text_demo_cleanup() {
    if (!text_demo) return;
    engine_cleanup_text(&text_demo->text);
    font_cleanup(text_demo->font);
    SDL_free(text_demo);
    text_demo = nullptr;
}
