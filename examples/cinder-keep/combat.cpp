// combat: damage between hero, enemies and hazards. Hit boxes match the drawn blade and flame; a hit causes a short hit
// stop and a screen shake.

#include "level.h"
#include "sounds.h"

static constexpr double HIT_STOP = 0.05, DEFEAT_STOP = 0.09, HURT_STOP = 0.12; // s
static constexpr float HIT_SHAKE = 2, HURT_SHAKE = 5;                          // px

void level_hurt_hero(Level *level, float from_x) {
    Hero *hero = &level->hero;
    if (!hero_hurt(hero, &level->art, from_x)) return;
    level->hit_stop = HURT_STOP;
    view_shake(&level->view, HURT_SHAKE);
    particles_burst(&level->particles, &PARTICLES_SPARKS, {hero->body.pos.x, hero->body.pos.y - 20}, 16);
    sounds_play(hero->hearts > 0 ? SOUND_HURT : SOUND_DIE);
    if (hero->hearts > 0) return;
    level->phase = LEVEL_DEAD;
    level->phase_time = 0;
}

// Spikes, fire and pits cost a heart and return the hero to a safe position.
static void combat_hazards(Level *level) {
    Hero *hero = &level->hero;
    const SDL_FRect box = player_body_rect(&hero->body);
    const bool below = hero->body.pos.y > static_cast<float>(level->world->rows * level->world->tile_h) + 40;
    if (!below && colliders_rect_inside_rect(&box, &level->hazards) < 0) return;
    hero->invulnerable = 0; // invulnerability does not apply to hazards
    level_hurt_hero(level, hero->body.pos.x + static_cast<float>(hero->body.facing));
    if (level->phase != LEVEL_PLAYING) return;
    const SDL_FPoint place = hero->safe_position;
    hero_place(hero, &level->art, place);
    hero->body.prev_pos = place;
}

static void combat_defeat(Level *level, const Enemy *enemy) {
    const SDL_FPoint middle = {enemy->body.pos.x, enemy->body.pos.y - enemy->body.h / 2};
    particles_burst(&level->particles, &PARTICLES_FLAME, middle, 32);
    if (level->hero.state != HERO_SPECIAL) level->hero.flames = SDL_min(level->hero.flames + 1, HERO_FLAMES);
    level->hit_stop = DEFEAT_STOP;
    sounds_play(SOUND_DEFEATED);
}

static void combat_strike(Level *level, const SDL_FRect *hit_box) {
    Hero *hero = &level->hero;
    for (int i = 0; i < level->enemies.count; i++) {
        Enemy *enemy = &level->enemies.items[i];
        const SDL_FRect box = enemy_box(enemy);
        if (!rect_intersect_rect(&box, hit_box)) continue;
        const int strength = hero->state == HERO_SPECIAL ? 2 : 1;
        if (!enemy_strike(enemy, hero->swing, strength, hero->body.pos.x)) continue;
        level->hit_stop = HIT_STOP;
        view_shake(&level->view, HIT_SHAKE);
        particles_burst(&level->particles, &PARTICLES_SPARKS, {box.x + box.w / 2, box.y + box.h / 2}, 10);
        if (enemy->alive) {
            sounds_play(SOUND_HIT);
        } else {
            combat_defeat(level, enemy);
        }
    }
    for (Fireball &fireball : level->enemies.fireballs) {
        const SDL_FRect box = fireball_box(&fireball);
        if (fireball.life <= 0 || !rect_intersect_rect(&box, hit_box)) continue;
        fireball.life = 0;
        particles_burst(&level->particles, &PARTICLES_FLAME, fireball.pos, 10);
        sounds_play(SOUND_HIT);
    }
}

static void combat_touch(Level *level) {
    const SDL_FRect hero = hero_hurt_box(&level->hero);
    for (int i = 0; i < level->enemies.count; i++) {
        const Enemy *enemy = &level->enemies.items[i];
        const SDL_FRect box = enemy_box(enemy);
        if (enemy->alive && enemy->flash <= 0 && rect_intersect_rect(&box, &hero))
            level_hurt_hero(level, enemy->body.pos.x);
    }
    for (Fireball &fireball : level->enemies.fireballs) {
        const SDL_FRect box = fireball_box(&fireball);
        if (fireball.life <= 0 || level->hero.invulnerable > 0 || !rect_intersect_rect(&box, &hero)) continue;
        fireball.life = 0;
        level_hurt_hero(level, fireball.pos.x - fireball.vel.x);
    }
}

void combat_step(Level *level) {
    SDL_FRect hit_box = {};
    if (hero_hit_box(&level->hero, &hit_box)) combat_strike(level, &hit_box);
    combat_touch(level);
    if (level->phase == LEVEL_PLAYING) combat_hazards(level);
}
