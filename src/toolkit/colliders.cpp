#include "lumarind/toolkit/colliders.h"

#include "lumarind/core/storage.h"

#include <SDL3/SDL_render.h>

#include <cmath>

static constexpr int INITIAL_CAPACITY = 10;
static constexpr int GROW_BY = 10;
static constexpr int CIRCLE_SEGMENTS = 32;

ColliderRects *colliders_new_rects() { return colliders_rects_new(INITIAL_CAPACITY, GROW_BY); }
ColliderTris *colliders_new_tris() { return colliders_tris_new(INITIAL_CAPACITY, GROW_BY); }
ColliderCircles *colliders_new_circles() { return colliders_circles_new(INITIAL_CAPACITY, GROW_BY); }
ColliderPoints *colliders_new_points() { return colliders_points_new(INITIAL_CAPACITY, GROW_BY); }

// --- collision file ---

static constexpr int FIELDS_MAX = 6; // a triangle has the most
static constexpr int FIELDS_TOO_MANY = FIELDS_MAX + 1;

// Parses a number. Returns 0 if there is none or it is not finite: the parser accepts "nan" and "inf".
static float _colliders_parse_field(const char *field, float scale) {
    const float number = static_cast<float>(SDL_atof(field)) * scale;
    return std::isfinite(number) ? SDL_clamp(number, -COLLIDERS_REACH, COLLIDERS_REACH) : 0;
}

// Parses the comma-separated numbers of a line. Returns their number, at most FIELDS_TOO_MANY.
static int _colliders_parse_fields(char *line, float scale, float fields[FIELDS_MAX]) {
    int count = 0;
    char *rest = nullptr;
    for (char *field = SDL_strtok_r(line, ",", &rest); field; field = SDL_strtok_r(nullptr, ",", &rest)) {
        if (count == FIELDS_MAX) return FIELDS_TOO_MANY;
        fields[count++] = _colliders_parse_field(field, scale);
    }
    return count;
}

bool colliders_load_csv(
    ColliderRects *rects, ColliderTris *tris, ColliderCircles *circles, ColliderPoints *points, const char *path,
    float scale) {
    if (rects) colliders_rects_reset(rects);
    if (tris) colliders_tris_reset(tris);
    if (circles) colliders_circles_reset(circles);
    if (points) colliders_points_reset(points);

    char *text = storage_read_game_file(path);
    if (!text) return false;
    StringArray *lines = string_array_new(0, 64);
    if (!lines) {
        SDL_free(text);
        return false;
    }
    storage_parse_lines(text, lines);
    SDL_free(text);

    for (int i = 0; i < lines->count; i++) {
        float f[FIELDS_MAX] = {};
        const int count = _colliders_parse_fields(lines->items[i], scale, f);
        const SDL_FPoint point = {f[0], f[1]};
        const Circle circle = {f[0], f[1], f[2]};
        const SDL_FRect rect = {f[0], f[1], f[2], f[3]};
        const Tri tri = {{f[0], f[1]}, {f[2], f[3]}, {f[4], f[5]}};
        if (count == 2 && points) colliders_points_add(points, &point);
        if (count == 3 && circles) colliders_circles_add(circles, &circle);
        if (count == 4 && rects) colliders_rects_add(rects, &rect);
        if (count == 6 && tris) colliders_tris_add(tris, &tri);
    }
    string_array_cleanup(lines);
    SDL_free(lines);
    return true;
}

// --- queries ---

template <typename T, typename Hit> static int _colliders_first(const TypedArray<T> *set, Hit hit) {
    for (int i = 0; i < set->count; i++) {
        if (hit(&set->items[i])) return i;
    }
    return -1;
}

template <typename Traits, typename Hit>
static int
_colliders_all(const TypedArray<typename Traits::Element> *set, TypedArray<typename Traits::Element> *out, Hit hit) {
    _typed_array_reset<Traits>(out);
    for (int i = 0; i < set->count; i++) {
        if (hit(&set->items[i])) _typed_array_push<Traits>(out, set->items[i]);
    }
    return out->count;
}

int colliders_point_inside_rect(const SDL_FPoint *p, const ColliderRects *rects) {
    return _colliders_first(rects, [p](const SDL_FRect *rect) { return point_in_rect(p, rect); });
}

int colliders_point_inside_rects(const SDL_FPoint *p, const ColliderRects *rects, ColliderRects *out) {
    return _colliders_all<ColliderRectsTraits>(
        rects, out, [p](const SDL_FRect *rect) { return point_in_rect(p, rect); });
}

int colliders_rect_inside_rect(const SDL_FRect *r, const ColliderRects *rects) {
    return _colliders_first(rects, [r](const SDL_FRect *rect) { return rect_intersect_rect(r, rect); });
}

int colliders_rect_inside_rects(const SDL_FRect *r, const ColliderRects *rects, ColliderRects *out) {
    return _colliders_all<ColliderRectsTraits>(
        rects, out, [r](const SDL_FRect *rect) { return rect_intersect_rect(r, rect); });
}

int colliders_point_inside_tri(const SDL_FPoint *p, const ColliderTris *tris) {
    return _colliders_first(tris, [p](const Tri *tri) { return point_in_tri(p, tri); });
}

int colliders_point_inside_tris(const SDL_FPoint *p, const ColliderTris *tris, ColliderTris *out) {
    return _colliders_all<ColliderTrisTraits>(tris, out, [p](const Tri *tri) { return point_in_tri(p, tri); });
}

int colliders_point_inside_circle(const SDL_FPoint *p, const ColliderCircles *circles) {
    return _colliders_first(circles, [p](const Circle *circle) { return point_in_circle(p, circle); });
}

int colliders_point_inside_circles(const SDL_FPoint *p, const ColliderCircles *circles, ColliderCircles *out) {
    return _colliders_all<ColliderCirclesTraits>(
        circles, out, [p](const Circle *circle) { return point_in_circle(p, circle); });
}

int colliders_point_near_point(const SDL_FPoint *p, const ColliderPoints *points, float distance) {
    return _colliders_first(points, [=](const SDL_FPoint *q) { return point_near_point(p, q, distance); });
}

int colliders_point_near_points(
    const SDL_FPoint *p, const ColliderPoints *points, ColliderPoints *out, float distance) {
    return _colliders_all<ColliderPointsTraits>(
        points, out, [=](const SDL_FPoint *q) { return point_near_point(p, q, distance); });
}

// --- slopes ---

SDL_FPoint colliders_tri_top_point(const Tri *tri) {
    SDL_FPoint top = tri->a;
    if (tri->b.y < top.y) top = tri->b;
    if (tri->c.y < top.y) top = tri->c;
    return top;
}

SDL_FPoint colliders_tri_bottom_point(const Tri *tri) {
    SDL_FPoint bottom = tri->a;
    if (tri->b.y > bottom.y) bottom = tri->b;
    if (tri->c.y > bottom.y) bottom = tri->c;
    return bottom;
}

// --- outlines ---

static void _colliders_set_debug_color(SDL_Renderer *renderer) { SDL_SetRenderDrawColor(renderer, 255, 0, 0, 255); }

void colliders_rects_debug_draw(SDL_Renderer *renderer, const ColliderRects *rects) {
    _colliders_set_debug_color(renderer);
    SDL_RenderRects(renderer, rects->items, rects->count);
}

void colliders_tris_debug_draw(SDL_Renderer *renderer, const ColliderTris *tris) {
    for (int i = 0; i < tris->count; i++) {
        const Tri *t = &tris->items[i];
        SDL_RenderLine(renderer, t->a.x, t->a.y, t->b.x, t->b.y);
        SDL_RenderLine(renderer, t->b.x, t->b.y, t->c.x, t->c.y);
        SDL_RenderLine(renderer, t->c.x, t->c.y, t->a.x, t->a.y);
    }
}

void colliders_circles_debug_draw(SDL_Renderer *renderer, const ColliderCircles *circles) {
    constexpr float PI = 3.1415927f;
    _colliders_set_debug_color(renderer);
    for (int i = 0; i < circles->count; i++) {
        const Circle *circle = &circles->items[i];
        SDL_FPoint outline[CIRCLE_SEGMENTS + 1];
        for (int k = 0; k < CIRCLE_SEGMENTS; k++) {
            const float angle = 2.0f * PI * static_cast<float>(k) / CIRCLE_SEGMENTS;
            outline[k] = {circle->x + SDL_cosf(angle) * circle->r, circle->y + SDL_sinf(angle) * circle->r};
        }
        outline[CIRCLE_SEGMENTS] = outline[0];
        SDL_RenderLines(renderer, outline, CIRCLE_SEGMENTS + 1);
    }
}

void colliders_points_debug_draw(SDL_Renderer *renderer, const ColliderPoints *points) {
    _colliders_set_debug_color(renderer);
    SDL_RenderPoints(renderer, points->items, points->count);
}
