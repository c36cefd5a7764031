// First Game: a title screen, and a night scene in which a firefly collects lights.
#include "lumarind/lumarind.h"

static TTF_Text *name, *hint;                         // created by each screen, destroyed in its cleanup
static MIX_Audio *chime;                              // created once; freed with the engine's mixer
static SDL_FPoint tail[50], light = {640, 130}, view; // UI units; the firefly is at tail[0] and was at tail[1]

static bool setup() {
    name = engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI_HEADING), "First Game", 0, {255, 220, 120, 255});
    hint = engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI), "Press Space", 0, {130, 160, 230, 255});
    if (!chime) chime = sfx_generate(SFX_COIN, 1);
    for (float i = 0; SDL_FPoint &point : tail) point = {400 - i * i / 8, 290 + SDL_powf(i++, 2) / 24};
    return name && hint && chime;
}

static void cleanup() {
    engine_cleanup_text(&name);
    engine_cleanup_text(&hint);
}

static void fixed_update(double dt) {
    SDL_memmove(&tail[1], &tail[0], sizeof tail - sizeof tail[0]);
    tail[0].x += static_cast<float>(350 * dt * (input_held(INPUT_ACTION_RIGHT) - input_held(INPUT_ACTION_LEFT)));
    tail[0].y += static_cast<float>(350 * dt * (input_held(INPUT_ACTION_DOWN) - input_held(INPUT_ACTION_UP)));
    engine_view_size(&view.x, &view.y);
    tail[0] = {SDL_clamp(tail[0].x, 0, view.x), SDL_clamp(tail[0].y, 0, view.y)};
    if (SDL_fabsf(tail[0].x - light.x) + SDL_fabsf(tail[0].y - light.y) > 50) return;
    audio_play_sfx(chime);
    light = {view.x * (0.1f + 0.8f * SDL_randf()), view.y * (0.1f + 0.8f * SDL_randf())};
}

static void tick() {
    fill_rect(engine_renderer(), nullptr, rgba(12, 14, 36, 255));
    fill_circle(engine_renderer(), light.x, light.y, 16, rgba(255, 220, 120, 255));
    for (int i = 49; i > 0; i--)
        fill_circle(engine_renderer(), tail[i].x, tail[i].y, 0.2f * static_cast<float>(50 - i), rgba(36, 99, 90, 255));
    const float alpha = static_cast<float>(engine_fixed_alpha()); // the firefly is drawn between its last two steps
    const SDL_FPoint at = {tail[1].x + alpha * (tail[0].x - tail[1].x), tail[1].y + alpha * (tail[0].y - tail[1].y)};
    fill_circle(engine_renderer(), at.x, at.y, 11, rgba(170, 255, 200, 255));
}

static void title_tick() {
    tick();
    engine_render_text(name, 60, 60);
    engine_render_text(hint, 60, 130);
    if (input_pressed(INPUT_ACTION_JUMP)) transition_fade_to(GAME_STATE_FIRST_SCREEN + 1, 0.4);
}

static constexpr GameScreen screens[] = {
    {"title", {.setup = setup, .tick = title_tick, .cleanup = cleanup}},
    {"play", {.setup = setup, .fixed_update = fixed_update, .tick = tick, .cleanup = cleanup}},
};
static constexpr Game game = {
    .title = "First Game",
    .id = "first-game",
    .screens = screens,
    .screen_count = SDL_arraysize(screens),
    .ui_font = "assets/ui.ttf"};
int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
