// Implements the interface of Box2D 3 (version3.h) on version 2.4, whose names are the global ones here.

#include "include/box2d/version3.h"

#include <box2d/box2d.h>

#include <assert.h>
#include <new>
#include <vector>

// Twice the iterations that a heap of boxes needs in 2.4, so that the chain does not stretch under a ball 24 times as
// heavy as a link.
static constexpr int VELOCITY_ITERATIONS = 8, POSITION_ITERATIONS = 3; // per sub-step
static constexpr int MAX_WORLDS = 128;
static constexpr int COOKIE = 1152023; // marks definitions initialised by the b2Default functions

namespace {

// The objects of one kind of id. A freed slot is reused with the next generation.
template <typename T> struct Slots {
    struct Slot {
        T *object = nullptr; // null: free
        uint16_t generation = 0;
        int next_free = -1;
    };
    std::vector<Slot> slots;
    int first_free = -1;
    uint16_t first_generation = 0; // the world's, so that ids from an earlier world in this slot stay invalid
};

struct World {
    b2World world;
    uint16_t generation;
    Slots<b2Body> bodies; // borrowed from the world, as are the others
    Slots<b2Fixture> shapes;
    Slots<b2Joint> joints;
};

} // namespace

static World *g_worlds[MAX_WORLDS]; // owned; null: free
static uint16_t g_generations[MAX_WORLDS];

// --- ids ---

// An object's user data holds its slot, counted from 1 as in its id.
template <typename T> static int _slots_add(Slots<T> *slots, T *object) {
    int index = slots->first_free;
    if (index < 0) {
        index = static_cast<int>(slots->slots.size());
        slots->slots.push_back({.generation = slots->first_generation});
    } else {
        slots->first_free = slots->slots[static_cast<size_t>(index)].next_free;
    }
    auto &slot = slots->slots[static_cast<size_t>(index)];
    slot.object = object;
    slot.generation++;
    object->GetUserData().pointer = static_cast<uintptr_t>(index) + 1;
    return index;
}

template <typename T> static void _slots_release(Slots<T> *slots, T *object) {
    const int index = static_cast<int>(object->GetUserData().pointer) - 1;
    auto &slot = slots->slots[static_cast<size_t>(index)];
    slot.object = nullptr;
    slot.next_free = slots->first_free;
    slots->first_free = index;
}

template <typename Id, typename T> static Id _slots_id(const Slots<T> &slots, int world0, int index) {
    return {index + 1, static_cast<uint16_t>(world0), slots.slots[static_cast<size_t>(index)].generation};
}

// Returns null for an invalid id.
template <typename Id, typename T> static T *_find(Id id, Slots<T> World::*slots) {
    if (id.world0 >= MAX_WORLDS || !g_worlds[id.world0]) return nullptr;
    const auto &all = (g_worlds[id.world0]->*slots).slots;
    const auto index = static_cast<size_t>(id.index1) - 1; // out of range for a null id
    return index < all.size() && all[index].generation == id.generation ? all[index].object : nullptr;
}

static b2Body *_body(box2d_version3::b2BodyId id) {
    b2Body *body = _find(id, &World::bodies);
    assert(body && "the body id is not valid");
    return body;
}

static b2Vec2 _vector(box2d_version3::b2Vec2 v) { return {v.x, v.y}; }

namespace box2d_version3 {

bool b2World_IsValid(b2WorldId world) {
    return world.index1 >= 1 && world.index1 <= MAX_WORLDS && g_worlds[world.index1 - 1] &&
           g_worlds[world.index1 - 1]->generation == world.generation;
}
bool b2Body_IsValid(b2BodyId body) { return _find(body, &World::bodies); }
bool b2Shape_IsValid(b2ShapeId shape) { return _find(shape, &World::shapes); }
bool b2Joint_IsValid(b2JointId joint) { return _find(joint, &World::joints); }

static World *_world(b2WorldId id) {
    assert(b2World_IsValid(id) && "the world id is not valid");
    return g_worlds[id.index1 - 1];
}

// --- worlds ---

b2WorldDef b2DefaultWorldDef() {
    return {.gravity = {0, -10}, .enableSleep = true, .enableContinuous = true, .internalValue = COOKIE};
}

b2WorldId b2CreateWorld(const b2WorldDef *def) {
    assert(def->internalValue == COOKIE && "the definition has to come from b2DefaultWorldDef");
    int index = 0;
    while (index < MAX_WORLDS && g_worlds[index]) index++;
    if (index == MAX_WORLDS) return b2_nullWorldId;
    const uint16_t generation = ++g_generations[index];
    g_worlds[index] = new World{
        .world = ::b2World(_vector(def->gravity)),
        .generation = generation,
        .bodies = {.slots = {}, .first_generation = generation},
        .shapes = {.slots = {}, .first_generation = generation},
        .joints = {.slots = {}, .first_generation = generation}};
    ::b2World *world = &g_worlds[index]->world;
    world->SetAllowSleeping(def->enableSleep);
    world->SetContinuousPhysics(def->enableContinuous);
    world->SetAutoClearForces(false); // forces act over all sub-steps of a step
    return {static_cast<uint16_t>(index + 1), generation};
}

void b2DestroyWorld(b2WorldId world) {
    delete _world(world);
    g_worlds[world.index1 - 1] = nullptr;
}

void b2World_Step(b2WorldId id, float seconds, int sub_steps) {
    ::b2World *world = &_world(id)->world;
    const float sub_step = seconds / static_cast<float>(sub_steps);
    for (int i = 0; i < sub_steps; i++) world->Step(sub_step, VELOCITY_ITERATIONS, POSITION_ITERATIONS);
    world->ClearForces();
}

// --- bodies ---

b2BodyDef b2DefaultBodyDef() {
    return {
        .type = b2_staticBody,
        .position = b2Vec2_zero,
        .rotation = b2Rot_identity,
        .linearVelocity = b2Vec2_zero,
        .angularVelocity = 0,
        .linearDamping = 0,
        .angularDamping = 0,
        .gravityScale = 1,
        .enableSleep = true,
        .isAwake = true,
        .isBullet = false,
        .isEnabled = true,
        .internalValue = COOKIE};
}

b2BodyId b2CreateBody(b2WorldId world, const b2BodyDef *def) {
    assert(def->internalValue == COOKIE && "the definition has to come from b2DefaultBodyDef");
    ::b2BodyDef native;
    native.type = static_cast<::b2BodyType>(def->type);
    native.position = _vector(def->position);
    native.angle = atan2f(def->rotation.s, def->rotation.c);
    native.linearVelocity = _vector(def->linearVelocity);
    native.angularVelocity = def->angularVelocity;
    native.linearDamping = def->linearDamping;
    native.angularDamping = def->angularDamping;
    native.gravityScale = def->gravityScale;
    native.allowSleep = def->enableSleep;
    native.awake = def->isAwake;
    native.bullet = def->isBullet;
    native.enabled = def->isEnabled;
    World *owner = _world(world);
    const int index = _slots_add(&owner->bodies, owner->world.CreateBody(&native));
    return _slots_id<b2BodyId>(owner->bodies, world.index1 - 1, index);
}

void b2DestroyBody(b2BodyId id) {
    b2Body *body = _body(id);
    World *owner = g_worlds[id.world0];
    for (b2Fixture *shape = body->GetFixtureList(); shape; shape = shape->GetNext()) {
        _slots_release(&owner->shapes, shape);
    }
    for (const b2JointEdge *edge = body->GetJointList(); edge; edge = edge->next) {
        _slots_release(&owner->joints, edge->joint);
    }
    _slots_release(&owner->bodies, body);
    owner->world.DestroyBody(body);
}

b2BodyType b2Body_GetType(b2BodyId body) { return static_cast<b2BodyType>(_body(body)->GetType()); }

b2Vec2 b2Body_GetPosition(b2BodyId body) {
    const ::b2Vec2 &position = _body(body)->GetPosition();
    return {position.x, position.y};
}

b2Rot b2Body_GetRotation(b2BodyId body) {
    const ::b2Rot &rotation = _body(body)->GetTransform().q;
    return {rotation.c, rotation.s};
}

b2Vec2 b2Body_GetLinearVelocity(b2BodyId body) {
    const ::b2Vec2 &velocity = _body(body)->GetLinearVelocity();
    return {velocity.x, velocity.y};
}

float b2Body_GetAngularVelocity(b2BodyId body) { return _body(body)->GetAngularVelocity(); }

bool b2Body_IsAwake(b2BodyId body) {
    const b2Body *native = _body(body);
    return native->GetType() != ::b2_staticBody && native->IsAwake();
}

void b2Body_ApplyForceToCenter(b2BodyId body, b2Vec2 newtons, bool wake) {
    _body(body)->ApplyForceToCenter(_vector(newtons), wake);
}

// --- shapes ---

b2ShapeDef b2DefaultShapeDef() {
    return {
        .material = {.friction = 0.6f, .restitution = 0},
        .density = 1,
        .filter = {.groupIndex = 0},
        .internalValue = COOKIE};
}

b2Polygon b2MakeBox(float half_width, float half_height) {
    return {
        .vertices =
            {{-half_width, -half_height},
             {half_width, -half_height},
             {half_width, half_height},
             {-half_width, half_height}},
        .normals = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}},
        .centroid = b2Vec2_zero,
        .count = 4};
}

static b2ShapeId _create_shape(b2BodyId body, const b2ShapeDef *def, const ::b2Shape *shape) {
    assert(def->internalValue == COOKIE && "the definition has to come from b2DefaultShapeDef");
    assert(def->filter.groupIndex == static_cast<int16_t>(def->filter.groupIndex) && "a group of 2.4 has 16 bits");
    ::b2FixtureDef native;
    native.shape = shape; // 2.4 copies it
    native.friction = def->material.friction;
    native.restitution = def->material.restitution;
    native.density = def->density;
    native.filter.groupIndex = static_cast<int16_t>(def->filter.groupIndex);
    World *owner = g_worlds[body.world0];
    const int index = _slots_add(&owner->shapes, _body(body)->CreateFixture(&native));
    return _slots_id<b2ShapeId>(owner->shapes, body.world0, index);
}

// 2.4 adds a skin to polygons: boxes would rest 15 mm apart, and push each other away if created touching. Therefore
// polygons are inset until two of them rest face to face.
static constexpr float INSET = b2_polygonRadius - b2_linearSlop / 2;

static void _inset(b2PolygonShape *shape) {
    const b2PolygonShape whole = *shape;
    for (int i = 0; i < whole.m_count; i++) {
        const ::b2Vec2 before = whole.m_normals[(i + whole.m_count - 1) % whole.m_count], after = whole.m_normals[i];
        shape->m_vertices[i] -= (INSET / (1 + ::b2Dot(before, after))) * (before + after);
    }
}

// Adds the masses of a body's shapes. Inertia is about the body's origin.
static b2MassData _add_masses(const b2MassData &a, const b2MassData &b) {
    b2MassData sum = {a.mass + b.mass, {0, 0}, a.I + b.I};
    if (sum.mass > 0) sum.center = (1 / sum.mass) * (a.mass * a.center + b.mass * b.center);
    return sum;
}

b2ShapeId b2CreatePolygonShape(b2BodyId id, const b2ShapeDef *def, const b2Polygon *polygon) {
    b2PolygonShape shape;
    shape.m_count = polygon->count;
    shape.m_centroid = _vector(polygon->centroid);
    for (int i = 0; i < polygon->count; i++) {
        shape.m_vertices[i] = _vector(polygon->vertices[i]);
        shape.m_normals[i] = _vector(polygon->normals[i]);
    }
    // The mass is that of the polygon without inset.
    b2Body *body = _body(id);
    b2MassData existing = {0, {0, 0}, 0}, added = {};
    if (body->GetFixtureList()) body->GetMassData(&existing);
    shape.ComputeMass(&added, def->density);
    _inset(&shape);
    const b2ShapeId created = _create_shape(id, def, &shape);
    const b2MassData sum = _add_masses(existing, added);
    if (sum.mass > 0) body->SetMassData(&sum);
    return created;
}

b2ShapeId b2CreateCircleShape(b2BodyId body, const b2ShapeDef *def, const b2Circle *circle) {
    b2CircleShape shape;
    shape.m_p = _vector(circle->center);
    shape.m_radius = circle->radius;
    return _create_shape(body, def, &shape);
}

// --- joints ---

b2RevoluteJointDef b2DefaultRevoluteJointDef() {
    return {
        .base =
            {.bodyIdA = b2_nullBodyId,
             .bodyIdB = b2_nullBodyId,
             .localFrameA = b2Transform_identity,
             .localFrameB = b2Transform_identity,
             .collideConnected = false},
        .internalValue = COOKIE};
}

b2JointId b2CreateRevoluteJoint(b2WorldId world, const b2RevoluteJointDef *def) {
    assert(def->internalValue == COOKIE && "the definition has to come from b2DefaultRevoluteJointDef");
    ::b2RevoluteJointDef native; // frame rotations would matter only with a limit or spring
    native.bodyA = _body(def->base.bodyIdA);
    native.bodyB = _body(def->base.bodyIdB);
    native.localAnchorA = _vector(def->base.localFrameA.p);
    native.localAnchorB = _vector(def->base.localFrameB.p);
    native.collideConnected = def->base.collideConnected;
    World *owner = _world(world);
    const int index = _slots_add(&owner->joints, owner->world.CreateJoint(&native));
    return _slots_id<b2JointId>(owner->joints, world.index1 - 1, index);
}

} // namespace box2d_version3
