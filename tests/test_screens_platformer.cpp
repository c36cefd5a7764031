// The playable castle: latched presses, health, falls, and levels that cannot be played.

#include "app/screen_registry.h"
#include "lumarind/engine/game.h"
#include "lumarind/toolkit/reload.h"
#include "screens/screen_states.h"
#include "support/allocation_faults.h"
#include "support/engine_fixture.h"

namespace fs = std::filesystem;

namespace {

constexpr const char *COLLISIONS = "assets/fireknight/tilemaps/castle-tilemap-collisions.csv";
constexpr SDL_Color BODY = {80, 255, 112, 255};

class PlatformerTest : public EngineTest {
protected:
    PictureBounds body() { return bounds_of(shown(), BODY); } // its outline in the window, and the feet line
    // A level in the test's own folder.
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

TEST_F(PlatformerTest, TheCameraFollowsBeyondItsDeadZoneUpToTheWorldsEnd) {
    start_own_level("0,416,1920,16\n1910,0,10,416\n"); // level ground, and a wall at its end
    EXPECT_TRUE(log.has("Loaded 2 rect colliders and 0 slopes from assets/fireknight/tilemaps/castle-tilemap-coll"));
    EXPECT_EQ(body(), (PictureBounds{270, 240, 330, 360})) << "feet (100, 416), camera (0, 296), thrice as large";
    play("+Right 1.5s");
    EXPECT_NEAR((body().left + body().right) / 2, 0.65 * 1280, 2) << "held at the dead zone's edge";
    play("7s -Right 6");
    EXPECT_EQ(body().right, 1250) << "the camera stops at the world's end, ten pixels beyond the wall";
    play("+Left 1.5s");
    EXPECT_NEAR((body().left + body().right) / 2, 0.35 * 1280, 2) << "and at the other edge on the way back";
}

TEST_F(PlatformerTest, PressesWaitForOneStepAndRepeatsDoNothing) {
    config += "[simulation]\nfixed_step_hz = 10\n";
    start_own_level("0,416,1920,16\n");
    const int ground = body().bottom;
    play("~Space I 0.25s"); // the latter an air attack on the ground
    EXPECT_EQ(body().bottom, ground);
    play("Z 0.1 7 18"); // a frame without a step comes first
    EXPECT_LT(body().bottom, ground - 60) << "the press was not lost";
    play("1.75s");
    EXPECT_EQ(body().bottom, 432) << "one jump: the feet are back, on the dead zone's lower edge";
}

TEST_F(PlatformerTest, AFallLeadsBackToTheSpawnUnlessTheFileGetsGround) {
    reload_set(true, 0);
    start_own_level("0,416,200,16\n"); // a floor that ends
    play("+Right 36");
    EXPECT_GT(body().left, 500);
    play("-Right 1.25s");
    EXPECT_EQ(body().left, 270);
    write_file(COLLISIONS, ""); // unreadable: the old floor stays
    play("2 1s");
    EXPECT_EQ(log.errors().size(), 1u);
    EXPECT_EQ(body().bottom, 360);
    write_file(COLLISIONS, "0,432,1920,16\n");
    play("1s");
    EXPECT_EQ(body().bottom, 408) << "it follows its file, 16 px lower";
    reload_set(false);
}

TEST_F(PlatformerTest, ASpawnInsideAColliderIsRefused) {
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
    use_own_level("0,416,200,16\n0,0,8,0,8,8\n"); // a short file: each of its lines is an allocation
    const Screen *screen = screen_for(GAME_STATE_PLATFORMER_DEMO);
    expect_allocation_faults_survived(&log, screen->setup, screen->cleanup);
    EXPECT_EQ(engine->callbacks[SDL_EVENT_KEY_DOWN].count, 0);
}

} // namespace
