// The castle level: both routes to the throne, and an exhaustive search.

#include "lumarind/core/storage.h"
#include "lumarind/toolkit/colliders.h"
#include "lumarind/toolkit/geometry.h"
#include "player/player.h"
#include "support/castle_routes.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

constexpr SDL_FPoint SPAWN = {100, 416};
constexpr float FALL_OUT_Y = 544; // y of the feet
constexpr double DT = 1.0 / 60;
constexpr double SHORTEST_TIME = 18; // s

bool at_throne(const PlayerBody &body) { return body.grounded && body.pos.x >= 1800 && body.pos.y >= 480; }

class CastleLevelTest : public ::testing::Test {
protected:
    void SetUp() override {
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
    // Plays a letter of a route. Returns false if the player has fallen out of the level.
    bool play(char letter) {
        PlayerIntent intent = route_intent(letter);
        for (int i = 0; i < ROUTE_STEPS_PER_LETTER; i++) {
            step(intent);
            intent.jump = intent.roll = false;
            if (player.body.pos.y > FALL_OUT_Y) return false;
        }
        return true;
    }
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

// --- routes ---

TEST_F(CastleLevelTest, BothRoutesReachThroneOnSeparatePaths) {
    constexpr SDL_FRect TOWER = {1136, 48, 192, 280}, CRYPT = {464, 440, 560, 80}, CISTERN = {1136, 368, 384, 152};
    for (const char *route : {ROUTE_BY_THE_TOWER, ROUTE_BY_THE_CRYPTS}) {
        spawn();
        bool tower = false, crypt = false, cistern = false;
        int letters = 0;
        for (const char *at = route; *at && !at_throne(player.body); at++, letters++) {
            ASSERT_TRUE(play(*at)) << "letter " << letters;
            tower |= point_in_rect(&player.body.pos, &TOWER);
            crypt |= point_in_rect(&player.body.pos, &CRYPT);
            cistern |= point_in_rect(&player.body.pos, &CISTERN);
        }
        EXPECT_TRUE(at_throne(player.body)) << player.body.pos.x << ", " << player.body.pos.y;
        const bool high = route == ROUTE_BY_THE_TOWER;
        EXPECT_TRUE(tower == high && crypt != high && cistern != high);
        EXPECT_GE(letters * ROUTE_STEPS_PER_LETTER * DT, SHORTEST_TIME);
    }
}

// --- search ---

// Breadth-first search of all positions the player can reach with ten decisions per second. Positions within a few
// pixels are merged, so the times are those of good players, not of perfect ones.
class CastleSearchTest : public CastleLevelTest {
protected:
    struct Node {
        Player player;
        std::vector<int> predecessors;
        bool reaches_throne = false; // the throne can be reached from here
    };
    static constexpr const char *LETTERS = "l.rLJR<o>";
    static constexpr int SECONDS_MAX = 60;

    static Uint64 key_of(const Player &p) {
        const PlayerBody &body = p.body;
        const bool rolls = p.state == PLAYER_STATE_ROLL;
        const auto kind = rolls ? 4 + static_cast<Uint64>(p.state_time * 10) * 2 + (body.facing > 0) : body.grounded;
        Uint64 key = static_cast<Uint64>(body.pos.x / PIXELS) << 40 | static_cast<Uint64>(body.pos.y / PIXELS + 64)
                                                                          << 24;
        return key | static_cast<Uint64>((body.vel.y + 300) / 20) << 12 | kind << 2 | (p.coyote > 0) << 1;
    }
    static bool worth_trying(const Player &p, char letter) {
        const PlayerIntent intent = route_intent(letter);
        if (p.state == PLAYER_STATE_ROLL && p.state_time < 0.69) return letter == '.'; // input has no effect
        if (intent.jump && p.coyote <= 0 && !p.body.grounded) return false;
        return !intent.roll || p.body.grounded;
    }
    // Returns the number of letters after which the throne is first reached.
    int search() {
        int first = 0;
        size_t done = 0;
        nodes.push_back({player, {}});
        std::unordered_map<Uint64, int> known = {{key_of(player), 0}};
        for (int letters = 1; letters < SECONDS_MAX * 10 && done < nodes.size(); letters++) {
            for (const size_t end = nodes.size(); done < end; done++) {
                for (const char *letter = LETTERS; *letter; letter++) {
                    player = nodes[done].player;
                    if (!worth_trying(player, *letter) || at_throne(player.body) || !play(*letter)) continue;
                    EXPECT_FALSE(overlaps()) << player.body.pos.x << ", " << player.body.pos.y;
                    const auto [at, added] = known.try_emplace(key_of(player), static_cast<int>(nodes.size()));
                    if (added) nodes.push_back({player, {}});
                    nodes[static_cast<size_t>(at->second)].predecessors.push_back(static_cast<int>(done));
                    if (at_throne(player.body) && first == 0) first = letters;
                }
            }
        }
        return first;
    }
    void mark_nodes_reaching_throne() {
        std::vector<size_t> open;
        for (size_t i = 0; i < nodes.size(); i++) {
            if (at_throne(nodes[i].player.body)) open.push_back(i);
        }
        for (const size_t i : open) nodes[i].reaches_throne = true;
        while (!open.empty()) {
            const size_t at = open.back();
            open.pop_back();
            for (const int from : nodes[at].predecessors) {
                Node &node = nodes[static_cast<size_t>(from)];
                if (node.reaches_throne) continue;
                node.reaches_throne = true;
                open.push_back(static_cast<size_t>(from));
            }
        }
    }

    static constexpr float PIXELS = 6;
    std::vector<Node> nodes;
};

TEST_F(CastleSearchTest, ShortestRouteTakes18SecondsAndThroneIsReachableFromEverywhere) {
    const double seconds = search() * ROUTE_STEPS_PER_LETTER * DT;
    std::printf("%zu positions, the throne is reached after %.1f s\n", nodes.size(), seconds);
    EXPECT_GE(seconds, SHORTEST_TIME);
    mark_nodes_reaching_throne();
    std::map<std::pair<int, int>, bool> floors; // standing cells: whether the throne can be reached from there
    for (const Node &node : nodes) {
        const PlayerBody &body = node.player.body;
        if (!body.grounded) continue;
        floors[{static_cast<int>(body.pos.x) / 16, static_cast<int>(body.pos.y) / 16}] |= node.reaches_throne;
    }
    EXPECT_GT(floors.size(), 300U);
    for (const auto &[cell, reaches_throne] : floors) {
        EXPECT_TRUE(reaches_throne) << "no way out at column " << cell.first << ", row " << cell.second;
    }
}

} // namespace
