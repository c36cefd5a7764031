#include "lumarind/engine/timestep.h"

void timestep_init(Timestep *ts, int hz) {
    ts->step = 1.0 / (hz > 0 ? hz : TIMESTEP_DEFAULT_HZ);
    ts->accumulator = 0.0;
}

void timestep_reset(Timestep *ts) { ts->accumulator = 0.0; }

void timestep_advance(Timestep *ts, double dt) {
    ts->accumulator += dt > TIMESTEP_MAX_FRAME_SECONDS ? TIMESTEP_MAX_FRAME_SECONDS : dt;
}

bool timestep_consume_step(Timestep *ts) {
    if (ts->step > ts->accumulator) return false;
    ts->accumulator -= ts->step;
    return true;
}

double timestep_alpha(const Timestep *ts) { return ts->accumulator / ts->step; }

double timestep_lerp(double a, double b, double t) { return a + (b - a) * t; }

SDL_FPoint timestep_lerp_point(SDL_FPoint a, SDL_FPoint b, double t) {
    const auto lerp = [t](float from, float to) {
        return static_cast<float>(timestep_lerp(static_cast<double>(from), static_cast<double>(to), t));
    };
    return {lerp(a.x, b.x), lerp(a.y, b.y)};
}
