// sfx_synth: one oscillator with an envelope, pitch slide, vibrato, arpeggio, duty sweep, repeat, phaser and a low-pass
// and a high-pass filter, computed at eight times the output rate. Draws its noise from sfx_params' sequence.
#pragma once

#include <SDL3/SDL_stdinc.h>

struct SfxParams;

enum SfxFormat { SFX_FORMAT_U8, SFX_FORMAT_S16, SFX_FORMAT_F32 };

inline constexpr int SFX_NOISE_SLOTS = 32;
inline constexpr int SFX_PINK_ROWS = 5;
inline constexpr int SFX_PHASER_SIZE = 1024;

// The working memory of one render, its output storage behind it in the same allocation.
struct SfxSynth {
    Sint32 format;     // SfxFormat
    Sint32 sampleRate; // Hz
    Sint32 seconds;    // the storage holds sampleRate x seconds frames
    void *samples;
    float noise[SFX_NOISE_SLOTS];
    float pink[SFX_PINK_ROWS];
    float phaser[SFX_PHASER_SIZE]; // delay line
};

// Freed with SDL_free. Null, silently: no memory.
SfxSynth *sfx_allocSynth(int format, int sampleRate, int seconds);

// The number of frames written to the storage: those of the envelope, or fewer when the pitch reaches its floor or the
// storage is full.
int sfx_generateWave(SfxSynth *synth, const SfxParams *params);
