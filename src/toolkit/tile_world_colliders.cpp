// Collision shapes from object layers and tilesets.
#include "lumarind/core/error.h"
#include "lumarind/toolkit/tile_grid.h"
#include "toolkit/tile_world_internal.h"

#include <iterator>
#include <utility>

static constexpr int CORNERS_MAX = 256;   // per polygon: triangulation takes cubic time
static constexpr float PROBE_DEPTH = 1;   // px below a polygon that must be solid
static constexpr float PROBE_SPACING = 4; // px between probes

// A shape in world coordinates.
struct SolidShape {
    const TileObject *object;
    const char *owner; // the layer's or tileset's name
    int tile;          // id of the tile it belongs to, or -1
    SDL_FRect rect;    // of rectangles
    SDL_FPoint points[CORNERS_MAX];
    int count; // of a polygon's points, otherwise 0
};

// Working sets, freed at the end.
struct SolidSets {
    const TileWorld *world;
    ColliderRects rects; // the caller's, then the layer's
    ColliderTris tris;
    Sint32 rects_before, tris_before;
};

static bool _solid_error(const SolidSets *sets, const SolidShape *shape, const char *what) {
    const char *path = sets->world->parts->path;
    if (shape->tile < 0) {
        return engine_error(
            "[TILE_WORLD] %s: layer '%s': object %d '%s' %s", path, shape->owner, shape->object->id,
            shape->object->name, what);
    }
    return engine_error(
        "[TILE_WORLD] %s: tileset '%s': tile %d: collision shape %d %s", path, shape->owner, shape->tile,
        shape->object->id, what);
}

// --- placement: from editor coordinates to world coordinates ---

static void _solid_place_object(const TileObject *object, SDL_FPoint at, SolidShape *shape) {
    // In double precision: rounding to float then hides that C libraries differ in a sine's last digit.
    const double angle = static_cast<double>(object->rotation) * SDL_PI_D / 180;
    const float sine = static_cast<float>(SDL_sin(angle)), cosine = static_cast<float>(SDL_cos(angle));
    shape->rect = {at.x + object->x, at.y + object->y, object->width, object->height};
    shape->count = object->shape == TILE_OBJECT_POLYGON ? SDL_min(object->point_count, CORNERS_MAX) : 0;
    for (int i = 0; i < shape->count; i++) {
        const SDL_FPoint p = object->points[i];
        const SDL_FPoint turned = {p.x * cosine - p.y * sine, p.x * sine + p.y * cosine};
        const SDL_FPoint used = object->rotation == 0 ? p : turned; // exact if not rotated
        shape->points[i] = {shape->rect.x + used.x, shape->rect.y + used.y};
    }
}

// Maps a tile's own pixels to its box in the world, with the tile's flips.
struct TileTransform {
    SDL_FPoint scale;
    SDL_FRect box;
    Uint32 gid;
};

static SDL_FPoint _solid_transform(const TileTransform *to, SDL_FPoint p) {
    if (to->gid & TILE_FLIP_D) std::swap(p.x, p.y);
    p = {p.x * to->scale.x, p.y * to->scale.y};
    if (to->gid & TILE_FLIP_H) p.x = to->box.w - p.x;
    if (to->gid & TILE_FLIP_V) p.y = to->box.h - p.y;
    return {to->box.x + p.x, to->box.y + p.y};
}

static void _solid_place_on_tile(const TileTransform *to, SolidShape *shape) {
    const SDL_FPoint a = _solid_transform(to, {shape->rect.x, shape->rect.y});
    const SDL_FPoint b = _solid_transform(to, {shape->rect.x + shape->rect.w, shape->rect.y + shape->rect.h});
    shape->rect = {SDL_min(a.x, b.x), SDL_min(a.y, b.y), SDL_fabsf(b.x - a.x), SDL_fabsf(b.y - a.y)};
    for (int i = 0; i < shape->count; i++) shape->points[i] = _solid_transform(to, shape->points[i]);
}

// --- visiting all shapes of a layer ---

template <typename Visit> static bool _solid_visit_objects(const TileLayer *layer, SolidShape *shape, Visit visit) {
    for (int i = 0; i < layer->object_count; i++) {
        shape->object = &layer->objects[i];
        shape->owner = layer->name;
        shape->tile = -1;
        _solid_place_object(shape->object, layer->offset, shape);
        if (!visit(shape)) return false;
    }
    return true;
}

template <typename Visit>
static bool _solid_visit_cell(
    const TileWorld *world, const TileLayer *layer, Uint32 gid, SDL_Point cell, SolidShape *shape, Visit visit) {
    const TileSet *set = _tile_world_tileset(&world->parts->content, gid);
    const int id = static_cast<int>((gid & TILE_ID_MASK) - set->first_gid);
    if (!(set->kinds[id] & TILE_HAS_SHAPES)) return true;
    const TileInfo *info = _tile_set_info(set, id);
    const SDL_Point size = _tile_size(set, info);
    SDL_FRect box = _tile_cell_box(world, set, size, gid, cell.x, cell.y);
    float w = static_cast<float>(size.x), h = static_cast<float>(size.y);
    if (gid & TILE_FLIP_D) std::swap(w, h);
    box.x += layer->offset.x;
    box.y += layer->offset.y;
    const TileTransform to = {.scale = {box.w / w, box.h / h}, .box = box, .gid = gid};
    for (int i = 0; i < info->shape_count; i++) {
        shape->object = &info->shapes[i];
        shape->owner = set->name;
        shape->tile = id;
        _solid_place_object(shape->object, {0, 0}, shape);
        _solid_place_on_tile(&to, shape);
        if (!visit(shape)) return false;
    }
    return true;
}

template <typename Visit>
static bool _solid_visit_tiles(const TileWorld *world, int index, SolidShape *shape, Visit visit) {
    const TileLayerParts *parts = &world->parts->content.layers[index];
    for (int i = 0; i < parts->chunk_count; i++) {
        const TileChunk *chunk = &parts->chunks[i];
        const Uint32 *gid = chunk->cells;
        for (int row = 0; row < chunk->rows; row++) {
            for (int col = 0; col < chunk->cols; col++, gid++) {
                const SDL_Point cell = {chunk->left + col, chunk->top + row};
                const bool empty = (*gid & TILE_ID_MASK) == 0;
                if (!empty && !_solid_visit_cell(world, &world->layers[index], *gid, cell, shape, visit)) return false;
            }
        }
    }
    return true;
}

static bool _solid_selects(const TileLayer *layer, const char *name) {
    return name ? SDL_strcmp(layer->name, name) == 0 : layer->kind == TILE_LAYER_TILES;
}

template <typename Visit> static bool _solid_visit(const TileWorld *world, const char *name, Visit visit) {
    SolidShape shape = {};
    for (int i = 0; i < world->layer_count; i++) {
        const TileLayer *layer = &world->layers[i];
        if (!_solid_selects(layer, name)) continue;
        if (!_solid_visit_objects(layer, &shape, visit) || !_solid_visit_tiles(world, i, &shape, visit)) return false;
    }
    return true;
}

// --- polygons ---

static float _solid_cross(SDL_FPoint a, SDL_FPoint b, SDL_FPoint c) { // above 0: clockwise, as y grows downwards
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

static float _solid_area(const SDL_FPoint *points, int count) {
    float sum = 0;
    for (int i = 1; i + 1 < count; i++) sum += _solid_cross(points[0], points[i], points[i + 1]);
    return sum / 2;
}

// Returns whether the edges a-b and c-d cross; edges that only touch do not.
static bool _solid_edges_cross(SDL_FPoint a, SDL_FPoint b, SDL_FPoint c, SDL_FPoint d) {
    const float to_c = _solid_cross(a, b, c), to_d = _solid_cross(a, b, d);
    const float to_a = _solid_cross(c, d, a), to_b = _solid_cross(c, d, b);
    return to_c * to_d < 0 && to_a * to_b < 0;
}

static bool _solid_crosses_itself(const SDL_FPoint *points, int count) {
    for (int i = 0; i < count; i++) {
        for (int k = i + 2; k < count; k++) {
            if (_solid_edges_cross(points[i], points[i + 1], points[k], points[(k + 1) % count])) return true;
        }
    }
    return false;
}

// Returns whether corner i is an ear: convex, with no other corner inside its triangle.
static bool _solid_is_ear(const SDL_FPoint *points, int count, int i, float area) {
    const SDL_FPoint a = points[(i + count - 1) % count], b = points[i], c = points[(i + 1) % count];
    const Tri tri = {a, b, c};
    if (_solid_cross(a, b, c) * area < 0) return false;
    for (int k = 0; k < count; k++) {
        const SDL_FPoint p = points[k];
        const auto same = [p](SDL_FPoint q) { return p.x == q.x && p.y == q.y; };
        if (!same(a) && !same(b) && !same(c) && point_in_tri(&p, &tri)) return false;
    }
    return true;
}

// Triangulates a copy of the outline by ear clipping. A simple polygon always has an ear; one that touches itself may
// not.
static bool _solid_triangulate(SolidSets *sets, const SolidShape *shape, float area) {
    SDL_FPoint points[CORNERS_MAX];
    int count = shape->count;
    for (int i = 0; i < count; i++) points[i] = shape->points[i];
    while (count >= 3) {
        int ear = count == 3 ? 1 : 0;
        while (ear < count && count > 3 && !_solid_is_ear(points, count, ear, area)) ear++;
        if (ear == count) return _solid_error(sets, shape, "touches itself: draw it again");
        const Tri tri = {points[(ear + count - 1) % count], points[ear], points[(ear + 1) % count]};
        const bool flat = _solid_cross(tri.a, tri.b, tri.c) == 0;
        if (!flat && !_typed_array_push<ColliderTrisTraits>(&sets->tris, tri)) return false;
        count--;
        for (int i = ear; i < count; i++) points[i] = points[i + 1];
    }
    return true;
}

static bool _solid_add_polygon(SolidSets *sets, const SolidShape *shape) {
    if (shape->object->point_count > CORNERS_MAX) {
        return _solid_error(sets, shape, "has more than 256 corners: divide it");
    }
    const float area = shape->count < 3 ? 0 : _solid_area(shape->points, shape->count);
    if (shape->count >= 3 && _solid_crosses_itself(shape->points, shape->count)) {
        return _solid_error(sets, shape, "crosses itself: draw it again");
    }
    if (area == 0) return _solid_error(sets, shape, "is a polygon without an area: draw it again");
    return _solid_triangulate(sets, shape, area);
}

// --- support below a polygon ---

static bool _solid_at(const SolidSets *sets, SDL_FPoint p) {
    const TileWorld *world = sets->world;
    const float bottom = static_cast<float>(world->rows) * static_cast<float>(world->tile_h);
    if (!world->parts->content.infinite && p.y > bottom) return true;
    return colliders_point_inside_rect(&p, &sets->rects) != -1 || colliders_point_inside_tri(&p, &sets->tris) != -1;
}

// Probes along one edge of the lower outline.
static bool _solid_is_supported(const SolidSets *sets, SDL_FPoint a, SDL_FPoint b) {
    const float width = SDL_fabsf(b.x - a.x);
    const int probes = 1 + static_cast<int>(SDL_min(width / PROBE_SPACING, 1000.0f));
    for (int i = 0; i < probes; i++) {
        const float t = (static_cast<float>(i) + 0.5f) / static_cast<float>(probes);
        const SDL_FPoint below = {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t + PROBE_DEPTH};
        if (!_solid_at(sets, below)) return false;
    }
    return true;
}

static bool _solid_check_polygon(const SolidSets *sets, const SolidShape *shape) {
    const float area = _solid_area(shape->points, shape->count);
    for (int i = 0; i < shape->count; i++) {
        const SDL_FPoint a = shape->points[i], b = shape->points[(i + 1) % shape->count];
        const bool is_lower = (b.x - a.x) * area < 0; // clockwise, the lower outline runs to the left
        if (!is_lower || _solid_is_supported(sets, a, b)) continue;
        return _solid_error(
            sets, shape,
            "is a polygon with open space below it. A slope lifts whatever is below it, so it cannot be a ceiling: put "
            "something solid under it, or use rectangles");
    }
    return true;
}

// --- rectangles ---

static int _compare_floats(float a, float b) { return a < b ? -1 : a > b; }

static int SDLCALL _solid_compare_rows(const void *first, const void *second) {
    const auto *a = static_cast<const SDL_FRect *>(first), *b = static_cast<const SDL_FRect *>(second);
    const int y = _compare_floats(a->y, b->y), h = _compare_floats(a->h, b->h);
    return y ? y : h ? h : _compare_floats(a->x, b->x);
}

static int SDLCALL _solid_compare_columns(const void *first, const void *second) {
    const auto *a = static_cast<const SDL_FRect *>(first), *b = static_cast<const SDL_FRect *>(second);
    const int x = _compare_floats(a->x, b->x), w = _compare_floats(a->w, b->w);
    return x ? x : w ? w : _compare_floats(a->y, b->y);
}

// Merges touching or overlapping rectangles: first those of equal height in a row, then those of equal width in a
// column.
static void _solid_merge(ColliderRects *rects, Sint32 from) {
    SDL_FRect *items = rects->items + from;
    for (const bool across : {true, false}) {
        const auto count = static_cast<size_t>(rects->count - from);
        Sint32 kept = from;
        if (count < 2) return;
        SDL_qsort(items, count, sizeof *items, across ? _solid_compare_rows : _solid_compare_columns);
        for (Sint32 i = from + 1; i < rects->count; i++) {
            SDL_FRect *last = &rects->items[kept];
            const SDL_FRect next = rects->items[i];
            const bool row = across && next.y == last->y && next.h == last->h && next.x <= last->x + last->w;
            const bool column = !across && next.x == last->x && next.w == last->w && next.y <= last->y + last->h;
            if (row) {
                last->w = SDL_max(last->w, next.x + next.w - last->x);
            } else if (column) {
                last->h = SDL_max(last->h, next.y + next.h - last->y);
            } else {
                rects->items[++kept] = next;
            }
        }
        rects->count = kept + 1;
    }
}

// --- shapes by kind ---

static bool _solid_check_kind(const SolidSets *sets, const SolidShape *shape) {
    static constexpr const char *NO_BODY[] = {
        nullptr,
        nullptr,
        "is an ellipse: only rectangles and polygons are solid",
        "is a capsule: only rectangles and polygons are solid",
        nullptr,
        "is a polyline: only rectangles and polygons are solid",
        "is a tile object: only rectangles and polygons are solid",
        nullptr,
    };
    static_assert(std::size(NO_BODY) == TILE_OBJECT_TEXT + 1, "one row per shape");
    const TileObject *object = shape->object;
    if (NO_BODY[object->shape]) return _solid_error(sets, shape, NO_BODY[object->shape]);
    if (object->shape != TILE_OBJECT_RECT || object->rotation == 0) return true;
    return _solid_error(sets, shape, "is a rotated rectangle: set its rotation to 0, or use a polygon");
}

static bool _solid_gather(SolidSets *sets, const char *layer) {
    const bool all_checked =
        _solid_visit(sets->world, layer, [sets](const SolidShape *s) { return _solid_check_kind(sets, s); });
    if (!all_checked) return false;
    Sint32 objects_end = sets->rects.count;
    const bool gathered = _solid_visit(sets->world, layer, [sets, &objects_end](const SolidShape *s) {
        if (s->object->shape == TILE_OBJECT_POLYGON) return _solid_add_polygon(sets, s);
        if (s->object->shape != TILE_OBJECT_RECT || !(s->rect.w > 0) || !(s->rect.h > 0)) return true;
        if (!_typed_array_push<ColliderRectsTraits>(&sets->rects, s->rect)) return false;
        if (s->tile < 0) objects_end = sets->rects.count;
        return true;
    });
    if (!gathered) return false;
    _solid_merge(&sets->rects, objects_end);
    return _solid_visit(sets->world, layer, [sets](const SolidShape *s) {
        return s->object->shape != TILE_OBJECT_POLYGON || _solid_check_polygon(sets, s);
    });
}

// --- the sets ---

// Appends elements from `first` on. Reports errors, possibly after appending some.
template <typename Traits>
static bool _solid_append(
    const TypedArray<typename Traits::Element> *from, Sint32 first, TypedArray<typename Traits::Element> *to) {
    for (Sint32 i = first; to && i < from->count; i++) {
        if (!_typed_array_push<Traits>(to, from->items[i])) return false;
    }
    return true;
}

static bool _solid_start(SolidSets *sets, const ColliderRects *rects, const ColliderTris *tris) {
    sets->rects.grow_by = sets->tris.grow_by = 4096;
    if (rects && !_solid_append<ColliderRectsTraits>(rects, 0, &sets->rects)) return false;
    if (tris && !_solid_append<ColliderTrisTraits>(tris, 0, &sets->tris)) return false;
    sets->rects_before = sets->rects.count;
    sets->tris_before = sets->tris.count;
    return true;
}

static bool _solid_finish(const SolidSets *sets, ColliderRects *rects, ColliderTris *tris) {
    if (_solid_append<ColliderRectsTraits>(&sets->rects, sets->rects_before, rects) &&
        _solid_append<ColliderTrisTraits>(&sets->tris, sets->tris_before, tris)) {
        return true;
    }
    if (rects) rects->count = SDL_min(rects->count, sets->rects_before);
    if (tris) tris->count = SDL_min(tris->count, sets->tris_before);
    return false;
}

bool tile_world_colliders(const TileWorld *world, const char *layer, ColliderRects *rects, ColliderTris *tris) {
    SolidSets sets = {};
    sets.world = world;
    if (layer && tile_world_find_layer(world, layer) < 0) {
        return engine_error("[TILE_WORLD] %s: there is no layer '%s'", world->parts->path, layer);
    }
    const bool made =
        _solid_start(&sets, rects, tris) && _solid_gather(&sets, layer) && _solid_finish(&sets, rects, tris);
    colliders_rects_cleanup(&sets.rects);
    colliders_tris_cleanup(&sets.tris);
    return made;
}
