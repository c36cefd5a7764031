// sound_store: sounds loaded once, however many places play them. While files are followed (reload.h), a changed file
// is heard from its next start. A sound is kept while somebody holds it. Main thread only; all sounds have to be
// released before audio_cleanup.
#pragma once

#include "lumarind/audio/audio.h"

#include <SDL3/SDL_stdinc.h>

struct SharedSound {
    MIX_Audio *audio; // for audio_play_sfx and audio_play_music; not to be kept, for a new version replaces it

    // The store's own.
    SharedSound *next;
    char *path;
    bool predecoded;
    Sint32 holders;
};

// The asset of this path, loaded as audio_load does. Each get needs a release. Null: reported.
SharedSound *sound_store_get(const char *path, bool predecode = true);
void sound_store_release(SharedSound *shared); // null is ignored
