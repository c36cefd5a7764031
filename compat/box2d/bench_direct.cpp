#include "bench_direct.h"

#include <box2d/box2d.h>

#include <vector>

struct DirectScene {
    b2World world{{0, -9.8f}};
    std::vector<b2Body *> bodies;
    std::vector<b2Transform> previous; // before the last step
};

// As in the layer: boxes inset by the polygon skin, but with their full mass.
static void _add_box(b2Body *body, const DirectBody &spec, b2FixtureDef def) {
    constexpr float INSET = b2_polygonRadius - b2_linearSlop / 2;
    b2PolygonShape whole, box;
    whole.SetAsBox(spec.half_w, spec.half_h);
    box.SetAsBox(spec.half_w - INSET, spec.half_h - INSET);
    def.shape = &box;
    body->CreateFixture(&def);
    b2MassData mass = {};
    whole.ComputeMass(&mass, spec.density);
    body->SetMassData(&mass);
}

static b2Body *_add_body(b2World *world, const DirectBody &spec) {
    b2BodyDef body_def;
    body_def.type = spec.dynamic ? b2_dynamicBody : b2_staticBody;
    body_def.position = {spec.x, spec.y};
    body_def.angle = spec.angle;
    body_def.linearVelocity = {spec.velocity_x, spec.velocity_y};
    b2Body *body = world->CreateBody(&body_def);
    b2FixtureDef def;
    def.friction = 0.6f;
    def.restitution = 0.05f;
    def.density = spec.density;
    def.filter.groupIndex = static_cast<int16>(spec.group);
    if (spec.radius <= 0) {
        _add_box(body, spec, def);
        return body;
    }
    b2CircleShape circle;
    circle.m_radius = spec.radius;
    def.shape = &circle;
    body->CreateFixture(&def);
    return body;
}

DirectScene *direct_scene_new(const DirectBody *bodies, int body_count, const DirectPin *pins, int pin_count) {
    auto *scene = new DirectScene;
    scene->world.SetAutoClearForces(false);
    for (int i = 0; i < body_count; i++) scene->bodies.push_back(_add_body(&scene->world, bodies[i]));
    for (int i = 0; i < pin_count; i++) {
        b2RevoluteJointDef def;
        def.bodyA = scene->bodies[static_cast<size_t>(pins[i].a)];
        def.bodyB = scene->bodies[static_cast<size_t>(pins[i].b)];
        def.localAnchorA = {pins[i].ax, pins[i].ay};
        def.localAnchorB = {pins[i].bx, pins[i].by};
        scene->world.CreateJoint(&def);
    }
    scene->previous.resize(scene->bodies.size());
    return scene;
}

void direct_scene_free(DirectScene *scene) { delete scene; }

void direct_scene_step(DirectScene *scene, float seconds, int sub_steps) {
    for (size_t i = 0; i < scene->bodies.size(); i++) scene->previous[i] = scene->bodies[i]->GetTransform();
    for (int i = 0; i < sub_steps; i++) scene->world.Step(seconds / static_cast<float>(sub_steps), 8, 3);
    scene->world.ClearForces();
}

void direct_scene_position(const DirectScene *scene, int body, float *x, float *y) {
    const b2Vec2 &position = scene->bodies[static_cast<size_t>(body)]->GetPosition();
    *x = position.x;
    *y = position.y;
}
