#include "lumarind/core/error.h"
#include "toolkit/tile_world_internal.h"

#include <SDL3/SDL_error.h>

#include <cmath>
#include <iterator>
#include <pugixml.hpp>

// --- XML ---

float _tile_xml_number(const pugi::xml_node &node, const char *name, float otherwise) {
    const float number = node.attribute(name).as_float(otherwise);
    return std::isfinite(number) ? SDL_clamp(number, -COLLIDERS_REACH, COLLIDERS_REACH) : otherwise;
}

bool _tile_xml_color(const char *text, SDL_Color *color) {
    if (*text == '#') text++;
    const size_t length = SDL_strlen(text);
    char *end = nullptr;
    const unsigned long value = SDL_strtoul(text, &end, 16);
    if ((length != 6 && length != 8) || *end) return false;
    const auto part = [value](int shift) { return static_cast<Uint8>(value >> shift & 255); };
    *color = {part(16), part(8), part(0), length == 8 ? part(24) : Uint8{255}};
    return true;
}

// --- reading ---

struct PropertyTypeName {
    const char *name;
    TilePropertyType type;
};
static constexpr PropertyTypeName PROPERTY_TYPES[] = {
    {"string", TILE_PROPERTY_STRING}, {"int", TILE_PROPERTY_INT},     {"float", TILE_PROPERTY_FLOAT},
    {"bool", TILE_PROPERTY_BOOL},     {"color", TILE_PROPERTY_COLOR}, {"file", TILE_PROPERTY_FILE},
    {"object", TILE_PROPERTY_OBJECT}, {"class", TILE_PROPERTY_CLASS}, {"list", TILE_PROPERTY_LIST},
};

static TilePropertyType _tile_property_type(const pugi::xml_node &property) {
    for (const PropertyTypeName &row : PROPERTY_TYPES) {
        if (SDL_strcmp(property.attribute("type").value(), row.name) == 0) return row.type;
    }
    return TILE_PROPERTY_STRING; // also for unknown types
}

// The members of a class or the items of a list.
struct PropertyParts {
    pugi::xml_node parent;
    const char *element;
};

static PropertyParts _tile_property_parts(const pugi::xml_node &property) {
    const TilePropertyType type = _tile_property_type(property);
    if (type == TILE_PROPERTY_CLASS) return {property.child("properties"), "property"};
    return {type == TILE_PROPERTY_LIST ? property : pugi::xml_node(), "item"};
}

static int _tile_count_properties(const pugi::xml_node &parent, const char *element, int depth) {
    int count = 0;
    if (depth > TILE_WORLD_DEPTH_MAX) return 0;
    for (const pugi::xml_node &property : parent.children(element)) {
        const PropertyParts parts = _tile_property_parts(property);
        count += 1 + _tile_count_properties(parts.parent, parts.element, depth + 1);
    }
    return count;
}

static double _tile_property_number(TilePropertyType type, const char *text) {
    if (type == TILE_PROPERTY_BOOL) return SDL_strcmp(text, "true") == 0 || SDL_strcmp(text, "1") == 0 ? 1 : 0;
    const double number = SDL_atof(text);
    return std::isfinite(number) ? number : 0;
}

static const char *_tile_property_name(TileLoad *load, const char *prefix, const char *name) {
    const size_t size = SDL_strlen(prefix) + SDL_strlen(name) + 2;
    char *full = _tile_load_new<char>(load, size);
    if (full) SDL_snprintf(full, size, "%s%s%s", prefix, *prefix ? "." : "", name);
    return full;
}

static bool
_tile_read_property(TileLoad *load, const pugi::xml_node &node, const char *prefix, int index, TileProperty *property) {
    char number[16] = "";
    SDL_snprintf(number, sizeof number, "%d", index);
    const bool is_item = SDL_strcmp(node.name(), "item") == 0;
    const pugi::xml_attribute value = node.attribute("value");
    property->type = _tile_property_type(node);
    property->name = _tile_property_name(load, prefix, is_item ? number : node.attribute("name").value());
    const bool has_parts = property->type == TILE_PROPERTY_CLASS || property->type == TILE_PROPERTY_LIST;
    property->text = _tile_load_text(load, has_parts ? "" : value ? value.value() : node.child_value());
    if (!property->name || !property->text) return false;
    property->number = _tile_property_number(property->type, property->text);
    if (property->type == TILE_PROPERTY_COLOR) _tile_xml_color(property->text, &property->color);
    return true;
}

// Appends the properties of an element, each followed by its members or items.
static bool _tile_read_properties(
    TileLoad *load, const pugi::xml_node &parent, const char *element, const char *prefix, TileProperty *items,
    Sint32 *count) {
    int index = 0;
    if (load->depth > TILE_WORLD_DEPTH_MAX) return true;
    for (const pugi::xml_node &node : parent.children(element)) {
        TileProperty *property = &items[(*count)++];
        if (!_tile_read_property(load, node, prefix, index++, property)) return false;
        const PropertyParts parts = _tile_property_parts(node);
        const Sint32 before = *count;
        load->depth++;
        const bool read = _tile_read_properties(load, parts.parent, parts.element, property->name, items, count);
        load->depth--;
        if (!read) return false;
        if (property->type != TILE_PROPERTY_LIST) continue;
        property->number = 0;
        for (const pugi::xml_node &item : node.children("item")) property->number += item ? 1 : 0;
        if (*count == before) property->number = 0; // nested too deeply: its items were skipped
    }
    return true;
}

bool _tile_load_properties(TileLoad *load, const pugi::xml_node &owner, TileProperties *properties) {
    const pugi::xml_node parent = owner.child("properties");
    const int count = _tile_count_properties(parent, "property", 0);
    *properties = {};
    if (count == 0) return true;
    TileProperty *items = _tile_load_new<TileProperty>(load, static_cast<size_t>(count));
    properties->items = items;
    const int depth = load->depth;
    load->depth = 0;
    const bool read = items && _tile_read_properties(load, parent, "property", "", items, &properties->count);
    load->depth = depth;
    return read;
}

// --- queries ---

const TileProperty *tile_property_find(const TileProperties *properties, const char *name) {
    for (int i = 0; properties && i < properties->count; i++) {
        if (SDL_strcmp(properties->items[i].name, name) == 0) return &properties->items[i];
    }
    return nullptr;
}

static bool _tile_property_is_number(const TileProperty *property) {
    constexpr TilePropertyType NUMBERS[] = {
        TILE_PROPERTY_INT, TILE_PROPERTY_FLOAT, TILE_PROPERTY_OBJECT, TILE_PROPERTY_LIST};
    for (const TilePropertyType type : NUMBERS) {
        if (property && property->type == type) return true;
    }
    return false;
}

const char *tile_property_string(const TileProperties *properties, const char *name, const char *otherwise) {
    const TileProperty *property = tile_property_find(properties, name);
    return property ? property->text : otherwise;
}

int tile_property_int(const TileProperties *properties, const char *name, int otherwise) {
    const TileProperty *property = tile_property_find(properties, name);
    if (!_tile_property_is_number(property)) return otherwise;
    constexpr double LIMIT = SDL_MAX_SINT32;
    return static_cast<int>(SDL_clamp(property->number, -LIMIT, LIMIT));
}

double tile_property_float(const TileProperties *properties, const char *name, double otherwise) {
    const TileProperty *property = tile_property_find(properties, name);
    return _tile_property_is_number(property) ? property->number : otherwise;
}

bool tile_property_bool(const TileProperties *properties, const char *name, bool otherwise) {
    const TileProperty *property = tile_property_find(properties, name);
    return property && property->type == TILE_PROPERTY_BOOL ? property->number != 0 : otherwise;
}

SDL_Color tile_property_color(const TileProperties *properties, const char *name, SDL_Color otherwise) {
    const TileProperty *property = tile_property_find(properties, name);
    return property && property->type == TILE_PROPERTY_COLOR ? property->color : otherwise;
}
