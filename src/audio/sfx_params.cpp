#include "audio/sfx_params.h"

#include "audio/sfx_synth.h"

static constexpr Uint32 SIGNED_FIELDS = 0x25A4C0; // fields with a range of -1 to 1

// --- random numbers ---

Uint64 lumarind::sfx_rng_state;

int sfx_random(int n) { return SDL_rand_r(&sfx_rng_state, n); }

float frnd(float range) { return static_cast<float>(sfx_random(10001)) / 10000.0f * range; }

float rndNP1() { return static_cast<float>(sfx_random(20001)) / 10000.0f - 1.0f; }

static bool _sfx_heads() { return sfx_random(2) != 0; }

static bool _sfx_one_in(int n) { return sfx_random(n) == 0; }

float pinkValue(int *counter, float *rows) {
    const int next = (*counter + 1) & ((1 << SFX_PINK_ROWS) - 1);
    const int changed = *counter ^ next;
    *counter = next;
    float sum = 0;
    for (int k = 0; k < SFX_PINK_ROWS; k++) {
        if (changed & (1 << k)) rows[k] = frnd(1.0f);
        sum += rows[k];
    }
    return sum / 5.0f * 2.0f - 1.0f;
}

// --- presets ---

void sfx_resetParams(SfxParams *params) {
    *params = {};
    params->sustainTime = 0.3f;
    params->decayTime = 0.4f;
    params->startFrequency = 0.3f;
    params->lpfCutoff = 1.0f;
}

void sfx_genPickupCoin(SfxParams *params) {
    sfx_resetParams(params);
    params->startFrequency = 0.4f + frnd(0.5f);
    params->sustainTime = frnd(0.1f);
    params->decayTime = 0.1f + frnd(0.4f);
    params->sustainPunch = 0.3f + frnd(0.3f);
    if (_sfx_heads()) {
        params->changeSpeed = 0.5f + frnd(0.2f);
        params->changeAmount = 0.2f + frnd(0.4f);
    }
}

static void _sfx_draw_laser_pitch(SfxParams *params) {
    params->startFrequency = 0.5f + frnd(0.5f);
    params->minFrequency = params->startFrequency - 0.2f - frnd(0.6f);
    if (params->minFrequency < 0.2f) params->minFrequency = 0.2f;
    params->slide = -0.15f - frnd(0.2f);
    if (_sfx_one_in(3)) {
        params->startFrequency = 0.3f + frnd(0.6f);
        params->minFrequency = frnd(0.1f);
        params->slide = -0.35f - frnd(0.3f);
    }
}

void sfx_genLaserShoot(SfxParams *params) {
    sfx_resetParams(params);
    params->waveType = sfx_random(3);
    if (params->waveType == SFX_WAVE_SINE && _sfx_heads()) params->waveType = sfx_random(2);
    _sfx_draw_laser_pitch(params);
    if (_sfx_heads()) {
        params->squareDuty = frnd(0.5f);
        params->dutySweep = frnd(0.2f);
    } else {
        params->squareDuty = 0.4f + frnd(0.5f);
        params->dutySweep = -frnd(0.7f);
    }
    params->sustainTime = 0.1f + frnd(0.2f);
    params->decayTime = frnd(0.4f);
    if (_sfx_heads()) params->sustainPunch = frnd(0.3f);
    if (_sfx_one_in(3)) {
        params->phaserOffset = frnd(0.2f);
        params->phaserSweep = -frnd(0.2f);
    }
    if (_sfx_heads()) params->hpfCutoff = frnd(0.3f);
}

static void _sfx_draw_explosion_pitch(SfxParams *params) {
    if (_sfx_heads()) {
        params->startFrequency = 0.1f + frnd(0.4f);
        params->slide = frnd(0.4f) - 0.1f;
    } else {
        params->startFrequency = 0.2f + frnd(0.7f);
        params->slide = -0.2f - frnd(0.2f);
    }
    params->startFrequency *= params->startFrequency;
    if (_sfx_one_in(5)) params->slide = 0;
    if (_sfx_one_in(3)) params->repeatSpeed = 0.3f + frnd(0.5f);
}

void sfx_genExplosion(SfxParams *params) {
    sfx_resetParams(params);
    params->waveType = SFX_WAVE_NOISE;
    _sfx_draw_explosion_pitch(params);
    params->sustainTime = 0.1f + frnd(0.3f);
    params->decayTime = frnd(0.5f);
    if (_sfx_one_in(2)) {
        params->phaserOffset = frnd(0.9f) - 0.3f;
        params->phaserSweep = -frnd(0.3f);
    }
    params->sustainPunch = 0.2f + frnd(0.6f);
    if (_sfx_heads()) {
        params->vibratoDepth = frnd(0.7f);
        params->vibratoSpeed = frnd(0.6f);
    }
    if (_sfx_one_in(3)) {
        params->changeSpeed = 0.6f + frnd(0.3f);
        params->changeAmount = 0.8f - frnd(1.6f);
    }
}

void sfx_genPowerup(SfxParams *params) {
    sfx_resetParams(params);
    if (_sfx_heads()) {
        params->waveType = SFX_WAVE_SAWTOOTH;
        params->squareDuty = 1.0f;
    } else {
        params->squareDuty = frnd(0.6f);
    }
    if (_sfx_heads()) {
        params->startFrequency = 0.2f + frnd(0.3f);
        params->slide = 0.1f + frnd(0.4f);
        params->repeatSpeed = 0.4f + frnd(0.4f);
    } else {
        params->startFrequency = 0.2f + frnd(0.3f);
        params->slide = 0.05f + frnd(0.2f);
        if (_sfx_heads()) {
            params->vibratoDepth = frnd(0.7f);
            params->vibratoSpeed = frnd(0.6f);
        }
    }
    params->sustainTime = frnd(0.4f);
    params->decayTime = 0.1f + frnd(0.4f);
}

void sfx_genHitHurt(SfxParams *params) {
    sfx_resetParams(params);
    params->waveType = sfx_random(3);
    if (params->waveType == SFX_WAVE_SINE) params->waveType = SFX_WAVE_NOISE;
    if (params->waveType == SFX_WAVE_SQUARE) params->squareDuty = frnd(0.6f);
    if (params->waveType == SFX_WAVE_SAWTOOTH) params->squareDuty = 1.0f;
    params->startFrequency = 0.2f + frnd(0.6f);
    params->slide = -0.3f - frnd(0.4f);
    params->sustainTime = frnd(0.1f);
    params->decayTime = 0.1f + frnd(0.2f);
    if (_sfx_heads()) params->hpfCutoff = frnd(0.3f);
}

void sfx_genJump(SfxParams *params) {
    sfx_resetParams(params);
    params->squareDuty = frnd(0.6f);
    params->startFrequency = 0.3f + frnd(0.3f);
    params->slide = 0.1f + frnd(0.2f);
    params->sustainTime = 0.1f + frnd(0.3f);
    params->decayTime = 0.1f + frnd(0.2f);
    if (_sfx_heads()) params->hpfCutoff = frnd(0.3f);
    if (_sfx_heads()) params->lpfCutoff = 1.0f - frnd(0.6f);
}

void sfx_genBlipSelect(SfxParams *params) {
    sfx_resetParams(params);
    params->waveType = sfx_random(2);
    params->squareDuty = params->waveType == SFX_WAVE_SQUARE ? frnd(0.6f) : 1.0f;
    params->startFrequency = 0.2f + frnd(0.4f);
    params->sustainTime = 0.1f + frnd(0.1f);
    params->decayTime = frnd(0.2f);
    params->hpfCutoff = 0.1f;
}

// --- other generators ---

void sfx_genSynth(SfxParams *params) {
    static constexpr float synthFreq[3] = {0.27231714f, 0.19255693f, 0.13615778f}; // three octaves of a note
    static constexpr float arpeggioMod[7] = {0, 0, 0, 0, -0.3162f, 0.7454f, 0.7454f};
    sfx_resetParams(params);
    params->waveType = sfx_random(2);
    params->startFrequency = synthFreq[sfx_random(3)];
    params->attackTime = sfx_random(5) >= 4 ? frnd(0.5f) : 0;
    params->sustainTime = frnd(1.0f);
    params->sustainPunch = frnd(1.0f);
    params->decayTime = 0.1f + frnd(0.9f);
    params->changeAmount = arpeggioMod[sfx_random(7)];
    params->changeSpeed = 0.4f + frnd(0.5f);
    params->squareDuty = frnd(1.0f);
    params->dutySweep = sfx_random(3) == 2 ? frnd(1.0f) : 0;
    if (sfx_random(2) != 1) {
        const float a = frnd(1.0f); // separate statements: the evaluation order within an expression is unspecified
        const float b = frnd(1.0f);
        params->lpfCutoff = 0.1f + a * 0.9f * b;
    }
    params->lpfCutoffSweep = rndNP1();
    params->lpfResonance = frnd(1.0f);
    params->hpfCutoff = sfx_random(4) == 3 ? frnd(1.0f) : 0;
    params->hpfCutoffSweep = sfx_random(4) == 3 ? frnd(1.0f) : 0;
}

static void _sfx_randomize_pitch(SfxParams *params) {
    params->startFrequency = SDL_powf(rndNP1(), 2.0f);
    if (_sfx_heads()) params->startFrequency = SDL_powf(rndNP1(), 3.0f) + 0.5f;
    params->minFrequency = 0;
    params->slide = SDL_powf(rndNP1(), 5.0f);
    // Keeps the pitch audible: a high one does not slide up, a low one not down.
    if (params->startFrequency > 0.7f && params->slide > 0.2f) params->slide = -params->slide;
    if (params->startFrequency < 0.2f && params->slide < -0.05f) params->slide = -params->slide;
    params->deltaSlide = SDL_powf(rndNP1(), 3.0f);
    params->squareDuty = rndNP1();
    params->dutySweep = SDL_powf(rndNP1(), 3.0f);
    params->vibratoDepth = SDL_powf(rndNP1(), 3.0f);
    params->vibratoSpeed = rndNP1();
}

static void _sfx_randomize_envelope(SfxParams *params) {
    params->attackTime = SDL_powf(rndNP1(), 3.0f);
    params->sustainTime = SDL_powf(rndNP1(), 2.0f);
    params->decayTime = rndNP1();
    params->sustainPunch = SDL_powf(frnd(0.8f), 2.0f);
    if (params->attackTime + params->sustainTime + params->decayTime < 0.2f) {
        params->sustainTime += 0.2f + frnd(0.3f);
        params->decayTime += 0.2f + frnd(0.3f);
    }
}

void sfx_genRandomize(SfxParams *params, int wave) {
    sfx_resetParams(params);
    params->waveType = wave;
    _sfx_randomize_pitch(params);
    _sfx_randomize_envelope(params);
    params->lpfResonance = rndNP1();
    params->lpfCutoff = 1.0f - SDL_powf(frnd(1.0f), 3.0f);
    params->lpfCutoffSweep = SDL_powf(rndNP1(), 3.0f);
    if (params->lpfCutoff < 0.1f && params->lpfCutoffSweep < -0.05f) params->lpfCutoffSweep = -params->lpfCutoffSweep;
    params->hpfCutoff = SDL_powf(frnd(1.0f), 5.0f);
    params->hpfCutoffSweep = SDL_powf(rndNP1(), 5.0f);
    params->phaserOffset = SDL_powf(rndNP1(), 3.0f);
    params->phaserSweep = SDL_powf(rndNP1(), 3.0f);
    params->repeatSpeed = rndNP1();
    params->changeSpeed = rndNP1();
    params->changeAmount = rndNP1();
}

void sfx_mutate(SfxParams *params, float range, Uint32 mask) {
    static constexpr float SfxParams::*FIELDS[SFX_PARAM_COUNT] = {
        &SfxParams::attackTime,     &SfxParams::sustainTime,    &SfxParams::sustainPunch,   &SfxParams::decayTime,
        &SfxParams::startFrequency, &SfxParams::minFrequency,   &SfxParams::slide,          &SfxParams::deltaSlide,
        &SfxParams::vibratoDepth,   &SfxParams::vibratoSpeed,   &SfxParams::changeAmount,   &SfxParams::changeSpeed,
        &SfxParams::squareDuty,     &SfxParams::dutySweep,      &SfxParams::repeatSpeed,    &SfxParams::phaserOffset,
        &SfxParams::phaserSweep,    &SfxParams::lpfCutoff,      &SfxParams::lpfCutoffSweep, &SfxParams::lpfResonance,
        &SfxParams::hpfCutoff,      &SfxParams::hpfCutoffSweep,
    };
    const float half = 0.5f * range;
    const Uint32 bits = static_cast<Uint32>(sfx_random(16777215) + 1);
    for (int k = 0; k < SFX_PARAM_COUNT; k++) {
        const Uint32 bit = 1u << k;
        if (!(bits & mask & bit)) continue;
        float &field = params->*FIELDS[k];
        const float lowest = SIGNED_FIELDS & bit ? -1.0f : 0.0f;
        field = field + frnd(range) - half;
        field = field > 1.0f ? 1.0f : SDL_max(field, lowest);
    }
}
