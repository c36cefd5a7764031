// Lets a bot play Cinder Keep to generate files: the frames of its animation in docs/gallery (./dev gallery runs that),
// and the recordings that the tests replay.
//   LUMARIND_GALLERY  output folder of the BMP files

#include "game.h"
#include "keep/keep_fixture.h"
#include "keep_bot.h"
#include "lumarind/engine/engine.h"
#include "lumarind/replay/replay.h"

#include <SDL3/SDL_error.h>

#include <cstdio>
#include <cstdlib>

namespace {

class KeepGallery : public KeepTest {
protected:
    // Plays one frame. Returns false if the program has ended.
    bool bot_frame(KeepBot *bot, double seconds) {
        const KeepKeys keys = bot->play(*play_level());
        std::set<SDL_Scancode> held;
        if (keys.left) held.insert(SDL_SCANCODE_LEFT);
        if (keys.right) held.insert(SDL_SCANCODE_RIGHT);
        if (keys.jump || keys.press_jump) held.insert(SDL_SCANCODE_SPACE);
        hold(held);
        if (keys.press_jump) play("Space");
        if (keys.press_attack) play("J");
        return frame(seconds);
    }
};

TEST_F(KeepGallery, Animation) {
    constexpr int STEPS_PER_PICTURE = 6; // 10 pictures per second
    const char *folder = std::getenv("LUMARIND_GALLERY");
    if (!folder) GTEST_SKIP() << "LUMARIND_GALLERY is not set";
    ASSERT_TRUE(start_screen("level-1", "640x360"));
    KeepBot bot(KEEP_ROUTES[0]);
    for (int step = 0; step < 60 * 11; step++) {
        bot_frame(&bot, 1.0 / 60);
        if (step < 60 * 5 || step % STEPS_PER_PICTURE != 0) continue;
        const std::string path =
            std::string(folder) + "/keep-" + std::to_string(1000 + step / STEPS_PER_PICTURE) + ".bmp";
        ASSERT_TRUE(SDL_SaveBMP(picture().get(), path.c_str())) << path << ": " << SDL_GetError();
    }
}

// At 30 frames per second: the recordings are half as large.
TEST_F(KeepGallery, Recordings) {
    std::filesystem::create_directories(RECORDINGS_WRITTEN);
    for (const int number : {1, 2}) {
        ASSERT_TRUE(start({"--screen", "title", "--window-size", "640x360"}) && frame());
        ASSERT_TRUE(replay_record((RECORDINGS_WRITTEN "/cinder-keep-" + std::to_string(number) + ".lmr").c_str()));
        engine_set_state(state_of(SCREEN_LEVEL_1 + number - 1));
        frame();
        KeepBot bot(KEEP_ROUTES[number - 1]);
        for (int i = 0; i < 30 * 240 && play_level()->phase != LEVEL_WON; i++) ASSERT_TRUE(bot_frame(&bot, 1.0 / 30));
        const Level *level = play_level();
        ASSERT_EQ(level->phase, LEVEL_WON) << "stuck: " << bot.where(*level);
        std::printf(
            "level %d: %.2f s, %d embers, %d deaths, hearts %d\n", number, level->time, level->embers, level->deaths,
            level->hero.hearts);
        frames(60, 1.0 / 60);
        stop();
    }
}

} // namespace
