// The program's spine: start screens, switches, quitting, and every failed start.

#include "app/screen_registry.h"
#include "engine/engine.h"
#include "support/allocation_faults.h"
#include "support/engine_fixture.h"

namespace fs = std::filesystem;

namespace {

class MainLoopTest : public EngineTest {};

TEST_F(MainLoopTest, StatesWithoutAScreenDoNothing) {
    for (const GameState state : {-1, 0, 1, 2, 14, 1000}) {
        EXPECT_EQ(screen_for(state), nullptr) << state;
        screen_tick(state);
        screen_fixed_update(state, 1);
    }
    EXPECT_TRUE(screen_setup(GAME_STATE_QUIT));
    screen_cleanup();
}

TEST_F(MainLoopTest, AnUnknownScreenIsRefusedWithTheNames) {
    EXPECT_FALSE(start({"--screen", "Main-Menu"}));
    EXPECT_EQ(log.errors(), std::vector<std::string>{"[MAIN] Unknown screen: Main-Menu"});
    ASSERT_EQ(log.lines.size(), 13u);
    EXPECT_EQ(log.lines[1].text, "Valid --screen names:");
    EXPECT_EQ(log.lines[2].text, "  main-menu");
    EXPECT_EQ(log.lines[12].text, "  physics-demo");
    EXPECT_EQ(read_file("lumarind-engine.log").find("ERROR: [MAIN] Unknown screen: Main-Menu\nValid"), 0u);
}

TEST_F(MainLoopTest, QuitAtEndsAfterThatFrame) {
    ASSERT_TRUE(start({"--quit-at", "3"}));
    EXPECT_TRUE(frame());
    EXPECT_TRUE(frame());
    EXPECT_FALSE(frame());
    EXPECT_EQ(engine_frame_number(), 3u);
}

TEST_F(MainLoopTest, SwitchesWithinAFrameSetTheScreenUpAgain) {
    ASSERT_TRUE(start({"--screen", "text-demo"}));
    frame();
    log.lines.clear();
    engine_set_state(GAME_STATE_MAIN_MENU);
    engine_set_state(GAME_STATE_TEXT_DEMO);
    EXPECT_TRUE(frame());
    EXPECT_TRUE(log.has("[FONTS] Setting up font: assets/fonts/Perfect DOS VGA 437 Win.ttf"));
    engine_set_state(GAME_STATE_MAIN_MENU);
    EXPECT_TRUE(frame());
    EXPECT_EQ(engine->callbacks[SDL_EVENT_KEY_DOWN].count, 1);
    engine_set_state(GAME_STATE_TEXTURE_DEMO);
    EXPECT_TRUE(frame());
    EXPECT_EQ(engine->callbacks[SDL_EVENT_KEY_DOWN].count, 0) << "the menu took its callbacks along";
}

TEST_F(MainLoopTest, AScreenThatFailsLaterEndsTheLoopInPeace) {
    ASSERT_TRUE(start());
    frame();
    fs::remove("assets");
    engine_set_state(GAME_STATE_TEXTURE_DEMO);
    EXPECT_FALSE(frame());
    stop();
    EXPECT_EQ(log.errors().size(), 1u);
    EXPECT_TRUE(log.has("[CONFIG] Config file saved"));
}

TEST_F(MainLoopTest, WithoutTheUiFontThereIsNoStart) {
    fs::remove("assets");
    EXPECT_FALSE(start());
    EXPECT_EQ(
        log.errors(), std::vector<std::string>{"[FONTS] Font file not found (assets/fonts/EuroStyle Normal.ttf)"});
    write_file("assets/fonts/EuroStyle Normal.ttf", "noise");
    EXPECT_FALSE(start());
    EXPECT_EQ(log.count("[FONTS] Font loading failed, error: "), 1);
    EXPECT_EQ(engine, nullptr);
}

// Without the platformer, whose level takes an allocation to a line: it has a shorter one in its own tests.
TEST_F(MainLoopTest, ScreensSurviveEachAllocationFailingAndTakeTheirCallbacksAlong) {
    ASSERT_TRUE(start());
    screen_cleanup();
    for (GameState state = GAME_STATE_MAIN_MENU; screen_for(state); state++) {
        if (state == GAME_STATE_PLATFORMER_DEMO) continue;
        SCOPED_TRACE(state);
        expect_allocation_faults_survived(&log, screen_for(state)->setup, screen_for(state)->cleanup);
        for (Uint32 type = 0; type < ENGINE_EVENT_TYPES; type++) ASSERT_EQ(engine->callbacks[type].count, 0) << type;
    }
}

TEST_F(MainLoopTest, TheWholeStartSurvivesEachAllocationFailing) {
    expect_allocation_faults_survived(
        &log, [&] { return start(); },
        [&] {
            if (engine) stop();
        });
}

} // namespace
