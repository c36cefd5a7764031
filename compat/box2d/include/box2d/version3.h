// version3: the part of the Box2D 3 interface used by this project, in its own namespace, because version 2.4 uses the
// same names for different types. Units are metres, kilograms, seconds and radians. Main thread only.
//
// Names, fields and meanings are those of version 3.2, so that code using this header also builds with the real one.
// Records have only the fields that can be implemented on version 2.4: setting any other is a compile error.
// Passing an invalid id is a programming error, caught by an assertion.
#pragma once

#include <math.h>
#include <stdint.h>

namespace box2d_version3 {

// --- mathematics ---

struct b2Vec2 {
    float x, y;
};

struct b2Rot {
    float c, s; // cosine and sine
};

struct b2Transform {
    b2Vec2 p;
    b2Rot q;
};

inline constexpr b2Vec2 b2Vec2_zero = {0, 0};
inline constexpr b2Rot b2Rot_identity = {1, 0};
inline constexpr b2Transform b2Transform_identity = {b2Vec2_zero, b2Rot_identity};

inline b2Rot b2MakeRot(float radians) { return {cosf(radians), sinf(radians)}; }

// Interpolates from q1 (t = 0) to q2 (t = 1): normalised, but not at constant angular speed.
inline b2Rot b2NLerp(b2Rot q1, b2Rot q2, float t) {
    const float c = (1 - t) * q1.c + t * q2.c, s = (1 - t) * q1.s + t * q2.s;
    const float length = sqrtf(c * c + s * s);
    const float scale = length > 0 ? 1 / length : 0;
    return {c * scale, s * scale};
}

// --- ids: index1 counts from 1, so a zeroed id is null. The generation distinguishes reuses of a slot. ---

struct b2WorldId {
    uint16_t index1, generation;
};
struct b2BodyId {
    int32_t index1;
    uint16_t world0, generation; // world0 counts from 0
};
struct b2ShapeId {
    int32_t index1;
    uint16_t world0, generation;
};
struct b2JointId {
    int32_t index1;
    uint16_t world0, generation;
};

inline constexpr b2WorldId b2_nullWorldId = {};
inline constexpr b2BodyId b2_nullBodyId = {};
inline constexpr b2ShapeId b2_nullShapeId = {};
inline constexpr b2JointId b2_nullJointId = {};

// --- worlds ---

// Definitions must be initialised by their b2Default function, which sets internalValue. Comments give other defaults.
struct b2WorldDef {
    b2Vec2 gravity; // (0, -10)
    bool enableSleep, enableContinuous;
    int internalValue;
};
b2WorldDef b2DefaultWorldDef();

b2WorldId b2CreateWorld(const b2WorldDef *def); // null if there are too many worlds
void b2DestroyWorld(b2WorldId world);           // with all its bodies, shapes and joints
bool b2World_IsValid(b2WorldId world);          // any id may be passed

// Advances by `sub_steps` sub-steps. Forces act during all of them and are then cleared.
void b2World_Step(b2WorldId world, float seconds, int sub_steps);

// --- bodies ---

enum b2BodyType { b2_staticBody = 0, b2_kinematicBody = 1, b2_dynamicBody = 2 };

struct b2BodyDef {
    b2BodyType type; // b2_staticBody
    b2Vec2 position;
    b2Rot rotation;
    b2Vec2 linearVelocity;
    float angularVelocity;
    float linearDamping, angularDamping, gravityScale;
    bool enableSleep, isAwake, isBullet, isEnabled; // all but isBullet are true
    int internalValue;
};
b2BodyDef b2DefaultBodyDef();

b2BodyId b2CreateBody(b2WorldId world, const b2BodyDef *def);
void b2DestroyBody(b2BodyId body); // with its shapes and joints
bool b2Body_IsValid(b2BodyId body);
b2BodyType b2Body_GetType(b2BodyId body);
b2Vec2 b2Body_GetPosition(b2BodyId body); // of its origin, in world coordinates
b2Rot b2Body_GetRotation(b2BodyId body);
b2Vec2 b2Body_GetLinearVelocity(b2BodyId body);                           // m/s
float b2Body_GetAngularVelocity(b2BodyId body);                           // rad/s
bool b2Body_IsAwake(b2BodyId body);                                       // false for static bodies
void b2Body_ApplyForceToCenter(b2BodyId body, b2Vec2 newtons, bool wake); // for the next step

// --- shapes ---

inline constexpr int B2_MAX_POLYGON_VERTICES = 8;

struct b2Polygon { // convex, counter-clockwise, in the body's coordinates
    b2Vec2 vertices[B2_MAX_POLYGON_VERTICES], normals[B2_MAX_POLYGON_VERTICES];
    b2Vec2 centroid;
    int count;
};
b2Polygon b2MakeBox(float half_width, float half_height);

struct b2Circle {
    b2Vec2 center;
    float radius;
};

struct b2SurfaceMaterial {
    float friction, restitution;
};
struct b2Filter {
    int groupIndex; // shapes of the same negative group never collide, of the same positive one always
};
struct b2ShapeDef {
    b2SurfaceMaterial material; // 0.6 and 0
    float density;              // kg/m², 1
    b2Filter filter;
    int internalValue;
};
b2ShapeDef b2DefaultShapeDef();

b2ShapeId b2CreatePolygonShape(b2BodyId body, const b2ShapeDef *def, const b2Polygon *polygon);
b2ShapeId b2CreateCircleShape(b2BodyId body, const b2ShapeDef *def, const b2Circle *circle);
bool b2Shape_IsValid(b2ShapeId shape);

// --- joints ---

struct b2JointDef {
    b2BodyId bodyIdA, bodyIdB;
    b2Transform localFrameA, localFrameB; // identity; the joint in each body's coordinates
    bool collideConnected;
};
struct b2RevoluteJointDef { // keeps the origins of both frames together
    b2JointDef base;
    int internalValue;
};
b2RevoluteJointDef b2DefaultRevoluteJointDef();

b2JointId b2CreateRevoluteJoint(b2WorldId world, const b2RevoluteJointDef *def);
bool b2Joint_IsValid(b2JointId joint);

} // namespace box2d_version3
