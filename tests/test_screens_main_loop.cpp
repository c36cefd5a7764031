// The main loop: start screens, screen changes, quitting, failed starts, and missing assets.

#include "app/demo_game.h"
#include "app/main_loop.h"
#include "app/screen_registry.h"
#include "lumarind/core/storage.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/game.h"
#include "screens/screen_states.h"
#include "support/call_faults.h"
#include "support/engine_fixture.h"
#include "support/sdl_calls.h"
#include "support/stored.h"

namespace fs = std::filesystem;

namespace {

class MainLoopTest : public EngineTest {
protected:
    static int run(std::vector<std::string> words) { // runs the whole program and returns its exit code
        std::vector<char *> argv;
        for (std::string &word : words) argv.push_back(word.data());
        sdl_calls.clear();
        return engine_run(&demo_game, static_cast<int>(argv.size()), argv.data());
    }
};

TEST_F(MainLoopTest, StatesWithoutScreenDoNothing) {
    for (const GameState state : {-1, 0, 1, 2, int{GAME_STATE_COUNT}, 1000}) {
        EXPECT_EQ(screen_for(state), nullptr) << state;
        screen_tick(state);
        screen_fixed_update(state, 1);
    }
    EXPECT_TRUE(screen_setup(GAME_STATE_QUIT));
    screen_cleanup();
}

TEST_F(MainLoopTest, RunsReturnExitCodeAndCloseLog) {
    const std::string box = "Lumarind Engine v0.0.1: Lumarind Engine could not start. See lumarind-engine.log in this "
                            "folder for the reason. box 16; ";
    const struct {
        std::vector<std::string> words;
        int code;
        std::string box;
        const char *last_line;
    } cases[] = {
        {{"L", "--help"}, 0, "", ""},
        {{"L", "--quit-at", "3"}, 0, "", "[ENGINE] SDL3 shutdown\n"},
        {{"L", "--quit-at"}, 1, box, "ERROR: [ARGS] Missing value for: --quit-at\n"},
        {{"L", "--screen", "Main-Menu"}, 1, box, "  physics-demo\n"},
    };
    for (const auto &c : cases) {
        ::testing::internal::CaptureStdout(); // the usage
        EXPECT_EQ(run(c.words), c.code) << c.words.back();
        ::testing::internal::GetCapturedStdout();
        EXPECT_EQ(sdl_calls.substr(c.box.empty() ? sdl_calls.size() : sdl_calls.find(c.box)), c.box);
        EXPECT_EQ(sdl_calls.find("box") != sdl_calls.npos, !c.box.empty());
        SDL_Log("after the run");
        EXPECT_TRUE(read_file("lumarind-engine.log").ends_with(c.last_line)) << c.words.back();
        EXPECT_EQ(read_file("lumarind-engine.log").find("after"), std::string::npos);
    }
    EXPECT_EQ(log.errors().back(), "[MAIN] Unknown screen: Main-Menu");
    EXPECT_EQ(log.count("Valid --screen names:"), 1);
    EXPECT_EQ(log.count("-demo"), 10);
}

TEST_F(MainLoopTest, StateChangesWithinFrameRestartScreenUntilLastFrame) {
    ASSERT_TRUE(start({"--screen", "text-demo", "--quit-at", "4"}));
    EXPECT_TRUE(frame());
    log.lines.clear();
    engine_set_state(GAME_STATE_MAIN_MENU);
    engine_set_state(GAME_STATE_TEXT_DEMO);
    EXPECT_TRUE(frame());
    EXPECT_TRUE(log.has("[FONTS] Setting up font: assets/fonts/Perfect DOS VGA 437 Win.ttf"));
    engine_set_state(GAME_STATE_MAIN_MENU);
    EXPECT_TRUE(frame());
    EXPECT_EQ(engine->callbacks[SDL_EVENT_KEY_DOWN].count, 1);
    engine_set_state(GAME_STATE_TEXTURE_DEMO);
    EXPECT_FALSE(frame()) << "the fourth frame is the last";
    EXPECT_EQ(engine->callbacks[SDL_EVENT_KEY_DOWN].count, 0) << "the menu has removed its callbacks";
}

TEST_F(MainLoopTest, MissingOrCorruptAssetsFailScreenWithPath) {
    const struct {
        const char *screen, *file, *content, *error; // no content: the file is missing
    } cases[] = {
        {"main-menu", "fonts/EuroStyle Normal.ttf", nullptr, "[FONTS] Font file not found (assets/fonts/EuroStyle "},
        {"main-menu", "fonts/EuroStyle Normal.ttf", "noise", "[FONTS] Font loading failed, error: "},
        {"texture-demo", "texture_demo/texture_a.png", nullptr,
         "[TEXTURE_DEMO] IMG_LoadTexture failed, error: Couldn't open assets/texture_demo/texture_a.png: No such "},
        {"texture-demo", "texture_demo/texture_b.png", "\x89PNG\r\n\x1a\nno",
         "[TEXTURE_DEMO] IMG_LoadTexture failed, error: assets/texture_demo/texture_b.png: the file is truncated "
         "before"},
        {"audio-demo", "audio/sfx/retro/sfx_sounds_fanfare1.wav", "no sound",
         "[AUDIO] Unable to load assets/audio/sfx/retro/sfx_sounds_fanfare1.wav, error: "},
        {"sprite-demo", "fireknight/sprites/fireknight_288x128.png", nullptr, "[SPRITE_SHEET] IMG_LoadTexture failed "},
    };
    const fs::path real = fs::canonical("assets");
    for (const auto &c : cases) {
        fs::remove_all("assets");
        fs::copy(real, "assets", fs::copy_options::recursive);
        fs::remove(fs::path("assets") / c.file);
        if (c.content) write_file(fs::path("assets") / c.file, c.content);
        log.lines.clear();
        EXPECT_FALSE(start({"--screen", c.screen})) << c.file;
        EXPECT_EQ(engine, nullptr);
        EXPECT_TRUE(log.only_error_starts(c.error)) << log.errors().at(0);
    }
    ASSERT_TRUE(start() && frame());
    engine_set_state(GAME_STATE_SPRITE_DEMO);
    EXPECT_FALSE(frame()) << "a screen that fails ends the program";
}

// Except the platformer, whose level makes an allocation per line: its own tests use a shorter one.
TEST_F(MainLoopTest, ScreensSurviveAllocationFaultsAndRemoveCallbacks) {
    ASSERT_TRUE(start());
    screen_cleanup();
    for (GameState state = GAME_STATE_MAIN_MENU; screen_for(state); state++) {
        if (state == GAME_STATE_PLATFORMER_DEMO) continue;
        SCOPED_TRACE(state);
        expect_allocation_faults_survived(&log, screen_for(state)->setup, screen_for(state)->cleanup);
        for (Uint32 type = 0; type < ENGINE_EVENT_TYPES; type++) ASSERT_EQ(engine->callbacks[type].count, 0) << type;
    }
}

TEST_F(MainLoopTest, FailingCallsGiveStoredReports) {
    config = "[graphics]\nvsync_enable = true\n";
    set_environment("LUMARIND_RECORD", "run.lmr");
    std::string text = "start and stop\n" + with_failing_calls(&log, [&] { return start() && (stop(), true); });
    set_environment("LUMARIND_RECORD", nullptr);
    config = "[graphics]\nvsync_enable = false\nui_scale = 1\n";
    ASSERT_TRUE(start());
    text += screens_with_failing_calls(demo_game.screen_count);
    text += "scale\n" + with_failing_calls(&log, [&] {
                const bool ok = engine_set_ui_scale(2);
                return engine_set_ui_scale(1) && ok;
            });
    text += "save\n" + with_failing_calls(&log, [] { return storage_write_user_file("a/b", "c", 1); });
    const struct {
        const char *config, *screen, *script;
    } frames_of[] = {
        {"", "text-demo", "F12 1"},
        {"[capture]\nformat = jpg\n", "text-demo", "F12 1"},
        {"", "sprite-demo", "size:640x400 1 size:800x450 1"}, // scales the whole sheet
        {"", "audio-demo", "Space 1 Down Down Space 1 Right 1"},
        {"", "main-menu", "F3 1 F3 1"},
    };
    for (const auto &c : frames_of) {
        config = std::string("[graphics]\nvsync_enable = false\n") + c.config;
        ASSERT_TRUE(start({"--screen", c.screen}));
        text += std::string(c.screen) + ": " + c.script + "\n" +
                with_failing_calls(&log, [&] { return play(c.script), true; });
    }
    expect_stored("failing-calls.txt", text);
}

TEST_F(MainLoopTest, RandomPlayMatchesStoredHashes) {
    expect_stored("random-play.txt", random_play(demo_game.screen_count, 150));
}

// Covers the setup and cleanup of all modules.
TEST_F(MainLoopTest, StartSurvivesAllocationFaults) {
    expect_allocation_faults_survived(
        &log, [&] { return start(); },
        [&] {
            if (engine) stop();
        });
}

} // namespace
