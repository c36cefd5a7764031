// The audio module on SDL's dummy driver: tracks, music, volumes, invalid files, and a machine without a playback
// device.

#include "audio/audio_internal.h"
#include "lumarind/audio/audio.h"
#include "lumarind/audio/sfx.h"
#include "lumarind/config/config.h"
#include "lumarind/toolkit/reload.h"
#include "lumarind/toolkit/sound_store.h"
#include "support/call_faults.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_audio.h>
#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_init.h>
#include <SDL3/SDL_timer.h>
#include <SDL3_mixer/SDL_mixer.h>

#include <cmath>
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

class AudioMixerTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(start());
    }
    void TearDown() override {
        for (MIX_Audio *&sound : sounds) audio_free(&sound);
        EngineTest::TearDown();
    }

    MIX_Audio *tone(double seconds) { // freed in TearDown
        std::vector<float> frames(static_cast<size_t>(seconds * 2 * 44100), 0.1f);
        sounds.push_back(audio_load_samples(frames.data(), static_cast<int>(frames.size() / 2), 2, 44100));
        return sounds.back();
    }

    std::vector<MIX_Audio *> sounds;
};

// --- lifetime ---

TEST_F(AudioMixerTest, SetupAndCleanupAreIdempotent) {
    audio_cleanup();
    log.lines.clear();
    EXPECT_FALSE(audio_music_playing() || audio_play_sfx(nullptr) || audio_play_music(nullptr, 0));
    audio_stop_music(0); // ignored before setup
    cfg_set_audio_volume(AUDIO_BUS_MASTER, 0.25f);
    cfg_set_audio_volume(AUDIO_BUS_MUSIC, 0.5f);
    cfg_set_audio_volume(AUDIO_BUS_SFX, 1.7f);
    ASSERT_TRUE(audio_setup());
    const AudioState *first = audio;
    EXPECT_TRUE(audio_setup() && audio == first);
    EXPECT_EQ(log.count("[AUDIO] Mixer open on dummy: "), 1);
    EXPECT_FALSE(log.has(": 0 Hz") || log.has(", 0 channels"));
    EXPECT_TRUE(MIX_GetMixerGain(audio->mixer) == 0.25f && MIX_GetTrackGain(audio->music) == 0.5f);
    for (MIX_Track *track : audio->sfx) EXPECT_EQ(MIX_GetTrackGain(track), 1.0f);
    audio_cleanup();
    audio_cleanup();
    EXPECT_TRUE(audio == nullptr && log.errors().empty());
    EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0u) << "the audio subsystem was left open";
}

TEST_F(AudioMixerTest, FallsBackToDummyDriverWithoutPlaybackDevice) {
    // One driver fails to start, the other starts but cannot open its device.
    audio_cleanup();
    SDL_SetHint("SDL_AUDIO_DISK_OUTPUT_FILE", "no/such/folder/file.raw");
    for (const char *driver : {"no-such-driver", "disk"}) {
        log.lines.clear();
        SDL_SetHintWithPriority(SDL_HINT_AUDIO_DRIVER, driver, SDL_HINT_OVERRIDE);
        ASSERT_TRUE(audio_setup()) << driver;
        EXPECT_EQ(log.count("[AUDIO] No playback device (") + log.count("), continuing without sound"), 2) << driver;
        EXPECT_TRUE(log.has("[AUDIO] Mixer open on dummy: ") && log.errors().empty()) << driver;
        EXPECT_TRUE(audio_play_sfx(tone(0.01))) << driver;
        for (MIX_Audio *&sound : sounds) audio_free(&sound);
        audio_cleanup();
        EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0u) << driver;
    }
    SDL_ResetHint("SDL_AUDIO_DISK_OUTPUT_FILE");
}

// --- playing ---

TEST_F(AudioMixerTest, EffectUsesLowestIdleTrackAndSeventeenthIsDropped) {
    MIX_Audio *sound = tone(20), *extra = tone(20), *generated = sfx_generate(SFX_BLIP, 1);
    ASSERT_TRUE(audio_play_sfx(generated));
    audio_free(&generated); // while it plays: the mixer keeps a reference
    audio_free(&generated);
    EXPECT_TRUE(!generated && MIX_GetTrackLoops(audio->sfx[0]) == 0);
    EXPECT_TRUE(within_seconds(10, [] { return !MIX_TrackPlaying(audio->sfx[0]); }));
    for (int i = 0; i < AUDIO_SFX_TRACKS; i++) EXPECT_TRUE(audio_play_sfx(sound)) << i;
    EXPECT_FALSE(audio_play_sfx(extra) || audio_play_sfx(nullptr));
    for (MIX_Track *track : audio->sfx) EXPECT_TRUE(MIX_TrackPlaying(track) && MIX_GetTrackAudio(track) == sound);
    MIX_StopTrack(audio->sfx[11], 0);
    MIX_StopTrack(audio->sfx[5], 0);
    EXPECT_TRUE(audio_play_sfx(extra) && MIX_GetTrackAudio(audio->sfx[5]) == extra);
    EXPECT_FALSE(MIX_TrackPlaying(audio->sfx[11]));
    EXPECT_TRUE(log.errors().empty()) << "dropping an effect is not an error";
}

TEST_F(AudioMixerTest, MusicLoopsFadesAndIsReplacedAtOnce) {
    MIX_Audio *first = tone(0.05), *second = tone(20);
    ASSERT_TRUE(audio_play_music(first, 0));
    EXPECT_TRUE(MIX_GetTrackLoops(audio->music) == -1 && MIX_GetTrackFadeFrames(audio->music) == 0);
    EXPECT_FALSE(within_seconds(0.3, [] { return !audio_music_playing(); })) << "it loops";

    ASSERT_TRUE(audio_play_music(second, 5000));
    EXPECT_EQ(MIX_GetTrackAudio(audio->music), second);
    EXPECT_GT(MIX_GetTrackFadeFrames(audio->music), 4 * 44100) << "fade-in in milliseconds";
    for (const int seconds : {5, 60}) { // each call starts a new fade
        audio_stop_music(seconds * 1000);
        EXPECT_LT(MIX_GetTrackFadeFrames(audio->music), (1 - seconds) * 44100) << "fade-out in milliseconds";
        EXPECT_TRUE(audio_music_playing());
    }
    audio_stop_music(20);
    EXPECT_TRUE(within_seconds(10, [] { return !audio_music_playing(); }));
    ASSERT_TRUE(audio_play_music(second, 0));
    audio_stop_music(0);
    EXPECT_FALSE(audio_music_playing());

    EXPECT_TRUE(audio_play_music(second, 0) && !audio_play_music(nullptr, 0));
    EXPECT_FALSE(audio_music_playing()) << "the old music has stopped";
    EXPECT_TRUE(log.only_error_starts("[AUDIO] Unable to play the music, error: "));
}

// --- volumes ---

TEST_F(AudioMixerTest, VolumesAreClampedTo0To1) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    const std::pair<float, float> cases[] = {{-0.2f, 0}, {1.7f, 1}, {0.3f, 0.3f}, {nan, 0}, {inf, 1}, {-inf, 0}};
    for (int i = 0; i < AUDIO_BUS_COUNT; i++) {
        const auto bus = static_cast<AudioBus>(i);
        for (const auto &[value, level] : cases) {
            cfg_set_audio_volume(bus, value); // not clamped, as when loaded from a file
            EXPECT_FLOAT_EQ(audio_volume(bus), level) << value;
            audio_set_volume(bus, value);
            EXPECT_FLOAT_EQ(cfg_get_audio_volume(bus), level) << value;
            const float gains[] = {
                MIX_GetMixerGain(audio->mixer), MIX_GetTrackGain(audio->music), MIX_GetTrackGain(audio->sfx[15])};
            EXPECT_FLOAT_EQ(gains[bus], level) << value;
        }
    }
    audio_set_volume(AUDIO_BUS_COUNT, 0.5f); // ignored: invalid bus
    EXPECT_EQ(audio_volume(AUDIO_BUS_COUNT), 0);
}

// --- files ---

TEST_F(AudioMixerTest, InvalidFilesAreReportedWithPathAndReason) {
    using namespace std::string_literals;
    const std::string wav = read_file("assets/audio/sfx/retro/sfx_wpn_laser1.wav");
    const std::string ogg = read_file("assets/audio/sfx/interface/click_001.ogg");
    const std::string tag = "ID3\4\0\0\0\0\0\2"s + "\0\0\0\0\0\0\0\0"s, // with padding
        footed = "ID3\4\0\x10\0\0\1\2"s + std::string(130 + 10, 'x');
    const struct {
        const char *name;
        std::string content, reason; // reason "": the file loads
    } files[] = {
        {"tagged.wav", tag + wav, ""},
        {"footed.wav", footed + wav, ""},
        {"tagged.ogg", tag + ogg, ""},
        {"empty.ogg", "", "it contains no sound"},
        {"text.wav", "This is not audio.\n", "this format is not supported: save it as WAV, FLAC, Ogg or MP3"},
        {"tagged.aiff", tag + "FORM" + wav, "AIFF is not supported: save it as WAV, FLAC, Ogg or MP3"},
        {"no-frames.wav", wav.substr(0, 40) + "\0\0\0\0"s, "it contains no sound"},
        {"one-frame.wav", wav.substr(0, 40) + "\2\0\0\0\1\1"s, "it contains no sound"},
        {"two-frames.wav", wav.substr(0, 40) + "\4\0\0\0\1\1\1\1"s, ""},
        {"gigahertz.wav", wav.substr(0, 27) + '\x40' + wav.substr(28),
         "1073785924 Hz is more than the 768000 supported"},
    };
    for (const auto &file : files) {
        write_file(file.name, file.content);
        for (const bool predecode : {false, true}) {
            log.lines.clear();
            sounds.push_back(audio_load(file.name, predecode));
            const std::string start = "[AUDIO] Unable to load "s + file.name + ", error: ";
            EXPECT_EQ(log.errors().empty() ? "" : log.errors()[0], file.reason.empty() ? "" : start + file.reason);
            EXPECT_EQ(sounds.back() != nullptr, file.reason.empty()) << file.name;
        }
    }
    log.lines.clear();
    write_file("cut.ogg", ogg.substr(0, 24)); // in the middle of its header
    write_file("cut.wav", wav.substr(0, 24));
    for (const char *path : {"cut.ogg", "cut.wav", "missing.ogg", "."}) {
        EXPECT_FALSE(audio_load(path, true) || audio_load(path, false));
        EXPECT_EQ(log.count("[AUDIO] Unable to load "s + path + ", error: "), 2);
    }
    EXPECT_FALSE(log.has("error: Parameter")) << "each error has a specific reason";
    const float frames[2] = {};
    EXPECT_TRUE(!audio_load_samples(nullptr, 100, 1, 44100) && log.has("Unable to load 100 generated frames, error: "));
    EXPECT_FALSE(audio_load_samples(frames, 0, 1, 44100) || audio_load_samples(frames, 1, 1, 44100));
    EXPECT_EQ(log.count(" generated frames, error: it contains no sound"), 2);
    sounds.push_back(audio_load_samples(frames, 2, 1, 768000));
    EXPECT_TRUE(sounds.back() && !audio_load_samples(frames, 2, 1, 768001));
}

TEST_F(AudioMixerTest, SharedSoundsAreCachedAndHotReloaded) {
    const auto store = [](const char *name) {
        write_file("a.wav", read_file("assets/audio/sfx/retro/sfx_" + std::string(name) + ".wav"));
    };
    ASSERT_TRUE(start());
    store("wpn_laser1");
    reload_set(true, 0);
    SharedSound *sound = sound_store_get("a.wav"), *music = sound_store_get("a.wav", false);
    EXPECT_TRUE(sound && music != sound && sound_store_get("a.wav") == sound && !sound_store_get("none.wav"));
    const MIX_Audio *old = sound->audio;
    const Sint64 before = MIX_GetAudioDuration(sound->audio);
    ASSERT_TRUE(audio_play_sfx(sound->audio));
    log.lines.clear();
    write_file("a.wav", "RIFF");
    for (int i = 0; i < 3; i++) reload_tick();
    EXPECT_TRUE(log.errors().size() == 2 && sound->audio == old) << "one error per version";
    store("coin_single1");
    reload_tick();
    EXPECT_NE(MIX_GetAudioDuration(sound->audio), before);
    EXPECT_TRUE(MIX_TrackPlaying(audio->sfx[0]) && MIX_GetTrackAudio(audio->sfx[0]) == old)
        << "the old sound plays to its end";
    sound_store_release(sound);
    EXPECT_TRUE(audio_play_sfx(sound->audio)) << "there is another reference";
    for (SharedSound *held : {sound, music}) sound_store_release(held);
    reload_set(false);
    expect_allocation_faults_survived(
        &log, [&] { return (sound = sound_store_get("a.wav")) != nullptr; },
        [&] { sound_store_release(std::exchange(sound, nullptr)); });
}

TEST_F(AudioMixerTest, VolumePitchAndPanApplyToOnePlayback) {
    MIX_Track *track = audio->sfx[0];
    MIX_Audio *sound = tone(0.05);
    const auto ended = [&] { return !MIX_TrackPlaying(track); };
    ASSERT_TRUE(audio_play_sfx_with(sound, {.volume = 0.5f, .pitch = 0.5f, .pan = -2}));
    EXPECT_FLOAT_EQ(MIX_GetTrackGain(track), 0.4f) << "half of the bus's 0.8";
    EXPECT_FLOAT_EQ(MIX_GetTrackFrequencyRatio(track), 0.5f);
    audio_set_volume(AUDIO_BUS_SFX, 0.5f);
    EXPECT_FLOAT_EQ(MIX_GetTrackGain(track), 0.25f);
    EXPECT_FLOAT_EQ(MIX_GetTrackGain(audio->sfx[1]), 0.5f);
    ASSERT_TRUE(within_seconds(5, ended) && audio_play_sfx(sound));
    EXPECT_TRUE(MIX_GetTrackGain(track) == 0.5f && MIX_GetTrackFrequencyRatio(track) == 1);
    ASSERT_TRUE(within_seconds(5, ended) && audio_play_sfx_with(sound, {.volume = NAN, .pitch = NAN, .pan = NAN}));
    EXPECT_TRUE(MIX_GetTrackGain(track) == 0 && MIX_GetTrackFrequencyRatio(track) == 0.01f);
    ASSERT_TRUE(audio_play_sfx_with(sound, {.volume = 0, .pitch = 1000, .pan = 2}));
    EXPECT_EQ(MIX_GetTrackFrequencyRatio(audio->sfx[1]), 100);

    ASSERT_TRUE(audio_play_music_once(tone(0.1), 0));
    audio_pause_music(true);
    EXPECT_TRUE(MIX_TrackPaused(audio->music) && !audio_music_playing());
    audio_pause_music(false);
    EXPECT_TRUE(audio_music_playing() && within_seconds(5, [] { return !audio_music_playing(); }));
    ASSERT_TRUE(audio_play_music_once(tone(0.1), 0));
    audio_pause_music(true);
    audio_stop_music(50);
    audio_pause_music(false);
    EXPECT_FALSE(audio_music_playing()) << "stopped while paused";
}

} // namespace
