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
        Particle *particle = &particles->items[particles->next];
        particle->pos = {at.x + random_float(random, -SPREAD, SPREAD), at.y + random_float(random, -SPREAD, SPREAD)};
        particle->vel = {drift.x + SDL_cosf(angle) * speed, drift.y + SDL_sinf(angle) * speed - kind->rise};
        particle->life = kind->life * random_float(random, SHORTEST, 1);
        particle->kind = kind;
        particles->next = (particles->next + 1) % PARTICLES_MAX;
    }
}

void particles_step(Particles *particles, double dt) {
    const float seconds = static_cast<float>(dt);
    for (Particle &particle : particles->items) {
        if (particle.life <= 0) continue;
        particle.life -= seconds;
        particle.vel.y += particle.kind->gravity * seconds;
        particle.pos.x += particle.vel.x * seconds;
        particle.pos.y += particle.vel.y * seconds;
    }
}

void particles_draw(SDL_Renderer *renderer, const Particles *particles, SDL_FPoint origin, float scale) {
    for (const Particle &particle : particles->items) {
        if (particle.life <= 0) continue;
        const float size = particle.kind->size * scale;
        const SDL_FRect box = {
            origin.x + SDL_floorf(particle.pos.x) * scale, origin.y + SDL_floorf(particle.pos.y) * scale, size, size};
        fill_rect(
            renderer, &box, particle.life > particle.kind->life * OLD_FROM ? particle.kind->young : particle.kind->old);
    }
}
