// Cinder Keep from its first screen to its last, its saves and its settings.

#include "game.h"
#include "keep/keep_fixture.h"
#include "lumarind/engine/engine.h"
#include "lumarind/replay/replay.h"

namespace {

// Not a test unless asked for: plays the routes and writes the recordings that tests replay. ./dev routes
TEST_F(KeepTest, RoutesAreRecorded) {
    const char *folder = std::getenv("LUMARIND_ROUTES");
    if (!folder) GTEST_SKIP() << "LUMARIND_ROUTES names no folder";
    const char *only = std::getenv("LUMARIND_ROUTES_ONLY");
    for (const int number : {1, 2}) {
        if (only && std::atoi(only) != number) continue;
        ASSERT_TRUE(
            start({"--screen", "title", "--window-size", std::getenv("LUMARIND_ROUTES_TELL") ? "64x36" : "640x360"}) &&
            frame());
        ASSERT_TRUE(replay_record((std::string(folder) + "/cinder-keep-" + std::to_string(number) + ".lmr").c_str()));
        engine_set_state(state_of(SCREEN_LEVEL_1 + number - 1));
        frame();
        ASSERT_EQ(run_route(number), "") << "level " << number;
        const Level *level = play_level();
        std::printf(
            "level %d: %.2f s, %d embers, %d deaths, hearts %d\n", number, level->time, level->embers, level->deaths,
            level->hero.hearts);
        frames(60, 1.0 / 60);
        stop();
    }
}

} // namespace
