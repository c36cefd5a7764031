// The physics demo: its scene over time, and user actions. Its appearance is covered by stored pictures.

#include "lumarind/engine/engine.h"
#include "screens/physics_demo.h"
#include "support/call_faults.h"
#include "support/engine_fixture.h"

#include <array>
#include <cmath>
#include <vector>

namespace {

constexpr double STEP = 1.0 / 60;
constexpr int FIRST_LINK = 3, LINKS = 12, BALL = FIRST_LINK + LINKS, FIRST_BRICK = BALL + 1, SCENE_PROPS = 56;

using Pose = std::array<float, 4>; // x, y, cosine and sine of the rotation

const PhysicsProp &prop(int index) { return physics_demo->props->items[index]; }
const PhysicsProp &newest() { return prop(physics_demo->props->count - 1); }
b2Vec2 position(int index) { return b2Body_GetPosition(prop(index).body); }
bool awake(int index) { return b2Body_IsAwake(prop(index).body); }
Pose pose(int index) {
    const b2Rot rotation = b2Body_GetRotation(prop(index).body);
    return {position(index).x, position(index).y, rotation.c, rotation.s};
}
std::vector<Pose> poses() {
    std::vector<Pose> all;
    for (int i = 0; i < physics_demo->props->count; i++) all.push_back(pose(i));
    return all;
}
b2Vec2 world_point(int index, b2Vec2 p) {
    const auto [x, y, c, s] = pose(index);
    return {c * p.x - s * p.y + x, s * p.x + c * p.y + y};
}

class PhysicsDemoTest : public EngineTest {
protected:
    void SetUp() override { // before the first step
        EngineTest::SetUp();
        ASSERT_TRUE(start({"--screen", "physics-demo", "--window-size", "800x450"}));
    }
    static void steps(int count) {
        for (int i = 0; i < count; i++) physics_demo_fixed_update(STEP);
    }
};

TEST_F(PhysicsDemoTest, SimulationIsDeterministicAndRepeatsAfterRebuild) {
    const std::vector<Pose> at_start = poses();
    ASSERT_EQ(at_start.size(), static_cast<size_t>(SCENE_PROPS));
    steps(600);
    const std::vector<Pose> after = poses();
    physics_demo_fire_cannonball();
    const b2WorldId old_world = physics_demo->world;
    play("R 0.01");
    EXPECT_FALSE(b2World_IsValid(old_world));
    EXPECT_EQ(physics_demo->spawned, 0);
    EXPECT_EQ(poses(), at_start);
    steps(600);
    EXPECT_EQ(poses(), after);
    const b2WorldId world = physics_demo->world;
    stop();
    EXPECT_FALSE(b2World_IsValid(world)) << "the screen's cleanup destroys its world";
}

TEST_F(PhysicsDemoTest, WallSleepsUntilHitAndChainHolds) {
    const std::vector<Pose> at_start = poses();
    steps(60); // the ball is swinging towards the wall
    for (int i = FIRST_BRICK; i < SCENE_PROPS; i++) {
        EXPECT_FALSE(awake(i)) << i;
        const Pose was = at_start[static_cast<size_t>(i)], is = pose(i);
        EXPECT_NEAR(std::hypot(is[0] - was[0], is[1] - was[1]), 0, 0.005) << i;
    }
    steps(60);
    EXPECT_TRUE(awake(SCENE_PROPS - 1));
    steps(120);
    EXPECT_LT(position(SCENE_PROPS - 1).y, 4) << "the wall has fallen";
    steps(660);
    for (int i = FIRST_BRICK; i < SCENE_PROPS; i++) EXPECT_FALSE(awake(i)) << i;
    for (int step = 0; step < 300; step++) {
        steps(1);
        for (int i = FIRST_LINK; i < BALL; i++) {
            const b2Vec2 end = world_point(i, {0, -0.28f});
            const b2Vec2 next = world_point(i + 1, {0, i + 1 == BALL ? 0.55f : 0.28f});
            ASSERT_LT(std::hypot(end.x - next.x, end.y - next.y), 0.02 * 0.56) << "link " << i << ", step " << step;
        }
    }
}

// --- user actions ---

TEST_F(PhysicsDemoTest, DebrisAndCannonballsShareLimitAndAlternateShapes) {
    play("1 rclick:600,100 ~Space 1");
    EXPECT_EQ(physics_demo->spawned, 0);
    play("drop:600,100 0.01");
    EXPECT_TRUE(newest().shape == PROP_BOX && newest().half_w == 0.22f && !newest().spoke);
    const PhysicsView view = physics_demo_view();
    const SDL_FPoint at = physics_view_to_world(&view, 600, 100), left = physics_view_to_screen(&view, 1, 0);
    EXPECT_NEAR(physics_view_to_screen(&view, 3, 0).x - left.x, physics_view_to_pixels(&view, 2), 0.01);
    EXPECT_NEAR(newest().prev_position.x, at.x, 1e-4);
    EXPECT_NEAR(newest().prev_position.y, at.y, 0.01) << "a step may have passed";
    play("drop:630,100 0.01");
    EXPECT_TRUE(newest().shape == PROP_CIRCLE && newest().radius == 0.26f && newest().spoke);
    play("Space 0.01");
    EXPECT_TRUE(newest().radius == 0.3f && newest().spoke);
    steps(1);
    EXPECT_NEAR((b2Body_GetPosition(newest().body).x - newest().prev_position.x) / STEP, -24, 0.1);
    play("drop:660,100 0.01");
    EXPECT_EQ(newest().shape, PROP_CIRCLE) << "the third added body was the cannonball";

    while (physics_demo->spawned < PHYSICS_DEMO_SPAWN_MAX) physics_demo_drop_debris(20, 8);
    play("drop:600,100 Space 0.01");
    EXPECT_EQ(physics_demo->props->count, SCENE_PROPS + PHYSICS_DEMO_SPAWN_MAX);
    EXPECT_EQ(physics_demo->spawned, PHYSICS_DEMO_SPAWN_MAX);
}

TEST_F(PhysicsDemoTest, BodyIsNotCountedIfAllocationFails) {
    while (physics_demo->props->count < physics_demo->props->capacity) physics_demo_drop_debris(17, 8);
    const int spawned = physics_demo->spawned, count = physics_demo->props->count;
    allocation_faults_arm(1, false);
    physics_demo_drop_debris(25, 1.1f);
    EXPECT_EQ(call_faults_disarm(), 1);
    EXPECT_TRUE(physics_demo->spawned == spawned && physics_demo->props->count == count);
    EXPECT_EQ(log.count("[PHYSICS_DEMO] Memory allocation failed while growing the array to 80 elements, error: "), 1);
    physics_demo_drop_debris(25, 2);
    EXPECT_EQ(physics_demo->spawned, spawned + 1);
    steps(45);
    EXPECT_LT(position(count).y, 1.2f) << "there is no invisible body on the ground";
}

} // namespace
