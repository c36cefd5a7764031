#include "sounds.h"

#include "lumarind/audio/audio.h"
#include "lumarind/audio/sfx.h"

#include <SDL3/SDL_stdinc.h>

struct SoundRow {
    SfxPreset preset = SFX_BLIP;
    Uint64 seed = 0;
    float volume = 1, pitch = 1;
};
static constexpr SoundRow ROWS[] = {
    {SFX_JUMP, 3, 0.35f, 1.0f},      {SFX_HIT, 11, 0.22f, 0.6f},     {SFX_JUMP, 8, 0.3f, 0.6f},
    {SFX_HIT, 21, 0.3f, 1.6f},       {SFX_EXPLOSION, 5, 0.5f, 1.4f}, {SFX_HIT, 4, 0.6f, 1.0f},
    {SFX_EXPLOSION, 2, 0.55f, 1.6f}, {SFX_HIT, 9, 0.7f, 0.7f},       {SFX_EXPLOSION, 7, 0.7f, 0.7f},
    {SFX_COIN, 1, 0.4f, 1.0f},       {SFX_POWERUP, 2, 0.5f, 1.0f},   {SFX_POWERUP, 5, 0.55f, 1.2f},
    {SFX_EXPLOSION, 12, 0.5f, 0.8f}, {SFX_POWERUP, 9, 0.5f, 0.8f},   {SFX_LASER, 6, 0.35f, 0.7f},
    {SFX_JUMP, 14, 0.3f, 0.8f},      {SFX_POWERUP, 13, 0.7f, 1.0f},  {SFX_BLIP, 2, 0.3f, 1.0f},
    {SFX_COIN, 4, 0.35f, 1.2f},      {SFX_BLIP, 3, 0.3f, 0.7f},
};
static_assert(SDL_arraysize(ROWS) == SOUND_COUNT, "one row per sound, in the order of the enum");

static MIX_Audio *sounds[SOUND_COUNT], *music; // owned

bool sounds_setup(const char *music_name) {
    for (int i = 0; i < SOUND_COUNT; i++) {
        sounds[i] = sfx_generate(ROWS[i].preset, ROWS[i].seed);
        if (!sounds[i]) return false;
    }
    char path[64];
    SDL_snprintf(path, sizeof path, "assets/music/%s.ogg", music_name);
    music = audio_load(path, false);
    return music && audio_play_music(music, 500);
}

void sounds_cleanup() {
    audio_stop_music(0);
    audio_free(&music);
    for (MIX_Audio *&sound : sounds) audio_free(&sound);
}

void sounds_play(Sound sound) {
    if (sounds[sound]) audio_play_sfx_with(sounds[sound], {ROWS[sound].volume, ROWS[sound].pitch});
}
