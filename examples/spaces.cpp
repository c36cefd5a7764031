// spaces: a logical space of 160 × 90 large pixels with sharp text in UI space. Shows the mouse position in both.

#include "lumarind/lumarind.h"

#include <SDL3/SDL_render.h>

static SDL_Texture *torch, *window;
static TTF_Text *label;

static bool setup() {
    torch = picture_load("assets/texture_demo/texture_a.png");
    window = picture_load("assets/texture_demo/texture_b.png");
    label = engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI), "", 0, {250, 240, 220, 255});
    return torch && window && label;
}

static void tick() {
    // The screen has a logical size, so a frame starts in logical space, presented with integer scaling.
    SDL_Renderer *renderer = engine_renderer();
    fill_rect(renderer, nullptr, rgba(0, 0, 0, 255));
    SDL_RenderClear(renderer); // also clears the letterbox
    const SDL_FRect room = {0, 0, 160, 90};
    fill_rect(renderer, &room, rgba(34, 30, 52, 255));
    picture_draw(window, 36, 1);
    picture_draw(torch, 4, 2);
    picture_draw(torch, 126, 2);
    float logical_x = 0, logical_y = 0;
    engine_mouse_position(&logical_x, &logical_y);
    outline_circle(renderer, logical_x, logical_y, 6, rgba(255, 220, 120, 255));

    // Until the end of the frame one unit is one output pixel, or several on a high-density display.
    engine_use_ui_space();
    float width = 0, height = 0, x = 0, y = 0;
    engine_view_size(&width, &height);
    engine_mouse_position(&x, &y);
    char text[96];
    SDL_snprintf(
        text, sizeof text, "Mouse: %d, %d in the picture; %d, %d on the text's grid", static_cast<int>(logical_x),
        static_cast<int>(logical_y), static_cast<int>(x), static_cast<int>(y));
    engine_set_text(label, text); // does nothing if the text is unchanged
    const SDL_FRect bar = {0, height - 44, width, 44};
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    fill_rect(renderer, &bar, rgba(10, 8, 20, 190));
    engine_render_text(label, 20, height - 36);
}

static void cleanup() {
    engine_cleanup_text(&label);
    SDL_DestroyTexture(window);
    SDL_DestroyTexture(torch);
    window = torch = nullptr;
}

static constexpr GameScreen SCREENS[] = {
    {"chapel", {.setup = setup, .tick = tick, .cleanup = cleanup, .logical_width = 160, .logical_height = 90}}};

static const Game game = {
    .title = "Two drawing spaces",
    .id = "spaces",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .ui_font = "assets/fonts/EuroStyle Normal.ttf",
    .ui_font_size = 20,
    .window_width = 960,
    .window_height = 540,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
