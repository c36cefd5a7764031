#include "lumarind/toolkit/sound_store.h"

#include "lumarind/core/error.h"
#include "lumarind/toolkit/reload.h"

#include <SDL3/SDL_log.h>

static SharedSound *g_sound_store; // head of a linked list

static void _sound_store_reload(void *owner, const char *path) {
    auto *shared = static_cast<SharedSound *>(owner);
    MIX_Audio *fresh = audio_load(path, shared->predecoded);
    if (!fresh) return;         // the old sound is kept
    audio_free(&shared->audio); // tracks playing it hold a reference until they end
    shared->audio = fresh;
    SDL_Log("[AUDIO] Reloaded: %s", path);
}

static void _sound_store_free(SharedSound *shared) {
    reload_forget(shared);
    audio_free(&shared->audio);
    SDL_free(shared->path);
    SDL_free(shared);
}

SharedSound *sound_store_get(const char *path, bool predecode) {
    for (SharedSound *shared = g_sound_store; shared; shared = shared->next) {
        if (shared->predecoded != predecode || SDL_strcmp(shared->path, path) != 0) continue;
        shared->holders++;
        return shared;
    }
    auto *shared = static_cast<SharedSound *>(SDL_calloc(1, sizeof(SharedSound)));
    if (shared) shared->path = SDL_strdup(path);
    if (!shared || !shared->path) {
        engine_error("[AUDIO] Memory allocation failed while loading %s", path);
        SDL_free(shared);
        return nullptr;
    }
    const FileStamp stamp = reload_stamp(path, false);
    shared->predecoded = predecode;
    shared->holders = 1;
    shared->audio = audio_load(path, predecode);
    if (!shared->audio) {
        _sound_store_free(shared);
        return nullptr;
    }
    shared->next = g_sound_store;
    g_sound_store = shared;
    reload_follow(shared, _sound_store_reload, path, false, stamp);
    return shared;
}

void sound_store_release(SharedSound *shared) {
    if (!shared || --shared->holders > 0) return;
    for (SharedSound **at = &g_sound_store; *at; at = &(*at)->next) {
        if (*at != shared) continue;
        *at = shared->next;
        break;
    }
    _sound_store_free(shared);
}
