// The player's box against a slow reference on random levels, and the edges of its rules.

#include "player/player_body.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <random>

namespace {

constexpr int W = 20, H = 40, LEDGE = 10;

class PlayerBodyTest : public ::testing::Test {
protected:
    ~PlayerBodyTest() override {
        colliders_rects_cleanup(&rects);
        colliders_tris_cleanup(&tris);
    }
    void add(SDL_FRect rect) { ASSERT_TRUE(colliders_rects_add(&rects, &rect)); }
    void add(Tri tri) { ASSERT_TRUE(colliders_tris_add(&tris, &tri)); }
    void put(float x, float y, bool grounded) {
        player_body_init(&body, {x, y}, W, H);
        body.grounded = grounded;
    }
    bool overlaps() const {
        const SDL_FRect box = player_body_rect(&body);
        return colliders_rect_inside_rect(&box, &rects) != -1;
    }

    ColliderRects rects = {};
    ColliderTris tris = {};
    PlayerBody body = {};
};

// --- the reference: whole pixels, one try after the other ---

struct Reference {
    int x = 0, y = 0;
    double owed_x = 0, owed_y = 0, vel_y = 0;
    bool grounded = false;
    const ColliderRects *rects = nullptr;
    const ColliderTris *tris = nullptr;

    bool free(double at_x, double at_y) const {
        for (int i = 0; i < rects->count; i++) {
            const SDL_FRect r = rects->items[i];
            const bool beside = at_x + W / 2.0 <= r.x || at_x - W / 2.0 >= r.x + r.w;
            const bool above_or_below = at_y <= r.y || at_y - H >= r.y + r.h;
            if (!beside && !above_or_below) return false;
        }
        return true;
    }
    static int take_whole(double *owed) { // halves go away from 0
        const int whole = static_cast<int>(*owed + (*owed < 0 ? -0.5 : 0.5));
        *owed -= whole;
        return whole;
    }
    std::optional<int> lift_to_pass(int to_x) const {
        if (free(to_x, y)) return 0;
        for (int lift = 1; grounded && lift <= LEDGE; lift++) {
            if (free(x, y - lift) && free(to_x, y - lift)) return lift;
        }
        return {};
    }
    bool move_x(double dx) {
        owed_x += dx;
        for (int left = take_whole(&owed_x); left != 0; left -= left > 0 ? 1 : -1) {
            const int to_x = x + (left > 0 ? 1 : -1);
            const std::optional<int> lift = lift_to_pass(to_x);
            if (!lift) return owed_x = 0, true;
            x = to_x;
            y -= *lift;
        }
        return false;
    }
    bool move_y(double dy) {
        owed_y += dy;
        for (int left = take_whole(&owed_y); left != 0; left -= left > 0 ? 1 : -1) {
            const int to_y = y + (left > 0 ? 1 : -1);
            if (!free(x, to_y)) return owed_y = vel_y = 0, true;
            y = to_y;
        }
        return false;
    }
    std::optional<double> surface() const {
        std::optional<double> top;
        const double at = x;
        for (int i = 0; i < tris->count; i++) {
            const Tri t = tris->items[i];
            for (const auto &[p, q] : {std::pair{t.a, t.b}, std::pair{t.b, t.c}, std::pair{t.c, t.a}}) {
                const auto [left, right] = p.x < q.x ? std::pair{p, q} : std::pair{q, p};
                if (at < left.x || at > right.x) continue;
                double edge = std::min(p.y, q.y);
                if (p.x != q.x) {
                    const double part = (at - left.x) / double(right.x - left.x);
                    edge = left.y * (1 - part) + right.y * part;
                }
                if (!top || edge < *top) top = edge;
            }
        }
        return top;
    }
    void snap() {
        const std::optional<double> top = surface();
        if (!top) return;
        const int s = static_cast<int>(std::lround(*top)), old = y;
        if (!(y > s || (grounded && vel_y >= 0 && s <= y + 8))) return;
        vel_y = 0;
        for (y = s; y != old && !free(x, y);) y += y < old ? 1 : -1;
    }
    void update_ground() {
        const std::optional<double> top = surface();
        grounded = !free(x, y + 1) || (top && y >= *top - 0.5);
    }
};

class RandomLevelTest : public PlayerBodyTest {
protected:
    int number(int low, int high) { return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1)); }

    // Coordinates a float holds exactly, so that both sides compute the same surface.
    void make_level() {
        colliders_rects_reset(&rects);
        colliders_tris_reset(&tris);
        for (int i = number(0, 14); i > 0; i--) {
            add(SDL_FRect{float(number(0, 300)), float(number(0, 300)), float(number(1, 80)), float(number(1, 40))});
        }
        for (int i = number(0, 5); i > 0; i--) {
            const float x = float(number(0, 300)), step = float(8 << number(0, 3));
            SDL_FPoint corners[3];
            for (SDL_FPoint &corner : corners) corner = {x + step * float(number(0, 2)), float(number(0, 300))};
            add(Tri{corners[0], corners[1], corners[2]});
        }
        add(SDL_FRect{-60, 300, 460, 40}); // a floor and walls, or falls would leave the rest behind
        add(SDL_FRect{-60, -100, 40, 440});
        add(SDL_FRect{360, -100, 40, 440});
    }
    void step(Reference *expected) {
        const int hz = 30 << number(0, 3), speed = number(0, 9) == 0 ? 6000 : 300;
        const float vx = float(number(-speed, speed)), vy = float(number(-speed, speed));
        // Movements in 64ths of a pixel are exact too.
        const float dx = std::round(64 * vx / float(hz)) / 64, dy = std::round(64 * vy / float(hz)) / 64;
        body.vel.y = vy;
        expected->vel_y = vy;
        const bool was_free = !overlaps();
        EXPECT_EQ(player_body_move_x(&body, dx, &rects), expected->move_x(dx));
        EXPECT_EQ(player_body_move_y(&body, dy, &rects), expected->move_y(dy));
        player_body_snap_to_slope(&body, &rects, &tris);
        expected->snap();
        player_body_update_ground(&body, &rects, &tris);
        expected->update_ground();
        EXPECT_FALSE(was_free && overlaps());
        EXPECT_LE(std::max(std::abs(body.remainder_x), std::abs(body.remainder_y)), 0.5f);
    }

    std::mt19937 random{20};
};

TEST_F(RandomLevelTest, MovesLikeTheSlowReference) {
    int on_ground = 0, climbs = 0, blocked_starts = 0;
    for (int level = 0; level < 2000; level++) {
        make_level();
        put(float(number(0, 340)), float(number(0, 300)), number(0, 1));
        Reference expected = {int(body.pos.x), int(body.pos.y), 0, 0, 0, body.grounded, &rects, &tris};
        blocked_starts += overlaps();
        for (int i = 0; i < 50; i++) {
            const float old_y = body.pos.y;
            step(&expected);
            on_ground += body.grounded;
            climbs += body.pos.y < old_y && body.vel.y == 0;
            ASSERT_TRUE(
                body.pos.x == float(expected.x) && body.pos.y == float(expected.y) &&
                body.vel.y == float(expected.vel_y) && body.remainder_x == float(expected.owed_x) &&
                body.remainder_y == float(expected.owed_y) && body.grounded == expected.grounded)
                << "level " << level << ", step " << i << ": " << body.pos.x << ", " << body.pos.y << " instead of "
                << expected.x << ", " << expected.y;
            ASSERT_FALSE(HasFailure()) << "level " << level << ", step " << i;
        }
    }
    EXPECT_TRUE(on_ground > 10000 && climbs > 1000 && blocked_starts > 100)
        << on_ground << ", " << climbs << ", " << blocked_starts << ": the levels exercise little";
}

// --- what random levels of whole pixels do not show ---

TEST_F(PlayerBodyTest, ASlopeDoesNotPressItIntoACeiling) {
    add(Tri{{0, 100}, {64, 100}, {64, 36}});
    add(SDL_FRect{0, 30, 64, 10}); // 60 px above the feet, which would be lifted by 32
    for (const float y : {100.0f, 99.5f}) {
        put(32, y, true);
        player_body_snap_to_slope(&body, &rects, &tris);
        EXPECT_EQ(body.pos.y, 80);
    }
    add(SDL_FRect{0, 41, 64, 60}); // no room at all
    put(32, 99.5f, true);
    player_body_snap_to_slope(&body, &rects, &tris);
    EXPECT_EQ(body.pos.y, 99.5f) << "it stays where it was";
    constexpr float FAR = 1 << 25; // where a pixel more is the same number
    add(SDL_FRect{-64, FAR, 128, FAR});
    add(Tri{{-64, FAR + 64}, {64, FAR + 64}, {64, FAR + 64}});
    put(-16, FAR + 128, true);
    player_body_snap_to_slope(&body, &rects, &tris);
    EXPECT_EQ(body.pos.y, FAR + 128);
}

} // namespace
