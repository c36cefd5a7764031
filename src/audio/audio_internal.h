// audio_internal: the audio module's state, for its tests.
#pragma once

struct MIX_Mixer;
struct MIX_Track;

constexpr int AUDIO_SFX_TRACKS = 16;

struct AudioState {
    MIX_Mixer *mixer;
    MIX_Track *music;                    // tagged "music"
    MIX_Track *sfx[AUDIO_SFX_TRACKS];    // each tagged "sfx"
    float sfx_volumes[AUDIO_SFX_TRACKS]; // of the sound on each track, without the bus's volume
    bool library_started;                // MIX_Init has succeeded; MIX_Quit must follow
};
namespace lumarind {
extern AudioState *audio; // null before setup
}
using lumarind::audio;
