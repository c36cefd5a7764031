// random: pseudo-random number generator; a seed gives the same sequence on every machine. The caller owns the state; a
// zero-initialised one is valid. (The sound synthesiser has its own generator.)
#pragma once

#include <SDL3/SDL_stdinc.h>

struct Random {
    Uint64 state;
};

Random random_make(Uint64 seed);                             // similar seeds give unrelated sequences
int random_below(Random *random, int limit);                 // uniform in [0, limit); 0 if limit is below 1
int random_between(Random *random, int first, int last);     // uniform in [first, last]; `first` if `last` is below it
float random_float(Random *random, float from, float below); // uniform in [from, below)
bool random_chance(Random *random, float probability);       // true with this probability, 0 to 1
