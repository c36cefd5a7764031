// Cinder Keep's screens, and the menus and settings they take from the library, compared with the stored pictures.

#include "game.h"
#include "keep/keep_fixture.h"
#include "lumarind/engine/engine.h"
#include "progress.h"
#include "support/stored.h"

#include <SDL3/SDL_stdinc.h>

namespace {

struct Scene {
    const char *name, *screen, *size, *script;
};
void PrintTo(const Scene &scene, std::ostream *out) { *out << scene.script; }

// From the title to the settings, and there to the first action's second binding.
#define SETTINGS "2 Down 1 Return 2 "
#define BINDING SETTINGS "Down 1 Down 1 Down 1 Down 1 Down 1 Down 1 Right 1 "

constexpr Scene SCENES[] = {
    {"keep_title", "title", "640x360", "45"},
    {"keep_title_quit", "title", "400x250", "2 Up 9"},
    {"keep_settings", "title", "800x450", SETTINGS "Down 1 Left 1 Left 2"},
    {"keep_settings_small", "title", "480x270", "pad:plug 2 " SETTINGS "Up 1 Up 1 Up 2"},
    {"keep_binding", "title", "800x450", BINDING "Right 2"},
    {"keep_binding_cleared", "title", "640x420", BINDING "Delete 2"},
    {"keep_binding_waiting", "title", "640x360", BINDING "Return 1.5s 2"},
    {"keep_binding_conflict", "title", "640x360", BINDING "Return 2 J 2"},
    {"keep_binding_swapped", "title", "640x420", BINDING "Return 2 J 2 Return 2"},
    {"keep_pause", "level-1", "640x360", "20 Escape 2 Down 2"},
    {"keep_play", "level-1", "640x360", "+Right 1.5s -Right J 12"},
    {"keep_play_large", "level-2", "1000x720", "+Right 0.5s Space 0.4s"},
    {"keep_credits", "credits", "640x360", "4s"},
};

class KeepPictures : public KeepTest, public testing::WithParamInterface<Scene> {};

TEST_P(KeepPictures, MatchStoredPictures) {
    const Scene &scene = GetParam();
    ASSERT_TRUE(start({"--screen", scene.screen, "--window-size", scene.size}));
    SDL_srand(1); // of the particles
    play(scene.script);
    EXPECT_TRUE(matches_stored(picture(), scene.name));
    EXPECT_TRUE(log.errors().empty());
}

using KeepPicturesOfRun = KeepTest;

TEST_F(KeepPicturesOfRun, PlatformsGlideInFrontOfFire) {
    ASSERT_TRUE(start({"--screen", "title", "--window-size", "640x360"}) && frame());
    progress.run = {.level = 1, .checkpoint = 2};
    play_continue_next();
    engine_set_state(state_of(SCREEN_LEVEL_2));
    SDL_srand(1);
    play("75");
    EXPECT_TRUE(matches_stored(picture(), "keep_fire"));
}

INSTANTIATE_TEST_SUITE_P(Of, KeepPictures, testing::ValuesIn(SCENES), [](const auto &test) {
    return std::string(test.param.name);
});

} // namespace
