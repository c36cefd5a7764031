// The output is bit-exact by contract: do not change float to double or back, nor the order of operations. Squares are
// multiplications; higher powers call the C library.
#include "audio/sfx_synth.h"

#include "audio/sfx_params.h"

static constexpr int SUBSAMPLES = 8; // per frame
static constexpr float MASTER_GAIN = 0.2f;
static constexpr float PI = 3.1415927f;
static constexpr int SHORTEST_PERIOD = 8; // subsamples
static constexpr int STAGES = 3;          // attack, sustain, decay
static constexpr int PHASER_MASK = SFX_PHASER_SIZE - 1;

namespace {

struct SfxVoice {
    const SfxParams *params;
    SfxSynth *synth;
    int frame_limit;

    float min_frequency, start_slide; // effective values; the parameters may differ
    double fperiod, fmaxperiod;       // subsamples
    double fslide, fdslide;           // factor per frame, and its change per frame
    float duty, duty_step;
    double arpeggio_factor;
    int arpeggio_time, arpeggio_limit; // frames; limit 0: none, or done
    int repeat_time, repeat_limit;

    int period, phase; // subsamples
    int pink_counter;

    float lowpass, lowpass_velocity, lowpass_cutoff, lowpass_step, lowpass_damping;
    float highpass, highpass_cutoff, highpass_step;

    float vibrato_phase, vibrato_speed, vibrato_depth;

    int stage, stage_time, stage_length[STAGES]; // frames
    float level;

    float phaser_offset, phaser_step; // subsamples
    int phaser_delay, phaser_write;
};

} // namespace

SfxSynth *sfx_allocSynth(int format, int sampleRate, int seconds) {
    if (sampleRate < 0 || seconds < 0) return nullptr;
    const size_t width = format == SFX_FORMAT_S16 ? 2 : format == SFX_FORMAT_F32 ? 4 : 1;
    const size_t storage = static_cast<size_t>(sampleRate) * static_cast<size_t>(seconds) * width;
    auto *synth = static_cast<SfxSynth *>(SDL_malloc(sizeof(SfxSynth) + storage));
    if (!synth) return nullptr;
    synth->format = format;
    synth->sampleRate = sampleRate;
    synth->seconds = seconds;
    synth->samples = synth + 1;
    return synth;
}

// Truncates towards zero and saturates; NaN gives 0. Parameters are arbitrary, so the value may not fit an int.
static int _sfx_trunc(double value) {
    if (!(value > -2147483647.0)) return value <= -2147483647.0 ? -SDL_MAX_SINT32 : 0;
    return value < 2147483647.0 ? static_cast<int>(value) : SDL_MAX_SINT32;
}

static float _sfx_clamp(float value, float low, float high) {
    value = value < low ? low : value;
    return value > high ? high : value;
}

static float _sfx_signed_square(float value) { return value < 0 ? -(value * value) : value * value; }

// --- setup ---

static void _sfx_reset_pitch(SfxVoice *v) {
    const SfxParams &p = *v->params;
    v->fperiod = 100.0 / (static_cast<double>(p.startFrequency * p.startFrequency) + 0.001);
    v->fmaxperiod = 100.0 / (static_cast<double>(v->min_frequency * v->min_frequency) + 0.001);
    v->fslide = 1.0 - 0.01 * SDL_pow(v->start_slide, 3.0);
    v->fdslide = -1e-6 * SDL_pow(p.deltaSlide, 3.0);
    v->duty = 0.5f - 0.5f * p.squareDuty;
    v->duty_step = -0.00005f * p.dutySweep;
    const double change = p.changeAmount;
    v->arpeggio_factor = change >= 0 ? 1.0 - 0.9 * (change * change) : 1.0 + 10.0 * (change * change);
    v->arpeggio_time = 0;
    const float delay = 1.0f - p.changeSpeed;
    v->arpeggio_limit = p.changeSpeed == 1.0f ? 0 : _sfx_trunc(32.0f + 20000.0f * (delay * delay));
}

static void _sfx_setup_filters(SfxVoice *v) {
    const SfxParams &p = *v->params;
    v->lowpass_cutoff = SDL_powf(p.lpfCutoff, 3.0f) * 0.1f;
    v->lowpass_step = 1.0f + p.lpfCutoffSweep * 0.0001f;
    v->lowpass_damping = 5.0f / (1.0f + 20.0f * (p.lpfResonance * p.lpfResonance)) * (0.01f + v->lowpass_cutoff);
    if (v->lowpass_damping > 0.8f) v->lowpass_damping = 0.8f;
    v->highpass_cutoff = p.hpfCutoff * p.hpfCutoff * 0.1f;
    v->highpass_step = 1.0f + p.hpfCutoffSweep * 0.0003f;
}

static void _sfx_setup_envelope(SfxVoice *v) {
    const SfxParams &p = *v->params;
    const float times[STAGES] = {p.attackTime, p.sustainTime, p.decayTime};
    for (int i = 0; i < STAGES; i++) v->stage_length[i] = _sfx_trunc(times[i] * times[i] * 100000.0f);
}

static void _sfx_setup_phaser(SfxVoice *v) {
    v->phaser_offset = _sfx_signed_square(v->params->phaserOffset) * 1020.0f;
    v->phaser_step = _sfx_signed_square(v->params->phaserSweep);
    SDL_memset(v->synth->phaser, 0, sizeof v->synth->phaser);
}

template <int WAVE> static void _sfx_fill_noise(SfxVoice *v) {
    if constexpr (WAVE == SFX_WAVE_NOISE) {
        for (float &slot : v->synth->noise) slot = rndNP1();
    } else if constexpr (WAVE == SFX_WAVE_PINK_NOISE) {
        for (float &slot : v->synth->noise) slot = pinkValue(&v->pink_counter, v->synth->pink);
    }
}

static void _sfx_setup_noise(SfxVoice *v) {
    if (v->params->waveType == SFX_WAVE_NOISE) _sfx_fill_noise<SFX_WAVE_NOISE>(v);
    if (v->params->waveType != SFX_WAVE_PINK_NOISE) return;
    for (float &row : v->synth->pink) row = frnd(1.0f);
    _sfx_fill_noise<SFX_WAVE_PINK_NOISE>(v);
}

static void _sfx_setup_voice(SfxVoice *v) {
    const SfxParams &p = *v->params;
    v->frame_limit = v->synth->sampleRate * v->synth->seconds;
    v->min_frequency = p.minFrequency > p.startFrequency ? p.startFrequency : p.minFrequency;
    v->start_slide = p.deltaSlide > p.slide ? p.deltaSlide : p.slide;
    _sfx_reset_pitch(v);
    _sfx_setup_filters(v);
    v->vibrato_speed = p.vibratoSpeed * p.vibratoSpeed * 0.01f;
    v->vibrato_depth = 0.5f * p.vibratoDepth;
    _sfx_setup_envelope(v);
    _sfx_setup_phaser(v);
    _sfx_setup_noise(v);
    const float pause = 1.0f - p.repeatSpeed;
    v->repeat_limit = p.repeatSpeed == 0 ? 0 : _sfx_trunc(32.0f + 20000.0f * (pause * pause));
}

// --- per frame ---

static void _sfx_restart_when_due(SfxVoice *v) {
    v->repeat_time++;
    if (v->repeat_limit == 0 || v->repeat_time < v->repeat_limit) return;
    v->repeat_time = 0;
    _sfx_reset_pitch(v);
}

static void _sfx_step_pitch(SfxVoice *v, int frame) {
    v->arpeggio_time++;
    if (v->arpeggio_limit != 0 && v->arpeggio_time >= v->arpeggio_limit) {
        v->arpeggio_limit = 0;
        v->fperiod *= v->arpeggio_factor;
    }
    v->fslide += v->fdslide;
    v->fperiod *= v->fslide;
    if (v->fperiod > v->fmaxperiod) {
        v->fperiod = v->fmaxperiod;
        if (v->min_frequency > 0) v->frame_limit = frame; // ends the sound after this frame
    }
    float period = static_cast<float>(v->fperiod);
    if (v->vibrato_depth > 0) {
        v->vibrato_phase += v->vibrato_speed;
        const float swing = SDL_sinf(v->vibrato_phase) * v->vibrato_depth;
        period = static_cast<float>((1.0 + static_cast<double>(swing)) * v->fperiod);
    }
    const int whole = _sfx_trunc(period);
    v->period = SDL_max(whole, SHORTEST_PERIOD);
    v->duty = _sfx_clamp(v->duty + v->duty_step, 0.0f, 0.5f);
}

static bool _sfx_step_envelope(SfxVoice *v) { // false: the sound has ended
    v->stage_time++;
    if (v->stage_time > v->stage_length[v->stage]) {
        v->stage_time = 0;
        do {
            if (++v->stage == STAGES) return false;
        } while (v->stage_length[v->stage] == 0);
    }
    const float passed = static_cast<float>(v->stage_time) / static_cast<float>(v->stage_length[v->stage]);
    switch (v->stage) {
    case 0:
        v->level = passed;
        break;
    case 1:
        v->level = 1.0f + 2.0f * (1.0f - passed) * v->params->sustainPunch;
        break;
    default:
        v->level = 1.0f - passed;
        break;
    }
    return true;
}

static void _sfx_step_effects(SfxVoice *v) {
    v->phaser_offset += v->phaser_step;
    const int delay = SDL_abs(_sfx_trunc(v->phaser_offset));
    v->phaser_delay = SDL_min(delay, SFX_PHASER_SIZE - 1);
    if (v->highpass_step != 0) {
        v->highpass_cutoff = _sfx_clamp(v->highpass_cutoff * v->highpass_step, 0.00001f, 0.1f);
    }
}

// --- per subsample ---

template <int WAVE> static float _sfx_oscillate(const float *noise, int phase, int period, float duty) {
    if constexpr (WAVE == SFX_WAVE_NOISE || WAVE == SFX_WAVE_PINK_NOISE) {
        return noise[phase * SFX_NOISE_SLOTS / period];
    } else {
        const float fp = static_cast<float>(phase) / static_cast<float>(period);
        if constexpr (WAVE == SFX_WAVE_SQUARE) return fp < duty ? 0.5f : -0.5f;
        if constexpr (WAVE == SFX_WAVE_SAWTOOTH) {
            return fp < duty ? 2.0f * fp / duty - 1.0f : 1.0f - 2.0f * (fp - duty) / (1.0f - duty);
        }
        if constexpr (WAVE == SFX_WAVE_SINE) return SDL_sinf(2.0f * fp * PI);
        if constexpr (WAVE == SFX_WAVE_TRIANGLE) {
            return fp < 0.5f ? 2.0f * (fp / 0.5f) - 1.0f : 1.0f - 2.0f * (fp - 0.5f) / 0.5f;
        }
        return 0;
    }
}

// Returns the sum of a frame's subsamples. Filter state is held in locals, so that the loop does not store it each
// time.
template <int WAVE> static float _sfx_mix_frame(SfxVoice *v) {
    float *const delay = v->synth->phaser;
    const bool bypass = v->params->lpfCutoff == 1.0f;
    const float highpass_cutoff = v->highpass_cutoff;
    float lowpass = v->lowpass, velocity = v->lowpass_velocity, cutoff = v->lowpass_cutoff, highpass = v->highpass;
    int phase = v->phase, write = v->phaser_write;
    float sum = 0;
    for (int i = 0; i < SUBSAMPLES; i++) {
        if (++phase >= v->period) {
            phase %= v->period;
            _sfx_fill_noise<WAVE>(v);
        }
        const float wave = _sfx_oscillate<WAVE>(v->synth->noise, phase, v->period, v->duty);

        const float before = lowpass;
        cutoff = _sfx_clamp(cutoff * v->lowpass_step, 0.0f, 0.1f);
        if (bypass) {
            lowpass = wave;
            velocity = 0;
        } else {
            velocity += (wave - lowpass) * cutoff;
            velocity -= velocity * v->lowpass_damping;
        }
        lowpass += velocity;

        highpass += lowpass - before;
        highpass -= highpass * highpass_cutoff;

        delay[write & PHASER_MASK] = highpass;
        const float echo = delay[(write - v->phaser_delay + SFX_PHASER_SIZE) & PHASER_MASK];
        write = (write + 1) & PHASER_MASK;
        sum += (highpass + echo) * v->level;
    }
    v->lowpass = lowpass;
    v->lowpass_velocity = velocity;
    v->lowpass_cutoff = cutoff;
    v->highpass = highpass;
    v->phase = phase;
    v->phaser_write = write;
    return sum;
}

using SfxMixFrame = float (*)(SfxVoice *v);

static SfxMixFrame _sfx_mixer_of(int wave) {
    static constexpr SfxMixFrame MIXERS[SFX_WAVE_COUNT] = {
        _sfx_mix_frame<SFX_WAVE_SQUARE>, _sfx_mix_frame<SFX_WAVE_SAWTOOTH>, _sfx_mix_frame<SFX_WAVE_SINE>,
        _sfx_mix_frame<SFX_WAVE_NOISE>,  _sfx_mix_frame<SFX_WAVE_TRIANGLE>, _sfx_mix_frame<SFX_WAVE_PINK_NOISE>,
    };
    return wave >= 0 && wave < SFX_WAVE_COUNT ? MIXERS[wave] : _sfx_mix_frame<SFX_WAVE_COUNT>;
}

static void _sfx_store(SfxSynth *synth, int frame, float value) {
    switch (synth->format) {
    case SFX_FORMAT_F32:
        static_cast<float *>(synth->samples)[frame] = value;
        break;
    case SFX_FORMAT_S16:
        static_cast<Sint16 *>(synth->samples)[frame] = static_cast<Sint16>(_sfx_trunc(32767.0f * value));
        break;
    default:
        static_cast<Uint8 *>(synth->samples)[frame] = static_cast<Uint8>(_sfx_trunc(128.0f + value * 127.0f));
        break;
    }
}

int sfx_generateWave(SfxSynth *synth, const SfxParams *params) {
    SfxVoice voice = {};
    voice.params = params;
    voice.synth = synth;
    _sfx_setup_voice(&voice);
    const SfxMixFrame mix_frame = _sfx_mixer_of(params->waveType);
    int frame = 0;
    while (frame < voice.frame_limit) {
        _sfx_restart_when_due(&voice);
        _sfx_step_pitch(&voice, frame);
        if (!_sfx_step_envelope(&voice)) break;
        _sfx_step_effects(&voice);
        const float value = mix_frame(&voice) / static_cast<float>(SUBSAMPLES) * MASTER_GAIN;
        _sfx_store(synth, frame, _sfx_clamp(value, -1.0f, 1.0f));
        frame++;
    }
    return frame;
}
