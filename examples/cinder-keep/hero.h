// hero: the player character, a state machine. Each fixed step reads the intent, selects the state, moves the body and
// advances the clip.
#pragma once

#include "art.h"
#include "lumarind/player/player_body.h"

enum HeroState {
    HERO_STAND,
    HERO_RUN,
    HERO_AIR,
    HERO_ROLL,
    HERO_STRIKE,
    HERO_AIR_STRIKE,
    HERO_SPECIAL,
    HERO_HURT,
    HERO_DEAD,
    HERO_STATE_COUNT,
};

inline constexpr int HERO_HEARTS = 4, HERO_FLAMES = 3; // maximum

// Input to the hero in one step.
struct HeroIntent {
    float move_x = 0;                                                 // -1, 0 or 1
    bool jump = false, roll = false, attack = false, special = false; // edge-triggered
    bool jump_held = false;
};

struct Hero {
    PlayerBody body;
    Animation anim;
    HeroState state;
    double state_time;                                                      // s
    double coyote, jump_buffer, attack_buffer, roll_buffer, special_buffer; // s left; *_buffer: of a buffered press
    double invulnerable;                                                    // s left of invulnerability
    double ground_time;                                                     // s on the ground
    SDL_FPoint safe_position;                                               // respawn position after hazards
    int hearts, flames;
    int swing;              // counts attacks, so that each hits an enemy once
    bool has_key, jump_cut; // jump_cut: the jump button was released early
};

// Events of a step, for sounds and particles; bit flags.
enum HeroEvent { HERO_JUMPED = 1, HERO_LANDED = 2, HERO_ROLLED = 4, HERO_SWUNG = 8, HERO_FLAMED = 16 };

void hero_place(Hero *hero, const Art *art, SDL_FPoint feet);   // at rest; keeps hearts and key
void hero_buffer_presses(Hero *hero, const HeroIntent &intent); // also during a hit stop
unsigned hero_step(Hero *hero, const Art *art, const HeroIntent &intent, const ColliderRects *solids, double dt);
bool hero_hurt(Hero *hero, const Art *art, float from_x); // takes a heart; false if invulnerable
SDL_FRect hero_hurt_box(const Hero *hero);
bool hero_hit_box(const Hero *hero, SDL_FRect *area); // hit box of the current attack; false if there is none
