// Invariants of the camera on random walks, and the random number generator for games.

#include "lumarind/core/random.h"
#include "lumarind/toolkit/camera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

TEST(Camera, TargetStaysInDeadZoneAndViewInBounds) {
    Random random = random_make(3);
    for (int round = 0; round < 200; round++) {
        const float left = random_float(&random, -500, 500), top = random_float(&random, -500, 500);
        const SDL_FRect bounds = {left, top, 2000, round % 4 ? 1500.0f : 0.0f}; // every fourth has no vertical limit
        Camera camera = camera_make(random_between(&random, 1, 4), bounds);
        const auto zoom = static_cast<float>(camera.zoom);
        SDL_FPoint target = {left + 1000, top + 700};
        camera_center(&camera, target, 801, 450);
        const SDL_FPoint middle = camera_to_view(&camera, target);
        EXPECT_TRUE(std::abs(middle.x - 400.5f) <= 0.5f && std::abs(middle.y - 225) <= 0.5f);
        for (int step = 0; step < 100; step++) {
            target.x += random_float(&random, -60, 60);
            target.y += random_float(&random, -60, 60);
            const SDL_FPoint before = camera.position;
            camera_follow(&camera, target, 801, 450);
            const SDL_FPoint at = {
                (target.x - camera.position.x) * zoom / 801, (target.y - camera.position.y) * zoom / 450};
            const float right = left + 2000 - 801 / zoom;
            const bool at_edge = camera.position.x <= left || camera.position.x >= right;
            EXPECT_TRUE(camera.position.x >= left && camera.position.x <= right);
            EXPECT_TRUE(at_edge || (at.x > 0.3499f && at.x < 0.6501f)) << at.x;
            EXPECT_TRUE(round % 4 || (at.y > 0.3999f && at.y < 0.6001f)) << at.y;
            const bool inside =
                (target.x - before.x) * zoom / 801 > 0.35f && (target.x - before.x) * zoom / 801 < 0.65f;
            EXPECT_TRUE(!inside || camera.position.x == before.x) << "moved although the target is in the dead zone";
            const SDL_FPoint origin = camera_origin(&camera),
                             back = camera_to_world(&camera, camera_to_view(&camera, target));
            EXPECT_TRUE(origin.x == std::round(origin.x) && origin.y == std::round(origin.y));
            EXPECT_TRUE(std::abs(back.x - target.x) < 0.01f && std::abs(back.y - target.y) < 0.01f);
            const SDL_FRect area = camera_area(&camera);
            EXPECT_TRUE(std::abs(area.x - camera.position.x) <= 0.51f / zoom && area.w == 801 / zoom);
        }
    }
    Camera small = camera_make(0, {0, 0, 100, 100});
    camera_follow(&small, {50, 50}, 800, 450);
    EXPECT_TRUE(small.zoom == 1 && small.position.x == 0 && small.position.y == 0) << "a view larger than the world";
}

TEST(RandomNumbers, CoverTheirRangesAndRepeatForSameSeed) {
    std::set<int> firsts, drawn;
    for (Uint64 seed = 0; seed < 1000; seed++) {
        Random random = random_make(seed), again = random_make(seed);
        firsts.insert(random_below(&random, 1'000'000));
        EXPECT_TRUE(firsts.contains(random_below(&again, 1'000'000)));
        drawn.insert(random_between(&random, -2, 3));
        const float number = random_float(&random, -1, 1);
        EXPECT_TRUE(number >= -1 && number < 1);
    }
    EXPECT_GT(firsts.size(), 990u) << "neighbouring seeds are unrelated";
    EXPECT_EQ(drawn, (std::set<int>{-2, -1, 0, 1, 2, 3}));
    Random random = random_make(7);
    EXPECT_EQ(random_below(&random, 1'000'000), 478788) << "recordings depend on the numbers";
    EXPECT_FLOAT_EQ(random_float(&random, -3, 5), -0.37963867f);
    EXPECT_TRUE(random_below(&random, 0) == 0 && random_between(&random, 5, 4) == 5);
    int hits = 0;
    std::set<bool> signs;
    for (int i = 0; i < 10'000; i++) {
        hits += random_chance(&random, 0.25f);
        signs.insert(random_between(&random, SDL_MIN_SINT32, SDL_MAX_SINT32) < 0);
    }
    EXPECT_NEAR(hits, 2500, 150);
    EXPECT_EQ(signs.size(), 2u);
}

} // namespace
