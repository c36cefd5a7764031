#include "lumarind/core/random.h"

// A 64-bit hash finaliser: without it the first numbers of seeds 1, 2, 3, ... would be similar.
static Uint64 _random_mix(Uint64 bits) {
    bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9u;
    bits = (bits ^ bits >> 27) * 0x94D049BB133111EBu;
    return bits ^ bits >> 31;
}

Random random_make(Uint64 seed) { return {.state = _random_mix(seed + 0x9E3779B97F4A7C15u)}; }

int random_below(Random *random, int limit) { return limit < 1 ? 0 : SDL_rand_r(&random->state, limit); }

int random_between(Random *random, int first, int last) {
    if (last <= first) return first;
    const Uint64 count = static_cast<Uint64>(static_cast<Sint64>(last) - first) + 1; // up to 2^32
    const Uint64 offset = SDL_rand_bits_r(&random->state) * count >> 32;
    return static_cast<int>(first + static_cast<Sint64>(offset));
}

float random_float(Random *random, float from, float below) {
    const float value = from + (below - from) * SDL_randf_r(&random->state);
    return value < below ? value : from; // rounding may give `below`
}

bool random_chance(Random *random, float probability) { return SDL_randf_r(&random->state) < probability; }
