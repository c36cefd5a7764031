// colliders: collision shapes: sets of rectangles, triangles, circles and points, hit tests on them, and loading from a
// collision file. Float pixels, y grows downwards. Main thread only.
// Sets are small (tens of shapes per level) and searched linearly from index 0.
#pragma once

#include "lumarind/core/typed_array.h"
#include "lumarind/toolkit/geometry.h"

struct SDL_Renderer;

// --- the sets: functions as in core/typed_array.h ---

template <typename T> struct ColliderTraits : ArrayOfValues<T> {
    static constexpr const char *TAG = "COLLIDERS";
};
struct ColliderRectsTraits : ColliderTraits<SDL_FRect> {
    static constexpr const char *PREFIX = "colliders_rects";
};
struct ColliderTrisTraits : ColliderTraits<Tri> {
    static constexpr const char *PREFIX = "colliders_tris";
};
struct ColliderCirclesTraits : ColliderTraits<Circle> {
    static constexpr const char *PREFIX = "colliders_circles";
};
struct ColliderPointsTraits : ColliderTraits<SDL_FPoint> {
    static constexpr const char *PREFIX = "colliders_points";
};
TYPED_ARRAY_STAMP(colliders_rects, ColliderRects, ColliderRectsTraits)
TYPED_ARRAY_STAMP_ADD(colliders_rects, ColliderRects, ColliderRectsTraits)
TYPED_ARRAY_STAMP(colliders_tris, ColliderTris, ColliderTrisTraits)
TYPED_ARRAY_STAMP_ADD(colliders_tris, ColliderTris, ColliderTrisTraits)
TYPED_ARRAY_STAMP(colliders_circles, ColliderCircles, ColliderCirclesTraits)
TYPED_ARRAY_STAMP_ADD(colliders_circles, ColliderCircles, ColliderCirclesTraits)
TYPED_ARRAY_STAMP(colliders_points, ColliderPoints, ColliderPointsTraits)
TYPED_ARRAY_STAMP_ADD(colliders_points, ColliderPoints, ColliderPointsTraits)

// Empty sets with the default capacity. The caller owns them: cleanup, then SDL_free. Report errors.
ColliderRects *colliders_new_rects();
ColliderTris *colliders_new_tris();
ColliderCircles *colliders_new_circles();
ColliderPoints *colliders_new_points();

// Limit of coordinates in a collision file. Beyond it a float cannot tell neighbouring pixels apart, and from 2^31 on
// the software renderer may never finish drawing an outline.
inline constexpr float COLLIDERS_REACH = 1 << 24; // px

// Fills the given sets from a game file of comma-separated numbers, one shape per line: 2 a point (x, y), 3 a circle
// (x, y, r), 4 a rectangle (x, y, w, h), 6 a triangle (three corners); other lines are ignored. Numbers are multiplied
// by `scale` and clamped to COLLIDERS_REACH; fields that are not finite numbers become 0. Null sets are skipped.
// Reports an error if the file cannot be read; the sets are then empty.
bool colliders_load_csv(
    ColliderRects *rects, ColliderTris *tris, ColliderCircles *circles, ColliderPoints *points, const char *path,
    float scale);

// --- first hit: returns its index, or -1 ---
int colliders_point_inside_rect(const SDL_FPoint *p, const ColliderRects *rects);
int colliders_rect_inside_rect(const SDL_FRect *r, const ColliderRects *rects);
int colliders_point_inside_tri(const SDL_FPoint *p, const ColliderTris *tris);
int colliders_point_inside_circle(const SDL_FPoint *p, const ColliderCircles *circles);
int colliders_point_near_point(const SDL_FPoint *p, const ColliderPoints *points, float distance);

// --- all hits: replaces the contents of `out` with copies of them, in order; returns their number ---
int colliders_point_inside_rects(const SDL_FPoint *p, const ColliderRects *rects, ColliderRects *out);
int colliders_rect_inside_rects(const SDL_FRect *r, const ColliderRects *rects, ColliderRects *out);
int colliders_point_inside_tris(const SDL_FPoint *p, const ColliderTris *tris, ColliderTris *out);
int colliders_point_inside_circles(const SDL_FPoint *p, const ColliderCircles *circles, ColliderCircles *out);
int colliders_point_near_points(const SDL_FPoint *p, const ColliderPoints *points, ColliderPoints *out, float distance);

// --- slopes: of corners at equal height, the first is returned ---
SDL_FPoint colliders_tri_top_point(const Tri *tri);    // smallest y
SDL_FPoint colliders_tri_bottom_point(const Tri *tri); // largest y

// --- outlines, for debugging: opaque red, triangles in the renderer's current colour ---
void colliders_rects_debug_draw(SDL_Renderer *renderer, const ColliderRects *rects);
void colliders_tris_debug_draw(SDL_Renderer *renderer, const ColliderTris *tris);
void colliders_circles_debug_draw(SDL_Renderer *renderer, const ColliderCircles *circles);
void colliders_points_debug_draw(SDL_Renderer *renderer, const ColliderPoints *points);
