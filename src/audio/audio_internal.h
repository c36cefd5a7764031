// What the mixer's tests reach into.
#pragma once

struct MIX_Mixer;
struct MIX_Track;

constexpr int AUDIO_SFX_TRACKS = 16;

struct AudioState {
    MIX_Mixer *mixer;
    MIX_Track *music;                    // tagged "music"
    MIX_Track *sfx[AUDIO_SFX_TRACKS];    // each tagged "sfx"
    float sfx_volumes[AUDIO_SFX_TRACKS]; // below the bus's, of what each track plays
    bool library_started;                // MIX_Quit is owed
};
namespace lumarind {
extern AudioState *audio; // null: not set up
}
using lumarind::audio;
