#include "lumarind/audio/sfx.h"

#include "audio/sfx_params.h"
#include "audio/sfx_synth.h"
#include "lumarind/audio/audio.h"
#include "lumarind/core/error.h"

#include <SDL3/SDL_error.h>

#include <iterator>

struct SfxPresetRow {
    const char *name;
    void (*generate)(SfxParams *params);
};
static constexpr SfxPresetRow sfx_presets[] = {
    {"Coin", sfx_genPickupCoin}, {"Laser", sfx_genLaserShoot}, {"Explosion", sfx_genExplosion},
    {"Powerup", sfx_genPowerup}, {"Hit", sfx_genHitHurt},      {"Jump", sfx_genJump},
    {"Blip", sfx_genBlipSelect},
};
static_assert(std::size(sfx_presets) == SFX_PRESET_COUNT, "one row per preset, in the order of the enum");

int sfx_render(int preset, Uint64 seed, float **out) {
    *out = nullptr;
    SfxSynth *synth = sfx_allocSynth(SFX_FORMAT_F32, SFX_SAMPLE_RATE, SFX_MAX_SECONDS);
    if (!synth) {
        engine_error("[SFX] Memory allocation failed, error: %s", SDL_GetError());
        return 0;
    }
    sfx_rng_state = seed;
    SfxParams params = {};
    sfx_presets[preset].generate(&params);
    const int count = sfx_generateWave(synth, &params);

    const size_t size = static_cast<size_t>(count) * sizeof(float);
    if (count > 0) *out = static_cast<float *>(SDL_malloc(size));
    if (*out) SDL_memcpy(*out, synth->samples, size);
    SDL_free(synth);
    if (*out) return count;
    engine_error("[SFX] Unable to render %s (%d frames), error: %s", sfx_preset_name(preset), count, SDL_GetError());
    return 0;
}

MIX_Audio *sfx_generate(int preset, Uint64 seed) {
    float *frames = nullptr;
    const int count = sfx_render(preset, seed, &frames);
    if (count == 0) return nullptr;
    MIX_Audio *sound = audio_load_samples(frames, count, 1, SFX_SAMPLE_RATE);
    SDL_free(frames);
    return sound;
}

const char *sfx_preset_name(int preset) { return sfx_presets[preset].name; }
