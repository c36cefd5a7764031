// Geometry and its edge rules, collider sets, and the collision file.

#include "core/storage.h"
#include "support/allocation_faults.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"
#include "toolkit/colliders.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

// --- geometry ---

TEST(Geometry, EdgesOfShapesCountAsInside) {
    const SDL_FRect rect = {10, 20, 30, 40};
    for (const SDL_FPoint p : {SDL_FPoint{10, 20}, {40, 60}, {40, 20}, {25, 60}}) EXPECT_TRUE(point_in_rect(&p, &rect));
    for (const SDL_FPoint p : {SDL_FPoint{9.99f, 30}, {40.01f, 30}, {25, 19.99f}, {25, 60.01f}}) {
        EXPECT_FALSE(point_in_rect(&p, &rect)) << p.x << ", " << p.y;
    }
    const Circle circle = {0, 0, 5};
    const SDL_FPoint on = {3, 4}, off = {3, 4.01f}, origin = {0, 0};
    EXPECT_TRUE(point_in_circle(&on, &circle) && point_near_point(&on, &origin, 5));
    EXPECT_FALSE(point_in_circle(&off, &circle) || point_near_point(&off, &origin, 5));
}

TEST(Geometry, RectanglesThatOnlyTouchDoNotIntersect) {
    const SDL_FRect a = {0, 0, 16, 16};
    const struct {
        SDL_FRect b;
        bool hit;
    } cases[] = {
        {{16, 0, 16, 16}, false}, {{15.999f, 0, 16, 16}, true},  {{-16, 0, 16, 16}, false},
        {{0, 16, 16, 16}, false}, {{0, -15.999f, 16, 16}, true}, {{16, 16, 1, 1}, false},
        {{4, 4, 2, 2}, true},     {{-5, -5, 100, 100}, true},    {{4, 4, 0, 0}, true},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(rect_intersect_rect(&a, &c.b), c.hit) << c.b.x << ", " << c.b.y;
        EXPECT_EQ(rect_intersect_rect(&c.b, &a), c.hit) << c.b.x << ", " << c.b.y << " the other way round";
    }
}

TEST(Geometry, TrianglesHoldTheirEdgesInBothWindings) {
    for (const Tri &tri : {Tri{{0, 0}, {10, 0}, {0, 10}}, {{0, 0}, {0, 10}, {10, 0}}}) {
        for (const SDL_FPoint p : {SDL_FPoint{0, 0}, {5, 5}, {5, 0}, {0, 10}, {2, 3}})
            EXPECT_TRUE(point_in_tri(&p, &tri));
        for (const SDL_FPoint p : {SDL_FPoint{5.1f, 5}, {-0.1f, 5}, {5, -0.1f}}) EXPECT_FALSE(point_in_tri(&p, &tri));
    }
    const Tri flat = {{0, 0}, {5, 5}, {10, 10}};
    const SDL_FPoint on = {7, 7}, off = {7, 8};
    EXPECT_TRUE(point_in_tri(&on, &flat));
    EXPECT_FALSE(point_in_tri(&off, &flat));
}

TEST(Geometry, SlopesKnowTheirHighestAndLowestCorner) {
    const auto top = [](Tri t) { return colliders_tri_top_point(&t); };
    const auto bottom = [](Tri t) { return colliders_tri_bottom_point(&t); };
    EXPECT_EQ(top({{0, 10}, {5, 0}, {10, 0}}).x, 5) << "the earlier of two equally high ones";
    EXPECT_EQ(bottom({{0, 10}, {10, 10}, {5, 0}}).x, 0);
    EXPECT_EQ(top({{0, 3}, {1, 2}, {2, 1}}).x, 2);
    EXPECT_EQ(bottom({{0, 1}, {1, 2}, {2, 3}}).x, 2);
}

// --- sets ---

class CollidersTest : public ::testing::Test {
protected:
    void SetUp() override {
        setenv("XDG_DATA_HOME", directory.path.c_str(), 1);
        ASSERT_TRUE(storage_setup());
        directory.use_as_game_files();
    }
    ~CollidersTest() override {
        const auto destroy = [](auto cleanup, auto *set) {
            cleanup(set);
            SDL_free(set);
        };
        destroy(colliders_rects_cleanup, rects);
        destroy(colliders_tris_cleanup, tris);
        destroy(colliders_circles_cleanup, circles);
        destroy(colliders_points_cleanup, points);
        storage_cleanup();
    }

    bool load(const std::string &content, float scale = 1) {
        write_file("level.csv", content);
        return colliders_load_csv(rects, tris, circles, points, "level.csv", scale);
    }
    std::vector<int> counts() const { return {points->count, circles->count, rects->count, tris->count}; }

    TemporaryDirectory directory;
    LogCapture log;
    ColliderRects *rects = colliders_new_rects();
    ColliderTris *tris = colliders_new_tris();
    ColliderCircles *circles = colliders_new_circles();
    ColliderPoints *points = colliders_new_points();
};

TEST_F(CollidersTest, FirstHitAndAllHitsAgreeWithAPlainScan) {
    std::mt19937 random(7);
    const auto number = [&] { return static_cast<float>(random() % 40); };
    ColliderRects *found = colliders_new_rects();
    for (int round = 0; round < 200; round++) {
        colliders_rects_reset(rects);
        for (int i = 0; i < 12; i++) {
            const SDL_FRect rect = {number(), number(), number() / 2, number() / 2};
            ASSERT_TRUE(colliders_rects_add(rects, &rect));
        }
        const SDL_FPoint p = {number(), number()};
        std::vector<int> expected;
        for (int i = 0; i < rects->count; i++) {
            if (point_in_rect(&p, &rects->items[i])) expected.push_back(i);
        }
        EXPECT_EQ(colliders_point_inside_rect(&p, rects), expected.empty() ? -1 : expected[0]);
        ASSERT_EQ(colliders_point_inside_rects(&p, rects, found), static_cast<int>(expected.size()));
        for (size_t i = 0; i < expected.size(); i++) EXPECT_EQ(found->items[i].x, rects->items[expected[i]].x);
    }
    colliders_rects_cleanup(found);
    SDL_free(found);
}

TEST_F(CollidersTest, EachKindOfQuestionUsesItsOwnTest) {
    ASSERT_TRUE(load("5,5\n50,50\n0,0,3\n9,0,3\n0,0,16,16\n16,0,16,16\n0,0,10,0,0,10\n"));
    const SDL_FPoint p = {16, 8}, near_five = {6, 5}, far = {100, 100};
    const SDL_FRect touching = {32, 0, 4, 4}, across = {15, 2, 2, 2};
    ColliderPoints *near = colliders_new_points();
    EXPECT_EQ(colliders_point_inside_rect(&p, rects), 0);
    EXPECT_EQ(colliders_rect_inside_rect(&touching, rects), -1);
    EXPECT_EQ(colliders_rect_inside_rect(&across, rects), 0);
    EXPECT_EQ(colliders_point_inside_tri(&near_five, tris), -1);
    EXPECT_EQ(colliders_point_inside_circle(&far, circles), -1);
    EXPECT_EQ(colliders_point_near_point(&near_five, points, 1), 0);
    EXPECT_EQ(colliders_point_near_point(&near_five, points, 0.9f), -1);
    EXPECT_EQ(colliders_point_near_points(&near_five, points, near, 100), 2);
    EXPECT_EQ(colliders_point_near_points(&near_five, points, near, 0), 0) << "the output is emptied first";
    colliders_points_cleanup(near);
    SDL_free(near);
}

// --- the collision file ---

TEST_F(CollidersTest, TheNumberOfFieldsDecidesTheShape) {
    ASSERT_TRUE(
        load("0,0,16,16\n1,2\n1,2,3\n0,0,1,0,0,1\n1\n1,2,3,4,5\n1,2,3,4,5,6,7\n1,,2\n,3,4,\n\n  5\t, 6e1 \n", 3));
    EXPECT_EQ(counts(), (std::vector{4, 1, 1, 1}));
    EXPECT_EQ(rects->items[0].w, 48);
    EXPECT_EQ(circles->items[0].r, 9);
    EXPECT_EQ(points->items[1].y, 6) << "a run of commas separates once";
    EXPECT_EQ(points->items[3].y, 180);
    EXPECT_EQ(tris->items[0].c.y, 3);
}

TEST_F(CollidersTest, WordsReadAsZeroAndLineEndsDoNotMatter) {
    ASSERT_TRUE(load("x,y,width,height\r\n1,2,3px,0x\r\n"));
    EXPECT_EQ(counts(), (std::vector{0, 0, 2, 0}));
    EXPECT_EQ(rects->items[0].w, 0);
    EXPECT_EQ(rects->items[1].w, 3);
    ASSERT_TRUE(load("1,2,3,4\r\n"));
    EXPECT_EQ(rects->items[0].h, 4);
}

TEST_F(CollidersTest, SetsThatAreNotWantedAreSkippedAndOthersEmptiedFirst) {
    ASSERT_TRUE(load("1,2,3,4\n0,0,1,0,0,1\n"));
    ASSERT_TRUE(colliders_load_csv(rects, nullptr, nullptr, nullptr, "level.csv", 2));
    EXPECT_EQ(counts(), (std::vector{0, 0, 1, 1}));
    EXPECT_FALSE(colliders_load_csv(rects, tris, circles, points, "missing.csv", 1));
    EXPECT_EQ(counts(), (std::vector{0, 0, 0, 0})) << "a failed load leaves the sets empty";
    EXPECT_TRUE(log.has("[STORAGE] Error reading file: missing.csv"));
}

TEST_F(CollidersTest, SurvivesEachAllocationFailing) {
    write_file("level.csv", "1,2,3,4\n");
    expect_allocation_faults_survived(
        &log, [&] { return colliders_load_csv(rects, tris, circles, points, "level.csv", 1); }, [] {});
    ColliderRects *made = nullptr;
    expect_allocation_faults_survived(
        &log, [&] { return (made = colliders_new_rects()) != nullptr; },
        [&] {
            if (made) colliders_rects_cleanup(made);
            SDL_free(made);
            made = nullptr;
        });
}

} // namespace
