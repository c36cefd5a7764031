// sfx_synth: sound synthesiser: one oscillator with envelope, pitch slide, vibrato, arpeggio, duty sweep, repeat,
// phaser, low-pass and high-pass filter, with 8x oversampling. Its noise comes from sfx_params' generator.
#pragma once

#include <SDL3/SDL_stdinc.h>

struct SfxParams;

enum SfxFormat { SFX_FORMAT_U8, SFX_FORMAT_S16, SFX_FORMAT_F32 };

inline constexpr int SFX_NOISE_SLOTS = 32;
inline constexpr int SFX_PINK_ROWS = 5;
inline constexpr int SFX_PHASER_SIZE = 1024;

// The state of one render, followed by its output storage in the same allocation.
struct SfxSynth {
    Sint32 format;     // SfxFormat
    Sint32 sampleRate; // Hz
    Sint32 seconds;    // capacity: the storage holds sampleRate x seconds frames
    void *samples;
    float noise[SFX_NOISE_SLOTS];
    float pink[SFX_PINK_ROWS];
    float phaser[SFX_PHASER_SIZE]; // delay line
};

// The caller frees it with SDL_free. Returns null if out of memory, without reporting it.
SfxSynth *sfx_allocSynth(int format, int sampleRate, int seconds);

// Returns the number of frames written: the envelope's length, or less if the pitch reaches its minimum or the storage
// is full.
int sfx_generateWave(SfxSynth *synth, const SfxParams *params);
