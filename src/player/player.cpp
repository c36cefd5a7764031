#include "player/player.h"

#include "lumarind/core/error.h"
#include "player/fireknight.h"

#include <iterator>

// --- tuning ---

// body, px
static constexpr float BODY_W = 20;
static constexpr float BODY_H = 40;

// walking, on the ground and in the air
static constexpr float WALK_SPEED = 250; // px/s

// jumping and falling
static constexpr float JUMP_VELOCITY = -275;     // px/s
static constexpr double GRAVITY = 400;           // px/s²
static constexpr double FALL_SPEED_MAX = 600;    // px/s
static constexpr double COYOTE_TIME = 0.1;       // s
static constexpr double JUMP_BUFFER_TIME = 0.12; // s

// rolling
static constexpr float ROLL_SPEED = 300; // px/s
static constexpr double ROLL_TIME = 0.8; // s

// attacking: time before another move may cancel an attack, s
static constexpr double ATTACK_CANCEL_AFTER = 0.25;
static constexpr double HEAVY_ATTACK_CANCEL_AFTER = 0.35;

static constexpr Sint32 STARTING_HEALTH = 3;

// --- state table ---

struct PlayerStateRow {
    const char *name = "NONE";
    int clip = 0;
    void (*enter)(Player *player) = nullptr;
    PlayerState (*update)(Player *player, const PlayerIntent *intent, double dt) = nullptr; // returns the next state
    double cancel_after = 0;                                                                // s
};
extern const PlayerStateRow player_states[PLAYER_STATE_COUNT]; // defined below its functions

static constexpr PlayerState player_attack_states[] = {PLAYER_STATE_ATK1, PLAYER_STATE_ATK2, PLAYER_STATE_ATK3};

static bool _player_is_state(PlayerState state) { return state > PLAYER_STATE_NONE && state < PLAYER_STATE_COUNT; }

// --- shared by states ---

static bool player_jump_ready(const Player *player) { return player->jump_buffer > 0 && player->coyote > 0; }

static void player_walk(Player *player, const PlayerIntent *intent, float speed) {
    player->body.vel.x = intent->move_x * speed;
    if (intent->move_x > 0) player->body.facing = 1;
    if (intent->move_x < 0) player->body.facing = -1;
}

static PlayerState player_grounded_state(const PlayerIntent *intent) {
    return intent->move_x != 0 ? PLAYER_STATE_RUN : PLAYER_STATE_IDLE;
}

static PlayerState player_combat_state(const Player *player, const PlayerIntent *intent) {
    if (!player->body.grounded) {
        return intent->attack != 0 || intent->special ? PLAYER_STATE_AIRAT : PLAYER_STATE_NONE;
    }
    if (intent->special) return PLAYER_STATE_SPATK;
    if (intent->attack >= 1 && intent->attack <= static_cast<Sint32>(std::size(player_attack_states))) {
        return player_attack_states[intent->attack - 1];
    }
    return intent->defend ? PLAYER_STATE_DEFND : PLAYER_STATE_NONE;
}

// Moves that cancel an attack. To run, the direction must change: one held since before the attack does not count.
static PlayerState player_cancel_state(const Player *player, const PlayerIntent *intent) {
    if (player->state_time < player_states[player->state].cancel_after) return PLAYER_STATE_NONE;
    if (player_jump_ready(player)) return PLAYER_STATE_JUMP;
    if (intent->roll) return PLAYER_STATE_ROLL;
    const bool turned = intent->move_x != 0 && intent->move_x != player->last_move_x;
    return turned ? PLAYER_STATE_RUN : PLAYER_STATE_NONE;
}

// Transitions that apply in every state: taking a hit, dying.
static PlayerState player_interrupt(Player *player, const PlayerIntent *intent) {
    if (!intent->hurt || player->state == PLAYER_STATE_HURT || player->state == PLAYER_STATE_DEATH) {
        return PLAYER_STATE_NONE;
    }
    player->health--;
    return player->health < 1 ? PLAYER_STATE_DEATH : PLAYER_STATE_HURT;
}

// The state after a move that ends by itself.
static PlayerState _player_resting_state(const Player *player, const PlayerIntent *intent) {
    return player->body.grounded ? player_grounded_state(intent) : PLAYER_STATE_FALL;
}

// --- entering ---

static void player_jump_enter(Player *player) {
    player->body.vel.y = JUMP_VELOCITY;
    player->jump_buffer = 0; // a press causes only one jump
    player->coyote = 0;
}

static void player_roll_enter(Player *player) {
    player->body.vel.x = ROLL_SPEED * static_cast<float>(player->body.facing);
}

static void player_rooted_enter(Player *player) { player->body.vel.x = 0; }

// --- updating: the first matching transition wins ---

// Idle and running differ only in whether the direction input is zero.
static PlayerState _player_ground_update(Player *player, const PlayerIntent *intent) {
    player_walk(player, intent, WALK_SPEED);
    if (player_jump_ready(player)) return PLAYER_STATE_JUMP;
    if (!player->body.grounded) return PLAYER_STATE_FALL;
    if (const PlayerState combat = player_combat_state(player, intent)) return combat;
    return intent->roll ? PLAYER_STATE_ROLL : player_grounded_state(intent);
}

static PlayerState player_idle_update(Player *player, const PlayerIntent *intent, double) {
    return _player_ground_update(player, intent);
}

static PlayerState player_run_update(Player *player, const PlayerIntent *intent, double) {
    return _player_ground_update(player, intent);
}

static PlayerState player_jump_update(Player *player, const PlayerIntent *intent, double) {
    player_walk(player, intent, WALK_SPEED);
    if (const PlayerState combat = player_combat_state(player, intent)) return combat;
    return player->body.vel.y >= 0 ? PLAYER_STATE_FALL : PLAYER_STATE_NONE;
}

static PlayerState player_fall_update(Player *player, const PlayerIntent *intent, double) {
    player_walk(player, intent, WALK_SPEED);
    if (player_jump_ready(player)) return PLAYER_STATE_JUMP;
    if (const PlayerState combat = player_combat_state(player, intent)) return combat;
    return player->body.grounded ? player_grounded_state(intent) : PLAYER_STATE_NONE;
}

static PlayerState player_roll_update(Player *player, const PlayerIntent *intent, double) {
    return player->state_time < ROLL_TIME ? PLAYER_STATE_NONE : _player_resting_state(player, intent);
}

// Stays until the clip has finished.
static PlayerState player_rooted_update(Player *player, const PlayerIntent *intent, double) {
    return player->anim.finished ? _player_resting_state(player, intent) : PLAYER_STATE_NONE;
}

static PlayerState player_attack_update(Player *player, const PlayerIntent *intent, double dt) {
    const PlayerState cancel = player_cancel_state(player, intent);
    if (cancel == PLAYER_STATE_NONE) return player_rooted_update(player, intent, dt);
    player_walk(player, intent, WALK_SPEED);
    return cancel;
}

static PlayerState player_air_attack_update(Player *player, const PlayerIntent *intent, double) {
    player_walk(player, intent, WALK_SPEED);
    if (player->body.grounded) return player_grounded_state(intent);
    return player->anim.finished ? PLAYER_STATE_FALL : PLAYER_STATE_NONE;
}

static PlayerState player_defend_update(Player *player, const PlayerIntent *intent, double) {
    if (!player->body.grounded) return PLAYER_STATE_FALL;
    return intent->defend ? PLAYER_STATE_NONE : player_grounded_state(intent);
}

static PlayerState player_death_update(Player *, const PlayerIntent *, double) { return PLAYER_STATE_NONE; }

const PlayerStateRow player_states[PLAYER_STATE_COUNT] = {
    {},
    {.name = "IDLE", .clip = FIREKNIGHT_IDLE, .update = player_idle_update},
    {.name = "RUN", .clip = FIREKNIGHT_RUN, .update = player_run_update},
    {.name = "JUMP", .clip = FIREKNIGHT_J_UP, .enter = player_jump_enter, .update = player_jump_update},
    {.name = "FALL", .clip = FIREKNIGHT_J_DOWN, .update = player_fall_update},
    {.name = "ROLL", .clip = FIREKNIGHT_ROLL, .enter = player_roll_enter, .update = player_roll_update},
    {.name = "ATK1",
     .clip = FIREKNIGHT_1_ATK,
     .enter = player_rooted_enter,
     .update = player_attack_update,
     .cancel_after = ATTACK_CANCEL_AFTER},
    {.name = "ATK2",
     .clip = FIREKNIGHT_2_ATK,
     .enter = player_rooted_enter,
     .update = player_attack_update,
     .cancel_after = ATTACK_CANCEL_AFTER},
    {.name = "ATK3",
     .clip = FIREKNIGHT_3_ATK,
     .enter = player_rooted_enter,
     .update = player_attack_update,
     .cancel_after = HEAVY_ATTACK_CANCEL_AFTER},
    {.name = "SPATK",
     .clip = FIREKNIGHT_SP_ATK,
     .enter = player_rooted_enter,
     .update = player_attack_update,
     .cancel_after = ATTACK_CANCEL_AFTER},
    {.name = "AIRAT", .clip = FIREKNIGHT_AIR_ATK, .update = player_air_attack_update},
    {.name = "DEFND", .clip = FIREKNIGHT_DEFEND, .enter = player_rooted_enter, .update = player_defend_update},
    {.name = "HURT", .clip = FIREKNIGHT_TAKE_HIT, .enter = player_rooted_enter, .update = player_rooted_update},
    {.name = "DEATH", .clip = FIREKNIGHT_DEATH, .enter = player_rooted_enter, .update = player_death_update},
};

// --- the player ---

void player_init(Player *player, SDL_FPoint spawn, const ColliderRects *rects, const ColliderTris *tris) {
    *player = {};
    player_body_init(&player->body, spawn, BODY_W, BODY_H);
    animation_init(&player->anim, &fireknight_animations, FIREKNIGHT_IDLE);
    player->health = STARTING_HEALTH;
    player_body_update_ground(&player->body, rects, tris);
    player_set_state(player, PLAYER_STATE_IDLE);
}

void player_set_state(Player *player, PlayerState next) {
    if (next == PLAYER_STATE_NONE || next == player->state) return;
    if (!_player_is_state(next)) {
        engine_error("[PLAYER] Invalid state %d", next);
        return;
    }
    const PlayerStateRow *row = &player_states[next];
    player->prev_state = player->state;
    player->state = next;
    player->state_time = 0;
    animation_select_clip(&player->anim, row->clip);
    animation_play(&player->anim);
    if (row->enter) row->enter(player);
    player->history[player->history_count % PLAYER_HISTORY_SIZE] = next;
    player->history_count++;
}

const char *player_state_name(PlayerState state) {
    return player_states[_player_is_state(state) ? state : PLAYER_STATE_NONE].name;
}

// --- fixed step ---

static void _player_run_timers(Player *player, const PlayerIntent *intent, double dt) {
    player->state_time += dt;
    player->coyote = player->body.grounded ? COYOTE_TIME : SDL_max(player->coyote - dt, 0);
    player->jump_buffer = intent->jump ? JUMP_BUFFER_TIME : SDL_max(player->jump_buffer - dt, 0);
}

static void _player_choose_state(Player *player, const PlayerIntent *intent, double dt) {
    PlayerState next = player_interrupt(player, intent);
    if (next == PLAYER_STATE_NONE && _player_is_state(player->state)) {
        next = player_states[player->state].update(player, intent, dt);
    }
    player_set_state(player, next);
}

// Also applied on the ground, where the floor or slope resets the speed.
static void _player_fall(PlayerBody *body, double dt) {
    body->vel.y = static_cast<float>(SDL_min(body->vel.y + GRAVITY * dt, FALL_SPEED_MAX));
}

void player_fixed_update(
    Player *player, const PlayerIntent *intent, const ColliderRects *rects, const ColliderTris *tris, double dt) {
    player->body.prev_pos = player->body.pos;
    _player_run_timers(player, intent, dt);
    _player_choose_state(player, intent, dt);
    _player_fall(&player->body, dt);
    player_body_step(&player->body, dt, rects, tris);
    animation_advance(&player->anim, dt);
    player->last_move_x = intent->move_x;
}
