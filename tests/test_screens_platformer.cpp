// The playable castle, read from the outlines it draws: where the body is, and where the camera looks.

#include "app/screen_registry.h"
#include "support/allocation_faults.h"
#include "support/engine_fixture.h"

#include <cmath>

namespace fs = std::filesystem;

namespace {

constexpr SDL_Color BODY = {80, 255, 112, 255};

class PlatformerTest : public EngineTest {
protected:
    bool start_level() { return start_screen("platformer-demo", "1280x720"); }
    void play(double seconds) {
        for (int i = 0; i < static_cast<int>(std::lround(seconds * 60)); i++) frame(1.0001 / 60);
    }
    PictureBounds body() { return bounds_of(shown(), BODY); } // its outline in the window, and the feet line
    // The level's files in the test's own folder, to be changed there.
    void use_own_level(const std::string &collisions) {
        const fs::path real = fs::canonical("assets");
        fs::remove("assets");
        fs::create_directories("assets/fireknight");
        fs::create_directory_symlink(real / "fireknight/sprites", "assets/fireknight/sprites");
        fs::copy(real / "fireknight/tilemaps", "assets/fireknight/tilemaps");
        write_file("assets/fireknight/tilemaps/castle-tilemap-collisions.csv", collisions);
        directory.use_as_game_files();
    }
    void start_own_level(const std::string &collisions) {
        ASSERT_TRUE(start({"--screen", "text-demo", "--window-size", "1280x720"}));
        use_own_level(collisions);
        engine->state = GAME_STATE_PLATFORMER_DEMO;
        frame();
    }
};

TEST_F(PlatformerTest, TheCameraStartsClampedAndFollowsBeyondItsDeadZone) {
    ASSERT_TRUE(start_level());
    EXPECT_TRUE(log.has("slopes from assets/fireknight/tilemaps/castle-tilemap-collisions.csv"));
    EXPECT_EQ(body(), (PictureBounds{270, 240, 330, 360}))
        << "feet (100, 416), camera (0, 296), three units to a pixel";
    hold({SDL_SCANCODE_LEFT, SDL_SCANCODE_D});
    play(0.5);
    EXPECT_EQ(body().left, 270) << "both ways is no way";
    hold({SDL_SCANCODE_RIGHT});
    play(0.5);
    EXPECT_NEAR(body().left, 270 + 3 * 125, 16) << "half a second at 250";

    start_own_level("0,416,1920,16\n1910,0,10,416\n"); // level ground, and a wall at its end
    hold({SDL_SCANCODE_RIGHT});
    play(1.5);
    const PictureBounds at = body();
    EXPECT_NEAR((at.left + at.right) / 2, 0.65 * 1280, 2) << "held at the dead zone's edge";
    play(7);
    hold({});
    play(0.1);
    EXPECT_EQ(body().right, 1250) << "the camera stops at the world's end, ten pixels beyond the wall";
}

TEST_F(PlatformerTest, PressesWaitForOneStepAndRepeatsDoNothing) {
    config += "[simulation]\nfixed_step_hz = 10\n";
    ASSERT_TRUE(start_level());
    const int ground = body().bottom;
    key_down(SDLK_SPACE, SDL_KMOD_NONE, true);
    key_down(SDLK_I); // an air attack on the ground
    play(0.4);
    EXPECT_EQ(body().bottom, ground);
    key_down(SDLK_Z);
    frame(0.001); // a frame without a step
    frame(0.12);
    play(0.3);
    EXPECT_LT(body().bottom, ground - 60) << "the press was not lost";
    play(1.6);
    EXPECT_EQ(body().bottom, 432) << "one jump: the feet are back, on the dead zone's lower edge";
}

TEST_F(PlatformerTest, ThreeHitsOrAFallLeadBackToTheSpawn) {
    ASSERT_TRUE(start_level());
    hold({SDL_SCANCODE_RIGHT});
    play(0.4);
    hold({});
    play(0.1);
    const int away = body().left;
    for (int hit = 0; hit < 3; hit++) {
        EXPECT_EQ(body().left, away) << "hit " << hit;
        key_down(SDLK_H);
        play(0.1);
        key_down(SDLK_H); // while hurt: ignored
        play(0.7);
    }
    play(0.8);
    EXPECT_EQ(body().left, 270) << "the death clip is over";

    start_own_level("0,416,200,16\n"); // a floor that ends
    hold({SDL_SCANCODE_RIGHT});
    play(0.6);
    EXPECT_GT(body().left, 500);
    hold({});
    play(1.2);
    EXPECT_EQ(body().left, 270);
}

TEST_F(PlatformerTest, ASpawnInsideAColliderIsRefused) {
    ASSERT_TRUE(start({"--screen", "text-demo"}));
    const Screen *screen = screen_for(GAME_STATE_PLATFORMER_DEMO);
    use_own_level("0,416,200,16\n95,380,4,4\n");
    EXPECT_FALSE(screen->setup());
    EXPECT_TRUE(log.has("[PLATFORMER_DEMO] Spawn at (100, 416) is inside a collider"));
    screen->cleanup();
    fs::remove("assets/fireknight/tilemaps/castle-tilemap-collisions.csv");
    EXPECT_FALSE(screen->setup());
    screen->cleanup();
    screen->cleanup();
}

TEST_F(PlatformerTest, SetUpSurvivesEachAllocationFailing) {
    ASSERT_TRUE(start({"--screen", "text-demo"}));
    use_own_level("0,416,200,16\n0,0,8,0,8,8\n"); // a short file: each of its lines is an allocation
    const Screen *screen = screen_for(GAME_STATE_PLATFORMER_DEMO);
    expect_allocation_faults_survived(&log, screen->setup, screen->cleanup);
    EXPECT_EQ(engine->callbacks[SDL_EVENT_KEY_DOWN].count, 0);
}

} // namespace
