// timestep: an accumulator that turns uneven frame times into fixed simulation steps. Pure; seconds throughout.
#pragma once

inline constexpr int TIMESTEP_DEFAULT_HZ = 60;
inline constexpr double TIMESTEP_MAX_FRAME_SECONDS = 0.25; // a longer stall costs no more catch-up than this

struct Timestep {
    double step;        // length of one fixed step
    double accumulator; // real time not yet simulated
};

void timestep_init(Timestep *ts, int hz); // 0 or less: the default rate
void timestep_reset(Timestep *ts);        // forgets the time not yet simulated
void timestep_advance(Timestep *ts, double dt);
bool timestep_consume_step(Timestep *ts); // true: one step is due and has been taken off

// How far the present lies between the last two steps: 0 to below 1 once all due steps are taken.
double timestep_alpha(const Timestep *ts);
double timestep_lerp(double a, double b, double t);
