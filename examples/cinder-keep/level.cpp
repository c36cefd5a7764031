#include "level.h"

#include "lumarind/core/state_hash.h"
#include "progress.h"
#include "sounds.h"

#include <SDL3/SDL_log.h>

static constexpr double DEATH_SECONDS = 1.6;
static constexpr float HAZARD_MARGIN = 40; // px; the hero does not respawn closer to a hazard

// --- checkpoints ---

void level_back_to_checkpoint(Level *level) {
    const bool lit = level->checkpoint >= 0;
    level->phase = LEVEL_PLAYING;
    level->hero.hearts = HERO_HEARTS;
    hero_place(&level->hero, &level->art, lit ? level->things.items[level->checkpoint].feet : level->spawn);
    enemies_revive(&level->enemies, &level->art);
    level->view.centered = false;
}

static void level_save_run(const Level *level) {
    RunProgress *run = &progress.run;
    *run = {
        .level = level->number,
        .checkpoint = things_number(&level->things, level->checkpoint),
        .ms = static_cast<Sint64>(level->time * 1000),
        .deaths = level->deaths,
        .has_key = level->hero.has_key,
        .door_open = false,
        .embers = {}};
    for (int i = 0, ember = 0; i < level->things.count; i++) {
        const Thing &thing = level->things.items[i];
        if (thing.kind == THING_DOOR && thing.done) run->door_open = true;
        if (thing.kind != THING_EMBER) continue;
        if (thing.done) run->embers[ember / 64 % PROGRESS_WORDS] |= Uint64{1} << ember % 64;
        ember++;
    }
    progress_save();
}

static void level_win(Level *level) {
    LevelProgress *saved = &progress.levels[level->number];
    const Sint64 ms = static_cast<Sint64>(level->time * 1000);
    level->phase = LEVEL_WON;
    level->phase_time = 0;
    if (level->whole_run && (saved->best_ms == 0 || ms < saved->best_ms)) {
        saved->best_ms = ms;
        ghost_save(&level->ghost, level->number);
    }
    saved->embers = SDL_max(saved->embers, level->embers);
    saved->deaths += level->deaths;
    progress.reached = SDL_clamp(level->number + 2, progress.reached, LEVEL_COUNT);
    progress.finished = progress.finished || level->number + 1 == LEVEL_COUNT;
    progress_forget_run();
    progress_save();
    sounds_play(SOUND_WON);
    SDL_Log(
        "[LEVEL] Level %d finished in %.2f s, %d of %d embers", level->number + 1, level->time, level->embers,
        level->things.embers);
}

// --- contact with things ---

static void level_touch(Level *level, int index) {
    Thing *thing = &level->things.items[index];
    const SDL_FPoint middle = {thing->feet.x, thing->feet.y - 9};
    switch (thing->kind) {
    case THING_EMBER:
        level->embers++;
        sounds_play(SOUND_EMBER);
        particles_burst(&level->particles, &PARTICLES_EMBERS, middle, 6);
        break;
    case THING_HEART:
        if (level->hero.hearts == HERO_HEARTS) return;
        level->hero.hearts++;
        sounds_play(SOUND_HEART);
        break;
    case THING_KEY:
        level->hero.has_key = true;
        sounds_play(SOUND_KEY);
        particles_burst(&level->particles, &PARTICLES_SPARKS, middle, 14);
        break;
    case THING_DOOR:
        if (!level->hero.has_key) return;
        level->hero.has_key = false;
        sounds_play(SOUND_DOOR);
        view_shake(&level->view, 3);
        particles_burst(&level->particles, &PARTICLES_DUST, {middle.x, middle.y - 10}, 24);
        break;
    case THING_CHECKPOINT: // only one is lit at a time
        if (level->checkpoint >= 0) level->things.items[level->checkpoint].done = false;
        level->checkpoint = index;
        thing->done = true;
        level->hero.hearts = SDL_max(level->hero.hearts, HERO_HEARTS - 1);
        sounds_play(SOUND_CHECKPOINT);
        particles_burst(&level->particles, &PARTICLES_FLAME, {thing->feet.x, thing->feet.y - 22}, 20);
        level_save_run(level);
        return;
    default:
        if (level->hero.body.grounded) level_win(level);
        return;
    }
    thing->done = true;
}

static void level_step_death(Level *level, double dt) {
    animation_advance(&level->hero.anim, dt);
    if (level->phase_time < DEATH_SECONDS) return;
    level->deaths++;
    level_back_to_checkpoint(level);
}

// Updates the respawn position after hazards: on the map's floor (no platform), away from hazards.
static void level_update_safe_position(Level *level) {
    Hero *hero = &level->hero;
    if (hero->ground_time < 0.2 || hero->state == HERO_HURT) return;
    const SDL_FPoint feet = hero->body.pos;
    const SDL_FRect under = {feet.x - 6, feet.y, 12, 3},
                    around = {feet.x - HAZARD_MARGIN, feet.y - 30, 2 * HAZARD_MARGIN, 80};
    const int on = colliders_rect_inside_rect(&under, &level->solids);
    if (on >= 0 && on < level->map_solids && colliders_rect_inside_rect(&around, &level->hazards) < 0)
        hero->safe_position = feet;
}

static void level_hero_events(Level *level, unsigned events) {
    const Hero *hero = &level->hero;
    const float back = static_cast<float>(-40 * hero->body.facing);
    if (events & HERO_JUMPED) sounds_play(SOUND_JUMP);
    if (events & HERO_LANDED) sounds_play(SOUND_LAND);
    if (events & HERO_ROLLED) sounds_play(SOUND_ROLL);
    if (events & HERO_SWUNG) sounds_play(SOUND_SWING);
    if (events & HERO_FLAMED) sounds_play(SOUND_FLAME);
    if (events & (HERO_LANDED | HERO_JUMPED)) particles_burst(&level->particles, &PARTICLES_DUST, hero->body.pos, 7);
    if (events & HERO_ROLLED) particles_burst(&level->particles, &PARTICLES_DUST, hero->body.pos, 9, {back, 0});
    if (hero->state == HERO_SPECIAL && hero->state_time > 0.33) view_shake(&level->view, 2);
}

// Stores the positions before the step, for interpolation; also during a hit stop, when nothing moves.
static void level_store_positions(Level *level) {
    level->hero.body.prev_pos = level->hero.body.pos;
    for (int i = 0; i < level->enemies.count; i++)
        level->enemies.items[i].body.prev_pos = level->enemies.items[i].body.pos;
    for (Fireball &fireball : level->enemies.fireballs) fireball.prev_pos = fireball.pos;
    for (int i = 0; i < level->things.platform_count; i++) {
        Platform *platform = &level->things.platforms[i];
        platform->prev = {platform->box.x, platform->box.y};
    }
}

void level_step(Level *level, const HeroIntent &intent, double dt) {
    Hero *hero = &level->hero;
    level_store_positions(level);
    hero_buffer_presses(hero, intent);
    view_step(&level->view, intent.move_x, dt);
    particles_step(&level->particles, dt);
    level->phase_time += dt;
    if (level->hit_stop > 0) {
        level->hit_stop -= dt;
        return;
    }
    art_advance(&level->art, dt);
    if (level->phase == LEVEL_DEAD) level_step_death(level, dt);
    if (level->phase == LEVEL_WON) animation_advance(&hero->anim, dt);
    if (level->phase != LEVEL_PLAYING) return;

    level->time += dt;
    platforms_step(&level->things, hero, &level->solids, level->map_solids, dt);
    level_hero_events(level, hero_step(hero, &level->art, intent, &level->solids, dt));
    level_update_safe_position(level);
    const unsigned events = enemies_step(&level->enemies, &level->art, hero, &level->solids, dt);
    if (events & ENEMY_HOPPED) sounds_play(SOUND_HOP);
    if (events & ENEMY_SPAT) sounds_play(SOUND_SPIT);
    combat_step(level);
    const SDL_FRect box = player_body_rect(&hero->body);
    for (int i = things_at(&level->things, &box, 0); i >= 0; i = things_at(&level->things, &box, i + 1))
        level_touch(level, i);
    things_add_solids(&level->things, &level->solids, level->map_solids); // cannot fail: the capacity suffices
    ghost_record(&level->ghost, hero->body.pos, hero->body.facing, &hero->anim, dt);
}

Uint64 level_hash(const Level *level) {
    const Hero &hero = level->hero;
    Uint64 hash = state_hash_of(
        STATE_HASH_START, hero.body.pos.x, hero.body.pos.y, hero.body.vel.x, hero.body.vel.y, hero.state, hero.hearts,
        hero.flames, hero.has_key, level->phase, level->time, level->embers, level->deaths, level->checkpoint);
    for (int i = 0; i < level->enemies.count; i++) {
        const Enemy &enemy = level->enemies.items[i];
        hash = state_hash_of(hash, enemy.body.pos.x, enemy.body.pos.y, enemy.state, enemy.state_time, enemy.hits);
    }
    for (const Fireball &fireball : level->enemies.fireballs) hash = state_hash_of(hash, fireball.pos.x, fireball.life);
    for (int i = 0; i < level->things.platform_count; i++) hash = state_hash_add(hash, level->things.platforms[i].time);
    return hash;
}
