// Objects of object layers, and collision shapes of tiles, which have the same format.
#include "lumarind/core/error.h"
#include "lumarind/toolkit/tile_grid.h"
#include "toolkit/tile_world_internal.h"

#include <cmath>
#include <iterator>
#include <pugixml.hpp>

// --- shapes ---

// Parses "0,0 16,8 ...". Returns the number of points, storing them unless `out` is null, or -1 if the text is not a
// list of points.
static int _tile_parse_points(const char *text, SDL_FPoint *out) {
    int count = 0;
    for (const char *at = text;; count++) {
        while (*at == ' ' || *at == '\n' || *at == '\r' || *at == '\t') at++;
        if (!*at) return count;
        char *end = nullptr;
        const double x = SDL_strtod(at, &end);
        if (end == at || *end != ',') return -1;
        at = end + 1;
        const double y = SDL_strtod(at, &end);
        if (end == at || !std::isfinite(x) || !std::isfinite(y)) return -1;
        at = end;
        const auto bounded = [](double number) {
            return static_cast<float>(SDL_clamp(number, double{-COLLIDERS_REACH}, double{COLLIDERS_REACH}));
        };
        if (out) out[count] = {bounded(x), bounded(y)};
    }
}

static bool _tile_read_points(TileLoad *load, const pugi::xml_node &shape, TileObject *object) {
    const char *text = shape.attribute("points").value();
    const int count = _tile_parse_points(text, nullptr);
    if (count < 1) {
        return engine_error(
            "[TILE_WORLD] %s: object %d '%s': its points are not a list like 0,0 16,8: draw the shape again",
            load->path, object->id, object->name);
    }
    SDL_FPoint *points = _tile_load_new<SDL_FPoint>(load, static_cast<size_t>(count));
    if (!points) return false;
    _tile_parse_points(text, points);
    object->points = points;
    object->point_count = count;
    return true;
}

struct ShapeElement {
    const char *name;
    TileObjectShape shape;
};
static constexpr ShapeElement SHAPE_ELEMENTS[] = {
    {"ellipse", TILE_OBJECT_ELLIPSE}, {"point", TILE_OBJECT_POINT},       {"polygon", TILE_OBJECT_POLYGON},
    {"capsule", TILE_OBJECT_CAPSULE}, {"polyline", TILE_OBJECT_POLYLINE}, {"text", TILE_OBJECT_TEXT},
};

static bool _tile_read_shape(TileLoad *load, const pugi::xml_node &node, TileObject *object) {
    if (node.attribute("gid")) {
        object->gid = node.attribute("gid").as_uint();
        object->shape = TILE_OBJECT_TILE;
    }
    for (const ShapeElement &element : SHAPE_ELEMENTS) {
        const pugi::xml_node child = node.child(element.name);
        if (!child) continue;
        object->shape = element.shape;
        if (element.shape == TILE_OBJECT_TEXT) object->text = _tile_load_text(load, child.child_value());
        const bool has_points = element.shape == TILE_OBJECT_POLYGON || element.shape == TILE_OBJECT_POLYLINE;
        return object->text && (!has_points || _tile_read_points(load, child, object));
    }
    return true;
}

// --- templates ---

static const TileTemplate *_tile_load_template(TileLoad *load, const char *path);

// Appends the template's properties after the object's own, which are found first.
static bool _tile_add_properties(TileLoad *load, const TileProperties *more, TileProperties *properties) {
    if (more->count == 0) return true;
    const auto own = static_cast<size_t>(properties->count), others = static_cast<size_t>(more->count);
    TileProperty *both = _tile_load_new<TileProperty>(load, own + others);
    if (!both) return false;
    if (own > 0) SDL_memcpy(both, properties->items, own * sizeof *both);
    SDL_memcpy(both + own, more->items, others * sizeof *both);
    *properties = {both, properties->count + more->count};
    return true;
}

// --- objects ---

static const char *_tile_class(const pugi::xml_node &node) {
    const pugi::xml_attribute type = node.attribute("type");
    return type ? type.value() : node.attribute("class").value(); // one version of the editor writes `class`
}

static bool _tile_read_texts(TileLoad *load, const pugi::xml_node &node, TileObject *object) {
    if (node.attribute("name") || !object->name) object->name = _tile_load_text(load, node.attribute("name").value());
    if (*_tile_class(node) || !object->type) object->type = _tile_load_text(load, _tile_class(node));
    if (!object->text) object->text = _tile_load_text(load, "");
    return object->name && object->type && object->text;
}

// Reads an object that already contains its defaults.
static bool _tile_read_object(TileLoad *load, const pugi::xml_node &node, TileObject *object) {
    object->id = node.attribute("id").as_int(object->id);
    object->x = _tile_xml_number(node, "x", object->x);
    object->y = _tile_xml_number(node, "y", object->y);
    object->width = SDL_max(_tile_xml_number(node, "width", object->width), 0);
    object->height = SDL_max(_tile_xml_number(node, "height", object->height), 0);
    object->rotation = _tile_xml_number(node, "rotation", object->rotation);
    object->visible = node.attribute("visible").as_bool(object->visible);
    object->opacity = SDL_clamp(_tile_xml_number(node, "opacity", object->opacity), 0.0f, 1.0f);
    const TileProperties inherited = object->properties;
    return _tile_read_texts(load, node, object) && _tile_read_shape(load, node, object) &&
           _tile_load_properties(load, node, &object->properties) &&
           _tile_add_properties(load, &inherited, &object->properties);
}

static constexpr TileObject PLAIN_OBJECT = {
    .id = 0,
    .name = nullptr,
    .type = nullptr,
    .shape = TILE_OBJECT_RECT,
    .x = 0,
    .y = 0,
    .width = 0,
    .height = 0,
    .rotation = 0,
    .visible = true,
    .opacity = 1,
    .gid = 0,
    .points = nullptr,
    .point_count = 0,
    .text = nullptr,
    .properties = {}};

static bool _tile_object_error(const TileLoad *load, const TileObject *object, const char *what) {
    return engine_error(
        "[TILE_WORLD] %s: object %d '%s': %s", load->path, object->id, object->name ? object->name : "", what);
}

static bool _tile_load_object(TileLoad *load, const pugi::xml_node &node, bool may_be_tiles, TileObject *object) {
    *object = PLAIN_OBJECT;
    if (const pugi::xml_attribute from = node.attribute("template")) {
        const char *path = _tile_load_resolve(load, "object", from.value());
        const TileTemplate *base = path ? _tile_load_template(load, path) : nullptr;
        if (!base) return false;
        *object = base->object;
    }
    if (!_tile_read_object(load, node, object)) return false;
    if (object->shape != TILE_OBJECT_TILE) return true;
    const Uint32 id = object->gid & TILE_ID_MASK;
    if (!may_be_tiles) return _tile_object_error(load, object, "a collision shape cannot be a tile: draw a shape");
    const TileSet *set = _tile_world_tileset(load->content, id);
    if (set && set->kinds[id - set->first_gid] & TILE_EXISTS) return true;
    return _tile_object_error(load, object, "its tile is in none of the map's tilesets: choose another tile");
}

bool _tile_load_objects(
    TileLoad *load, const pugi::xml_node &group, bool may_be_tiles, const TileObject **objects, Sint32 *count) {
    size_t found = 0;
    for (const pugi::xml_node &node : group.children("object")) found += node ? 1 : 0;
    *objects = nullptr;
    *count = 0;
    if (found == 0) return true;
    TileObject *list = _tile_load_new<TileObject>(load, found);
    if (!list) return false;
    for (const pugi::xml_node &node : group.children("object")) {
        if (!_tile_load_object(load, node, may_be_tiles, &list[(*count)++])) return false;
    }
    *objects = list;
    return true;
}

static int SDLCALL _tile_compare_tops(const void *a, const void *b) {
    const TileObject *first = *static_cast<const TileObject *const *>(a);
    const TileObject *second = *static_cast<const TileObject *const *>(b);
    if (first->y != second->y) return first->y < second->y ? -1 : 1;
    return first < second ? -1 : first > second; // SDL_qsort is not stable
}

bool _tile_sort_objects(TileLoad *load, const pugi::xml_node &group, const TileLayer *layer, TileLayerParts *parts) {
    if (layer->object_count == 0) return true;
    const auto count = static_cast<size_t>(layer->object_count);
    const TileObject **drawn = _tile_load_new<const TileObject *>(load, count);
    if (!drawn) return false;
    parts->drawn = drawn;
    for (Sint32 i = 0; i < layer->object_count; i++) {
        if (layer->objects[i].shape == TILE_OBJECT_TILE) drawn[parts->drawn_count++] = &layer->objects[i];
    }
    if (SDL_strcmp(group.attribute("draworder").value(), "index") == 0) return true;
    SDL_qsort(drawn, static_cast<size_t>(parts->drawn_count), sizeof *drawn, _tile_compare_tops);
    return true;
}

// --- template files ---

// A template's GIDs refer to its own tileset, which is one of the map's or is added to them.
static bool _tile_adopt_tileset(TileLoad *load, const pugi::xml_node &node, TileObject *object) {
    const char *path = _tile_load_resolve(load, "tileset", node.attribute("source").value());
    if (!path) return false;
    const TileSet *set = nullptr;
    for (int i = 0; i < load->content->tileset_count; i++) {
        if (SDL_strcmp(load->content->tilesets[i]->path, path) == 0) set = load->content->tilesets[i];
    }
    if (!set) {
        set = _tile_load_tileset(load, node, _tile_world_next_gid(load->content));
        if (!set || !_tile_load_add_tileset(load, set)) return false;
    }
    const Uint32 id = object->gid & TILE_ID_MASK, first = node.attribute("firstgid").as_uint(1);
    const Uint32 flags = object->gid & ~TILE_ID_MASK;
    if (id < first || id - first >= static_cast<Uint32>(set->id_count)) {
        return _tile_object_error(load, object, "its tile is not in the template's tileset: choose another tile");
    }
    object->gid = flags | (set->first_gid + (id - first));
    return true;
}

static bool _tile_read_template(TileLoad *load, const pugi::xml_node &root, void *result) {
    auto *made = static_cast<TileTemplate *>(result);
    const pugi::xml_node node = root.child("object");
    made->object = PLAIN_OBJECT;
    if (node.attribute("template")) {
        return engine_error("[TILE_WORLD] %s: a template cannot use another template: detach its object", load->path);
    }
    if (!_tile_read_object(load, node, &made->object)) return false;
    return made->object.shape != TILE_OBJECT_TILE || _tile_adopt_tileset(load, root.child("tileset"), &made->object);
}

static const TileTemplate *_tile_load_template(TileLoad *load, const char *path) {
    for (const TileTemplate *made = load->templates; made; made = made->next) {
        if (SDL_strcmp(made->path, path) == 0) return made;
    }
    TileTemplate *made = _tile_load_new<TileTemplate>(load);
    if (!made || !_tile_load_xml(load, path, "template", _tile_read_template, made)) return nullptr;
    made->path = path;
    made->next = load->templates;
    load->templates = made;
    return made;
}
