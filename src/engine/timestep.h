// timestep: a fixed-timestep accumulator: turns variable frame times into fixed steps. Pure; times are in seconds.
#pragma once

#include <SDL3/SDL_rect.h>

inline constexpr int TIMESTEP_DEFAULT_HZ = 60;
inline constexpr double TIMESTEP_MAX_FRAME_SECONDS = 0.25; // longer frames are clamped to this

struct Timestep {
    double step;        // length of one fixed step
    double accumulator; // real time not yet simulated
};

void timestep_init(Timestep *ts, int hz); // 0 or less: the default rate
void timestep_reset(Timestep *ts);        // discards accumulated time
void timestep_advance(Timestep *ts, double dt);
bool timestep_consume_step(Timestep *ts); // true: a step was due and has been consumed

// Interpolation factor between the last two steps: 0 to below 1 once all due steps are consumed.
double timestep_alpha(const Timestep *ts);
double timestep_lerp(double a, double b, double t);
SDL_FPoint timestep_lerp_point(SDL_FPoint a, SDL_FPoint b, double t); // calculated in double
