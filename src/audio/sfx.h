// sfx: procedural retro sound effects, generated from a preset and a seed; the same pair always gives the same frames.
// Main thread only: all renders share one random number generator.
#pragma once

#include <SDL3/SDL_stdinc.h>

struct MIX_Audio;

enum SfxPreset { SFX_COIN, SFX_LASER, SFX_EXPLOSION, SFX_POWERUP, SFX_HIT, SFX_JUMP, SFX_BLIP, SFX_PRESET_COUNT };

inline constexpr int SFX_SAMPLE_RATE = 44100; // Hz
inline constexpr int SFX_MAX_SECONDS = 10;

// --- rendering: the preset is 0 to SFX_PRESET_COUNT - 1 ---
MIX_Audio *sfx_generate(int preset, Uint64 seed); // for audio_play_sfx; the caller owns it. Reports errors

// Renders mono frames, -1 to 1 at SFX_SAMPLE_RATE, into *out (freed by the caller with SDL_free) and returns their
// number. Reports errors, returning 0 and setting *out to null.
int sfx_render(int preset, Uint64 seed, float **out);

// --- names ---
const char *sfx_preset_name(int preset); // display name: "Coin"
