// player: the platformer's character, a state machine over a body and the fire knight's animation. Once a fixed step it
// takes what the controls ask for, picks the next state, falls, moves and advances its clip.
#pragma once

#include "lumarind/player/player_body.h"
#include "lumarind/toolkit/animation.h"

enum PlayerState : Sint32 {
    PLAYER_STATE_NONE, // as a state's answer: stay
    PLAYER_STATE_IDLE,
    PLAYER_STATE_RUN,
    PLAYER_STATE_JUMP,
    PLAYER_STATE_FALL,
    PLAYER_STATE_ROLL,
    PLAYER_STATE_ATK1,
    PLAYER_STATE_ATK2,
    PLAYER_STATE_ATK3,
    PLAYER_STATE_SPATK,
    PLAYER_STATE_AIRAT,
    PLAYER_STATE_DEFND,
    PLAYER_STATE_HURT,
    PLAYER_STATE_DEATH, // only player_init leaves it
    PLAYER_STATE_COUNT,
};

inline constexpr int PLAYER_HISTORY_SIZE = 8;

// What the controls ask for in one fixed step.
struct PlayerIntent {
    float move_x = 0;  // -1 left to 1 right; scales the walking speed
    bool jump = false; // pressed in this step, as are the next three
    bool roll = false;
    Sint32 attack = 0; // 0: none, 1 to 3: that attack on the ground; any but 0 is the one attack in the air
    bool special = false;
    bool defend = false; // held
    bool hurt = false;   // takes a hit in this step
};

struct Player {
    PlayerBody body; // first: a player's address is its body's
    Animation anim;
    PlayerState state, prev_state;
    double state_time;                   // s since it was entered
    Sint32 health;                       // hits until it dies
    double coyote;                       // s left in which a jump still counts as from the ground
    double jump_buffer;                  // s left in which a press of jump is remembered
    float last_move_x;                   // of the previous step's intent
    Sint32 history[PLAYER_HISTORY_SIZE]; // the states entered last, a ring
    Sint32 history_count;                // all entered so far; the newest is at (history_count - 1) % its size
};

void player_init(Player *player, SDL_FPoint spawn, const ColliderRects *rects, const ColliderTris *tris); // spawn: feet
void player_fixed_update(
    Player *player, const PlayerIntent *intent, const ColliderRects *rects, const ColliderTris *tris,
    double dt); // seconds

// Enters a state and starts its clip; its own state and PLAYER_STATE_NONE change nothing, nor does a wrong number,
// which is reported.
void player_set_state(Player *player, PlayerState next);

const char *player_state_name(PlayerState state); // "NONE" for a wrong number
