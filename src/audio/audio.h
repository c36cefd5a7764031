// audio: one mixer on the default playback device, one music track, sixteen effect tracks and three volume buses,
// whose levels live in the configuration. Main thread only, and only between audio_setup and audio_cleanup; before
// that, nothing plays, and actions fail or do nothing, but for the levels, which the configuration keeps.
// Without a playback device the program runs on, silently, on SDL's dummy driver.
#pragma once

#include "lumarind/config/config.h"

struct MIX_Audio;

// --- lifetime ---
bool audio_setup();   // after cfg_load; safe twice. False: reported, and audio_cleanup frees what was built
void audio_cleanup(); // safe twice. Free the loaded sounds before: they go with the mixer

// --- sounds: the caller owns them and gives them back to audio_free ---
// Predecoded, a file is decoded here and starts at no cost (effects); otherwise it is decoded while it plays (music).
// WAV (but not of 64-bit floats), FLAC, Ogg and MP3; a tag in front is passed over. A WAV file is
// decoded here in any case. Loops a file asks for itself are not followed. Null: reported, as is a file of another
// kind, one that decodes to less than two frames, or one of more than 768,000 Hz.
MIX_Audio *audio_load(const char *path, bool predecode);
// Interleaved frames of `channels` floats each, copied. The rate is in Hz, at most 768,000. Null: reported, as are less
// than two frames.
MIX_Audio *audio_load_samples(const float *frames, int frame_count, int channels, int sample_rate);
void audio_free(MIX_Audio **sound); // sets the handle to null; does nothing when it is already

// --- playing ---
struct SfxPlay {
    float volume = 1; // 0 to 1, below the bus's
    float pitch = 1;  // 0.01 to 100: twice as high is half as long
    float pan = 0;    // -1 left to 1 right; 0 leaves the sound's own channels as they are
};
bool audio_play_sfx(MIX_Audio *sound);                          // once. False: no track is free, it is dropped
bool audio_play_sfx_with(MIX_Audio *sound, const SfxPlay &how); // the same; values out of range are clamped
bool audio_play_music(MIX_Audio *sound, int fade_in_ms);        // for ever, instead of what played. False: reported
bool audio_play_music_once(MIX_Audio *sound, int fade_in_ms);   // the same, to its end
void audio_pause_music(bool paused);                            // where it is; paused, it does not count as playing
void audio_stop_music(int fade_out_ms);                         // 0: at once
bool audio_music_playing();                                     // true while it fades out, too

// --- volumes: linear, 0 to 1 ---
float audio_volume(AudioBus bus);
void audio_set_volume(AudioBus bus, float volume); // clamped, kept in the configuration and heard at once
