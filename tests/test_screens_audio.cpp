// The audio demo's playback: the mixer's tracks after key presses. Its appearance is covered by stored pictures.

#include "audio/audio_internal.h"
#include "lumarind/audio/audio.h"
#include "lumarind/audio/sfx.h"
#include "lumarind/engine/engine.h"
#include "screens/screen_states.h"
#include "support/call_faults.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_properties.h>
#include <SDL3_mixer/SDL_mixer.h>

namespace {

constexpr int FIRST_EFFECT = 5, FIRST_FILE = 12, ROW_COUNT = 23;

class AudioDemoTest : public EngineTest {
protected:
    static void silence() {
        for (MIX_Track *track : audio->sfx) {
            MIX_StopTrack(track, 0);
            MIX_SetTrackAudio(track, nullptr);
        }
    }
    static Sint64 played_frames() { // of the only effect started since the tracks were idle; 0 if none was
        MIX_Audio *sound = MIX_GetTrackAudio(audio->sfx[0]);
        return sound ? MIX_GetAudioDuration(sound) : 0;
    }
    void watch_played() { // counts in `freed` when its memory is freed
        const SDL_PropertiesID properties = MIX_GetAudioProperties(MIX_GetTrackAudio(audio->sfx[0]));
        const auto count = [](void *, void *number) { ++*static_cast<int *>(number); };
        SDL_SetPointerPropertyWithCleanup(properties, "test.freed", &freed, count, nullptr);
    }
    static Sint64 generated_frames(int preset, Uint64 seed) {
        float *samples = nullptr;
        const int count = sfx_render(preset, seed, &samples);
        SDL_free(samples);
        return count;
    }

    int freed = 0;
};

TEST_F(AudioDemoTest, EveryEffectRowPlays) {
    ASSERT_TRUE(start_screen("audio-demo"));
    for (int row = 0; row < ROW_COUNT; row++) {
        silence();
        play(row % 2 ? "Space 2" : "pad:a 2");
        EXPECT_EQ(played_frames() > 0, row >= FIRST_EFFECT) << row;
        const bool generated = row >= FIRST_EFFECT && row < FIRST_FILE;
        EXPECT_TRUE(!generated || played_frames() == generated_frames(row - FIRST_EFFECT, 1)) << row;
        play("10 Down 2");
    }
    EXPECT_TRUE(log.errors().empty());
}

TEST_F(AudioDemoTest, SeedChangePlaysNewSoundAndStopsAtZero) {
    ASSERT_TRUE(start_screen("audio-demo"));
    for (int row = 1; row < FIRST_EFFECT + SFX_POWERUP; row++) play("Down 1");
    play("Down Left 2"); // a step first moves the selection, then changes the seed
    EXPECT_EQ(played_frames(), generated_frames(SFX_POWERUP, 0));
    watch_played();
    silence();
    play("15 Left 2");
    EXPECT_EQ(played_frames(), 0) << "no seed below 0";
    EXPECT_EQ(freed, 0);
    play("Right 2");
    EXPECT_EQ(played_frames(), generated_frames(SFX_POWERUP, 1));
    EXPECT_EQ(freed, 1) << "the old seed's sound";

    allocation_faults_arm(1, false);
    play("15 Right 2");
    EXPECT_EQ(call_faults_disarm(), 1);
    EXPECT_EQ(log.count("[SFX] Memory allocation failed, error: "), 1);
    silence();
    play("Space 2");
    EXPECT_EQ(played_frames(), 0) << "the row has no sound";
    play("Right 2");
    EXPECT_EQ(played_frames(), generated_frames(SFX_POWERUP, 3)) << "the next seed tries again";
    watch_played();
    silence();
    engine_set_state(GAME_STATE_MAIN_MENU);
    frame();
    EXPECT_EQ(freed, 2) << "cleanup frees the screen's sounds";
    EXPECT_EQ(log.errors().size(), 1u);
}

} // namespace
