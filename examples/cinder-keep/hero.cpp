#include "hero.h"

#include <initializer_list>

// --- tuning ---

static constexpr float BODY_W = 16, BODY_H = 36;                         // px
static constexpr float RUN = 150, RUN_ACCEL = 1500, AIR_ACCEL = 1100;    // px/s, px/s²
static constexpr float JUMP = 374, GRAVITY = 1000, FALL_MAX = 430;       // a jump is 70 px high, over four tiles
static constexpr float JUMP_CUT = 130;                                   // px/s upwards after an early release
static constexpr double COYOTE = 0.09, INPUT_BUFFER = 0.13;              // s
static constexpr float ROLL = 235;                                       // px/s
static constexpr double ROLL_TIME = 0.42, ROLL_AGAIN = 0.55;             // s
static constexpr float HURT_X = 130, HURT_Y = -190;                      // px/s
static constexpr double HURT_TIME = 0.35, INVULNERABLE_AFTER_HURT = 1.3; // s
static constexpr double STRIKE_CANCEL = 0.24;                            // s until another move may cancel it

// Clip, playback rate and hit box of each state.
struct StateRow {
    int clip = 0;
    double speed = 1;
    double active_from = 0, active_to = 0; // s, active time of the hit box
    SDL_FRect hit_box = {};                // relative to the feet, facing right
};
static constexpr StateRow ROWS[] = {
    {.clip = KNIGHT_IDLE},
    {.clip = KNIGHT_RUN, .speed = 1.25},
    {.clip = KNIGHT_UP},
    {.clip = KNIGHT_ROLL, .speed = 1.9},
    {.clip = KNIGHT_STRIKE, .speed = 2, .active_from = 0.05, .active_to = 0.17, .hit_box = {-8, -48, 56, 46}},
    {.clip = KNIGHT_AIR_STRIKE, .speed = 2, .active_from = 0.05, .active_to = 0.2, .hit_box = {-10, -50, 54, 60}},
    {.clip = KNIGHT_SPECIAL, .speed = 1.8, .active_from = 0.33, .active_to = 0.75, .hit_box = {-104, -64, 208, 66}},
    {.clip = KNIGHT_HURT, .speed = 1.7},
    {.clip = KNIGHT_DEATH},
};
static_assert(SDL_arraysize(ROWS) == HERO_STATE_COUNT, "one row per state");

static void hero_enter(Hero *hero, const Art *art, HeroState state) {
    hero->state = state;
    hero->state_time = 0;
    hero->anim = art_knight(art, ROWS[state].clip);
}

void hero_place(Hero *hero, const Art *art, SDL_FPoint feet) {
    const int facing = hero->body.facing < 0 ? -1 : 1;
    player_body_init(&hero->body, feet, BODY_W, BODY_H);
    hero->body.facing = facing;
    hero->coyote = hero->jump_buffer = hero->attack_buffer = hero->roll_buffer = hero->special_buffer = 0;
    hero->safe_position = feet;
    hero->ground_time = 0;
    hero->invulnerable = 1;
    hero_enter(hero, art, HERO_STAND);
}

void hero_buffer_presses(Hero *hero, const HeroIntent &intent) {
    if (intent.jump) hero->jump_buffer = INPUT_BUFFER;
    if (intent.attack) hero->attack_buffer = INPUT_BUFFER;
    if (intent.roll) hero->roll_buffer = INPUT_BUFFER;
    if (intent.special) hero->special_buffer = INPUT_BUFFER;
}

static void hero_run_timers(Hero *hero, double dt) {
    for (double *left :
         {&hero->jump_buffer, &hero->attack_buffer, &hero->roll_buffer, &hero->special_buffer, &hero->invulnerable})
        *left = SDL_max(*left - dt, 0);
    hero->coyote = hero->body.grounded ? COYOTE : SDL_max(hero->coyote - dt, 0);
    hero->state_time += dt;
}

static void hero_walk(Hero *hero, const HeroIntent &intent, float speed, double dt) {
    const float target = intent.move_x * speed;
    const float change = (hero->body.grounded ? RUN_ACCEL : AIR_ACCEL) * static_cast<float>(dt);
    hero->body.vel.x += SDL_clamp(target - hero->body.vel.x, -change, change);
    if (intent.move_x != 0) hero->body.facing = intent.move_x > 0 ? 1 : -1;
}

// Starts a buffered move, from any state that can be cancelled.
static unsigned hero_begin_move(Hero *hero, const Art *art, const HeroIntent &intent) {
    if (hero->roll_buffer > 0 && hero->body.grounded && hero->state != HERO_ROLL) {
        if (intent.move_x != 0) hero->body.facing = intent.move_x > 0 ? 1 : -1;
        hero->roll_buffer = 0;
        hero_enter(hero, art, HERO_ROLL);
        return HERO_ROLLED;
    }
    if (hero->jump_buffer > 0 && hero->coyote > 0) {
        hero->jump_buffer = hero->coyote = 0;
        hero->body.vel.y = -JUMP;
        hero->jump_cut = false;
        hero_enter(hero, art, HERO_AIR);
        return HERO_JUMPED;
    }
    if (hero->special_buffer > 0 && hero->body.grounded && hero->flames == HERO_FLAMES) {
        hero->special_buffer = 0;
        hero->flames = 0;
        hero->swing++;
        hero_enter(hero, art, HERO_SPECIAL);
        return HERO_FLAMED;
    }
    if (hero->attack_buffer > 0) {
        hero->attack_buffer = 0;
        hero->swing++;
        hero_enter(hero, art, hero->body.grounded ? HERO_STRIKE : HERO_AIR_STRIKE);
        return HERO_SWUNG;
    }
    return 0;
}

static unsigned hero_free_step(Hero *hero, const Art *art, const HeroIntent &intent, double dt) {
    hero_walk(hero, intent, RUN, dt);
    if (const unsigned begun = hero_begin_move(hero, art, intent)) return begun;
    const HeroState rest = !hero->body.grounded ? HERO_AIR : intent.move_x != 0 ? HERO_RUN : HERO_STAND;
    if (rest != hero->state) hero_enter(hero, art, rest);
    return 0;
}

static unsigned hero_update_state(Hero *hero, const Art *art, const HeroIntent &intent, double dt) {
    switch (hero->state) {
    case HERO_ROLL:
        hero->body.vel.x = ROLL * static_cast<float>(hero->body.facing);
        hero->invulnerable = SDL_max(hero->invulnerable, 0.05);
        if (hero->state_time < ROLL_TIME) {
            return hero->jump_buffer > 0 && hero->state_time > ROLL_TIME / 2 ? hero_begin_move(hero, art, intent) : 0;
        }
        hero->roll_buffer = SDL_min(hero->roll_buffer, ROLL_AGAIN - ROLL_TIME);
        return hero_free_step(hero, art, intent, dt);
    case HERO_STRIKE:
        hero_walk(hero, {}, 0, dt);
        if (hero->state_time > STRIKE_CANCEL) {
            if (const unsigned begun = hero_begin_move(hero, art, intent)) return begun;
            if (intent.move_x != 0) return hero_free_step(hero, art, intent, dt);
        }
        return hero->anim.finished ? hero_free_step(hero, art, intent, dt) : 0;
    case HERO_AIR_STRIKE:
        hero_walk(hero, intent, RUN, dt);
        return hero->body.grounded || hero->anim.finished ? hero_free_step(hero, art, intent, dt) : 0;
    case HERO_SPECIAL:
        hero_walk(hero, {}, 0, dt);
        hero->invulnerable = SDL_max(hero->invulnerable, 0.2);
        return hero->anim.finished ? hero_free_step(hero, art, intent, dt) : 0;
    case HERO_HURT:
        return hero->state_time > HURT_TIME ? hero_free_step(hero, art, intent, dt) : 0;
    case HERO_DEAD:
        hero_walk(hero, {}, 0, dt);
        return 0;
    default:
        return hero_free_step(hero, art, intent, dt);
    }
}

unsigned hero_step(Hero *hero, const Art *art, const HeroIntent &intent, const ColliderRects *solids, double dt) {
    PlayerBody *body = &hero->body;
    const bool was_grounded = body->grounded;
    hero_run_timers(hero, dt);
    unsigned events = hero_update_state(hero, art, intent, dt);

    if (!intent.jump_held && !hero->jump_cut && body->vel.y < -JUMP_CUT && hero->state != HERO_HURT) {
        body->vel.y = -JUMP_CUT;
        hero->jump_cut = true;
    }
    body->vel.y = SDL_min(body->vel.y + GRAVITY * static_cast<float>(dt), FALL_MAX);
    if (player_body_step(body, dt, solids, nullptr)) body->vel.x = 0;
    if (body->vel.y < 0) body->grounded = false; // in the step in which a jump starts
    if (body->grounded && !was_grounded) events |= HERO_LANDED;
    hero->ground_time = body->grounded ? hero->ground_time + dt : 0;

    if (hero->state == HERO_AIR) { // the clip follows the direction
        const int clip = body->vel.y < 0 ? KNIGHT_UP : KNIGHT_DOWN;
        if (hero->anim.clip != clip) hero->anim = art_knight(art, clip);
    }
    animation_advance(&hero->anim, dt * ROWS[hero->state].speed);
    return events;
}

bool hero_hurt(Hero *hero, const Art *art, float from_x) {
    if (hero->invulnerable > 0 || hero->state == HERO_DEAD) return false;
    hero->hearts--;
    hero->invulnerable = INVULNERABLE_AFTER_HURT;
    hero->body.vel = {from_x < hero->body.pos.x ? HURT_X : -HURT_X, HURT_Y};
    hero_enter(hero, art, hero->hearts > 0 ? HERO_HURT : HERO_DEAD);
    return true;
}

SDL_FRect hero_hurt_box(const Hero *hero) {
    SDL_FRect box = player_body_rect(&hero->body);
    if (hero->state == HERO_ROLL) { // half as high
        box.y += box.h / 2;
        box.h /= 2;
    }
    return box;
}

bool hero_hit_box(const Hero *hero, SDL_FRect *area) {
    const StateRow &row = ROWS[hero->state];
    if (row.active_to <= 0 || hero->state_time < row.active_from || hero->state_time > row.active_to) return false;
    const float x = hero->body.facing > 0 ? row.hit_box.x : -row.hit_box.x - row.hit_box.w;
    *area = {hero->body.pos.x + x, hero->body.pos.y + row.hit_box.y, row.hit_box.w, row.hit_box.h};
    return true;
}
