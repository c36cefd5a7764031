// random: numbers for games, drawn from a state of their own. The same seed gives the same numbers on every machine.
// A state belongs to whoever draws from it; a zeroed one is valid. (The sound synthesiser has its own generator.)
#pragma once

#include <SDL3/SDL_stdinc.h>

struct Random {
    Uint64 state;
};

Random random_make(Uint64 seed);                         // seeds that lie close together give unrelated numbers
int random_below(Random *random, int limit);             // 0 to limit - 1, all equally likely; 0 for a limit below 1
int random_between(Random *random, int first, int last); // both included; `first` where `last` lies below it
float random_float(Random *random, float from, float below); // from `from` to less than `below`
bool random_chance(Random *random, float probability);       // true with this probability, 0 to 1
