// sfx_params: the parameters of a generated sound effect and the random presets that set them. All random numbers come
// from one generator in a fixed order: reordering statements changes the sounds.
#pragma once

#include <SDL3/SDL_stdinc.h>

enum SfxWave {
    SFX_WAVE_SQUARE,
    SFX_WAVE_SAWTOOTH,
    SFX_WAVE_SINE,
    SFX_WAVE_NOISE,
    SFX_WAVE_TRIANGLE,
    SFX_WAVE_PINK_NOISE,
    SFX_WAVE_COUNT,
};

// The floats are numbered 0 to 21 in this order, as the bits of sfx_mutate's mask. The synthesiser accepts any value;
// sfx_mutate clamps to the ranges given here.
struct SfxParams {
    Sint32 waveType;  // SfxWave; any other value is silent
    float attackTime; // 0 to 1, as the two stage times below: 100000 v^2 frames
    float sustainTime;
    float sustainPunch;   // 0 to 1: extra level at the start of the sustain stage
    float decayTime;      // 0 to 1
    float startFrequency; // 0 to 1: a period of 100 / (v^2 + 0.001) subsamples
    float minFrequency;   // 0 to 1: above 0, reaching it ends the sound
    float slide;          // -1 to 1: above 0 raises the pitch
    float deltaSlide;     // -1 to 1
    float vibratoDepth;   // 0 to 1
    float vibratoSpeed;   // 0 to 1
    float changeAmount;   // -1 to 1: arpeggio, a single pitch change, upwards if above 0
    float changeSpeed;    // 0 to 1: higher is earlier; 1 disables it
    float squareDuty;     // 0 to 1: at 0 the square is symmetric and the sawtooth a triangle
    float dutySweep;      // -1 to 1
    float repeatSpeed;    // 0 to 1: how often the pitch restarts; 0 disables it
    float phaserOffset;   // -1 to 1
    float phaserSweep;    // -1 to 1
    float lpfCutoff;      // 0 to 1; exactly 1 bypasses the low-pass filter
    float lpfCutoffSweep; // -1 to 1
    float lpfResonance;   // 0 to 1
    float hpfCutoff;      // 0 to 1
    float hpfCutoffSweep; // -1 to 1
};
inline constexpr int SFX_PARAM_COUNT = 22; // number of float fields
static_assert(
    sizeof(SfxParams) == sizeof(Sint32) + SFX_PARAM_COUNT * sizeof(float), "SFX_PARAM_COUNT counts the float fields");

// --- random numbers ---
namespace lumarind {
extern Uint64 sfx_rng_state;
}
using lumarind::sfx_rng_state;

int sfx_random(int n);   // 0 to n - 1
float frnd(float range); // 0 to range, in 10000 steps
float rndNP1();          // -1 to 1, in 20000 steps
// The next value of pink noise, -1 to 1, the sum of 5 rows, each updated half as often as the previous one. `counter`
// starts at 0 and stays below 32.
float pinkValue(int *counter, float *rows);

// --- generators: each sets the whole record ---
void sfx_resetParams(SfxParams *params);
void sfx_genPickupCoin(SfxParams *params);
void sfx_genLaserShoot(SfxParams *params);
void sfx_genExplosion(SfxParams *params);
void sfx_genPowerup(SfxParams *params);
void sfx_genHitHurt(SfxParams *params);
void sfx_genJump(SfxParams *params);
void sfx_genBlipSelect(SfxParams *params);
void sfx_genSynth(SfxParams *params); // a tonal instrument
void sfx_genRandomize(SfxParams *params, int wave);

// Changes some of the fields whose bits are set in the mask, each by at most range / 2 up or down.
void sfx_mutate(SfxParams *params, float range, Uint32 mask);
