// The castle as it is played: from the spawn to its right end, and by somebody who presses keys at random.

#include "core/storage.h"
#include "player/player.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr SDL_FPoint SPAWN = {100, 416};
constexpr float FALLEN_OUT = 544, RIGHT_END = 1850; // of the feet
constexpr double DT = 1.0 / 60;

class CastleLevelTest : public ::testing::Test {
protected:
    void SetUp() override {
        setenv("XDG_DATA_HOME", directory.path.c_str(), 1);
        ASSERT_TRUE(storage_setup());
        ASSERT_TRUE(colliders_load_csv(
            &rects, &tris, nullptr, nullptr, "assets/fireknight/tilemaps/castle-tilemap-collisions.csv", 1));
        ASSERT_TRUE(rects.count > 20 && tris.count > 4);
        spawn();
        ASSERT_TRUE(player.body.grounded && !overlaps()) << "the spawn is on free ground";
    }
    ~CastleLevelTest() override {
        colliders_rects_cleanup(&rects);
        colliders_tris_cleanup(&tris);
        storage_cleanup();
    }
    void spawn() { player_init(&player, SPAWN, &rects, &tris); }
    void step(const PlayerIntent &intent) { player_fixed_update(&player, &intent, &rects, &tris, DT); }
    bool overlaps() const {
        const SDL_FRect box = player_body_rect(&player.body);
        return colliders_rect_inside_rect(&box, &rects) != -1;
    }

    TemporaryDirectory directory;
    LogCapture log;
    ColliderRects rects = {};
    ColliderTris tris = {};
    Player player = {};
};

// --- from end to end ---

// A script holds a tenth of a second to a letter: l and r walk, a dot waits, capitals press jump as well (J on the
// spot). Spaces are for reading. False: the player has fallen out of the level.
class CastleRouteTest : public CastleLevelTest {
protected:
    bool play(const std::string &script) {
        for (const char letter : script) {
            if (letter == ' ') continue;
            PlayerIntent intent = {};
            intent.move_x = letter == 'r' || letter == 'R' ? 1.0f : letter == 'l' || letter == 'L' ? -1.0f : 0.0f;
            intent.jump = letter == 'R' || letter == 'L' || letter == 'J';
            for (int i = 0; i < 6; i++) {
                step(intent);
                intent.jump = false;
                if (player.body.pos.y > FALLEN_OUT) return false;
            }
        }
        return true;
    }
    struct Leg {
        const char *script;
        float left, right, y; // where it ends, on the ground
    };
    void follow(const std::vector<Leg> &legs) {
        for (const Leg &leg : legs) {
            ASSERT_TRUE(play(leg.script)) << leg.script;
            const SDL_FPoint at = player.body.pos;
            EXPECT_TRUE(player.body.grounded && at.y == leg.y && at.x > leg.left && at.x < leg.right)
                << leg.script << ": " << at.x << ", " << at.y;
        }
    }
};

TEST_F(CastleRouteTest, TwoJumpsAreEnough) {
    ASSERT_TRUE(play("rrrrr Rrrrrrrrrrrrrrrrrrrrrr Rrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrr"));
    EXPECT_GT(player.body.pos.x, RIGHT_END);
}

TEST_F(CastleRouteTest, ThePlatformOverThePitLeadsOverTheTower) {
    follow(
        {{"Rrrrrrrrrrrrrrrrrrrrrrrrrrr Rrrrrrrrrrrrl", 960, 1008, 352}, // the platform over the pit
         {"Rrrrrrrrrrrrrr Rrrrrrrrlll", 1216, 1264, 304},
         {"Rl.lll", 1136, 1184, 256},
         {"Rrrllrrr", 1232, 1280, 192},
         {"rrrrr", 1328, 1584, 208},               // the tower's roof
         {"Rrrrrrrrrrrrrr...", 1648, 1680, 272}}); // over the merlon
    ASSERT_TRUE(play("llrrrrrrrrrrrrrrr"));
    EXPECT_GT(player.body.pos.x, RIGHT_END);
}

TEST_F(CastleRouteTest, TheBeamsUnderTheCeilingAreReachedToo) {
    ASSERT_TRUE(play("rrrrr Rrrrrrrrrrrrrrrrrrrrrr Rrrrrrrrrrrrrrr Rrrrrrrrll Lrl.ll")); // beside the tower, then back
    follow(
        {{"Lrrllrrr Llllllllllllllllllllll Lllll Lllllll Lllllll", 100, 336, 144}, // the ledge above the spawn
         {"r Rrrrrr Rrrrrrr", 560, 608, 144},
         {"r Rrrrrr", 704, 1184, 128}}); // the block in the middle
    ASSERT_TRUE(play("rrrrrrrrrrrrrrrrrrrrrr Rrrrrrrrrrrrl.rrrrrrrrrrrr"));
    EXPECT_GT(player.body.pos.x, RIGHT_END);
}

TEST_F(CastleRouteTest, BothSidesOfThePitAreFalls) {
    EXPECT_FALSE(play("Rrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrr..............."));
    EXPECT_TRUE(player.body.pos.x > 864 && player.body.pos.x < 960) << player.body.pos.x;
    spawn();
    ASSERT_TRUE(play("Rrrrrrrrrrrrrrrrrrrrrrrrrrr Rrrrrrrrrrrrl"));
    EXPECT_FALSE(play("rr..............."));
    EXPECT_TRUE(player.body.pos.x > 1008 && player.body.pos.x < 1104) << player.body.pos.x;
    spawn();
    EXPECT_TRUE(player.state == PLAYER_STATE_IDLE && player.body.grounded && player.health == 3);
}

// --- at random ---

class RandomPlayer {
public:
    PlayerIntent next() {
        if (left_-- <= 0) {
            left_ = number(60);
            move_ = number(3) == 0 ? 1 : static_cast<float>(number(3)) - 1; // on the whole to the right
        }
        return {
            .move_x = move_,
            .jump = number(25) == 0,
            .roll = number(90) == 0,
            .attack = number(150) == 0 ? number(5) : 0,
            .special = number(400) == 0,
            .defend = number(60) == 0,
            .hurt = number(1500) == 0};
    }

private:
    int number(unsigned below) { return static_cast<int>(random_() % below); }
    std::mt19937 random_{7};
    int left_ = 0;
    float move_ = 0;
};

TEST_F(CastleLevelTest, NobodyGetsIntoAWallOrStuck) {
    RandomPlayer random;
    SDL_FPoint since = SPAWN; // where it has been for `still` steps, give or take a few pixels
    int still = 0, stillest = 0, falls = 0, deaths = 0, dead_steps = 0;
    float rightmost = 0;
    for (int i = 0; i < 200000; i++) {
        step(random.next());
        const PlayerBody &body = player.body;
        ASSERT_FALSE(overlaps()) << "step " << i << ", at " << body.pos.x << ", " << body.pos.y;
        ASSERT_LE(std::max(std::abs(body.remainder_x), std::abs(body.remainder_y)), 0.5f);
        dead_steps = player.state == PLAYER_STATE_DEATH ? dead_steps + 1 : 0;
        const bool fallen = body.pos.y > FALLEN_OUT, dead = dead_steps > 120;
        falls += fallen;
        deaths += dead;
        rightmost = std::max(rightmost, body.pos.x);
        if (fallen || dead) spawn();
        const bool moved = std::hypot(body.pos.x - since.x, body.pos.y - since.y) > 8;
        if (moved) since = body.pos;
        still = moved ? 0 : still + 1;
        stillest = std::max(stillest, still);
    }
    EXPECT_LT(stillest, 30 * 60) << "half a minute in one place";
    EXPECT_TRUE(falls > 10 && deaths > 5 && rightmost > RIGHT_END) << falls << ", " << deaths << ", " << rightmost;
}

} // namespace
