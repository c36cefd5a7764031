// play: the level screen: input, drawing in the order of the map's layers, pause, transition to the next screen.

#include "game.h"
#include "hud.h"
#include "level.h"
#include "lumarind/core/error.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/timestep.h"
#include "lumarind/engine/transition.h"
#include "lumarind/input/input.h"
#include "lumarind/settings/settings.h"
#include "menus.h"
#include "progress.h"
#include "sounds.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

static constexpr double WON_SECONDS = 1.5; // before a press continues

static Level *level;
static bool continue_next, pausing;

void play_continue_next() { continue_next = true; }
const Level *play_level() { return level; }

static bool play_setup(int number) {
    level = static_cast<Level *>(SDL_calloc(1, sizeof *level));
    if (!level) return engine_error("[PLAY] Memory allocation failed, error: %s", SDL_GetError());
    progress_load();
    pausing = false;
    const bool from_save = continue_next;
    continue_next = false;
    if (!menus_setup() || !level_load(level, number, from_save)) return false;
    return sounds_setup(tile_property_string(&level->world->properties, "music", "title"));
}

bool play_setup_1() { return play_setup(0); }
bool play_setup_2() { return play_setup(1); }

void play_cleanup() {
    sounds_cleanup();
    menus_cleanup();
    if (level) level_cleanup(level);
    SDL_free(level);
    level = nullptr;
}

// --- a step ---

static HeroIntent play_read_controls() {
    return {
        .move_x = static_cast<float>(input_held(ACTION_RIGHT) - input_held(ACTION_LEFT)),
        .jump = input_pressed(ACTION_JUMP),
        .roll = input_pressed(ACTION_ROLL),
        .attack = input_pressed(ACTION_ATTACK),
        .special = input_pressed(ACTION_SPECIAL),
        .jump_held = input_held(ACTION_JUMP)};
}

void play_fixed_update(double dt) {
    level_step(level, level->phase == LEVEL_PLAYING ? play_read_controls() : HeroIntent{}, dt);
    const bool confirmed = input_pressed(ACTION_JUMP) || input_pressed(ACTION_MENU_TAKE);
    if (level->phase == LEVEL_WON && level->phase_time > WON_SECONDS && confirmed)
        transition_fade_to(state_of(SCREEN_LEVEL_1 + level->number + 1), FADE_SECONDS); // or the credits
}

Uint64 play_hash() { return level_hash(level); }

// --- drawing ---

static SDL_FPoint between(SDL_FPoint before, SDL_FPoint now) {
    return timestep_lerp_point(before, now, engine_fixed_alpha());
}

static SDL_FPoint to_view(SDL_FPoint origin, float zoom, SDL_FPoint world) {
    return {origin.x + world.x * zoom, origin.y + world.y * zoom};
}

static void play_draw_things(SDL_FPoint origin, float zoom) {
    const Art *art = &level->art;
    for (int i = 0; i < level->things.count; i++) {
        const Thing *thing = &level->things.items[i];
        const Animation *anim = thing_animation(thing, art);
        if (anim) art_draw_thing(art, anim, to_view(origin, zoom, thing->feet), zoom);
        if (anim && thing->kind == THING_DOOR) // draw the door again, higher: its top fills the opening
            art_draw_thing(art, anim, to_view(origin, zoom, {thing->feet.x, thing->feet.y - 16}), zoom);
    }
}

static void play_draw_platforms(SDL_FPoint origin, float zoom) {
    const Art *art = &level->art;
    for (int i = 0; i < level->things.platform_count; i++) {
        const Platform *platform = &level->things.platforms[i];
        const SDL_FPoint corner = between(platform->prev, {platform->box.x, platform->box.y});
        const SDL_FPoint feet = {SDL_roundf(corner.x) + platform->box.w / 2, SDL_roundf(corner.y) + platform->box.h};
        art_draw_thing(art, &art->clips[CLIP_PLATFORM], to_view(origin, zoom, feet), zoom);
    }
}

static void play_draw_enemies(SDL_FPoint origin, float zoom) {
    const Art *art = &level->art;
    for (int i = 0; i < level->enemies.count; i++) {
        const Enemy *enemy = &level->enemies.items[i];
        if (!enemy->alive) continue;
        const SDL_FPoint feet = between(enemy->body.prev_pos, enemy->body.pos);
        art_draw_thing(art, enemy_animation(enemy, art), to_view(origin, zoom, feet), zoom, enemy->body.facing);
    }
    for (const Fireball &fireball : level->enemies.fireballs) {
        if (fireball.life <= 0) continue;
        const SDL_FPoint at = between(fireball.prev_pos, fireball.pos);
        art_draw_thing(
            art, &art->clips[CLIP_FIREBALL], to_view(origin, zoom, {at.x, at.y + 8}), zoom,
            fireball.vel.x < 0 ? -1 : 1);
    }
}

static void play_draw_knights(SDL_FPoint origin, float zoom, SDL_FPoint feet) {
    const Art *art = &level->art;
    const Hero &hero = level->hero;
    GhostSample sample = {};
    if (level->whole_run && level->phase == LEVEL_PLAYING && ghost_at(&level->best, level->time, &sample)) {
        Animation anim = art_knight(art, SDL_min(sample.clip, KNIGHT_COUNT - 1));
        animation_set_frame(&anim, sample.frame);
        const SDL_FPoint at = {static_cast<float>(sample.x), static_cast<float>(sample.y)};
        art_draw_knight(art, &anim, to_view(origin, zoom, at), zoom, sample.facing, true);
    }
    const bool hidden = hero.state != HERO_ROLL && hero.state != HERO_SPECIAL && hero.invulnerable > 0 &&
                        SDL_fmod(hero.invulnerable, 0.16) < 0.07;
    if (hidden && level->phase == LEVEL_PLAYING) return; // blinks while invulnerable
    art_draw_knight(art, &hero.anim, to_view(origin, zoom, feet), zoom, hero.body.facing);
}

static void play_draw() {
    SDL_Renderer *renderer = engine_renderer();
    const SDL_FPoint feet = between(level->hero.body.prev_pos, level->hero.body.pos);
    TileWorldView view = view_frame(&level->view, feet);
    const float zoom = view.scale;
    const SDL_FPoint origin = view_origin(&level->view);
    view.area.x = -origin.x / zoom; // including the shake
    view.area.y = -origin.y / zoom;
    tile_world_advance(level->world, engine_is_paused() ? 0 : SDL_min(engine_fps_delta(), 0.1));
    if (level->generation != level->world->generation) return engine_restart_state(); // the map was reloaded
    SDL_SetRenderDrawColor(renderer, 21, 18, 31, 255);
    SDL_RenderClear(renderer);
    const int first = tile_world_find_open(level->world, level->layer_castle, view.area) ? 0 : level->layer_castle;
    for (int layer = first; layer < level->layer_hazards; layer++)
        tile_world_draw_layer(renderer, level->world, layer, &view);
    play_draw_things(origin, zoom);
    play_draw_enemies(origin, zoom);
    play_draw_knights(origin, zoom, feet);
    tile_world_draw_layer(renderer, level->world, level->layer_hazards, &view);
    play_draw_platforms(origin, zoom); // some glide through the fire
    particles_draw(renderer, &level->particles, origin, zoom);
    hud_draw(level);
}

// --- pause ---

static void play_pause_tick() {
    const PauseChoice choice = pause_tick();
    if (choice == PAUSE_STAY) return;
    if (choice == PAUSE_CHECKPOINT) level_back_to_checkpoint(level);
    if (choice == PAUSE_TITLE) transition_fade_to(state_of(SCREEN_TITLE), FADE_SECONDS);
    if (choice == PAUSE_TITLE) return; // paused behind the fade
    pausing = false;
    engine_set_paused(false);
    input_clear_presses(); // the menu has handled them
}

void play_tick() {
    play_draw();
    if (pausing) {
        play_pause_tick();
    } else if (level->phase == LEVEL_PLAYING && input_pressed(ACTION_PAUSE)) {
        pausing = true;
        engine_set_paused(true);
        pause_open();
    }
}
