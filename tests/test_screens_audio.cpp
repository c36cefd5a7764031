// The audio demo: read from its pictures, used with keys and buttons, heard from the mixer's tracks.

#include "audio/audio.h"
#include "audio/audio_internal.h"
#include "audio/sfx.h"
#include "engine/engine.h"
#include "support/allocation_faults.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_properties.h>
#include <SDL3_mixer/SDL_mixer.h>

#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr SDL_Color BACKGROUND = {20, 24, 30, 255}, IDLE = {42, 49, 60, 255}, ACTIVE = {120, 216, 254, 255},
                    FLASH = {255, 193, 7, 255}, TEXT = {208, 220, 230, 255}, DIM = {112, 124, 136, 255};

constexpr const char *LABELS[] = {"FluffyTail", "FluffyTail", "Master",    "Music",   "Effects", "Coin",
                                  "Laser",      "Explosion",  "Powerup",   "Hit",     "Jump",    "Blip",
                                  "Click",      "Select",     "Back",      "Confirm", "Error",   "Jump",
                                  "Coin",       "Hit",        "Explosion", "Laser",   "Fanfare"};
constexpr int MASTER = 2, MUSIC = 3, EFFECTS = 4, COIN = 5, POWERUP = 8, CLICK = 12, RETRO = 17, ROW_COUNT = 23;
constexpr const char *FILES[] = {"click_001.ogg",        "select_001.ogg",         "back_001.ogg",
                                 "confirmation_001.ogg", "error_001.ogg",          "sfx_movement_jump1.wav",
                                 "sfx_coin_single1.wav", "sfx_damage_hit1.wav",    "sfx_exp_short_hard1.wav",
                                 "sfx_wpn_laser1.wav",   "sfx_sounds_fanfare1.wav"};

constexpr float left_of(int row) { return row < CLICK ? 16 : 400; }
constexpr float top_of(int row) { // rows of 12, and 20 more between two groups
    const int groups_above = row < CLICK ? (row >= MASTER) + (row >= COIN) : row >= RETRO;
    return static_cast<float>(90 + 12 * (row < CLICK ? row : row - CLICK) + 20 * groups_above);
}

class AudioDemoTest : public EngineTest {
protected:
    bool start_demo() { return start_screen("audio-demo"); }
    void press(SDL_Keycode key, int times = 1) {
        for (int i = 0; i < times; i++) {
            key_down(key);
            frame(0.02);
        }
    }
    // Of a row that is selected, or not.
    static bool label(int row, bool selected, SDL_Color color = TEXT) {
        const SDL_Color background = selected ? IDLE : BACKGROUND;
        return shows(left_of(row), top_of(row), ACTIVE, selected ? ">" : " ", background) &&
               shows(left_of(row) + 12, top_of(row), color, std::string(LABELS[row]) + " ", background);
    }
    static bool value(int row, bool selected, const char *text, SDL_Color color = DIM) {
        return shows(left_of(row) + 112, top_of(row), color, std::string(text) + " ", selected ? IDLE : BACKGROUND);
    }
    // The selected volume lights so many of its ten segments, and shows the number.
    bool volume(int row, int lit, const char *number) const {
        const Picture drawn = picture();
        int found = 0;
        while (found < 10 && same_color(pixel_at(drawn, 128 + 8 * found, static_cast<int>(top_of(row))), ACTIVE))
            found++;
        return found == lit && shows(214, top_of(row), TEXT, number, IDLE);
    }
    static void silence() {
        for (MIX_Track *track : audio->sfx) {
            MIX_StopTrack(track, 0);
            MIX_SetTrackAudio(track, nullptr);
        }
    }
    static Sint64 played_frames() { // of the one effect started since the silence, which may be over; 0: none was
        MIX_Audio *sound = MIX_GetTrackAudio(audio->sfx[0]);
        return sound ? MIX_GetAudioDuration(sound) : 0;
    }
    void watch_played() { // counts in `freed` when its memory goes
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

TEST_F(AudioDemoTest, EveryRowIsShownReachedAndPlayed) {
    choose_driver(SDL_HINT_AUDIO_DRIVER, "no-such-driver"); // the screen then names the one taken instead
    ASSERT_TRUE(start_demo());
    EXPECT_GT(MIX_GetTrackFadeFrames(audio->music), 0) << "the music fades in";
    EXPECT_TRUE(shows(16, 54, DIM, "DRIVER dummy", BACKGROUND));
    EXPECT_TRUE(shows(400, 158, DIM, "RETRO  by this project's generators, WAV", BACKGROUND));
    EXPECT_TRUE(shows(16, 426, DIM, "up/down select   left/right change   jump play/stop", BACKGROUND));
    EXPECT_TRUE(value(0, true, "FluffyTail.ogg  playing", ACTIVE));
    EXPECT_TRUE(value(1, false, "FluffyTail.mp3  stopped"));
    for (int row = 0; row < ROW_COUNT; row++) {
        EXPECT_TRUE(label(row, row == 0)) << row;
        EXPECT_TRUE(row < COIN || value(row, false, row < CLICK ? "seed 1" : FILES[row - CLICK])) << row;
    }

    for (int row = 0; row < ROW_COUNT; row++) {
        SCOPED_TRACE(row);
        const bool sounds = row > EFFECTS;
        silence();
        row % 2 ? press(SDLK_SPACE) : gamepad_down(SDL_GAMEPAD_BUTTON_SOUTH);
        frame(0.02);
        EXPECT_TRUE(label(row, true, sounds ? FLASH : TEXT));
        EXPECT_EQ(played_frames() > 0, sounds);
        EXPECT_TRUE(!sounds || row >= CLICK || played_frames() == generated_frames(row - COIN, 1));
        EXPECT_TRUE(value(0, row == 0, "FluffyTail.ogg  stopped")) << "since the first press";
        frames(8, 0.04);
        EXPECT_TRUE(label(row, true)) << "the flash is over";
        row % 2 ? press(SDLK_S) : gamepad_down(SDL_GAMEPAD_BUTTON_DPAD_DOWN);
        frame(0.02);
    }
    EXPECT_TRUE(label(0, true)) << "round";
    EXPECT_TRUE(value(1, false, "FluffyTail.mp3  playing", ACTIVE));
    press(SDLK_UP);
    EXPECT_TRUE(label(ROW_COUNT - 1, true)) << "and back";
    EXPECT_TRUE(log.errors().empty());
}

TEST_F(AudioDemoTest, TheMusicFadesOutAndChangesAtOnce) {
    ASSERT_TRUE(start_demo());
    MIX_Audio *ogg = MIX_GetTrackAudio(audio->music);
    press(SDLK_SPACE);
    EXPECT_TRUE(value(0, true, "FluffyTail.ogg  stopped"));
    EXPECT_LT(MIX_GetTrackFadeFrames(audio->music), 0) << "it fades out";
    press(SDLK_SPACE);
    EXPECT_TRUE(value(0, true, "FluffyTail.ogg  playing", ACTIVE));
    key_down(SDLK_DOWN);
    press(SDLK_SPACE); // moves first, then plays
    EXPECT_TRUE(value(0, false, "FluffyTail.ogg  stopped"));
    EXPECT_TRUE(value(1, true, "FluffyTail.mp3  playing", ACTIVE));
    EXPECT_NE(MIX_GetTrackAudio(audio->music), ogg);
    EXPECT_GT(MIX_GetTrackFadeFrames(audio->music), 0);

    engine_set_state(GAME_STATE_MAIN_MENU);
    frame();
    EXPECT_LT(MIX_GetTrackFadeFrames(audio->music), 0) << "leaving fades out, too";
    engine_set_state(GAME_STATE_AUDIO_DEMO);
    frames(2);
    EXPECT_TRUE(value(0, true, "FluffyTail.ogg  playing", ACTIVE)) << "every visit begins anew";
    EXPECT_GT(MIX_GetTrackFadeFrames(audio->music), 0);
    EXPECT_TRUE(log.errors().empty());
}

TEST_F(AudioDemoTest, VolumesStayInTheirRangeAndAreSaved) {
    ASSERT_TRUE(start_demo());
    const struct {
        int row;
        SDL_Keycode key;
        int times, lit;
        const char *number;
    } cases[] = {{MASTER, SDLK_UP, 0, 8, "0.8"},  {MASTER, SDLK_LEFT, 9, 0, "0.0"},
                 {MASTER, SDLK_D, 10, 10, "1.0"}, {MASTER, SDLK_RIGHT, 2, 10, "1.0"},
                 {MUSIC, SDLK_A, 1, 5, "0.5"},    {EFFECTS, SDLK_LEFT, 20, 0, "0.0"}};
    int selected = 0;
    for (const auto &c : cases) {
        press(SDLK_DOWN, c.row - std::exchange(selected, c.row));
        press(c.key, c.times);
        EXPECT_TRUE(volume(c.row, c.lit, c.number)) << c.row << ", " << c.number;
    }
    stop();
    const std::string saved = read_file("config/lumarind-engine.ini");
    for (const char *line : {"master_volume = 1.0", "music_volume = 0.5", "sfx_volume = 0.0"}) {
        EXPECT_NE(saved.find(line), saved.npos) << line << " in\n" << saved;
    }
}

TEST_F(AudioDemoTest, SeedsAreHeardAtEachChangeAndEndAtZero) {
    allocation_faults_install();
    ASSERT_TRUE(start_demo());
    press(SDLK_DOWN, POWERUP - 1);
    key_down(SDLK_DOWN);
    press(SDLK_LEFT); // one step moves first, then changes
    EXPECT_TRUE(value(POWERUP, true, "seed 0"));
    EXPECT_TRUE(label(POWERUP, true, FLASH));
    EXPECT_EQ(played_frames(), generated_frames(SFX_POWERUP, 0));
    watch_played();
    silence();
    frames(10, 0.03);
    press(SDLK_LEFT);
    EXPECT_TRUE(value(POWERUP, true, "seed 0"));
    EXPECT_TRUE(label(POWERUP, true)) << "nothing was played";
    EXPECT_EQ(played_frames(), 0);
    EXPECT_EQ(freed, 0);
    press(SDLK_RIGHT);
    EXPECT_EQ(played_frames(), generated_frames(SFX_POWERUP, 1));
    EXPECT_EQ(freed, 1) << "the sound of the old seed";

    frames(10, 0.03);
    allocation_faults_arm(1, false);
    press(SDLK_RIGHT);
    EXPECT_EQ(allocation_faults_disarm(), 1);
    EXPECT_EQ(log.count("[SFX] Memory allocation failed, error: "), 1);
    silence();
    press(SDLK_SPACE);
    EXPECT_TRUE(label(POWERUP, true)) << "there is nothing to play";
    EXPECT_TRUE(value(POWERUP, true, "seed 2"));
    EXPECT_EQ(played_frames(), 0);
    press(SDLK_RIGHT);
    EXPECT_TRUE(label(POWERUP, true, FLASH)) << "the next seed is another try";
    EXPECT_EQ(played_frames(), generated_frames(SFX_POWERUP, 3));
    EXPECT_TRUE(value(POWERUP + 1, false, "seed 1")) << "each row has its own";
    watch_played();
    silence();
    engine_set_state(GAME_STATE_MAIN_MENU);
    frame();
    EXPECT_EQ(freed, 2) << "the screen's sounds go with it";
    EXPECT_EQ(log.errors().size(), 1u);
}

TEST_F(AudioDemoTest, AMissingOrBrokenFileFailsTheScreenByName) {
    const fs::path real = fs::canonical("assets");
    for (const char *path : {"assets/audio/music/FluffyTail.mp3", "assets/audio/sfx/retro/sfx_sounds_fanfare1.wav"}) {
        fs::remove_all("assets");
        fs::copy(real, "assets", fs::copy_options::recursive);
        fs::remove(path);
        log.lines.clear();
        EXPECT_FALSE(start_demo());
        EXPECT_TRUE(log.only_error_starts(std::string("[AUDIO] Unable to load ") + path + ", error: "));
        write_file(path, "not sound");
        ASSERT_TRUE(start());
        engine_set_state(GAME_STATE_AUDIO_DEMO);
        EXPECT_FALSE(frame()) << path;
        EXPECT_FALSE(audio_music_playing()) << path;
    }
}

} // namespace
