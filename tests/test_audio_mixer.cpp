// The mixer on SDL's dummy driver: tracks, music, volumes, files that are not what they should be, and a machine
// without a playback device.

#include "audio/audio.h"
#include "audio/audio_internal.h"
#include "audio/sfx.h"
#include "config/config_internal.h"
#include "support/allocation_faults.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_audio.h>
#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_init.h>
#include <SDL3/SDL_timer.h>
#include <SDL3_mixer/SDL_mixer.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

bool within_seconds(double seconds, const std::function<bool()> &reached) {
    const Uint64 end = SDL_GetTicksNS() + static_cast<Uint64>(seconds * 1e9);
    while (!reached() && SDL_GetTicksNS() < end) SDL_Delay(5);
    return reached();
}

class AudioMixerTest : public ::testing::Test {
protected:
    void SetUp() override {
        directory.link_assets();
        SDL_SetHintWithPriority(SDL_HINT_AUDIO_DRIVER, "dummy", SDL_HINT_OVERRIDE);
        ASSERT_TRUE(cfg_setup());
        cfg_set_defaults();
    }
    void TearDown() override {
        for (MIX_Audio *&sound : sounds) audio_free(&sound);
        audio_cleanup();
        cfg_cleanup();
        SDL_ResetHint(SDL_HINT_AUDIO_DRIVER);
        EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0u) << "the audio subsystem was left open";
        SDL_Quit();
    }

    MIX_Audio *tone(double seconds) { // freed at the end
        std::vector<float> frames(static_cast<size_t>(seconds * 2 * 44100), 0.1f);
        sounds.push_back(audio_load_samples(frames.data(), static_cast<int>(frames.size() / 2), 2, 44100));
        return sounds.back();
    }

    TemporaryDirectory directory;
    LogCapture log;
    std::vector<MIX_Audio *> sounds;
};

// --- lifetime ---

TEST_F(AudioMixerTest, SetsUpOnceAndCleansUpTwice) {
    EXPECT_FALSE(audio_music_playing());
    audio_stop_music(0); // before the set-up: nothing
    EXPECT_FALSE(audio_play_sfx(nullptr));
    cfg_set_audio_volume(AUDIO_BUS_MASTER, 0.25f);
    cfg_set_audio_volume(AUDIO_BUS_MUSIC, 0.5f);
    cfg_set_audio_volume(AUDIO_BUS_SFX, 1.7f);
    ASSERT_TRUE(audio_setup());
    const AudioState *first = audio;
    EXPECT_TRUE(audio_setup());
    EXPECT_EQ(audio, first);
    EXPECT_EQ(log.count("[AUDIO] Mixer open on dummy: "), 1);
    EXPECT_FLOAT_EQ(MIX_GetMixerGain(audio->mixer), 0.25f);
    EXPECT_FLOAT_EQ(MIX_GetTrackGain(audio->music), 0.5f);
    for (MIX_Track *track : audio->sfx) EXPECT_FLOAT_EQ(MIX_GetTrackGain(track), 1.0f);
    audio_cleanup();
    audio_cleanup();
    EXPECT_EQ(audio, nullptr);
    EXPECT_TRUE(log.errors().empty());
}

TEST_F(AudioMixerTest, FailedAllocationsAreSurvived) {
    expect_allocation_faults_survived(&log, audio_setup, audio_cleanup);
}

TEST_F(AudioMixerTest, WithoutADeviceItGoesOnSilently) {
    // A driver that does not start, and one that starts and cannot open its device.
    SDL_SetHint("SDL_AUDIO_DISK_OUTPUT_FILE", "no/such/folder/file.raw");
    for (const char *driver : {"no-such-driver", "disk"}) {
        log.lines.clear();
        SDL_SetHintWithPriority(SDL_HINT_AUDIO_DRIVER, driver, SDL_HINT_OVERRIDE);
        ASSERT_TRUE(audio_setup()) << driver;
        EXPECT_EQ(log.count("[AUDIO] No playback device ("), 1) << driver;
        EXPECT_EQ(log.count("), continuing without sound"), 1) << driver;
        EXPECT_TRUE(log.has("[AUDIO] Mixer open on dummy: ")) << driver;
        EXPECT_TRUE(log.errors().empty()) << driver << ": a warning, not an error";
        EXPECT_TRUE(audio_play_sfx(tone(0.01))) << driver;
        for (MIX_Audio *&sound : sounds) audio_free(&sound);
        audio_cleanup();
        EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0u) << driver;
    }
    SDL_ResetHint("SDL_AUDIO_DISK_OUTPUT_FILE");
}

// --- effects ---

TEST_F(AudioMixerTest, TheSeventeenthEffectIsDroppedAndTheLowestIdleTrackIsNext) {
    ASSERT_TRUE(audio_setup());
    MIX_Audio *sound = tone(20), *extra = tone(20);
    for (int i = 0; i < AUDIO_SFX_TRACKS; i++) EXPECT_TRUE(audio_play_sfx(sound)) << i;
    EXPECT_FALSE(audio_play_sfx(extra));
    for (MIX_Track *track : audio->sfx) {
        EXPECT_TRUE(MIX_TrackPlaying(track));
        EXPECT_EQ(MIX_GetTrackAudio(track), sound);
    }
    MIX_StopTrack(audio->sfx[11], 0);
    MIX_StopTrack(audio->sfx[5], 0);
    EXPECT_TRUE(audio_play_sfx(extra));
    EXPECT_EQ(MIX_GetTrackAudio(audio->sfx[5]), extra);
    EXPECT_FALSE(MIX_TrackPlaying(audio->sfx[11]));
    EXPECT_TRUE(log.errors().empty()) << "a busy pool is nothing to report";
}

TEST_F(AudioMixerTest, AnEffectPlaysOnceAndFreesItsTrack) {
    ASSERT_TRUE(audio_setup());
    MIX_Audio *generated = sfx_generate(SFX_BLIP, 1);
    sounds.push_back(generated);
    ASSERT_TRUE(audio_play_sfx(generated));
    EXPECT_EQ(MIX_GetTrackLoops(audio->sfx[0]), 0);
    EXPECT_TRUE(within_seconds(10, [] { return !MIX_TrackPlaying(audio->sfx[0]); }));
    EXPECT_TRUE(audio_play_sfx(generated));
    EXPECT_TRUE(MIX_TrackPlaying(audio->sfx[0]));
    audio_free(&generated); // while it plays: the mixer keeps it as long as it needs it
    audio_free(&generated);
    EXPECT_EQ(generated, nullptr);
    sounds.pop_back();
}

// --- music ---

TEST_F(AudioMixerTest, MusicIsReplacedAtOnceLoopsAndFades) {
    ASSERT_TRUE(audio_setup());
    MIX_Audio *first = tone(0.05), *second = tone(20);
    audio_stop_music(100); // nothing plays
    ASSERT_TRUE(audio_play_music(first, 0));
    EXPECT_EQ(MIX_GetTrackLoops(audio->music), -1);
    EXPECT_EQ(MIX_GetTrackFadeFrames(audio->music), 0);
    EXPECT_FALSE(within_seconds(0.3, [] { return !audio_music_playing(); })) << "it goes round";

    ASSERT_TRUE(audio_play_music(second, 5000));
    EXPECT_EQ(MIX_GetTrackAudio(audio->music), second);
    EXPECT_GT(MIX_GetTrackFadeFrames(audio->music), 4 * 44100) << "fades in, in milliseconds";

    for (const int seconds : {5, 60}) { // each call begins a fade of its own
        audio_stop_music(seconds * 1000);
        EXPECT_LT(MIX_GetTrackFadeFrames(audio->music), (1 - seconds) * 44100) << "fades out, in milliseconds";
        EXPECT_TRUE(audio_music_playing());
    }
    audio_stop_music(20);
    EXPECT_TRUE(within_seconds(10, [] { return !audio_music_playing(); }));

    ASSERT_TRUE(audio_play_music(second, 0));
    audio_stop_music(0);
    EXPECT_FALSE(audio_music_playing());
}

TEST_F(AudioMixerTest, MusicThatCannotStartIsReported) {
    ASSERT_TRUE(audio_setup());
    ASSERT_TRUE(audio_play_music(tone(20), 0));
    EXPECT_FALSE(audio_play_music(nullptr, 0));
    EXPECT_FALSE(audio_music_playing()) << "the old piece has stopped";
    EXPECT_TRUE(log.only_error_starts("[AUDIO] Unable to play the music, error: "));
}

// --- volumes ---

TEST_F(AudioMixerTest, VolumesStayBetweenSilenceAndFull) {
    ASSERT_TRUE(audio_setup());
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    const struct {
        float value, level;
    } cases[] = {{-0.2f, 0}, {1.7f, 1}, {0.3f, 0.3f}, {nan, 0}, {inf, 1}, {-inf, 0}, {0, 0}, {1, 1}};
    for (int i = 0; i < AUDIO_BUS_COUNT; i++) {
        const auto bus = static_cast<AudioBus>(i);
        for (const auto &c : cases) {
            cfg_set_audio_volume(bus, c.value); // as a file may hold it
            EXPECT_FLOAT_EQ(audio_volume(bus), c.level) << c.value;
            audio_set_volume(bus, c.value);
            EXPECT_FLOAT_EQ(cfg_get_audio_volume(bus), c.level) << c.value;
            const float gains[] = {
                MIX_GetMixerGain(audio->mixer), MIX_GetTrackGain(audio->music), MIX_GetTrackGain(audio->sfx[15])};
            EXPECT_FLOAT_EQ(gains[bus], c.level) << c.value;
        }
    }
    audio_set_volume(AUDIO_BUS_COUNT, 0.5f); // no bus: nothing
    EXPECT_EQ(audio_volume(AUDIO_BUS_COUNT), 0);
}

// --- files ---

TEST_F(AudioMixerTest, FilesThatAreNoSoundAreReportedByName) {
    ASSERT_TRUE(audio_setup());
    write_file("empty.ogg", "");
    write_file("text.wav", "This is not audio.\n");
    const std::string effect = read_file("assets/audio/sfx/retro/sfx_wpn_laser1.wav");
    write_file("no-frames.wav", effect.substr(0, 40) + std::string(4, '\0'));
    write_file("one-frame.wav", effect.substr(0, 40) + std::string("\2\0\0\0\1\1", 6));
    write_file("gigahertz.wav", effect.substr(0, 27) + '\x40' + effect.substr(28));
    const std::string tag = std::string("ID3\4\0\0\0\0\0\2", 10) + std::string(8, '\0'); // and what fills up behind it
    write_file("tagged.wav", tag + effect);
    write_file("tagged.ogg", tag + read_file("assets/audio/sfx/interface/click_001.ogg"));
    write_file("tagged.aiff", tag + "FORM" + effect);
    for (const char *path : {"tagged.wav", "tagged.ogg"}) {
        for (const bool predecode : {false, true}) {
            sounds.push_back(audio_load(path, predecode));
            EXPECT_NE(sounds.back(), nullptr) << path;
        }
    }
    const std::pair<const char *, const char *> cuts[] = {
        {"sfx/interface/click_001.ogg", "cut.ogg"}, {"sfx/retro/sfx_sounds_fanfare1.wav", "cut.wav"}};
    for (const auto &[source, cut] : cuts) {
        const std::string whole = read_file(std::string("assets/audio/") + source);
        log.lines.clear();
        write_file("half", whole.substr(0, whole.size() / 2)); // what there is of it may play
        sounds.push_back(audio_load("half", true));
        EXPECT_EQ(sounds.back() == nullptr, log.errors().size() == 1) << source;
        write_file(cut, whole.substr(0, 24)); // in the middle of its header
    }
    for (const char *path :
         {"missing.ogg", "empty.ogg", "text.wav", "no-frames.wav", "one-frame.wav", "gigahertz.wav", "tagged.aiff",
          "cut.ogg", "cut.wav", "."}) {
        for (const bool predecode : {false, true}) {
            log.lines.clear();
            EXPECT_EQ(audio_load(path, predecode), nullptr) << path;
            EXPECT_TRUE(log.only_error_starts(std::string("[AUDIO] Unable to load ") + path + ", error: ")) << path;
            EXPECT_FALSE(log.has("error: Parameter") || log.errors().front().ends_with(": ")) << log.errors().front();
        }
    }
    log.lines.clear();
    EXPECT_EQ(audio_load_samples(nullptr, 100, 1, 44100), nullptr);
    EXPECT_TRUE(log.has("[AUDIO] Unable to load 100 generated frames, error: "));
    const float frame = 0;
    EXPECT_EQ(audio_load_samples(&frame, 0, 1, 44100), nullptr);
    EXPECT_EQ(audio_load_samples(&frame, 1, 1, 44100), nullptr);
    EXPECT_EQ(log.count(" generated frames, error: there is no sound in it"), 2);
}

} // namespace
