// enemies: three kinds, two of which telegraph their attack: a walker patrols, a hopper crouches and leaps, a watcher
// glows and spits fireballs.
#pragma once

#include "art.h"
#include "hero.h"

enum EnemyKind { ENEMY_WALKER, ENEMY_HOPPER, ENEMY_WATCHER, ENEMY_KIND_COUNT };
enum EnemyState { ENEMY_IDLE, ENEMY_WINDUP, ENEMY_ATTACKING };

inline constexpr int ENEMIES_MAX = 40, FIREBALLS_MAX = 16;

struct Enemy {
    EnemyKind kind;
    PlayerBody body;
    Animation anim;
    SDL_FPoint home; // spawn position
    int home_facing;
    int hits;       // hits left
    int last_swing; // number of the hero's swing that hit it last
    EnemyState state;
    double state_time; // s
    double flash;      // s left of the hit animation
    bool alive;
};

struct Fireball {
    SDL_FPoint pos, prev_pos, vel; // px, px/s
    double life;                   // s left; 0 or less: free slot
};

struct Enemies {
    Enemy items[ENEMIES_MAX];
    int count;
    Fireball fireballs[FIREBALLS_MAX];
};

// Events of a step, for sounds; bit flags.
enum EnemyEvent { ENEMY_HOPPED = 1, ENEMY_SPAT = 2 };

bool enemies_add(
    Enemies *enemies, const Art *art, const char *type, SDL_FPoint feet, int facing); // false: no such type, or full
void enemies_revive(Enemies *enemies, const Art *art);                                // respawns all at home
unsigned enemies_step(Enemies *enemies, const Art *art, const Hero *hero, const ColliderRects *solids, double dt);
bool enemy_strike(Enemy *enemy, int swing, int strength, float from_x); // true: hit; check `alive` afterwards
const Animation *enemy_animation(const Enemy *enemy, const Art *art);   // current animation
SDL_FRect enemy_box(const Enemy *enemy);
SDL_FRect fireball_box(const Fireball *fireball);
