#include "lumarind/toolkit/particles.h"

#include "lumarind/toolkit/primitives.h"

static constexpr float SPREAD = 3; // px around a burst's position
// Fractions of the kind's values:
static constexpr float SLOWEST = 0.2f;
static constexpr float SHORTEST = 0.5f;
static constexpr float OLD_FROM = 0.4f; // remaining life at which the colour changes

void particles_burst(Particles *particles, const ParticleKind *kind, SDL_FPoint at, int count, SDL_FPoint drift) {
    Random *random = &particles->random;
    for (int i = 0; i < count; i++) {
        const float angle = random_float(random, 0, 2 * SDL_PI_F);
        const float speed = kind->speed * random_float(random, SLOWEST, 1);
        Particle *one = &particles->items[particles->next];
        one->pos = {at.x + random_float(random, -SPREAD, SPREAD), at.y + random_float(random, -SPREAD, SPREAD)};
        one->vel = {drift.x + SDL_cosf(angle) * speed, drift.y + SDL_sinf(angle) * speed - kind->rise};
        one->life = kind->life * random_float(random, SHORTEST, 1);
        one->kind = kind;
        particles->next = (particles->next + 1) % PARTICLES_MAX;
    }
}

void particles_step(Particles *particles, double dt) {
    const float seconds = static_cast<float>(dt);
    for (Particle &one : particles->items) {
        if (one.life <= 0) continue;
        one.life -= seconds;
        one.vel.y += one.kind->gravity * seconds;
        one.pos.x += one.vel.x * seconds;
        one.pos.y += one.vel.y * seconds;
    }
}

void particles_draw(SDL_Renderer *renderer, const Particles *particles, SDL_FPoint origin, float scale) {
    for (const Particle &one : particles->items) {
        if (one.life <= 0) continue;
        const float size = one.kind->size * scale;
        const SDL_FRect box = {
            origin.x + SDL_floorf(one.pos.x) * scale, origin.y + SDL_floorf(one.pos.y) * scale, size, size};
        fill_rect(renderer, &box, one.life > one.kind->life * OLD_FROM ? one.kind->young : one.kind->old);
    }
}
