// physics_demo: a wrecking ball on a chain, a wall to break and bodies to add, simulated by Box2D. The screen's
// functions come first; the rest is public for tests and benchmarks.
//
// World units are metres, kilograms, seconds and radians; world y points up, and y = 0 is the bottom of the view.
#pragma once

#include "lumarind/core/typed_array.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_pixels.h>
#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>
#include <box2d/box2d.h>

struct SDL_Renderer;
struct TTF_Text;

bool physics_demo_setup();
void physics_demo_fixed_update(double dt); // dt in seconds
void physics_demo_tick();
Uint64 physics_demo_state_hash(); // of the simulation state
void physics_demo_cleanup();

// --- records ---

inline constexpr int PHYSICS_DEMO_SPAWN_MAX = 40; // bodies added by the user
inline constexpr int PROP_BOX = 0, PROP_CIRCLE = 1;
inline constexpr int PROP_POINTS_MAX = 22; // outline points of a circle; a box has 4

struct PhysicsView { // from world metres to view coordinates
    float scale;     // view units per metre
    float origin_x;  // view x of world x = 0
    float floor_y;   // view y of world y = 0
};

struct PhysicsPropSpec {
    b2BodyType body_type;
    float density; // kg/m²
    int group;     // shapes of the same negative group never collide
    bool spoke;    // draws a line from the centre to the outline, to show rotation
    SDL_FColor color;
};

struct PhysicsProp {
    b2BodyId body;
    int shape;            // PROP_BOX or PROP_CIRCLE
    float half_w, half_h; // of a box, otherwise 0
    float radius;         // of a circle, otherwise 0
    bool spoke;           // from its PhysicsPropSpec, as is the colour
    SDL_FColor color;
    b2Vec2 prev_position; // before the last fixed step, as is the rotation
    b2Rot prev_rotation;
};

struct PhysicsPropArrayTraits : ArrayOfValues<PhysicsProp> {
    static constexpr const char *TAG = "PHYSICS_DEMO";
    static constexpr const char *PREFIX = "physics_props";
};
TYPED_ARRAY_STAMP(physics_props, PhysicsPropArray, PhysicsPropArrayTraits)
TYPED_ARRAY_STAMP_ADD(physics_props, PhysicsPropArray, PhysicsPropArrayTraits)

struct PhysicsDemo {
    b2WorldId world;         // owned
    b2BodyId ball;           // the wrecking ball, to which the swing force is applied
    PhysicsPropArray *props; // owned; one per body, in order of creation
    int spawned;             // bodies added by the user since the scene was built
    TTF_Text *title;         // owned
};
extern PhysicsDemo *physics_demo; // null before setup

// --- view ---
// The world's height fills the view; its width is centred, and cropped on both sides if the view is narrower.
void physics_view_fit(PhysicsView *out, float view_w, float view_h, float world_w, float world_h);
SDL_FPoint physics_view_to_screen(const PhysicsView *view, float x, float y);
SDL_FPoint physics_view_to_world(const PhysicsView *view, float sx, float sy);
float physics_view_to_pixels(const PhysicsView *view, float length);
PhysicsView physics_demo_view(); // for the current view size

// --- scene: building stops at the first function that returns false ---
// Creates the body of a prop whose shape and size are set, and adds it. Exactly one of polygon and circle is not null.
bool physics_demo_add_prop(
    const PhysicsProp *prop_template, const b2BodyDef *body_def, const PhysicsPropSpec *spec, const b2Polygon *polygon,
    const b2Circle *circle);
bool physics_demo_add_box( // body_out may be null, as below
    float x, float y, float angle, float half_w, float half_h, const PhysicsPropSpec *spec, b2BodyId *body_out);
bool physics_demo_add_circle(
    float x, float y, float radius, b2Vec2 velocity, const PhysicsPropSpec *spec, b2BodyId *body_out);
b2JointId physics_demo_pin(b2BodyId a, b2BodyId b, b2Vec2 anchor_a, b2Vec2 anchor_b); // in coordinates of each body
bool physics_demo_build_yard(b2BodyId *arm_out);
bool physics_demo_build_wrecking_ball(b2BodyId arm);
bool physics_demo_build_wall();
bool physics_demo_build_scene();
bool physics_demo_rebuild();

// --- user actions: ignored once PHYSICS_DEMO_SPAWN_MAX bodies were added ---
void physics_demo_fire_cannonball();
void physics_demo_drop_debris(float x, float y); // in world coordinates
void physics_demo_apply_swing();                 // from the keys held

bool physics_demo_key_down(SDL_Event *event);
bool physics_demo_mouse_button_down(SDL_Event *event);

// --- drawing: convex outlines of up to PROP_POINTS_MAX points ---
void physics_demo_draw_prop(SDL_Renderer *renderer, const PhysicsView *view, const PhysicsProp *prop, float alpha);
void physics_demo_fill_shape(SDL_Renderer *renderer, const SDL_FPoint *points, int count, SDL_FColor color);
void physics_demo_outline_shape(SDL_Renderer *renderer, const SDL_FPoint *points, int count, SDL_FColor color);
SDL_FColor physics_demo_scale_color(SDL_FColor color, float factor); // scales all channels but alpha, clamped to 1
void physics_demo_draw_hud(SDL_Renderer *renderer);
