// player: the platformer's character: a state machine over a body and the fire knight's animation. Each fixed step
// reads the intent, chooses the next state, applies gravity, moves the body and advances the clip.
#pragma once

#include "lumarind/player/player_body.h"
#include "lumarind/toolkit/animation.h"

enum PlayerState : Sint32 {
    PLAYER_STATE_NONE, // returned by a state's update for no transition
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

// Input to the player in one fixed step.
struct PlayerIntent {
    float move_x = 0;  // -1 left to 1 right; scales the walking speed
    bool jump = false; // edge-triggered, as are the next three
    bool roll = false;
    Sint32 attack = 0; // 0: none, 1 to 3: that attack on the ground; any of them is the air attack in the air
    bool special = false;
    bool defend = false; // held
    bool hurt = false;   // takes a hit in this step
};

struct Player {
    PlayerBody body; // first: a player's address is its body's
    Animation anim;
    PlayerState state, prev_state;
    double state_time;                   // s since the state was entered
    Sint32 health;                       // hits left
    double coyote;                       // s left in which the player may still jump after leaving the ground
    double jump_buffer;                  // s left in which a buffered jump press is valid
    float last_move_x;                   // move_x of the previous step's intent
    Sint32 history[PLAYER_HISTORY_SIZE]; // ring buffer of the states entered last
    Sint32 history_count;                // states entered in total; the newest is at (history_count - 1) % size
};

void player_init(Player *player, SDL_FPoint spawn, const ColliderRects *rects, const ColliderTris *tris); // spawn: feet
void player_fixed_update(
    Player *player, const PlayerIntent *intent, const ColliderRects *rects, const ColliderTris *tris,
    double dt); // seconds

// Enters a state and starts its clip. The current state and PLAYER_STATE_NONE are ignored; an invalid state is reported
// and ignored.
void player_set_state(Player *player, PlayerState next);

const char *player_state_name(PlayerState state); // "NONE" for an invalid state
