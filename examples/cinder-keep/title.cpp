// title: the title screen with the main menu, over a night scene.

#include "art.h"
#include "game.h"
#include "hud.h"
#include "lumarind/core/error.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/text_draw.h"
#include "lumarind/engine/transition.h"
#include "lumarind/toolkit/primitives.h"
#include "lumarind/toolkit/tile_world.h"
#include "menus.h"
#include "particles.h"
#include "progress.h"
#include "sounds.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

static constexpr float VIEW_H = 240, SWAY = 70; // world px
static constexpr SDL_FPoint KNIGHT = {584, 224}, FIRE = {616, 224};

enum Line { LINE_CONTINUE, LINE_NEW, LINE_LEVEL_2, LINE_SETTINGS, LINE_QUIT, LINE_COUNT };

struct Title {
    TileWorld *world; // owned, as is the art
    Art art;
    Animation knight;
    Particles particles;
    Menu menu;
    double time, since_ember;
    TTF_Font *font; // owned; for the title
    bool in_settings, damaged;
};
static Title *title;

bool title_setup() {
    title = static_cast<Title *>(SDL_calloc(1, sizeof *title));
    if (!title) return engine_error("[TITLE] Memory allocation failed, error: %s", SDL_GetError());
    title->damaged = progress_load() == PROGRESS_DAMAGED;
    title->menu.selected = progress_has_game() ? LINE_CONTINUE : LINE_NEW;
    if (!menus_setup() || !art_load(&title->art)) return false;
    title->world = tile_world_load(engine_renderer(), "assets/levels/title.tmx");
    title->font = font_open("assets/keep.ttf", 64);
    title->knight = art_knight(&title->art, KNIGHT_IDLE);
    return title->world && title->font && sounds_setup("title");
}

void title_cleanup() {
    sounds_cleanup();
    menus_cleanup();
    if (!title) return;
    tile_world_cleanup(&title->world);
    art_cleanup(&title->art);
    font_cleanup(title->font);
    SDL_free(title);
    title = nullptr;
}

void title_fixed_update(double dt) {
    title->time += dt;
    art_advance(&title->art, dt);
    animation_advance(&title->knight, dt);
    particles_step(&title->particles, dt);
    title->since_ember += dt;
    if (title->since_ember < 0.12) return;
    title->since_ember = 0;
    particles_burst(&title->particles, &PARTICLES_EMBERS, {FIRE.x, FIRE.y - 30}, 1, {12, -26});
}

static void title_draw_back() {
    SDL_Renderer *renderer = engine_renderer();
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    const float zoom = SDL_max(SDL_floorf(height / VIEW_H + 0.5f), 1);
    const double sway =
        SDL_sin((title->time + engine_fixed_alpha() * engine_fixed_delta()) * 0.12) * static_cast<double>(SWAY);
    const SDL_FRect area = {
        SDL_roundf((KNIGHT.x - 30 + static_cast<float>(sway)) * zoom - width / 2) / zoom,
        SDL_roundf(260 * zoom - height) / zoom, width / zoom, height / zoom};
    const TileWorldView view = {area, zoom};
    SDL_SetRenderDrawColor(renderer, 21, 18, 31, 255);
    SDL_RenderClear(renderer);
    tile_world_advance(title->world, SDL_min(engine_fps_delta(), 0.1));
    tile_world_draw(renderer, title->world, &view);
    const SDL_FPoint origin = {-area.x * zoom, -area.y * zoom};
    art_draw_thing(
        &title->art, &title->art.clips[CLIP_BRAZIER_LIT], {origin.x + FIRE.x * zoom, origin.y + FIRE.y * zoom}, zoom);
    art_draw_knight(&title->art, &title->knight, {origin.x + KNIGHT.x * zoom, origin.y + KNIGHT.y * zoom}, zoom, 1);
    particles_draw(renderer, &title->particles, origin, zoom);
}

static void title_activate(int line) {
    const int level = progress.run.level >= 0 ? progress.run.level : progress.reached - 1;
    switch (line) {
    case LINE_CONTINUE:
        play_continue_next();
        transition_fade_to(state_of(SCREEN_LEVEL_1 + level), FADE_SECONDS);
        break;
    case LINE_NEW:
    case LINE_LEVEL_2:
        progress_forget_run();
        transition_fade_to(state_of(line == LINE_NEW ? SCREEN_LEVEL_1 : SCREEN_LEVEL_2), FADE_SECONDS);
        break;
    case LINE_SETTINGS:
        settings_menu_open();
        title->in_settings = true;
        break;
    default:
        engine_set_state(GAME_STATE_QUIT);
    }
}

static const char *title_best(int level, char *text, size_t size) {
    if (progress.levels[level].best_ms == 0) return "";
    SDL_snprintf(text, size, "best %s", hud_best_time(level).text);
    return text;
}

void title_tick() {
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    title_draw_back();
    if (title->in_settings) {
        title->in_settings = menus_settings_tick();
        return;
    }
    TTF_Font *font = engine_get_font_by_index(SHARED_FONT_UI);
    const bool small = height < 300;
    const float left = small ? width / 2 - 130 : width * 0.08f, top = small ? 0.0f : height * 0.13f;
    const float name_x = small ? width / 2 : left;
    const TextAlign align = small ? TEXT_CENTER : TEXT_LEFT;
    engine_draw_text(title->font, "Cinder Keep", name_x + 3, top + 3, {12, 8, 20, 255}, align);
    engine_draw_text(title->font, "Cinder Keep", name_x, top, {239, 150, 70, 255}, align);

    char best[2][32] = {};
    const bool second = progress.reached > 1;
    const MenuLine lines[LINE_COUNT] = {
        {"Continue", "", !progress_has_game()},
        {"New game", title_best(0, best[0], sizeof best[0])},
        {"The Ember Spire", title_best(1, best[1], sizeof best[1]), !second},
        {"Settings", ""},
        {"Quit", ""}};
    const float line = menu_line_height();
    const SDL_FRect back = {left - 8, top + 78, 316, line * static_cast<float>(LINE_COUNT) + 10};
    SDL_SetRenderDrawBlendMode(engine_renderer(), SDL_BLENDMODE_BLEND);
    fill_rect(engine_renderer(), &back, rgba(12, 8, 20, 150));
    const MenuAnswer answer =
        menus_tick(&title->menu, lines, LINE_COUNT, {left, top + 84, 300, line * static_cast<float>(LINE_COUNT)});
    if (answer.taken >= 0) title_activate(answer.taken);
    const char *warning = title->damaged ? "The save was damaged: it is set aside as progress.damaged.txt" : "";
    engine_draw_text(font, warning, left, height - 30, COLOR_WARNING);
}
