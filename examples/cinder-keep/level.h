// level: state and rules of the level being played: the map, and the game objects created from it.
#pragma once

#include "enemies.h"
#include "ghost.h"
#include "hero.h"
#include "particles.h"
#include "things.h"
#include "view.h"

enum LevelPhase { LEVEL_PLAYING, LEVEL_DEAD, LEVEL_WON };

inline constexpr int SIGNS_MAX = 16;

struct Sign {
    SDL_FRect area;   // shown while the hero's feet are inside; world px
    const char *text; // borrowed from the map
    bool until_key;   // hidden once the key has been taken
};

struct Level {
    int number;       // from 0
    TileWorld *world; // owned, as are the art and the colliders
    Art art;
    ColliderRects solids, hazards;
    int map_solids; // the first `map_solids` of `solids` are the map's; platforms and doors follow
    int layer_castle, layer_hazards;
    Uint32 generation; // of the world when loaded; differs after a hot reload
    double seconds_to_beat;

    Hero hero;
    Enemies enemies;
    Things things;
    Sign signs[SIGNS_MAX];
    int sign_count;
    Particles particles;
    View view;
    Ghost ghost, best; // of this run, and of the best one
    bool whole_run;    // started at the spawn point, not at a saved checkpoint

    LevelPhase phase;
    double phase_time, time; // s
    double hit_stop;         // s left in which the simulation pauses after a hit
    SDL_FPoint spawn;
    int checkpoint; // index of the last one lit in `things`, or -1
    int embers, deaths;
};

// Loads the map and creates the objects; `from_checkpoint` continues the saved run. Reports errors.
bool level_load(Level *level, int number, bool from_checkpoint);
void level_cleanup(Level *level);
void level_step(Level *level, const HeroIntent &intent, double dt);
void level_back_to_checkpoint(Level *level); // with full health; respawns all enemies
Uint64 level_hash(const Level *level);

// combat.cpp: resolves hits in one step
void combat_step(Level *level);
void level_hurt_hero(Level *level, float from_x);
