// Box2D in the engine's fixed steps: a crane with a wrecking ball on a chain of jointed links, a wall of bricks, and
// bodies added by the user. The simulation advances only in fixed steps; drawing interpolates every body between its
// states before and after the last one, so motion is smooth at any frame rate. Sleeping bodies are drawn dimmed.

#include "screens/physics_demo.h"

#include "lumarind/core/error.h"
#include "lumarind/core/state_hash.h"
#include "lumarind/engine/callbacks.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/input/input.h"
#include "lumarind/toolkit/primitives.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_keyboard.h>
#include <SDL3/SDL_render.h>

static constexpr const char *TITLE = "Wrecking Ball";
static constexpr SDL_Color COLOR_TITLE = {120, 216, 254, 255};
static constexpr Uint32 COLOR_HUD = rgba(208, 220, 230, 255);
static constexpr SDL_FColor COLOR_BACKGROUND = {0.05f, 0.06f, 0.08f, 1};
static constexpr SDL_FColor COLOR_GROUND = {0.15f, 0.16f, 0.19f, 1};
static constexpr SDL_FColor COLOR_CRANE = {0.30f, 0.43f, 0.56f, 1};
static constexpr SDL_FColor COLOR_LINK = {0.54f, 0.57f, 0.62f, 1};
static constexpr SDL_FColor COLOR_BALL = {0.60f, 0.21f, 0.19f, 1};
static constexpr SDL_FColor COLOR_BRICK_A = {0.71f, 0.41f, 0.27f, 1};
static constexpr SDL_FColor COLOR_BRICK_B = {0.62f, 0.34f, 0.23f, 1};
static constexpr SDL_FColor COLOR_CANNONBALL = {0.85f, 0.74f, 0.34f, 1};
static constexpr SDL_FColor COLOR_DEBRIS = {0.38f, 0.60f, 0.52f, 1};
static constexpr float OUTLINE_FACTOR = 1.5f, ASLEEP_FACTOR = 0.4f;

// The chain and its ball share a negative group, so that overlapping links do not collide.
static constexpr int GROUP_NONE = 0, GROUP_CHAIN = -1;
static constexpr PhysicsPropSpec GROUND = {b2_staticBody, 1, GROUP_NONE, false, COLOR_GROUND};
static constexpr PhysicsPropSpec CRANE = {b2_staticBody, 1, GROUP_NONE, false, COLOR_CRANE};
static constexpr PhysicsPropSpec LINK = {b2_dynamicBody, 8, GROUP_CHAIN, false, COLOR_LINK};
static constexpr PhysicsPropSpec BALL = {b2_dynamicBody, 20, GROUP_CHAIN, true, COLOR_BALL};
static constexpr PhysicsPropSpec BRICK_A = {b2_dynamicBody, 1, GROUP_NONE, false, COLOR_BRICK_A};
static constexpr PhysicsPropSpec BRICK_B = {b2_dynamicBody, 1, GROUP_NONE, false, COLOR_BRICK_B};
static constexpr PhysicsPropSpec CANNONBALL = {b2_dynamicBody, 30, GROUP_NONE, true, COLOR_CANNONBALL};
static constexpr PhysicsPropSpec DEBRIS_BOX = {b2_dynamicBody, 1, GROUP_NONE, false, COLOR_DEBRIS};
static constexpr PhysicsPropSpec DEBRIS_CIRCLE = {b2_dynamicBody, 1, GROUP_NONE, true, COLOR_DEBRIS};

// The world.
static constexpr float WORLD_W = 26, WORLD_H = 14;
static constexpr b2Vec2 GRAVITY = {0, -9.8f};
static constexpr float FRICTION = 0.6f, RESTITUTION = 0.05f;
static constexpr int SUB_STEPS = 4;
static constexpr int PROPS_CAPACITY = 64, PROPS_GROW_BY = 16;

// The yard.
static constexpr float GROUND_Y = 0.3f, GROUND_HALF_H = 0.5f;
static constexpr float MAST_X = 1.5f, MAST_HALF_W = 0.3f, MAST_HALF_H = 5.7f;
static constexpr float ARM_HALF_W = 3.95f, ARM_HALF_H = 0.2f, ARM_Y = 11.4f;

// The chain starts pulled back from its pivot, so that the ball swings at once.
static constexpr float CHAIN_ANGLE = -0.9f;
static constexpr b2Vec2 CHAIN_PIVOT = {8.8f, 11};
static constexpr int LINKS = 12;
static constexpr float LINK_HALF_W = 0.09f, LINK_HALF_H = 0.28f, LINK_PITCH = 0.56f; // link ends meet
static constexpr float BALL_RADIUS = 0.55f, BALL_DISTANCE = BALL_RADIUS + LINK_PITCH * LINKS;
static constexpr float SWING_NEWTONS = 320;

// The wall. The bottom row rests on the ground, rows and the bricks of a row touch.
static constexpr int WALL_ROWS = 10, WALL_COLUMNS = 4;
static constexpr float BRICK_HALF_W = 0.45f, BRICK_HALF_H = 0.225f;
static constexpr float WALL_LEFT = 10.4f, WALL_BOTTOM_ROW_Y = 1.025f, WALL_ODD_ROW_SHIFT = 0.22f;

// Bodies added by the user.
static constexpr b2Vec2 CANNON = {25, 5}, CANNON_VELOCITY = {-24, 1};
static constexpr float CANNONBALL_RADIUS = 0.3f;
static constexpr float DEBRIS_RADIUS = 0.26f, DEBRIS_HALF = 0.22f, DEBRIS_ANGLE_MAX = 3;

// The HUD, in units of the view.
static constexpr float HUD_WIDTH = 360;

PhysicsDemo *physics_demo;

// --- view ---

void physics_view_fit(PhysicsView *out, float view_w, float view_h, float world_w, float world_h) {
    const float height = SDL_max(view_h, 1.0f);
    out->scale = height / SDL_max(world_h, 0.01f);
    out->origin_x = (view_w - out->scale * world_w) / 2;
    out->floor_y = height;
}

SDL_FPoint physics_view_to_screen(const PhysicsView *view, float x, float y) {
    return {view->origin_x + view->scale * x, view->floor_y - view->scale * y};
}

SDL_FPoint physics_view_to_world(const PhysicsView *view, float sx, float sy) {
    return {(sx - view->origin_x) / view->scale, (view->floor_y - sy) / view->scale};
}

float physics_view_to_pixels(const PhysicsView *view, float length) { return view->scale * length; }

PhysicsView physics_demo_view() {
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    PhysicsView view = {};
    physics_view_fit(&view, width, height, WORLD_W, WORLD_H);
    return view;
}

// --- props ---

bool physics_demo_add_prop(
    const PhysicsProp *prop_template, const b2BodyDef *body_def, const PhysicsPropSpec *spec, const b2Polygon *polygon,
    const b2Circle *circle) {
    if (!b2World_IsValid(physics_demo->world)) return false; // already reported when building it failed
    const b2BodyId body = b2CreateBody(physics_demo->world, body_def);
    b2ShapeDef shape_def = b2DefaultShapeDef();
    shape_def.density = spec->density;
    shape_def.material.friction = FRICTION;
    shape_def.material.restitution = RESTITUTION;
    shape_def.filter.groupIndex = spec->group;
    if (polygon) {
        b2CreatePolygonShape(body, &shape_def, polygon);
    } else {
        b2CreateCircleShape(body, &shape_def, circle);
    }

    PhysicsProp prop = *prop_template;
    prop.body = body;
    prop.spoke = spec->spoke;
    prop.color = spec->color;
    prop.prev_position = b2Body_GetPosition(body);
    prop.prev_rotation = b2Body_GetRotation(body);
    if (physics_props_add(physics_demo->props, &prop)) return true;
    b2DestroyBody(body);
    return false;
}

static void _physics_demo_last_body(b2BodyId *body_out) {
    if (body_out) *body_out = physics_props_get(physics_demo->props, physics_demo->props->count - 1).body;
}

bool physics_demo_add_box(
    float x, float y, float angle, float half_w, float half_h, const PhysicsPropSpec *spec, b2BodyId *body_out) {
    b2BodyDef body_def = b2DefaultBodyDef();
    body_def.type = spec->body_type;
    body_def.position = {x, y};
    body_def.rotation = b2MakeRot(angle);
    const b2Polygon box = b2MakeBox(half_w, half_h);
    PhysicsProp prop = {};
    prop.shape = PROP_BOX;
    prop.half_w = half_w;
    prop.half_h = half_h;
    if (!physics_demo_add_prop(&prop, &body_def, spec, &box, nullptr)) return false;
    _physics_demo_last_body(body_out);
    return true;
}

bool physics_demo_add_circle(
    float x, float y, float radius, b2Vec2 velocity, const PhysicsPropSpec *spec, b2BodyId *body_out) {
    b2BodyDef body_def = b2DefaultBodyDef();
    body_def.type = spec->body_type;
    body_def.position = {x, y};
    body_def.linearVelocity = velocity;
    const b2Circle circle = {{0, 0}, radius};
    PhysicsProp prop = {};
    prop.shape = PROP_CIRCLE;
    prop.radius = radius;
    if (!physics_demo_add_prop(&prop, &body_def, spec, nullptr, &circle)) return false;
    _physics_demo_last_body(body_out);
    return true;
}

b2JointId physics_demo_pin(b2BodyId a, b2BodyId b, b2Vec2 anchor_a, b2Vec2 anchor_b) {
    b2RevoluteJointDef joint_def = b2DefaultRevoluteJointDef();
    joint_def.base.bodyIdA = a;
    joint_def.base.bodyIdB = b;
    joint_def.base.localFrameA.p = anchor_a;
    joint_def.base.localFrameB.p = anchor_b;
    return b2CreateRevoluteJoint(physics_demo->world, &joint_def);
}

// --- scene: the order of creation affects the simulation ---

bool physics_demo_build_yard(b2BodyId *arm_out) {
    return physics_demo_add_box(WORLD_W / 2, GROUND_Y, 0, WORLD_W / 2, GROUND_HALF_H, &GROUND, nullptr) &&
           physics_demo_add_box(MAST_X, MAST_HALF_H, 0, MAST_HALF_W, MAST_HALF_H, &CRANE, nullptr) &&
           physics_demo_add_box(MAST_X + ARM_HALF_W - MAST_HALF_W, ARM_Y, 0, ARM_HALF_W, ARM_HALF_H, &CRANE, arm_out);
}

bool physics_demo_build_wrecking_ball(b2BodyId arm) {
    const b2Rot rotation = b2MakeRot(CHAIN_ANGLE);
    const b2Vec2 along = {rotation.s, -rotation.c};
    const b2Vec2 arm_position = b2Body_GetPosition(arm);
    b2BodyId previous = arm;
    b2Vec2 anchor = {CHAIN_PIVOT.x - arm_position.x, CHAIN_PIVOT.y - arm_position.y};
    for (int i = 0; i < LINKS; i++) {
        const float distance = LINK_HALF_H + LINK_PITCH * static_cast<float>(i);
        b2BodyId link = {};
        if (!physics_demo_add_box(
                CHAIN_PIVOT.x + distance * along.x, CHAIN_PIVOT.y + distance * along.y, CHAIN_ANGLE, LINK_HALF_W,
                LINK_HALF_H, &LINK, &link)) {
            return false;
        }
        physics_demo_pin(previous, link, anchor, {0, LINK_HALF_H});
        previous = link;
        anchor = {0, -LINK_HALF_H};
    }
    if (!physics_demo_add_circle(
            CHAIN_PIVOT.x + BALL_DISTANCE * along.x, CHAIN_PIVOT.y + BALL_DISTANCE * along.y, BALL_RADIUS, {0, 0},
            &BALL, &physics_demo->ball)) {
        return false;
    }
    physics_demo_pin(previous, physics_demo->ball, anchor, {0, BALL_RADIUS});
    return true;
}

bool physics_demo_build_wall() {
    for (int row = 0; row < WALL_ROWS; row++) {
        const bool odd = row % 2 == 1;
        const float shift = odd ? WALL_ODD_ROW_SHIFT : 0;
        const float y = WALL_BOTTOM_ROW_Y + 2 * (BRICK_HALF_H * static_cast<float>(row));
        for (int column = 0; column < WALL_COLUMNS; column++) {
            const float x = 2 * (BRICK_HALF_W * static_cast<float>(column)) + (shift + WALL_LEFT + BRICK_HALF_W);
            if (!physics_demo_add_box(x, y, 0, BRICK_HALF_W, BRICK_HALF_H, odd ? &BRICK_B : &BRICK_A, nullptr)) {
                return false;
            }
        }
    }
    return true;
}

bool physics_demo_build_scene() {
    b2WorldDef world_def = b2DefaultWorldDef();
    world_def.gravity = GRAVITY;
    physics_demo->world = b2CreateWorld(&world_def);
    physics_demo->spawned = 0;
    if (!b2World_IsValid(physics_demo->world)) return engine_error("[PHYSICS_DEMO] Creating the world failed");
    b2BodyId arm = {};
    return physics_demo_build_yard(&arm) && physics_demo_build_wrecking_ball(arm) && physics_demo_build_wall();
}

static void _physics_demo_destroy_world() {
    if (b2World_IsValid(physics_demo->world)) b2DestroyWorld(physics_demo->world);
    physics_demo->world = b2_nullWorldId;
}

bool physics_demo_rebuild() {
    _physics_demo_destroy_world();
    physics_props_reset(physics_demo->props);
    return physics_demo_build_scene();
}

// --- user actions ---

void physics_demo_fire_cannonball() {
    if (physics_demo->spawned >= PHYSICS_DEMO_SPAWN_MAX) return;
    if (physics_demo_add_circle(CANNON.x, CANNON.y, CANNONBALL_RADIUS, CANNON_VELOCITY, &CANNONBALL, nullptr)) {
        physics_demo->spawned++;
    }
}

void physics_demo_drop_debris(float x, float y) {
    if (physics_demo->spawned >= PHYSICS_DEMO_SPAWN_MAX) return;
    const bool added = physics_demo->spawned % 2 == 1
                           ? physics_demo_add_circle(x, y, DEBRIS_RADIUS, {0, 0}, &DEBRIS_CIRCLE, nullptr)
                           : physics_demo_add_box(
                                 x, y, SDL_randf() * DEBRIS_ANGLE_MAX, DEBRIS_HALF, DEBRIS_HALF, &DEBRIS_BOX, nullptr);
    if (added) physics_demo->spawned++;
}

void physics_demo_apply_swing() {
    const bool left = input_key_held(SDL_SCANCODE_LEFT) || input_key_held(SDL_SCANCODE_A);
    const bool right = input_key_held(SDL_SCANCODE_RIGHT) || input_key_held(SDL_SCANCODE_D);
    if (left == right) return;
    b2Body_ApplyForceToCenter(physics_demo->ball, {right ? SWING_NEWTONS : -SWING_NEWTONS, 0}, true);
}

bool physics_demo_key_down(SDL_Event *event) {
    if (event->key.repeat) return true;
    if (event->key.key == SDLK_R) physics_demo_rebuild(); // reports errors; the yard is then empty
    if (event->key.key == SDLK_SPACE) physics_demo_fire_cannonball();
    return true;
}

bool physics_demo_mouse_button_down(SDL_Event *event) {
    if (event->button.button != SDL_BUTTON_LEFT) return true;
    const PhysicsView view = physics_demo_view();
    const SDL_FPoint point = physics_view_to_world(&view, event->button.x, event->button.y);
    physics_demo_drop_debris(point.x, point.y);
    return true;
}

// --- simulation ---

Uint64 physics_demo_state_hash() {
    Uint64 hash = state_hash_of(STATE_HASH_START, physics_demo->spawned, physics_demo->props->count);
    for (int i = 0; i < physics_demo->props->count; i++) {
        const b2BodyId body = physics_demo->props->items[i].body;
        const b2Vec2 position = b2Body_GetPosition(body), velocity = b2Body_GetLinearVelocity(body);
        const b2Rot rotation = b2Body_GetRotation(body);
        hash = state_hash_of(
            hash, position.x, position.y, rotation.c, rotation.s, velocity.x, velocity.y,
            b2Body_GetAngularVelocity(body));
    }
    return hash;
}

void physics_demo_fixed_update(double dt) {
    if (!b2World_IsValid(physics_demo->world)) return; // rebuilding failed
    for (int i = 0; i < physics_demo->props->count; i++) {
        PhysicsProp *prop = &physics_demo->props->items[i];
        prop->prev_position = b2Body_GetPosition(prop->body);
        prop->prev_rotation = b2Body_GetRotation(prop->body);
    }
    physics_demo_apply_swing();
    b2World_Step(physics_demo->world, static_cast<float>(dt), SUB_STEPS);
}

// --- drawing ---

// In a namespace, because newer releases of Box2D define functions of these names.
namespace physics_demo_math {
static b2Vec2 b2LerpPosition(b2Vec2 a, b2Vec2 b, float t) { return {(1 - t) * a.x + t * b.x, (1 - t) * a.y + t * b.y}; }
static b2Vec2 b2TransformWorldPoint(b2Transform transform, b2Vec2 p) {
    return {
        transform.q.c * p.x - transform.q.s * p.y + transform.p.x,
        transform.q.s * p.x + transform.q.c * p.y + transform.p.y};
}
} // namespace physics_demo_math

SDL_FColor physics_demo_scale_color(SDL_FColor color, float factor) {
    return {SDL_min(color.r * factor, 1.0f), SDL_min(color.g * factor, 1.0f), SDL_min(color.b * factor, 1.0f), color.a};
}

void physics_demo_fill_shape(SDL_Renderer *renderer, const SDL_FPoint *points, int count, SDL_FColor color) {
    SDL_Vertex vertices[PROP_POINTS_MAX];
    int indices[3 * (PROP_POINTS_MAX - 2)];
    const int corners = SDL_min(count, PROP_POINTS_MAX);
    for (int i = 0; i < corners; i++) vertices[i] = {points[i], color, {0, 0}};
    int used = 0;
    for (int k = 1; k < corners - 1; k++) {
        indices[used++] = 0;
        indices[used++] = k;
        indices[used++] = k + 1;
    }
    SDL_RenderGeometry(renderer, nullptr, vertices, corners, indices, used);
}

void physics_demo_outline_shape(SDL_Renderer *renderer, const SDL_FPoint *points, int count, SDL_FColor color) {
    SDL_FPoint closed[PROP_POINTS_MAX + 1];
    const int corners = SDL_min(count, PROP_POINTS_MAX);
    for (int i = 0; i < corners; i++) closed[i] = points[i];
    closed[corners] = points[0];
    SDL_SetRenderDrawColorFloat(renderer, color.r, color.g, color.b, color.a);
    SDL_RenderLines(renderer, closed, corners + 1);
}

// Computes the outline in the body's coordinates; returns the number of points.
static int _physics_demo_outline(const PhysicsProp *prop, b2Vec2 *points) {
    if (prop->shape == PROP_BOX) {
        points[0] = {-prop->half_w, -prop->half_h};
        points[1] = {prop->half_w, -prop->half_h};
        points[2] = {prop->half_w, prop->half_h};
        points[3] = {-prop->half_w, prop->half_h};
        return 4;
    }
    for (int k = 0; k < PROP_POINTS_MAX; k++) {
        const float angle = 2 * SDL_PI_F * static_cast<float>(k) / PROP_POINTS_MAX;
        points[k] = {prop->radius * SDL_cosf(angle), prop->radius * SDL_sinf(angle)};
    }
    return PROP_POINTS_MAX;
}

void physics_demo_draw_prop(SDL_Renderer *renderer, const PhysicsView *view, const PhysicsProp *prop, float alpha) {
    const b2Transform shown = {
        physics_demo_math::b2LerpPosition(prop->prev_position, b2Body_GetPosition(prop->body), alpha),
        b2NLerp(prop->prev_rotation, b2Body_GetRotation(prop->body), alpha)};
    b2Vec2 outline[PROP_POINTS_MAX];
    SDL_FPoint points[PROP_POINTS_MAX];
    const int count = _physics_demo_outline(prop, outline);
    for (int i = 0; i < count; i++) {
        const b2Vec2 world = physics_demo_math::b2TransformWorldPoint(shown, outline[i]);
        points[i] = physics_view_to_screen(view, world.x, world.y);
    }
    const bool asleep = b2Body_GetType(prop->body) == b2_dynamicBody && !b2Body_IsAwake(prop->body);
    const SDL_FColor fill = asleep ? physics_demo_scale_color(prop->color, ASLEEP_FACTOR) : prop->color;
    physics_demo_fill_shape(renderer, points, count, fill);
    physics_demo_outline_shape(renderer, points, count, physics_demo_scale_color(fill, OUTLINE_FACTOR));
    if (!prop->spoke) return;
    const SDL_FPoint center = physics_view_to_screen(view, shown.p.x, shown.p.y);
    SDL_RenderLine(renderer, center.x, center.y, points[0].x, points[0].y);
}

void physics_demo_draw_hud(SDL_Renderer *renderer) {
    int dynamic = 0, awake = 0;
    for (int i = 0; i < physics_demo->props->count; i++) {
        const b2BodyId body = physics_demo->props->items[i].body;
        if (b2Body_GetType(body) != b2_dynamicBody) continue;
        dynamic++;
        if (b2Body_IsAwake(body)) awake++;
    }
    float width = 0;
    engine_view_size(&width, nullptr);
    const float x = width - HUD_WIDTH;
    engine_render_text(physics_demo->title, x, 16);
    draw_text(
        renderer, x, 58, COLOR_HUD, "BODIES %d awake of %d    SPAWNED %d/%d", awake, dynamic, physics_demo->spawned,
        PHYSICS_DEMO_SPAWN_MAX);
    draw_text(renderer, x, 72, COLOR_HUD, "SLEEPING bodies are drawn dimmed");
    draw_text(renderer, x, 100, COLOR_HUD, "LEFT/RIGHT  pump the swing");
    draw_text(renderer, x, 114, COLOR_HUD, "SPACE       fire a cannonball");
    draw_text(renderer, x, 128, COLOR_HUD, "CLICK       drop debris");
    draw_text(renderer, x, 142, COLOR_HUD, "R           rebuild the wall");
    draw_text(renderer, x, 156, COLOR_HUD, "ESC         back to the menu");
}

void physics_demo_tick() {
    SDL_Renderer *renderer = engine_renderer();
    SDL_SetRenderDrawColorFloat(
        renderer, COLOR_BACKGROUND.r, COLOR_BACKGROUND.g, COLOR_BACKGROUND.b, COLOR_BACKGROUND.a);
    SDL_RenderClear(renderer);
    const PhysicsView view = physics_demo_view();
    const float alpha = static_cast<float>(engine_fixed_alpha());
    for (int i = 0; i < physics_demo->props->count; i++) {
        physics_demo_draw_prop(renderer, &view, &physics_demo->props->items[i], alpha);
    }
    physics_demo_draw_hud(renderer);
}

// --- lifetime ---

bool physics_demo_setup() {
    if (physics_demo) return true;
    physics_demo = static_cast<PhysicsDemo *>(SDL_calloc(1, sizeof *physics_demo));
    if (!physics_demo) return engine_error("[PHYSICS_DEMO] Memory allocation failed, error: %s", SDL_GetError());
    physics_demo->props = physics_props_new(PROPS_CAPACITY, PROPS_GROW_BY);
    if (!physics_demo->props || !physics_demo_build_scene()) return false;
    physics_demo->title =
        engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI), TITLE, SDL_strlen(TITLE), COLOR_TITLE);
    return physics_demo->title && engine_add_callback(SDL_EVENT_KEY_DOWN, physics_demo_key_down) &&
           engine_add_callback(SDL_EVENT_MOUSE_BUTTON_DOWN, physics_demo_mouse_button_down);
}

void physics_demo_cleanup() {
    if (!physics_demo) return;
    engine_remove_callback(SDL_EVENT_MOUSE_BUTTON_DOWN, physics_demo_mouse_button_down);
    engine_remove_callback(SDL_EVENT_KEY_DOWN, physics_demo_key_down);
    engine_cleanup_text(&physics_demo->title);
    _physics_demo_destroy_world();
    if (physics_demo->props) physics_props_cleanup(physics_demo->props);
    SDL_free(physics_demo->props);
    SDL_free(physics_demo);
    physics_demo = nullptr;
}
