// ghost: the hero of the best run, seen again: where he was and what he did, twenty times a second.
#pragma once

#include "art.h"

inline constexpr int GHOST_SAMPLES_MAX = 20 * 60 * 10; // ten minutes

struct GhostSample {
    Sint16 x, y; // the feet, px
    Sint8 facing;
    Uint8 clip, frame, spare; // of the knight's clips
};

struct Ghost {
    GhostSample *samples; // owned
    int count;
    double time; // s until the next sample
};

bool ghost_setup(Ghost *ghost); // room for a run. False: reported
void ghost_cleanup(Ghost *ghost);
void ghost_record(Ghost *ghost, SDL_FPoint feet, int facing, const Animation *anim, double dt);
// A file that is missing leaves the ghost empty; so does a damaged one, which is reported.
void ghost_load(Ghost *ghost, int level);
void ghost_save(const Ghost *ghost, int level);
bool ghost_at(const Ghost *ghost, double seconds, GhostSample *sample); // false: there is none, or it has arrived
