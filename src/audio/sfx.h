// sfx: short retro sound effects from a seed instead of from files. The same preset and seed always give the same
// frames. Main thread only: all renders share one sequence of random numbers.
#pragma once

#include <SDL3/SDL_stdinc.h>

struct MIX_Audio;

enum SfxPreset { SFX_COIN, SFX_LASER, SFX_EXPLOSION, SFX_POWERUP, SFX_HIT, SFX_JUMP, SFX_BLIP, SFX_PRESET_COUNT };

inline constexpr int SFX_SAMPLE_RATE = 44100; // Hz
inline constexpr int SFX_MAX_SECONDS = 10;

// --- rendering: the preset is 0 to SFX_PRESET_COUNT - 1 ---
MIX_Audio *sfx_generate(int preset, Uint64 seed); // for audio_play_sfx; the caller's, audio_free. Null: reported

// The number of mono frames put into *out, at SFX_SAMPLE_RATE, -1 to 1; the caller frees them with SDL_free.
// 0: reported, and *out is null.
int sfx_render(int preset, Uint64 seed, float **out);

// --- questions ---
const char *sfx_preset_name(int preset); // to be shown: "Coin"
