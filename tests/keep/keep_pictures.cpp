// Not tests: captures Cinder Keep for docs/gallery, and every place along the bot's route for review.

#include "game.h"
#include "keep/keep_fixture.h"
#include "lumarind/engine/engine.h"

#include <SDL3/SDL_error.h>

namespace {

constexpr int STEPS_PER_PICTURE = 6; // of the animation: 10 pictures a second

class KeepPictures : public KeepTest {
protected:
    void SetUp() override {
        const char *wanted = std::getenv("LUMARIND_GALLERY");
        if (!wanted) GTEST_SKIP() << "LUMARIND_GALLERY is not set";
        folder_ = std::filesystem::absolute(wanted);
        KeepTest::SetUp();
    }
    void save(const std::string &name) const {
        const std::string path = (folder_ / (name + ".bmp")).string();
        ASSERT_TRUE(SDL_SaveBMP(picture().get(), path.c_str())) << path << ": " << SDL_GetError();
    }

private:
    std::filesystem::path folder_;
};

// LUMARIND_PLACES: steps between two pictures; LUMARIND_PLACES_SIZE: window size.
TEST_F(KeepPictures, Places) {
    const char *every = std::getenv("LUMARIND_PLACES"), *size = std::getenv("LUMARIND_PLACES_SIZE");
    if (!every) GTEST_SKIP() << "LUMARIND_PLACES is not set";
    for (const int number : {1, 2}) {
        ASSERT_TRUE(start_screen("level-" + std::to_string(number), size ? size : "1280x720"));
        KeepBot bot(KEEP_ROUTES[number - 1]);
        for (int step = 0; play_level() && play_level()->phase != LEVEL_WON && step < 60 * 200; step++) {
            press(bot.play(*play_level()));
            frame(1.0 / 60);
            if (step % std::atoi(every) == 0)
                save("place-" + std::to_string(number) + "-" + std::to_string(1000 + step / 10));
        }
        frames(60, 1.0 / 60);
        save("place-" + std::to_string(number) + "-won");
    }
}

TEST_F(KeepPictures, Gallery) {
    ASSERT_TRUE(start_screen("level-1", "640x360"));
    KeepBot bot(KEEP_ROUTES[0]);
    for (int step = 0; step < 60 * 11; step++) {
        press(bot.play(*play_level()));
        frame(1.0 / 60);
        if (step >= 60 * 5 && step % STEPS_PER_PICTURE == 0)
            save("keep-" + std::to_string(1000 + step / STEPS_PER_PICTURE));
    }
}

} // namespace
