// ghost: records a run as position and animation frame, sampled 20 times per second, and plays back the best one.
#pragma once

#include "art.h"

inline constexpr int GHOST_SAMPLES_MAX = 20 * 60 * 10; // ten minutes

struct GhostSample {
    Sint16 x, y; // feet, world px
    Sint8 facing;
    Uint8 clip, frame, spare; // KnightClip and its frame
};

struct Ghost {
    GhostSample *samples; // owned
    int count;
    double time; // s until the next sample
};

bool ghost_setup(Ghost *ghost); // allocates the samples; reports errors
void ghost_cleanup(Ghost *ghost);
void ghost_record(Ghost *ghost, SDL_FPoint feet, int facing, const Animation *anim, double dt);
// A missing or damaged file leaves the ghost empty; a damaged one is reported.
void ghost_load(Ghost *ghost, int level);
void ghost_save(const Ghost *ghost, int level);
bool ghost_at(const Ghost *ghost, double seconds, GhostSample *sample); // false if empty or past its end
