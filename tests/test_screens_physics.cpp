// The physics demo: user actions. Its scene over time is covered by stored pictures and recordings.

#include "lumarind/engine/engine.h"
#include "screens/physics_demo.h"
#include "support/call_faults.h"
#include "support/engine_fixture.h"

namespace {

constexpr double STEP = 1.0 / 60;
constexpr int SCENE_PROPS = 56;

const PhysicsProp &prop(int index) { return physics_demo->props->items[index]; }
const PhysicsProp &newest() { return prop(physics_demo->props->count - 1); }
b2Vec2 position(int index) { return b2Body_GetPosition(prop(index).body); }

class PhysicsDemoTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(start({"--screen", "physics-demo", "--window-size", "800x450"}));
    }
    static void steps(int count) {
        for (int i = 0; i < count; i++) physics_demo_fixed_update(STEP);
    }
};

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
