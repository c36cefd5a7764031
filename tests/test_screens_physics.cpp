// The physics demo: its scene, and what the user does to it. How it is drawn: the stored pictures.

#include "engine/engine.h"
#include "screens/physics_demo.h"
#include "support/allocation_faults.h"
#include "support/engine_fixture.h"

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace {

constexpr double STEP = 1.0 / 60;
constexpr int FIRST_LINK = 3, LINKS = 12, BALL = FIRST_LINK + LINKS, FIRST_BRICK = BALL + 1, SCENE_PROPS = 56;

using Place = std::array<float, 4>; // x, y, the turn's cosine and sine

const PhysicsProp &prop(int index) { return physics_demo->props->items[index]; }
Place as_place(b2Vec2 position, b2Rot rotation) { return {position.x, position.y, rotation.c, rotation.s}; }
b2Vec2 position(int index) { return b2Body_GetPosition(prop(index).body); }
Place place(int index) { return as_place(position(index), b2Body_GetRotation(prop(index).body)); }

std::vector<Place> places() {
    std::vector<Place> all;
    for (int i = 0; i < physics_demo->props->count; i++) all.push_back(place(i));
    return all;
}

bool awake(int index) { return b2Body_IsAwake(prop(index).body); }

b2Vec2 world_point(int index, b2Vec2 p) {
    const auto [x, y, c, s] = place(index);
    return {c * p.x - s * p.y + x, s * p.x + c * p.y + y};
}

class PhysicsDemoTest : public EngineTest {
protected:
    bool start_demo() { return start({"--screen", "physics-demo", "--window-size", "800x450"}); } // no step yet
    static void steps(int count) {
        for (int i = 0; i < count; i++) physics_demo_fixed_update(STEP);
    }
};

// --- view ---

TEST(PhysicsViewTest, TheHeightFillsTheViewAndTheWidthIsCentred) {
    const struct {
        float w, h, world_w, world_h, scale, origin_x, floor_y;
    } cases[] = {
        {2000, 700, 26, 14, 50, 350, 700},
        {800, 0, 26, 14, 1.0f / 14, 400 - 13.0f / 14, 1},
        {800, 5, 0, 0, 500, 400, 5}};
    for (const auto &c : cases) {
        PhysicsView view = {};
        physics_view_fit(&view, c.w, c.h, c.world_w, c.world_h);
        EXPECT_NEAR(view.scale, c.scale, 1e-3);
        const SDL_FPoint screen = physics_view_to_screen(&view, 3, 2);
        EXPECT_NEAR(screen.x, c.origin_x + 3 * c.scale, 1e-3);
        EXPECT_NEAR(screen.y, c.floor_y - physics_view_to_pixels(&view, 2), 1e-3);
        const SDL_FPoint back = physics_view_to_world(&view, screen.x, screen.y);
        EXPECT_TRUE(std::hypot(back.x - 3, back.y - 2) < 1e-3f) << back.x << ", " << back.y;
    }
}

// --- scene ---

TEST_F(PhysicsDemoTest, TheSameStepsGiveTheSamePlacesAlsoInARebuiltScene) {
    ASSERT_TRUE(start_demo());
    const std::vector<Place> at_start = places();
    steps(600);
    const std::vector<Place> after = places();
    physics_demo_fire_cannonball();
    const b2WorldId gone = physics_demo->world;
    play("R 0.01");
    EXPECT_FALSE(b2World_IsValid(gone));
    EXPECT_EQ(physics_demo->spawned, 0);
    EXPECT_EQ(places(), at_start);
    steps(600);
    EXPECT_EQ(places(), after);
    EXPECT_NE(after, at_start);
    const b2WorldId world = physics_demo->world;
    stop();
    EXPECT_FALSE(b2World_IsValid(world)) << "it goes with its screen";
}

TEST_F(PhysicsDemoTest, TheWallStandsAndSleepsUntilItIsHit) {
    ASSERT_TRUE(start_demo());
    const std::vector<Place> at_start = places();
    steps(60); // the ball is on its way
    for (int i = FIRST_BRICK; i < SCENE_PROPS; i++) {
        EXPECT_FALSE(awake(i)) << i;
        const Place was = at_start[static_cast<size_t>(i)], is = place(i);
        EXPECT_NEAR(std::hypot(is[0] - was[0], is[1] - was[1]), 0, 0.005) << i;
    }
    steps(60);
    EXPECT_TRUE(awake(SCENE_PROPS - 1));
    steps(120);
    EXPECT_LT(position(SCENE_PROPS - 1).y, 4) << "the wall has fallen";
    steps(600);
    for (int i = FIRST_BRICK; i < SCENE_PROPS; i++) EXPECT_FALSE(awake(i)) << i;
}

// --- stability ---

// Of the chain and its ball, turning left out; from where they were and are.
double swing_energy() {
    double energy = 0;
    for (int i = FIRST_LINK; i <= BALL; i++) {
        const b2Vec2 was = prop(i).prev_position, is = position(i);
        const double vx = (is.x - was.x) / STEP, vy = (is.y - was.y) / STEP;
        const double mass = i == BALL ? 20 * std::numbers::pi * 0.55 * 0.55 : 8 * 0.18 * 0.56;
        energy += mass * (9.8 * (was.y + is.y) / 2 + (vx * vx + vy * vy) / 2);
    }
    return energy;
}

TEST_F(PhysicsDemoTest, TheSwingKeepsItsChainTogetherAndGainsNoEnergy) {
    ASSERT_TRUE(start_demo());
    steps(15 * 60); // until the rubble lies still
    const double before = swing_energy();
    double most = 0;
    for (int step = 0; step < 1200; step++) {
        steps(1);
        most = std::fmax(most, swing_energy());
        for (int i = FIRST_LINK; i < BALL; i++) {
            const b2Vec2 end = world_point(i, {0, -0.28f});
            const b2Vec2 next = world_point(i + 1, {0, i + 1 == BALL ? 0.55f : 0.28f});
            ASSERT_LT(std::hypot(end.x - next.x, end.y - next.y), 0.02 * 0.56) << "link " << i << ", step " << step;
        }
    }
    EXPECT_LT(most, before * 1.001);
    EXPECT_GT(swing_energy(), before * 0.9) << "nor does it come to a halt by itself";
}

// --- user actions ---

TEST_F(PhysicsDemoTest, DebrisAndCannonballsShareOneLimitAndAlternateByCount) {
    ASSERT_TRUE(start_demo());
    frame();
    const PhysicsView view = physics_demo_view();
    const auto newest = [] { return physics_demo->props->count - 1; };
    play("rclick:600,100 ~Space 1");
    EXPECT_EQ(physics_demo->spawned, 0);

    play("drop:600,100 0.01");
    EXPECT_TRUE(prop(newest()).shape == PROP_BOX && prop(newest()).half_w == 0.22f && !prop(newest()).spoke);
    const SDL_FPoint at = physics_view_to_world(&view, 600, 100);
    EXPECT_NEAR(prop(newest()).prev_position.x, at.x, 1e-4);
    EXPECT_NEAR(prop(newest()).prev_position.y, at.y, 0.01) << "a step may have passed";
    play("drop:630,100 0.01");
    EXPECT_TRUE(prop(newest()).shape == PROP_CIRCLE && prop(newest()).radius == 0.26f && prop(newest()).spoke);
    play("Space 0.01");
    EXPECT_TRUE(prop(newest()).radius == 0.3f && prop(newest()).spoke);
    steps(1);
    EXPECT_NEAR((position(newest()).x - prop(newest()).prev_position.x) / STEP, -24, 0.1);
    play("drop:660,100 0.01");
    EXPECT_EQ(prop(newest()).shape, PROP_CIRCLE) << "the third added body was the cannonball";

    while (physics_demo->spawned < PHYSICS_DEMO_SPAWN_MAX) physics_demo_drop_debris(20, 8);
    play("drop:600,100 Space 0.01");
    EXPECT_EQ(physics_demo->props->count, SCENE_PROPS + PHYSICS_DEMO_SPAWN_MAX);
    EXPECT_EQ(physics_demo->spawned, PHYSICS_DEMO_SPAWN_MAX);
    play("R 0.01");
    EXPECT_EQ(physics_demo->props->count, SCENE_PROPS);
}

TEST_F(PhysicsDemoTest, HeldKeysPushTheBallInEveryStepAndOppositesCancel) {
    ASSERT_TRUE(start_demo());
    physics_demo_drop_debris(20, 12);
    physics_demo->ball = prop(physics_demo->props->count - 1).body; // a free body shows the whole force
    const double push = 320 / (0.44 * 0.44) * STEP;
    double speed = 0;
    for (const auto &[script, direction] :
         {std::pair{"+Right", 1}, {"-Right +A", -1}, {"+D", 0}, {"-D -A +Left", -1}, {"+D +Right -Left", 1}}) {
        play(script);
        steps(1);
        hold({});
        steps(1); // m/s gained in the step before
        const double now = (b2Body_GetPosition(physics_demo->ball).x - prop(SCENE_PROPS).prev_position.x) / STEP;
        EXPECT_NEAR(now - speed, direction * push, 0.02) << script;
        speed = now;
    }
    play("R 0.01");
    steps(60); // the bricks sleep
    physics_demo->ball = prop(FIRST_BRICK).body;
    play("+Right");
    steps(1);
    EXPECT_TRUE(awake(FIRST_BRICK));
}

// --- lifetime ---

TEST_F(PhysicsDemoTest, ABodyThatFindsNoPlaceIsNotCounted) {
    allocation_faults_install();
    ASSERT_TRUE(start_demo());
    while (physics_demo->props->count < physics_demo->props->capacity) physics_demo_drop_debris(17, 8);
    const int spawned = physics_demo->spawned, count = physics_demo->props->count;
    allocation_faults_arm(1, false);
    physics_demo_drop_debris(25, 1.1f);
    EXPECT_EQ(allocation_faults_disarm(), 1);
    EXPECT_TRUE(physics_demo->spawned == spawned && physics_demo->props->count == count);
    EXPECT_EQ(log.count("[PHYSICS_DEMO] Memory allocation failed while growing the array to 80 elements, error: "), 1);
    physics_demo_drop_debris(25, 2);
    EXPECT_EQ(physics_demo->spawned, spawned + 1);
    steps(45);
    EXPECT_LT(position(count).y, 1.2f) << "nothing unseen lies on the ground";
}

} // namespace
