// The collision file, hit tests on its shapes, and debug outlines.

#include "lumarind/core/storage.h"
#include "lumarind/toolkit/colliders.h"
#include "support/log_capture.h"
#include "support/stored.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_render.h>

#include <bit>
#include <random>
#include <string>
#include <vector>

namespace {

class CollidersTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(storage_setup());
        directory.use_as_game_files();
    }
    ~CollidersTest() override {
        const auto destroy = [](auto cleanup, auto... sets) { (..., (cleanup(sets), SDL_free(sets))); };
        destroy(colliders_rects_cleanup, rects, found_rects);
        destroy(colliders_tris_cleanup, tris, found_tris);
        destroy(colliders_circles_cleanup, circles, found_circles);
        destroy(colliders_points_cleanup, points, found_points);
        storage_cleanup();
    }
    bool load(const std::string &content, float scale = 1) {
        write_file("level.csv", content);
        return colliders_load_csv(rects, tris, circles, points, "level.csv", scale);
    }
    std::vector<int> counts() const { return {points->count, circles->count, rects->count, tris->count}; }
    // Results of the first-hit tests at a point, within 5 px of it, and for a box of 2 px. Adds all hits to the hash.
    std::vector<int> hit_tests(SDL_FPoint p) {
        const SDL_FRect box = {p.x, p.y, 2, 2};
        add_to_hash(colliders_point_near_points(&p, points, found_points, 5), found_points);
        add_to_hash(colliders_point_inside_circles(&p, circles, found_circles), found_circles);
        add_to_hash(colliders_point_inside_tris(&p, tris, found_tris), found_tris);
        add_to_hash(colliders_point_inside_rects(&p, rects, found_rects), found_rects);
        add_to_hash(colliders_rect_inside_rects(&box, rects, found_rects), found_rects);
        return {
            colliders_point_near_point(&p, points, 5), colliders_point_inside_circle(&p, circles),
            colliders_point_inside_rect(&p, rects), colliders_point_inside_tri(&p, tris),
            colliders_rect_inside_rect(&box, rects)};
    }
    void add_to_hash(float number) { hash = (hash ^ std::bit_cast<Uint32>(number)) * 1099511628211u; }
    template <typename Set> void add_to_hash(int hits, const Set *found) { // a shape consists only of floats
        const auto *numbers = reinterpret_cast<const float *>(found->items);
        add_to_hash(static_cast<float>(hits));
        for (size_t i = 0; i < static_cast<size_t>(hits) * sizeof *found->items / sizeof *numbers; i++)
            add_to_hash(numbers[i]);
    }

    Uint64 hash = 0;
    TemporaryDirectory directory;
    LogCapture log;
    ColliderRects *rects = colliders_new_rects(), *found_rects = colliders_new_rects();
    ColliderTris *tris = colliders_new_tris(), *found_tris = colliders_new_tris();
    ColliderCircles *circles = colliders_new_circles(), *found_circles = colliders_new_circles();
    ColliderPoints *points = colliders_new_points(), *found_points = colliders_new_points();
};

// --- hit tests ---

// Multiples of 0.5: many edges touch, and there is no rounding.
TEST_F(CollidersTest, HitTestsOnRandomLevelsMatchRecordedHash) {
    std::mt19937 random(7);
    for (int level = 0; level < 60; level++) {
        std::string text;
        for (int line = 0; line < 12; line++) {
            for (int left = 2 + static_cast<int>(random() % 5); left > 0; left--)
                text += std::to_string(static_cast<int>(random() % 20)) + ",";
            text += "\n";
        }
        ASSERT_TRUE(load(text, level % 2 ? 1 : 0.5f));
        for (int i = 0; i < 144; i++) {
            for (const int hit : hit_tests({float(i % 12 * 2 - 1), float(i / 12 * 2 - 1)}))
                add_to_hash(static_cast<float>(hit));
        }
        for (int i = 0; i < tris->count; i++) {
            const SDL_FPoint top = colliders_tri_top_point(&tris->items[i]);
            const SDL_FPoint low = colliders_tri_bottom_point(&tris->items[i]);
            for (const float part : {top.x, top.y, low.x, low.y}) add_to_hash(part);
        }
    }
    EXPECT_EQ(hash, 0x9db66c71d2000000u) << std::hex << "0x" << hash;
}

// --- the collision file ---

TEST_F(CollidersTest, LoadingReplacesGivenSets) {
    ASSERT_TRUE(load("1,2\n1,2,3\n0,0,16,16\n0,0,1,0,0,1\n", 3));
    ASSERT_TRUE(colliders_load_csv(rects, nullptr, nullptr, nullptr, "level.csv", 2));
    EXPECT_EQ(counts(), (std::vector{1, 1, 1, 1})) << "null sets are skipped, others are emptied first";
    EXPECT_FALSE(colliders_load_csv(rects, tris, circles, points, "missing.csv", 1));
    EXPECT_EQ(counts(), (std::vector{0, 0, 0, 0})) << "a failed load leaves the sets empty";
    EXPECT_TRUE(log.has("[STORAGE] Error reading file: missing.csv"));
}

TEST_F(CollidersTest, OutlinesAreDrawnOnShapes) {
    const Picture target(SDL_CreateSurface(120, 60, SDL_PIXELFORMAT_XRGB8888));
    SDL_Renderer *renderer = SDL_CreateSoftwareRenderer(target.get());
    ASSERT_TRUE(load("5,5\n8,5\n30,30,20\n60,5,20,30\n90,10,110,40,80,50\n70,40,6\n"));
    colliders_points_debug_draw(renderer, points);
    SDL_SetRenderDrawColor(renderer, 0, 255, 0, 255);
    colliders_tris_debug_draw(renderer, tris);
    colliders_circles_debug_draw(renderer, circles);
    SDL_SetRenderDrawColor(renderer, 0, 255, 0, 255);
    colliders_rects_debug_draw(renderer, rects);
    EXPECT_TRUE(matches_stored(Picture(SDL_RenderReadPixels(renderer, nullptr)), "colliders"));
    SDL_DestroyRenderer(renderer);
}

} // namespace
