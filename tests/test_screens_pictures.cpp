// Every screen after a script of user input, compared with the stored pictures.

#include "app/screen_registry.h"
#include "lumarind/engine/engine.h"
#include "screens/screen_states.h"
#include "support/engine_fixture.h"
#include "support/stored.h"

#include <SDL3/SDL_stdinc.h>

#include <cstdlib>
#include <filesystem>

namespace {

struct Scene {
    const char *name;
    const char *screen;
    const char *size;
    const char *script;
    const char *settings = ""; // appended to the configuration
};
void PrintTo(const Scene &scene, std::ostream *out) { *out << scene.script; }

constexpr const char *TWICE = "ui_scale = 2\n", *SLOW = "[simulation]\nfixed_step_hz = 4\n";

constexpr Scene SCENES[] = {
    {"menu", "main-menu", "800x450", "1"},
    {"menu_columns", "main-menu", "1280x420", "1 size:1200x300 1 Down Right Right 1 Left pad:dpdown 1 move:600,127 1"},
    {"menu_twice", "main-menu", "900x900", "1 Up 1 move:100,330 1", TWICE},
    {"menu_fade", "main-menu", "800x450", "1 pad:dpup Up Return 8"},
    {"menu_reached", "text-demo", "800x450", "2 Escape 30 Down 7"},

    {"text", "text-demo", "800x450", "1"},
    {"text_twice", "text-demo", "801x321", "1", TWICE},

    {"texture", "texture-demo", "640x450", "20.5"},
    {"texture_twice", "texture-demo", "1200x901", "1.5s 5", TWICE},
    {"texture_between", "texture-demo", "640x450", "20.5", SLOW},

    {"tilemap", "tilemap-demo", "640x360", "1s 15.5"},
    {"tilemap_small_view", "tilemap-demo", "301x200", "6.5s 10", TWICE},
    {"tilemap_wide", "tilemap-demo", "1600x200", "4 size:640x600 4"},

    {"logical", "logical-demo", "640x360", "1s .5"},
    {"logical_large", "logical-demo", "1100x700", "5 size:1024x600 1s"},
    {"logical_paused", "logical-demo", "700x500", "~P pad:back 0.5s P 0.5s P 0.5s pad:start 0.5s", TWICE},
    {"logical_left", "logical-demo", "640x360", "5 Escape 27"},

    {"sprite", "sprite-demo", "1280x720", "10"},
    {"sprite_keys", "sprite-demo", "800x450", "3 Right Right 9 . . key:, F key:1 1"},
    {"sprite_cycle", "sprite-demo", "640x500", "3s 1"},
    {"sprite_finished", "sprite-demo", "1000x620", "Left key:2 5s 10"},
    {"sprite_again", "sprite-demo", "640x360", "Left 5s Space 0.5s 3 Space 5"},
    {"sprite_resumed", "sprite-demo", "640x360", "Right Space 0.5s R 2.85s", TWICE},

    {"platformer", "platformer-demo", "800x450", "1"},
    {"platformer_run", "platformer-demo", "800x450", "+Right 40.5"},
    {"platformer_jump", "platformer-demo", "640x360", "+D 20 Z 25 I 12"},
    {"platformer_roll", "platformer-demo", "640x360", "+Right 20 Left_Shift 12 -Right +S 10"},
    {"platformer_back", "platformer-demo", "1280x720", "+Right 1s -Right +A 0.5s -A X 0.5s L 1s"},
    {"platformer_attacks", "platformer-demo", "640x360", "J 20 K 0.5s K 1s U 0.5s", TWICE},
    {"platformer_hurt", "platformer-demo", "640x360", "2 H 1.5s +S 10 H 10"},
    {"platformer_dead", "platformer-demo", "640x360", "2 H 1.5s H 1.5s H 1s 10"},

    {"gamepad_none", "gamepad-demo", "800x450", "R 1", "[gamepad]\ndeadzone = 0.5\n"},
    {"gamepad", "gamepad-demo", "800x450",
     "pad:plug 2 pad:a=1 pad:leftshoulder=1 pad:rightstick=1 pad:leftx=.3 pad:lefty=-.2 pad:rightx=-.7 pad:righty=.55 "
     "pad:righttrigger=.7 pad:lefttrigger=.4 R 2"},
    {"gamepad_held", "gamepad-demo", "1600x900",
     "pad:plug 2 pad:dpup=1 pad:dpleft=1 pad:start=1 pad:back=1 pad:guide=1 pad:leftstick=1 pad:x=1 pad:y=1 pad:b=1 "
     "pad:leftx=1 pad:lefty=1 X 2",
     TWICE},

    {"input", "input-demo", "640x400", "2 Space 2 Space +Right +Up 12.5", "[input]\njump = Space, F9\n"},
    {"input_paused", "input-demo", "800x450", "pad:plug 2 +Left_Shift +Left 30 P 2 +Down 9 J 1"},
    {"input_edge", "input-demo", "640x400", "+D +X 3s size:400x300 3"},

    {"audio", "audio-demo", "800x450", "2"},
    {"audio_music", "audio-demo", "800x450", "2 Space 2 Down Space 2"},
    {"audio_volumes", "audio-demo", "1000x420",
     "2 Down 1 Down 1 Left 1 Left 1 Down 1 D 1 D 1 D 1 D 1 D 1 Down 1 A 1 A 1 A 1 A 1 A 1 A 1 A 1 A 1 A 1 A 1"},
    {"audio_seeds", "audio-demo", "800x450",
     "2 W 1 W 1 Z 5 Up 1 S 1 S 1 S 1 S 1 S 1 S 1 S 1 S 1 S 1 Right 1 Right 14 D 1"},

    {"physics", "physics-demo", "800x450", "1"},
    {"physics_thrown", "physics-demo", "640x360", "2 Space 10 drop:300,40 2 drop:420,60 rdrop:360,50 +Left 8.5", TWICE},
    {"physics_asleep", "physics-demo", "1280x720", "1s 10 +D 10"},
};

// If set, each scene is recorded in this folder as NAME.FRAMES, to be replayed by packaged programs. Not SDL_getenv,
// which would copy the environment before the tests change it.
static const char *const FOLDER = std::getenv("LUMARIND_RECORD_SCENES");
static const std::string RECORDINGS = FOLDER ? FOLDER : "";

constexpr Uint32 INPUT_EVENTS[] = {
    SDL_EVENT_KEY_DOWN, SDL_EVENT_MOUSE_MOTION, SDL_EVENT_MOUSE_BUTTON_DOWN, SDL_EVENT_GAMEPAD_BUTTON_DOWN};
bool SDLCALL count_event(void *count, SDL_Event *event) {
    for (const Uint32 type : INPUT_EVENTS) *static_cast<int *>(count) += event->type == type ? 1 : 0;
    return true;
}

class PictureTest : public EngineTest, public testing::WithParamInterface<Scene> {
    void TearDown() override {
        const std::string frames = RECORDINGS.empty() ? "" : std::to_string(engine_frame_number());
        EngineTest::TearDown();
        if (!frames.empty())
            std::filesystem::rename(RECORDINGS + "/now", RECORDINGS + "/" + GetParam().name + "." + frames);
    }
};

TEST_P(PictureTest, MatchesStoredPicture) {
    const Scene &scene = GetParam();
    config += scene.settings;
    if (!RECORDINGS.empty()) SDL_setenv_unsafe("LUMARIND_RECORD", (RECORDINGS + "/now").c_str(), 1);
    ASSERT_TRUE(start({"--screen", scene.screen, "--window-size", scene.size}));
    EXPECT_TRUE(screen_setup(engine_get_state())) << "again, which changes nothing";
    int pushed = 0, delivered = 0;
    for (const Uint32 type : INPUT_EVENTS)
        engine_add_callback(type, [](SDL_Event *event, void *count) { return count_event(count, event); }, &delivered);
    SDL_AddEventWatch(count_event, &pushed);
    play(scene.script);
    SDL_RemoveEventWatch(count_event, &pushed);
    EXPECT_EQ(delivered, pushed) << "screens do not keep events from later callbacks";
    EXPECT_TRUE(matches_stored(picture(), scene.name));
    EXPECT_TRUE(log.errors().empty());
    if (!RECORDINGS.empty()) return;
    engine_set_state(GAME_STATE_TEXT_DEMO); // which has no callbacks
    frame();
    for (Uint32 type = 0; type < ENGINE_EVENT_TYPES; type++)
        EXPECT_EQ(engine->callbacks[type].count, 0) << "left by the screen: " << type;
}

INSTANTIATE_TEST_SUITE_P(Of, PictureTest, testing::ValuesIn(SCENES), [](const auto &test) {
    return std::string(test.param.name);
});

} // namespace
