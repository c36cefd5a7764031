// particles: sparks, dust and smoke of one colour each, drawn only: nothing in a game asks them. A record of a fixed
// size, embedded in its owner; the oldest make room. World coordinates, px; y downwards.
#pragma once

#include "lumarind/core/random.h"

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

struct SDL_Renderer;

// One kind: a row of a game's constant table. Colours are packed as in primitives.h.
struct ParticleKind {
    float speed = 0;   // at most, px/s, in any direction
    float rise = 0;    // px/s upwards, added to it
    float gravity = 0; // px/s², downwards
    float life = 1;    // s at most; each lives between half of it and all
    float size = 1;    // px
    Uint32 young = 0xFFFFFFFF, old = 0xFFFFFFFF;
};

inline constexpr int PARTICLES_MAX = 256;

struct Particle {
    SDL_FPoint pos, vel;
    float life; // s left; 0: free
    const ParticleKind *kind;
};

struct Particles { // {} is empty
    Particle items[PARTICLES_MAX];
    int next;
    Random random;
};

// `kind` is borrowed for as long as the particles live. All of them get the speed of `drift` as well.
void particles_burst(
    Particles *particles, const ParticleKind *kind, SDL_FPoint at, int count, SDL_FPoint drift = {0, 0});
void particles_step(Particles *particles, double dt); // seconds
// With the world's origin there in the drawing space, `scale` units to a px.
void particles_draw(SDL_Renderer *renderer, const Particles *particles, SDL_FPoint origin, float scale);
