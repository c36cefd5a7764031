#include "enemies.h"

struct KindRow {
    const char *type = ""; // of the map objects
    float w = 0, h = 0;    // px
    int hits = 1;
    float speed = 0, sight = 0;              // px/s, px
    double idle = 0, windup = 0, attack = 0; // s
    int idle_clip = 0, windup_clip = 0, attack_clip = 0, hit_clip = 0;
};
static constexpr KindRow KINDS[] = {
    {.type = "walker",
     .w = 16,
     .h = 34,
     .hits = 2,
     .speed = 42,
     .idle_clip = CLIP_WALKER,
     .windup_clip = CLIP_WALKER,
     .attack_clip = CLIP_WALKER,
     .hit_clip = CLIP_WALKER_HIT},
    {.type = "hopper",
     .w = 20,
     .h = 18,
     .hits = 2,
     .speed = 105,
     .sight = 170,
     .idle = 0.75,
     .windup = 0.38,
     .attack = 3,
     .idle_clip = CLIP_HOPPER_SIT,
     .windup_clip = CLIP_HOPPER_CROUCH,
     .attack_clip = CLIP_HOPPER_AIR,
     .hit_clip = CLIP_HOPPER_HIT},
    {.type = "watcher",
     .w = 18,
     .h = 34,
     .hits = 2,
     .speed = 125,
     .sight = 180,
     .idle = 1.7,
     .windup = 0.6,
     .attack = 0.3,
     .idle_clip = CLIP_WATCHER,
     .windup_clip = CLIP_WATCHER_CHARGE,
     .attack_clip = CLIP_WATCHER,
     .hit_clip = CLIP_WATCHER_HIT},
};
static_assert(SDL_arraysize(KINDS) == ENEMY_KIND_COUNT, "one row per kind");

static constexpr float GRAVITY = 900, FALL_MAX = 420, HOP = 300; // px/s², px/s
static constexpr float MOUTH_X = 11, MOUTH_Y = -25;              // of a watcher, relative to its feet
static constexpr double FIREBALL_LIFE = 3, FLASH = 0.14;         // s

static void enemy_set_state(Enemy *enemy, const Art *art, EnemyState state) {
    const KindRow &row = KINDS[enemy->kind];
    const int clip = state == ENEMY_IDLE ? row.idle_clip : state == ENEMY_WINDUP ? row.windup_clip : row.attack_clip;
    enemy->state = state;
    enemy->state_time = 0;
    enemy->anim = art_thing(art, clip);
}

static void enemy_place(Enemy *enemy, const Art *art) {
    const KindRow &row = KINDS[enemy->kind];
    player_body_init(&enemy->body, enemy->home, row.w, row.h);
    enemy->body.prev_pos = enemy->home;
    enemy->body.facing = enemy->home_facing;
    enemy->hits = row.hits;
    enemy->last_swing = -1;
    enemy->flash = 0;
    enemy->alive = true;
    enemy_set_state(enemy, art, ENEMY_IDLE);
}

bool enemies_add(Enemies *enemies, const Art *art, const char *type, SDL_FPoint feet, int facing) {
    for (int kind = 0; kind < ENEMY_KIND_COUNT && enemies->count < ENEMIES_MAX; kind++) {
        if (SDL_strcmp(KINDS[kind].type, type) != 0) continue;
        Enemy *enemy = &enemies->items[enemies->count++];
        *enemy = {};
        enemy->kind = static_cast<EnemyKind>(kind);
        enemy->home = feet;
        enemy->home_facing = facing < 0 ? -1 : 1;
        enemy_place(enemy, art);
        return true;
    }
    return false;
}

void enemies_revive(Enemies *enemies, const Art *art) {
    for (int i = 0; i < enemies->count; i++) enemy_place(&enemies->items[i], art);
    for (Fireball &fireball : enemies->fireballs) fireball.life = 0;
}

// --- step functions per kind; movement is shared ---

static void enemy_move(Enemy *enemy, const ColliderRects *solids, double dt) {
    PlayerBody *body = &enemy->body;
    body->vel.y = SDL_min(body->vel.y + GRAVITY * static_cast<float>(dt), FALL_MAX);
    if (player_body_step(body, dt, solids, nullptr)) body->vel.x = 0;
}

// Turns round at walls and ledges.
static void walker_step(Enemy *enemy, const ColliderRects *solids) {
    PlayerBody *body = &enemy->body;
    const float direction = static_cast<float>(body->facing);
    const SDL_FRect floor = {body->pos.x + direction * 12 - 2, body->pos.y, 4, 4};
    const SDL_FRect wall = {body->pos.x + direction * 10 - 2, body->pos.y - body->h, 4, body->h - 12};
    if (body->grounded &&
        (colliders_rect_inside_rect(&floor, solids) < 0 || colliders_rect_inside_rect(&wall, solids) >= 0))
        body->facing = -body->facing;
    body->vel.x = KINDS[ENEMY_WALKER].speed * static_cast<float>(body->facing);
}

static unsigned hopper_step(Enemy *enemy, const Art *art, const Hero *hero, bool sees) {
    const KindRow &row = KINDS[ENEMY_HOPPER];
    PlayerBody *body = &enemy->body;
    if (enemy->state == ENEMY_IDLE) {
        body->vel.x = 0;
        if (sees) body->facing = hero->body.pos.x < body->pos.x ? -1 : 1;
        if (sees && enemy->state_time > row.idle) enemy_set_state(enemy, art, ENEMY_WINDUP);
    } else if (enemy->state == ENEMY_WINDUP && enemy->state_time > row.windup) {
        enemy_set_state(enemy, art, ENEMY_ATTACKING);
        body->vel = {row.speed * static_cast<float>(body->facing), -HOP};
        return ENEMY_HOPPED;
    } else if (enemy->state == ENEMY_ATTACKING && body->grounded && enemy->state_time > 0.1) {
        enemy_set_state(enemy, art, ENEMY_IDLE);
    }
    return 0;
}

static void enemies_spawn_fireball(Enemies *enemies, const Enemy *from, const Hero *hero) {
    const SDL_FPoint mouth = {
        from->body.pos.x + MOUTH_X * static_cast<float>(from->body.facing), from->body.pos.y + MOUTH_Y};
    const float dx = hero->body.pos.x - mouth.x, dy = hero->body.pos.y - hero->body.h / 2 - mouth.y;
    const float distance = SDL_max(SDL_sqrtf(dx * dx + dy * dy), 1), speed = KINDS[ENEMY_WATCHER].speed;
    for (Fireball &fireball : enemies->fireballs) {
        if (fireball.life > 0) continue;
        fireball = {mouth, mouth, {dx / distance * speed, dy / distance * speed}, FIREBALL_LIFE};
        return;
    }
}

static unsigned watcher_step(Enemies *enemies, Enemy *enemy, const Art *art, const Hero *hero, bool sees) {
    const KindRow &row = KINDS[ENEMY_WATCHER];
    if (sees && enemy->state == ENEMY_IDLE) enemy->body.facing = hero->body.pos.x < enemy->body.pos.x ? -1 : 1;
    if (enemy->state == ENEMY_IDLE && sees && enemy->state_time > row.idle) {
        enemy_set_state(enemy, art, ENEMY_WINDUP);
    } else if (enemy->state == ENEMY_WINDUP && enemy->state_time > row.windup) {
        enemies_spawn_fireball(enemies, enemy, hero);
        enemy_set_state(enemy, art, ENEMY_ATTACKING);
        return ENEMY_SPAT;
    } else if (enemy->state == ENEMY_ATTACKING && enemy->state_time > row.attack) {
        enemy_set_state(enemy, art, ENEMY_IDLE);
    }
    return 0;
}

static void fireball_step(Fireball *fireball, const ColliderRects *solids, double dt) {
    if (fireball->life <= 0) return;
    fireball->pos.x += fireball->vel.x * static_cast<float>(dt);
    fireball->pos.y += fireball->vel.y * static_cast<float>(dt);
    fireball->life -= dt;
    if (colliders_point_inside_rect(&fireball->pos, solids) >= 0) fireball->life = 0;
}

unsigned enemies_step(Enemies *enemies, const Art *art, const Hero *hero, const ColliderRects *solids, double dt) {
    unsigned events = 0;
    for (int i = 0; i < enemies->count; i++) {
        Enemy *enemy = &enemies->items[i];
        if (!enemy->alive) continue;
        const float dx = SDL_fabsf(hero->body.pos.x - enemy->body.pos.x), dy = hero->body.pos.y - enemy->body.pos.y;
        const bool sees = hero->state != HERO_DEAD && dx < KINDS[enemy->kind].sight && SDL_fabsf(dy) < 90;
        enemy->state_time += dt;
        enemy->flash = SDL_max(enemy->flash - dt, 0);
        if (enemy->kind == ENEMY_WALKER && enemy->flash <= 0) walker_step(enemy, solids);
        if (enemy->kind == ENEMY_HOPPER) events |= hopper_step(enemy, art, hero, sees);
        if (enemy->kind == ENEMY_WATCHER) events |= watcher_step(enemies, enemy, art, hero, sees);
        enemy_move(enemy, solids, dt);
        animation_advance(&enemy->anim, dt);
    }
    for (Fireball &fireball : enemies->fireballs) fireball_step(&fireball, solids, dt);
    return events;
}

bool enemy_strike(Enemy *enemy, int swing, int strength, float from_x) {
    if (!enemy->alive || enemy->last_swing == swing) return false;
    enemy->last_swing = swing;
    enemy->hits -= strength;
    enemy->flash = FLASH;
    enemy->alive = enemy->hits > 0;
    if (enemy->kind == ENEMY_WALKER) enemy->body.vel = {from_x < enemy->body.pos.x ? 90.0f : -90.0f, -110};
    return true;
}

const Animation *enemy_animation(const Enemy *enemy, const Art *art) {
    return enemy->flash > 0 ? &art->clips[KINDS[enemy->kind].hit_clip] : &enemy->anim;
}

SDL_FRect enemy_box(const Enemy *enemy) { return player_body_rect(&enemy->body); }

SDL_FRect fireball_box(const Fireball *fireball) { return {fireball->pos.x - 4, fireball->pos.y - 4, 8, 8}; }
