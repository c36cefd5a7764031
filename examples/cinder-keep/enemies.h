// enemies: three kinds that can be read: one walks its round, one presses itself down and leaps, one glows and spits.
#pragma once

#include "art.h"
#include "hero.h"

enum EnemyKind { ENEMY_WALKER, ENEMY_HOPPER, ENEMY_WATCHER, ENEMY_KIND_COUNT };
enum EnemyMood { MOOD_CALM, MOOD_WARNING, MOOD_ACTING };

inline constexpr int ENEMIES_MAX = 40, FIREBALLS_MAX = 16;

struct Enemy {
    EnemyKind kind;
    PlayerBody body;
    Animation anim;
    SDL_FPoint home; // where it stands at first, and when the level begins again
    int home_facing;
    int hits;   // it can still take
    int struck; // the hero's swing that hit it last
    EnemyMood mood;
    double mood_time; // s
    double flash;     // s it still shows that it was struck
    bool alive;
};

struct Fireball {
    SDL_FPoint pos, prev_pos, vel; // px, px/s
    double life;                   // s left; 0: free
};

struct Enemies {
    Enemy items[ENEMIES_MAX];
    int count;
    Fireball fireballs[FIREBALLS_MAX];
};

// What happened in a step, for sounds.
enum EnemyEvent { ENEMY_HOPPED = 1, ENEMY_SPAT = 2 };

bool enemies_add(
    Enemies *enemies, const Art *art, const char *type, SDL_FPoint feet, int facing); // false: no such type
void enemies_revive(Enemies *enemies, const Art *art);                                // all of them, at home
unsigned enemies_step(Enemies *enemies, const Art *art, const Hero *hero, const ColliderRects *solids, double dt);
bool enemy_strike(Enemy *enemy, int swing, int strength, float from_x); // true: it was hit; alive says whether it fell
const Animation *enemy_look(const Enemy *enemy, const Art *art);        // what it shows now
SDL_FRect enemy_box(const Enemy *enemy);
SDL_FRect fireball_box(const Fireball *fireball);
