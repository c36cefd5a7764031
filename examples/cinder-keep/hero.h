// hero: the knight. Once a step he takes what the controls ask for, picks his state, moves and advances his clip.
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

inline constexpr int HERO_HEARTS = 4, HERO_FLAMES = 3; // at most

// What the controls ask for in one step.
struct HeroIntent {
    float move_x = 0;                                                 // -1, 0 or 1
    bool jump = false, roll = false, attack = false, special = false; // pressed
    bool jump_held = false;
};

struct Hero {
    PlayerBody body;
    Animation anim;
    HeroState state;
    double state_time;                                              // s
    double coyote, jump_wish, attack_wish, roll_wish, special_wish; // s left in which they count
    double safe;                                                    // s in which nothing hurts him
    double firm;                                                    // s on firm ground
    SDL_FPoint firm_place;                                          // where he stood last, out of reach of what hurts
    int hearts, flames;
    int swing;         // counts attacks, so that each hits a foe once
    bool has_key, cut; // cut: the jump was let go
};

// What happened to him in a step, for sounds and particles; or-ed.
enum HeroEvent { HERO_JUMPED = 1, HERO_LANDED = 2, HERO_ROLLED = 4, HERO_SWUNG = 8, HERO_FLAMED = 16 };

void hero_place(Hero *hero, const Art *art, SDL_FPoint feet); // at rest; hearts and what he carries stay
void hero_want(Hero *hero, const HeroIntent &intent);         // remembers presses; also while the game holds its breath
unsigned hero_step(Hero *hero, const Art *art, const HeroIntent &intent, const ColliderRects *solids, double dt);
bool hero_hurt(Hero *hero, const Art *art, float from_x); // takes a heart, if anything can hurt him now
SDL_FRect hero_box(const Hero *hero);                     // what can be hit
bool hero_reach(const Hero *hero, SDL_FRect *area);       // what his attack strikes in this step; false: nothing
