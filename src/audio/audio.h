// audio: playback of music and sound effects through one mixer on the default device: one music track, sixteen effect
// tracks and three volume buses, whose volumes are stored in the configuration. Main thread only. Before audio_setup
// and after audio_cleanup playing fails or does nothing; volumes still work.
// Without a playback device SDL's dummy driver is used: the program runs silently.
#pragma once

#include "lumarind/config/config.h"

struct MIX_Audio;

// --- lifetime ---
bool audio_setup();   // after cfg_load; safe to call twice. Reports errors; audio_cleanup releases a partial setup
void audio_cleanup(); // safe to call twice. Free loaded sounds first: the mixer destroys them

// --- sounds: the caller owns them and releases them with audio_free ---
// With `predecode` the file is decoded when loaded (for effects), otherwise while playing (for music); WAV is always
// decoded when loaded. Formats: WAV (except 64-bit float), FLAC, Ogg and MP3; a leading ID3 tag is skipped, loop points
// in the file are ignored. Reports errors, also for other formats, fewer than two frames and rates above 768,000 Hz.
MIX_Audio *audio_load(const char *path, bool predecode);
// Copies interleaved frames of `channels` floats each. The rate is in Hz, at most 768,000. Reports errors, also for
// fewer than two frames.
MIX_Audio *audio_load_samples(const float *frames, int frame_count, int channels, int sample_rate);
void audio_free(MIX_Audio **sound); // sets the handle to null; a null handle is ignored

// --- playing ---
struct SfxPlay {
    float volume = 1; // 0 to 1, multiplied with the bus's volume
    float pitch = 1;  // playback rate, 0.01 to 100: 2 plays an octave higher in half the time
    float pan = 0;    // -1 left to 1 right; 0 keeps the sound's own channels
};
bool audio_play_sfx(MIX_Audio *sound);                          // plays it once; returns false if no track is idle
bool audio_play_sfx_with(MIX_Audio *sound, const SfxPlay &how); // the same; values are clamped
bool audio_play_music(MIX_Audio *sound, int fade_in_ms);        // loops it, replacing the music; reports errors
bool audio_play_music_once(MIX_Audio *sound, int fade_in_ms);   // the same without looping
void audio_pause_music(bool paused);                            // pauses or resumes; paused music is not "playing"
void audio_stop_music(int fade_out_ms);                         // 0: at once
bool audio_music_playing();                                     // true also during the fade-out

// --- volumes: linear, 0 to 1 ---
float audio_volume(AudioBus bus);
void audio_set_volume(AudioBus bus, float volume); // clamped, stored in the configuration, effective at once
