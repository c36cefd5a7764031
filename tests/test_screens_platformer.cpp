// The playable castle: latched presses, health, falls, and unplayable levels.

#include "app/screen_registry.h"
#include "lumarind/engine/game.h"
#include "lumarind/toolkit/reload.h"
#include "screens/screen_states.h"
#include "support/call_faults.h"
#include "support/engine_fixture.h"

namespace fs = std::filesystem;

namespace {

constexpr const char *COLLISIONS = "assets/fireknight/tilemaps/castle-tilemap-collisions.csv";
constexpr SDL_Color BODY = {80, 255, 112, 255};

class PlatformerTest : public EngineTest {
protected:
    PictureBounds body() { return bounds_of(shown(), BODY); } // its outline and feet line in the window
    // Uses a level in the test's folder.
    void use_own_level(const std::string &collisions) {
        const fs::path real = fs::canonical("assets");
        fs::remove("assets");
        fs::create_directories("assets/fireknight");
        fs::create_directory_symlink(real / "fireknight/sprites", "assets/fireknight/sprites");
        fs::copy(real / "fireknight/tilemaps", "assets/fireknight/tilemaps");
        write_file(COLLISIONS, collisions);
        directory.use_as_game_files();
    }
    void start_own_level(const std::string &collisions) {
        ASSERT_TRUE(start({"--screen", "text-demo", "--window-size", "1280x720"}));
        use_own_level(collisions);
        engine->state = GAME_STATE_PLATFORMER_DEMO;
        frame();
    }
};

TEST_F(PlatformerTest, FallRespawnsUntilReloadedFileHasGround) {
    reload_set(true, 0);
    start_own_level("0,416,200,16\n"); // a floor that ends
    play("+Right 36");
    EXPECT_GT(body().left, 500);
    play("-Right 1.25s");
    EXPECT_EQ(body().left, 270);
    EXPECT_FALSE(log.has("[PLATFORMER_DEMO] Reloaded: ")) << "nothing has changed";
    write_file(COLLISIONS, ""); // invalid: the old floor is kept
    play("2 1s");
    EXPECT_EQ(log.errors().size(), 1u);
    EXPECT_EQ(body().bottom, 360);
    write_file(COLLISIONS, "0,432,1920,16\n");
    play("1s");
    EXPECT_EQ(body().bottom, 408) << "reloaded, 16 px lower";
    screen_cleanup();
    write_file(COLLISIONS, "0,416,1920,16\n");
    log.lines.clear();
    for (int i = 0; i < 3; i++) reload_tick();
    EXPECT_TRUE(log.lines.empty()) << "the screen is closed";
    reload_set(false);
}

TEST_F(PlatformerTest, SpawnInsideColliderIsRejected) {
    ASSERT_TRUE(start({"--screen", "text-demo"}));
    const Screen *screen = screen_for(GAME_STATE_PLATFORMER_DEMO);
    use_own_level("0,416,200,16\n95,380,4,4\n");
    EXPECT_FALSE(screen->setup());
    EXPECT_TRUE(log.has("[PLATFORMER_DEMO] Spawn at (100, 416) is inside a collider"));
    screen->cleanup();
    fs::remove(COLLISIONS);
    EXPECT_FALSE(screen->setup());
    screen->cleanup();
    screen->cleanup();
}

TEST_F(PlatformerTest, SetUpSurvivesAllocationFaults) {
    ASSERT_TRUE(start({"--screen", "text-demo"}));
    use_own_level("0,416,200,16\n0,0,8,0,8,8\n"); // short, because each line makes an allocation
    const Screen *screen = screen_for(GAME_STATE_PLATFORMER_DEMO);
    expect_allocation_faults_survived(&log, screen->setup, screen->cleanup);
    EXPECT_EQ(engine->callbacks[SDL_EVENT_KEY_DOWN].count, 0);
}

} // namespace
