// Sound files: decoded when loaded or while playing, and mixed.
#include "fuzz/checksums.h"
#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "lumarind/audio/audio.h"

#include <SDL3/SDL_properties.h>
#include <SDL3_mixer/SDL_mixer.h>

#include <iterator>

// The engine's mixer runs in real time on its own thread; this one mixes as fast as possible. Sounds are looped, as
// music is: some fail only when rewound.
static void mix(MIX_Audio *sound) {
    constexpr int ROUNDS = 8;
    const SDL_AudioSpec spec = {.format = SDL_AUDIO_F32, .channels = 2, .freq = 44100};
    MIX_Mixer *mixer = MIX_CreateMixer(&spec);
    MIX_Track *track = MIX_CreateTrack(mixer);
    fuzz_check(track != nullptr, "a mixer without a device opens");
    float frames[2 * 2048];
    const SDL_PropertiesID options = SDL_CreateProperties();
    SDL_SetNumberProperty(options, MIX_PROP_PLAY_LOOPS_NUMBER, -1);
    if (MIX_SetTrackAudio(track, sound) && MIX_PlayTrack(track, options)) {
        for (int i = 0; i < ROUNDS && MIX_TrackPlaying(track); i++) MIX_Generate(mixer, frames, sizeof frames);
    }
    SDL_DestroyProperties(options);
    MIX_DestroyMixer(mixer); // with its track
}

static void play(const char *path, bool predecode) {
    fuzz_clear_log();
    MIX_Audio *sound = audio_load(path, predecode);
    fuzz_check((sound != nullptr) == (fuzz_logged_errors() == 0), "a sound that does not load is reported once");
    if (!sound) return;
    mix(sound);
    audio_play_sfx(sound);
    audio_play_music(sound, 10);
    audio_stop_music(0);
    audio_free(&sound);
}

// Loads the input unchanged, and preceded by an empty ID3 tag, which must be skipped.
int fuzz_sound(const uint8_t *data, size_t size) {
    static constexpr uint8_t TAG[] = {'I', 'D', '3', 4, 0, 0, 0, 0, 0, 0};
    fuzz_start_engine();
    std::vector<uint8_t> file(data, data + size);
    fuzz_fix_ogg_checksums(&file);
    for (const bool tagged : {false, true}) {
        if (tagged) file.insert(file.begin(), std::begin(TAG), std::end(TAG));
        const char *path = fuzz_memory_file(file.data(), file.size());
        play(path, true);
        play(path, false);
    }
    return 0;
}
