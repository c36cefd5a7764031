// particles: a particle system for visual effects such as sparks, dust and smoke. A fixed-size ring buffer embedded in
// its owner: new particles replace the oldest. World coordinates in px, y grows downwards.
#pragma once

#include "lumarind/core/random.h"

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

struct SDL_Renderer;

// A kind of particle: a row of a game's constant table. Colours are packed as in primitives.h.
struct ParticleKind {
    float speed = 0;   // maximum, px/s, in a random direction
    float rise = 0;    // px/s upwards, added to the velocity
    float gravity = 0; // px/s², downwards
    float life = 1;    // maximum, s; each particle lives at least half of it
    float size = 1;    // px
    Uint32 young = 0xFFFFFFFF, old = 0xFFFFFFFF;
};

inline constexpr int PARTICLES_MAX = 256;

struct Particle {
    SDL_FPoint pos, vel;
    float life; // s left; 0 or less: not drawn
    const ParticleKind *kind;
};

struct Particles { // zero-initialised: empty
    Particle items[PARTICLES_MAX];
    int next;
    Random random;
};

// Spawns `count` particles. `kind` is borrowed until they expire. `drift`, in px/s, is added to their velocities.
void particles_burst(
    Particles *particles, const ParticleKind *kind, SDL_FPoint at, int count, SDL_FPoint drift = {0, 0});
void particles_step(Particles *particles, double dt); // seconds
// `origin` is the world's origin in the drawing space; `scale` is in drawing units per px.
void particles_draw(SDL_Renderer *renderer, const Particles *particles, SDL_FPoint origin, float scale);
