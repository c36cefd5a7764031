// credits: the end screen, text scrolling over the night sky.

#include "game.h"
#include "hud.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/timestep.h"
#include "lumarind/engine/transition.h"
#include "lumarind/input/input.h"
#include "lumarind/toolkit/picture.h"
#include "progress.h"
#include "sounds.h"

#include <SDL3/SDL_render.h>

static constexpr const char *LINES[] = {
    "The hearth burns again.",
    "",
    "From the spire one sees",
    "lights in every window of the town.",
    "",
    "",
    "CINDER KEEP",
    "a small game on the Lumarind engine",
    "",
    "The knight, the keep and its foes",
    "drawn by numbers, a pixel at a time",
    "",
    "Music and sounds",
    "played by the same numbers",
    "",
    "",
    "Thank you for playing.",
    "",
    "Your ghost waits in both levels:",
    "be faster than yourself."};
static constexpr float SKY_W = 640, SKY_H = 320, MOON_X = 382; // px of the picture
static constexpr double PX_A_SECOND = 34, BEFORE_LEAVING = 1;  // UI units, s

static SDL_Texture *sky;
static double time_now, time_before; // s

bool credits_setup() {
    time_now = time_before = 0;
    progress_load();
    sky = picture_load("assets/levels/sky.png");
    SDL_SetTextureColorMod(sky, 150, 150, 165); // text passes over the moon in small windows
    return sky && sounds_setup("title");
}

void credits_cleanup() {
    sounds_cleanup();
    SDL_DestroyTexture(sky);
    sky = nullptr;
}

void credits_fixed_update(double dt) {
    time_before = time_now;
    time_now += dt;
    const bool skip = input_pressed(ACTION_MENU_TAKE) || input_pressed(ACTION_MENU_BACK) || input_pressed(ACTION_JUMP);
    const double all = 900 / PX_A_SECOND + 12;
    if ((skip && time_now > BEFORE_LEAVING) || time_now > all) transition_fade_to(state_of(SCREEN_TITLE), FADE_SECONDS);
}

void credits_tick() {
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    SDL_SetRenderDrawColor(engine_renderer(), 21, 18, 31, 255);
    SDL_RenderClear(engine_renderer());
    const float zoom = SDL_max(SDL_ceilf(SDL_max(width / SKY_W, height / SKY_H)), 1);
    const float left = SDL_clamp(width * 0.88f - MOON_X * zoom, width - SKY_W * zoom, 0); // the moon beside the text
    picture_draw(sky, SDL_roundf(left), 0, {.scale = zoom});
    const double time = timestep_lerp(time_before, time_now, engine_fixed_alpha());
    float y = height * 0.75f - static_cast<float>(time * PX_A_SECOND);
    for (int i = 0; i < static_cast<int>(SDL_arraysize(LINES)); i++) {
        const bool large = i == 0 || SDL_strcmp(LINES[i], "CINDER KEEP") == 0;
        const int font = large ? SHARED_FONT_UI_HEADING : SHARED_FONT_UI;
        hud_text(font, LINES[i], width / 2, y, large ? COLOR_BRIGHT : COLOR_PLAIN, TEXT_CENTER);
        y += large ? 58.0f : 30.0f;
    }
    char text[96];
    SDL_snprintf(text, sizeof text, "Best times: %s and %s", hud_best_time(0).text, hud_best_time(1).text);
    hud_text(SHARED_FONT_UI, text, width / 2, y + 30, COLOR_DIM, TEXT_CENTER);
}
