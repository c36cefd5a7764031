// sound_store: reference-counted cache of sounds. With hot reload (reload.h) a changed file takes effect when the
// sound next starts. Main thread only; all sounds must be released before audio_cleanup.
#pragma once

#include "lumarind/audio/audio.h"

#include <SDL3/SDL_stdinc.h>

struct SharedSound {
    MIX_Audio *audio; // for audio_play_sfx and audio_play_music; do not store it: hot reload replaces it

    // private
    SharedSound *next;
    char *path;
    bool predecoded;
    Sint32 holders;
};

// Loads the asset as audio_load does, or reuses it. Each get needs a release. Reports errors.
SharedSound *sound_store_get(const char *path, bool predecode = true);
void sound_store_release(SharedSound *shared); // null is ignored
