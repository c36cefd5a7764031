// particles: this game's kinds of particles.
#pragma once

#include "lumarind/toolkit/particles.h"
#include "lumarind/toolkit/primitives.h"

inline constexpr Uint32 COLOR_FLAME = rgba(248, 214, 95, 255), COLOR_GLOW = rgba(180, 48, 60, 255);
inline constexpr ParticleKind PARTICLES_DUST = {36, 14, -10, 0.4f, 2, rgba(146, 159, 168, 255), rgba(69, 74, 98, 255)},
                              PARTICLES_SPARKS =
                                  {120, 40, 300, 0.45f, 1, rgba(250, 243, 210, 255), rgba(239, 124, 51, 255)},
                              PARTICLES_EMBERS = {40, 50, -20, 0.8f, 1, COLOR_FLAME, COLOR_GLOW},
                              PARTICLES_FLAME = {70, 60, -90, 0.55f, 2, COLOR_FLAME, COLOR_GLOW};
