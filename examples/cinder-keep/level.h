// level: one level while it is played: the map and all that is made of its objects, and the rules between them.
#pragma once

#include "enemies.h"
#include "ghost.h"
#include "hero.h"
#include "particles.h"
#include "things.h"
#include "view.h"

enum LevelPhase { LEVEL_PLAYING, LEVEL_FALLEN, LEVEL_WON };

inline constexpr int SIGNS_MAX = 16;

struct Sign {
    SDL_FRect area;   // where the hero reads it
    const char *text; // the map's
};

struct Level {
    int number;       // from 0
    TileWorld *world; // owned, as is what follows
    Art art;
    ColliderRects solids, hazards;
    int map_solids; // how many of `solids` are the map's; doors and platforms follow
    int layer_castle, layer_hazards;
    Uint32 generation; // of the world that all this was made of
    double seconds_to_beat;

    Hero hero;
    Enemies enemies;
    Things things;
    Sign signs[SIGNS_MAX];
    int sign_count;
    Particles particles;
    View view;
    Ghost ghost, best; // of this run, and of the best one
    bool whole_run;    // from the start, not from a saved checkpoint

    LevelPhase phase;
    double phase_time, time; // s
    double hit_stop;         // s in which everything holds its breath
    SDL_FPoint spawn;
    int checkpoint; // the thing, or -1
    int embers, deaths;
};

bool level_load(Level *level, int number, bool go_on); // go_on: from the saved checkpoint. False: reported
void level_cleanup(Level *level);
void level_step(Level *level, const HeroIntent &intent, double dt);
void level_back_to_checkpoint(Level *level); // with all hearts; foes are there again
Uint64 level_hash(const Level *level);

// combat.cpp: who hurts whom, in one step
void combat_step(Level *level);
void level_hurt_hero(Level *level, float from_x);
