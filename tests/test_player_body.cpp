// The player's body on random levels: invariants of every move, and a hash of all positions.

#include "lumarind/player/player_body.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

namespace {

class PlayerBodyTest : public ::testing::Test {
protected:
    ~PlayerBodyTest() override {
        colliders_rects_cleanup(&rects);
        colliders_tris_cleanup(&tris);
    }
    void add(SDL_FRect rect) { ASSERT_TRUE(colliders_rects_add(&rects, &rect)); }
    void add(Tri tri) { ASSERT_TRUE(colliders_tris_add(&tris, &tri)); }
    void put(float x, float y, bool grounded) {
        player_body_init(&body, {x, y}, 20, 40);
        body.grounded = grounded;
    }
    bool blocked(float dx = 0, float dy = 0) const { // at this offset
        SDL_FRect box = player_body_rect(&body);
        box.x += dx;
        box.y += dy;
        return colliders_rect_inside_rect(&box, &rects) != -1;
    }
    int number(int low, int high) { return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1)); }

    // Coordinates exact in a float, and movements in 1/64 px: no rounding in any build.
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
        add(SDL_FRect{-60, 300, 460, 40}); // a floor and walls, to keep the body in the level
        add(SDL_FRect{-60, -100, 40, 440});
        add(SDL_FRect{360, -100, 40, 440});
    }

    // Moves along one axis. An unblocked move goes the whole distance and keeps the remainder; a blocked one ends at a
    // rectangle.
    void move(bool along_x, float by) {
        const SDL_FPoint old = body.pos;
        const bool was_grounded = body.grounded;
        const float carried = along_x ? body.remainder_x : body.remainder_y, sign = by + carried > 0 ? 1.0f : -1.0f;
        const bool stopped = along_x ? player_body_move_x(&body, by, &rects) : player_body_move_y(&body, by, &rects);
        const float done = along_x ? body.pos.x - old.x : body.pos.y - old.y;
        const float left = along_x ? body.remainder_x : body.remainder_y;
        EXPECT_TRUE(
            stopped ? left == 0 && (along_x ? blocked(sign) : blocked(0, sign) && body.vel.y == 0)
                    : done + left == carried + by && std::abs(left) <= 0.5f);
        EXPECT_TRUE(!along_x || body.pos.y == old.y || (was_grounded && body.pos.y < old.y))
            << "ledges are climbed upwards";
    }

    ColliderRects rects = {};
    ColliderTris tris = {};
    PlayerBody body = {};
    std::mt19937 random{20};
};

TEST_F(PlayerBodyTest, MovesUntilBlockedAndNeverOverlapsRectangles) {
    Uint64 hash = 0; // of all positions and remainders; the expected value is from a debug build
    for (int level = 0; level < 2000; level++) {
        make_level();
        const ColliderTris *slopes = tris.count ? &tris : nullptr;
        put(float(number(0, 340)), float(number(0, 300)), number(0, 1));
        for (int i = 0; i < 50; i++) {
            const int hz = 30 << number(0, 3), speed = number(0, 9) == 0 ? 6000 : 300;
            const float vx = float(number(-speed, speed)), vy = float(number(-speed, speed));
            const bool was_free = !blocked();
            body.vel.y = vy;
            move(true, std::round(64 * vx / float(hz)) / 64);
            move(false, std::round(64 * vy / float(hz)) / 64);
            player_body_snap_to_slope(&body, &rects, slopes);
            player_body_update_ground(&body, &rects, slopes);
            EXPECT_FALSE(was_free && blocked());
            ASSERT_FALSE(HasFailure()) << "level " << level << ", step " << i;
            for (const float part : {body.pos.x, body.pos.y, body.vel.y, body.remainder_x, body.remainder_y}) {
                hash = (hash ^ std::bit_cast<Uint32>(part)) * 1099511628211u;
            }
            hash += body.grounded;
        }
    }
    EXPECT_EQ(hash, 0x4b5a28e8a5f58759u) << std::hex << "0x" << hash;
}

TEST_F(PlayerBodyTest, SlopeDoesNotLiftIntoCeiling) {
    constexpr float FAR = 1 << 25; // where adding a pixel does not change a float
    add(Tri{{0, 100}, {64, 100}, {64, 36}});
    add(SDL_FRect{0, 30, 64, 10}); // 60 px above the feet, which the slope would lift by 32
    add(SDL_FRect{-64, FAR, 128, FAR});
    add(Tri{{-64, FAR + 64}, {64, FAR + 64}, {64, FAR + 64}});
    const SDL_FPoint cases[][2] = {{{32, 99.5f}, {32, 80}}, {{-16, FAR + 128}, {-16, FAR + 128}}};
    for (const auto &[from, to] : cases) {
        put(from.x, from.y, true);
        player_body_snap_to_slope(&body, &rects, &tris);
        EXPECT_EQ(body.pos.y, to.y);
    }
}

} // namespace
