// Box2D's version 3 interface, where the physics screen's tests do not cover it: the layer on 2.4 must pass the same
// tests as version 3 itself. The tests do not know which of the two they run on.

#include <box2d/box2d.h>
#include <gtest/gtest.h>

namespace {

constexpr float STEP = 1.0f / 60;

class PhysicsLayerTest : public ::testing::Test {
protected:
    b2WorldId world = b2_nullWorldId;

    void SetUp() override { create_world(); }
    void TearDown() override {
        if (b2World_IsValid(world)) b2DestroyWorld(world);
    }
    void create_world() { // with gravity -10
        TearDown();
        const b2WorldDef def = b2DefaultWorldDef();
        world = b2CreateWorld(&def);
    }
    b2BodyId body(b2BodyType type, b2Vec2 position) const {
        b2BodyDef def = b2DefaultBodyDef();
        def.type = type;
        def.position = position;
        return b2CreateBody(world, &def);
    }
    static b2ShapeId circle(b2BodyId on, int group = 0) {
        b2ShapeDef def = b2DefaultShapeDef();
        def.filter.groupIndex = group;
        const b2Circle shape = {{0, 0}, 0.5f};
        return b2CreateCircleShape(on, &def, &shape);
    }
    b2JointId pin(b2BodyId a, b2BodyId b, b2Vec2 anchor_a) const {
        b2RevoluteJointDef def = b2DefaultRevoluteJointDef();
        def.base.bodyIdA = a;
        def.base.bodyIdB = b;
        def.base.localFrameA.p = anchor_a;
        return b2CreateRevoluteJoint(world, &def);
    }
};

TEST_F(PhysicsLayerTest, IdsAreValidUntilObjectIsDestroyed) {
    EXPECT_FALSE(b2World_IsValid(b2_nullWorldId) || b2Body_IsValid(b2_nullBodyId));
    EXPECT_FALSE(b2Shape_IsValid(b2_nullShapeId) || b2Joint_IsValid(b2_nullJointId));
    const b2BodyId a = body(b2_dynamicBody, {0, 0}), b = body(b2_dynamicBody, {5, 0}), c = body(b2_staticBody, {9, 0});
    const b2ShapeId shape_a = circle(a), shape_b = circle(b);
    const b2JointId joint_ab = pin(a, b, {5, 0}), joint_bc = pin(b, c, {4, 0});
    EXPECT_TRUE(b2Body_IsValid(a) && b2Shape_IsValid(shape_a) && b2Joint_IsValid(joint_ab));

    b2DestroyBody(a);
    EXPECT_FALSE(b2Body_IsValid(a) || b2Shape_IsValid(shape_a) || b2Joint_IsValid(joint_ab))
        << "destroyed with its parts";
    const b2BodyId next = body(b2_kinematicBody, {7, 0});
    EXPECT_FALSE(b2Body_IsValid(a)) << "also after its slot is reused";
    EXPECT_TRUE(b2Body_GetPosition(next).x == 7 && b2Body_GetType(next) == b2_kinematicBody);
    EXPECT_TRUE(b2Body_GetPosition(b).x == 5 && b2Shape_IsValid(shape_b) && b2Joint_IsValid(joint_bc));

    const b2WorldId gone = world;
    b2DestroyWorld(world);
    EXPECT_FALSE(b2World_IsValid(gone) || b2Body_IsValid(b) || b2Shape_IsValid(shape_b) || b2Joint_IsValid(joint_bc));
    for (int i = 0; i < 300; i++) { // far more than can exist at once: slots are reused
        create_world();
        ASSERT_TRUE(b2World_IsValid(world)) << i;
        ASSERT_FALSE(b2World_IsValid(gone)) << "also after its slot is reused";
    }
}

TEST_F(PhysicsLayerTest, StepsUseSubStepsAndGroupsFilterCollisions) {
    const struct {
        int upper, lower;
        bool collide;
        int sub_steps;
    } cases[] = {{0, 0, true, 1}, {-1, -1, false, 2}, {-1, -2, true, 4}, {-1, 0, true, 4}, {3, 3, true, 4}};
    for (const auto &c : cases) {
        create_world();
        circle(body(b2_staticBody, {0, 0}), c.lower);
        const b2BodyId falling = body(b2_dynamicBody, {0, 1.2f});
        circle(falling, c.upper);
        b2World_Step(world, STEP, c.sub_steps);
        const float h = STEP / static_cast<float>(c.sub_steps);
        const auto sum = static_cast<float>(c.sub_steps * (c.sub_steps + 1) / 2); // semi-implicit Euler
        EXPECT_NEAR(b2Body_GetPosition(falling).y, 1.2f - 10 * h * h * sum, 1e-6) << c.sub_steps;
        for (int i = 0; i < 60; i++) b2World_Step(world, STEP, c.sub_steps);
        EXPECT_EQ(b2Body_GetPosition(falling).y > 0.9f, c.collide) << c.upper << " on " << c.lower;
    }
}

} // namespace
