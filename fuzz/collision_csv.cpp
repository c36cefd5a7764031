// Collision files: loading, every hit test, and debug outlines.
#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/colliders.h"

#include <SDL3/SDL_render.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>

struct Shapes {
    ColliderRects *rects, *found_rects;
    ColliderTris *tris, *found_tris;
    ColliderCircles *circles, *found_circles;
    ColliderPoints *points, *found_points;
};

// Created once and reused by every run, as a game reuses its sets between levels.
static Shapes &shapes() {
    static Shapes made = {colliders_new_rects(),  colliders_new_rects(),   colliders_new_tris(),
                          colliders_new_tris(),   colliders_new_circles(), colliders_new_circles(),
                          colliders_new_points(), colliders_new_points()};
    return made;
}

// A shape consists only of floats.
template <typename Set> static bool all_in_reach(const Set *set) {
    const auto *numbers = reinterpret_cast<const float *>(set->items);
    const size_t count = static_cast<size_t>(set->count) * sizeof *set->items / sizeof(float);
    return std::all_of(numbers, numbers + count, [](float number) { return std::fabs(number) <= COLLIDERS_REACH; });
}

template <typename Set> static void note_all(const Set *set) {
    const auto *numbers = reinterpret_cast<const float *>(set->items);
    const size_t count = static_cast<size_t>(set->count) * sizeof *set->items / sizeof(float);
    for (size_t i = 0; i < count; i++) fuzz_note(numbers[i]);
}

static int count_all(const Shapes &s) { return s.rects->count + s.tris->count + s.circles->count + s.points->count; }

static void check_hit_tests(const Shapes &s, SDL_FPoint p) {
    const SDL_FRect box = {p.x, p.y, 8, 8};
    const auto agree = [](int first, int all) { fuzz_check((first >= 0) == (all > 0), "first and all hits agree"); };
    agree(colliders_point_inside_rect(&p, s.rects), colliders_point_inside_rects(&p, s.rects, s.found_rects));
    agree(colliders_rect_inside_rect(&box, s.rects), colliders_rect_inside_rects(&box, s.rects, s.found_rects));
    agree(colliders_point_inside_tri(&p, s.tris), colliders_point_inside_tris(&p, s.tris, s.found_tris));
    agree(colliders_point_inside_circle(&p, s.circles), colliders_point_inside_circles(&p, s.circles, s.found_circles));
    agree(colliders_point_near_point(&p, s.points, 5), colliders_point_near_points(&p, s.points, s.found_points, 5));
}

static void draw(const Shapes &s) {
    SDL_Renderer *renderer = engine_renderer();
    colliders_rects_debug_draw(renderer, s.rects);
    colliders_tris_debug_draw(renderer, s.tris);
    colliders_circles_debug_draw(renderer, s.circles);
    colliders_points_debug_draw(renderer, s.points);
    SDL_FlushRenderer(renderer);
}

int fuzz_collision_csv(const uint8_t *data, size_t size) {
    fuzz_start_engine();
    fuzz_set_game_file(data, size);
    const Shapes &s = shapes();
    fuzz_load_begins();
    const bool loaded = colliders_load_csv(s.rects, s.tris, s.circles, s.points, "level.csv", 3);
    fuzz_load_ends();
    fuzz_check(loaded || fuzz_logged_errors() > 0, "a file that does not load is reported");
    fuzz_check(loaded || count_all(s) == 0, "a file that does not load leaves the sets empty");
    const auto lines = std::count(data, data + size, '\n') + 1;
    fuzz_check(count_all(s) <= lines, "a line defines at most one shape");
    fuzz_check(all_in_reach(s.rects) && all_in_reach(s.tris), "every coordinate is within the limit");
    fuzz_check(all_in_reach(s.circles) && all_in_reach(s.points), "every coordinate is within the limit");
    for (const SDL_FPoint p : {SDL_FPoint{0, 0}, {48, 48}, {-300, 1e6f}}) check_hit_tests(s, p);
    for (int i = 0; i < s.tris->count; i++) {
        const Tri *t = &s.tris->items[i];
        fuzz_check(colliders_tri_top_point(t).y <= colliders_tri_bottom_point(t).y, "a slope's top is not below");
    }
    note_all(s.rects);
    note_all(s.tris);
    note_all(s.circles);
    note_all(s.points);
    draw(s);
    fuzz_clear_log();
    fuzz_note(colliders_load_csv(nullptr, nullptr, nullptr, nullptr, "level.csv", 3)); // reads, but keeps nothing
    return 0;
}
