// Loads a map file and the files it refers to. All content is in one arena, so that a failed load is freed like a whole
// world.
#include "lumarind/core/error.h"
#include "lumarind/core/storage.h"
#include "lumarind/toolkit/tile_grid.h"
#include "toolkit/tile_world_internal.h"

#include <SDL3/SDL_error.h>

#include <cstring>
#include <pugixml.hpp>

// --- memory ---

void *_tile_load_memory(TileLoad *load, size_t count, size_t size) {
    void *memory = count > SDL_SIZE_MAX / size ? nullptr : arena_alloc(&load->content->arena, count * size);
    if (!memory) engine_error("[TILE_WORLD] Memory allocation failed while loading %s", load->path);
    return memory;
}

const char *_tile_load_text(TileLoad *load, const char *text) {
    const size_t size = SDL_strlen(text) + 1;
    char *copy = _tile_load_new<char>(load, size);
    if (copy) SDL_memcpy(copy, text, size);
    return copy;
}

// --- paths ---

// Appends a path's components to `out`, which has room for them; ".." removes one. Returns false if there is none to
// remove.
static bool _tile_append_path(const char *path, size_t length, char *out) {
    const char *end = path + length;
    while (path < end) {
        const auto *slash = static_cast<const char *>(std::memchr(path, '/', static_cast<size_t>(end - path)));
        const auto size = static_cast<size_t>((slash ? slash : end) - path);
        const size_t used = SDL_strlen(out);
        if (size == 2 && path[0] == '.' && path[1] == '.') {
            char *last = SDL_strrchr(out, '/');
            if (used == 0) return false;
            *(last ? last : out) = '\0';
        } else if (size > 1 || (size == 1 && path[0] != '.')) {
            if (used > 0) out[used] = '/';
            SDL_memcpy(out + used + (used > 0 ? 1 : 0), path, size);
            out[used + (used > 0 ? 1 : 0) + size] = '\0';
        }
        path += size + 1;
    }
    return true;
}

const char *_tile_load_resolve(TileLoad *load, const char *element, const char *path) {
    const char *slash = SDL_strrchr(load->path, '/');
    const size_t folder = slash ? static_cast<size_t>(slash - load->path) : 0;
    if (!*path || *path == '/' || SDL_strpbrk(path, "\\:")) {
        engine_error(
            "[TILE_WORLD] %s: %s: '%s' is not a relative path with / as separator: save the file beside the "
            "others, and save this one again",
            load->path, element, path);
        return nullptr;
    }
    char *full = _tile_load_new<char>(load, folder + SDL_strlen(path) + 2);
    if (!full) return nullptr;
    if (_tile_append_path(load->path, folder, full) && _tile_append_path(path, SDL_strlen(path), full) && *full) {
        return full;
    }
    engine_error(
        "[TILE_WORLD] %s: %s: '%s' is outside the game's files: move the file inside and save again", load->path,
        element, path);
    return nullptr;
}

// --- files ---

FileStamp _tile_file_stamp(const TileSourceFile *file) {
    return file->is_picture ? file_stamp_of_path(file->path) : file_stamp_of_game_file(file->path);
}

static bool _tile_add_source_file(TileLoad *load, const char *path, bool is_picture) {
    TileSourceFile *file = _tile_load_new<TileSourceFile>(load);
    if (!file) return false;
    *file = {.next = load->content->files, .path = path, .is_picture = is_picture, .stamp = {}};
    if (reload_is_enabled()) file->stamp = _tile_file_stamp(file);
    load->content->files = file;
    return true;
}

static bool _tile_check_xml(const char *path, const pugi::xml_parse_result &result) {
    if (result) return true;
    if (result.status == pugi::status_out_of_memory) {
        return engine_error("[TILE_WORLD] Memory allocation failed while loading %s", path);
    }
    return engine_error(
        "[TILE_WORLD] %s: invalid XML at byte %lld: %s: save it again", path, static_cast<long long>(result.offset),
        result.description());
}

// The document is parsed in place; both it and the text are valid only during the call.
static bool _tile_parse_xml(TileLoad *load, char *text, const char *root, TileXmlReader read, void *result) {
    constexpr unsigned OPTIONS = pugi::parse_escapes | pugi::parse_cdata | pugi::parse_wconv_attribute;
    pugi::xml_document document;
    const size_t size = SDL_strlen(text);
    if (!_tile_check_xml(load->path, document.load_buffer_inplace(text, size, OPTIONS, pugi::encoding_utf8))) {
        return false;
    }
    const pugi::xml_node node = document.child(root);
    if (node) return read(load, node, result);
    return engine_error(
        "[TILE_WORLD] %s: its root element is '%s', but '%s' was expected: it is a file of another kind", load->path,
        document.first_child().name(), root);
}

bool _tile_load_xml(TileLoad *load, const char *path, const char *root, TileXmlReader read, void *result) {
    if (!_tile_add_source_file(load, path, false)) return false;
    char *text = storage_read_game_file(path);
    if (!text) return false;
    const char *outer = load->path;
    const pugi::allocation_function allocate = pugi::get_memory_allocation_function();
    const pugi::deallocation_function deallocate = pugi::get_memory_deallocation_function();
    pugi::set_memory_management_functions(SDL_malloc, SDL_free);
    load->path = path;
    const bool loaded = _tile_parse_xml(load, text, root, read, result);
    load->path = outer;
    pugi::set_memory_management_functions(allocate, deallocate);
    SDL_free(text);
    return loaded;
}

SharedTexture *_tile_load_picture(TileLoad *load, const pugi::xml_node &image, const char *owner) {
    const pugi::xml_attribute source = image.attribute("source");
    SDL_Color color = {};
    Sint32 transparent = TEXTURE_STORE_NO_COLOR;
    if (_tile_xml_color(image.attribute("trans").value(), &color)) {
        transparent = color.r << 16 | color.g << 8 | color.b;
    }
    if (!source) {
        engine_error("[TILE_WORLD] %s: '%s' has an embedded image: save it as a separate file", load->path, owner);
        return nullptr;
    }
    const char *path = _tile_load_resolve(load, "image", source.value());
    TileTextureRef *ref =
        path && _tile_add_source_file(load, path, true) ? _tile_load_new<TileTextureRef>(load) : nullptr;
    if (!ref) return nullptr;
    ref->texture = texture_store_get(load->renderer, path, transparent);
    if (!ref->texture) {
        engine_error("[TILE_WORLD] %s: '%s': cannot load %s, error: %s", load->path, owner, path, SDL_GetError());
        return nullptr;
    }
    ref->next = load->content->textures;
    load->content->textures = ref;
    return ref->texture;
}

void _tile_content_cleanup(TileContent *content) {
    for (const TileTextureRef *ref = content->textures; ref; ref = ref->next) texture_store_release(ref->texture);
    arena_free(&content->arena);
    *content = {};
}

// --- tilesets ---

bool _tile_load_add_tileset(TileLoad *load, const TileSet *set) {
    TileContent *content = load->content;
    if (content->tileset_count == load->tileset_room) {
        const int room = 2 * load->tileset_room + 8;
        const TileSet **grown = _tile_load_new<const TileSet *>(load, static_cast<size_t>(room));
        if (!grown) return false;
        for (int i = 0; i < content->tileset_count; i++) grown[i] = content->tilesets[i];
        content->tilesets = grown;
        load->tileset_room = room;
    }
    content->tilesets[content->tileset_count++] = set;
    return true;
}

static bool _tile_read_tilesets(TileLoad *load, const pugi::xml_node &map) {
    Uint32 last = 0;
    for (const pugi::xml_node &node : map.children("tileset")) {
        const Uint32 first = node.attribute("firstgid").as_uint();
        if (first <= last || first > TILE_ID_MASK) {
            return engine_error(
                "[TILE_WORLD] %s: tileset: its firstgid '%s' is not in ascending order: save the map again", load->path,
                node.attribute("firstgid").value());
        }
        last = first;
        const TileSet *set = _tile_load_tileset(load, node, first);
        if (!set || !_tile_load_add_tileset(load, set)) return false;
    }
    return true;
}

const TileSet *_tile_world_tileset(const TileContent *content, Uint32 gid) {
    const Uint32 id = gid & TILE_ID_MASK;
    for (int i = content->tileset_count - 1; i >= 0; i--) {
        const TileSet *set = content->tilesets[i];
        if (id >= set->first_gid) return id - set->first_gid < static_cast<Uint32>(set->id_count) ? set : nullptr;
    }
    return nullptr;
}

Uint32 _tile_world_next_gid(const TileContent *content) {
    Uint32 next = 1;
    for (int i = 0; i < content->tileset_count; i++) {
        const TileSet *set = content->tilesets[i];
        next = SDL_max(next, set->first_gid + static_cast<Uint32>(set->id_count));
    }
    return next;
}

// --- layers ---

static const TileLayer ROOT_GROUP = {
    .kind = TILE_LAYER_TILES,
    .id = 0,
    .name = "",
    .type = "",
    .visible = true,
    .opacity = 1,
    .tint = {1, 1, 1, 1},
    .offset = {0, 0},
    .parallax = {1, 1},
    .properties = {},
    .objects = nullptr,
    .object_count = 0};

// Reads the values common to layers and groups, combined with the enclosing group's.
static bool
_tile_read_layer_head(TileLoad *load, const pugi::xml_node &node, const TileLayer *group, TileLayer *layer) {
    SDL_Color tint = {255, 255, 255, 255};
    *layer = *group;
    layer->id = node.attribute("id").as_int();
    layer->name = _tile_load_text(load, node.attribute("name").value());
    layer->type = _tile_load_text(load, node.attribute("class").value());
    layer->visible = group->visible && node.attribute("visible").as_bool(true);
    layer->opacity = group->opacity * SDL_clamp(_tile_xml_number(node, "opacity", 1), 0.0f, 1.0f);
    _tile_xml_color(node.attribute("tintcolor").value(), &tint);
    layer->tint.r *= static_cast<float>(tint.r) / 255;
    layer->tint.g *= static_cast<float>(tint.g) / 255;
    layer->tint.b *= static_cast<float>(tint.b) / 255;
    layer->tint.a *= static_cast<float>(tint.a) / 255;
    layer->offset.x += _tile_xml_number(node, "offsetx", 0);
    layer->offset.y += _tile_xml_number(node, "offsety", 0);
    layer->parallax.x *= _tile_xml_number(node, "parallaxx", 1);
    layer->parallax.y *= _tile_xml_number(node, "parallaxy", 1);
    if (!layer->name || !layer->type || !_tile_load_properties(load, node, &layer->properties)) return false;
    const char *mode = node.attribute("mode").value();
    return !*mode || SDL_strcmp(mode, "normal") == 0 ||
           engine_error(
               "[TILE_WORLD] %s: layer '%s' has the blend mode %s: only normal can be drawn", load->path, layer->name,
               mode);
}

static bool
_tile_read_image_layer(TileLoad *load, const pugi::xml_node &node, const char *name, TileLayerParts *parts) {
    parts->repeat_x = node.attribute("repeatx").as_bool();
    parts->repeat_y = node.attribute("repeaty").as_bool();
    if (!node.child("image")) return true; // no image chosen yet
    parts->image = _tile_load_picture(load, node.child("image"), name);
    if (!parts->image) return false;
    const ImageAlphaMap *alpha = &parts->image->alpha;
    parts->image_opaque = image_alpha_of(alpha, {0, 0, alpha->width, alpha->height}) == IMAGE_OPAQUE;
    return true;
}

struct LayerElement {
    const char *name;
    TileLayerKind kind;
};
static constexpr LayerElement LAYER_ELEMENTS[] = {
    {"layer", TILE_LAYER_TILES}, {"objectgroup", TILE_LAYER_OBJECTS}, {"imagelayer", TILE_LAYER_IMAGE}};

static const LayerElement *_tile_layer_element(const pugi::xml_node &node) {
    for (const LayerElement &element : LAYER_ELEMENTS) {
        if (SDL_strcmp(node.name(), element.name) == 0) return &element;
    }
    return nullptr;
}

static bool _tile_is_group(const pugi::xml_node &node) { return SDL_strcmp(node.name(), "group") == 0; }

static int _tile_count_layers(const pugi::xml_node &parent, int depth) {
    int count = 0;
    for (const pugi::xml_node &node : parent.children()) {
        if (_tile_layer_element(node)) count++;
        if (_tile_is_group(node) && depth < TILE_WORLD_DEPTH_MAX) count += _tile_count_layers(node, depth + 1);
    }
    return count;
}

static bool _tile_read_layer(
    TileLoad *load, const pugi::xml_node &node, TileLayerKind kind, const TileLayer *group, TileLayer *layer,
    TileLayerParts *parts) {
    if (!_tile_read_layer_head(load, node, group, layer)) return false;
    layer->kind = kind;
    if (kind == TILE_LAYER_TILES) return _tile_load_data(load, node, layer->name, parts);
    if (kind == TILE_LAYER_IMAGE) return _tile_read_image_layer(load, node, layer->name, parts);
    return _tile_load_objects(load, node, true, &layer->objects, &layer->object_count) &&
           _tile_sort_objects(load, node, layer, parts);
}

static bool _tile_read_layers(TileLoad *load, const pugi::xml_node &parent, const TileLayer *group, TileLayer *layers) {
    Sint32 *count = &load->world->layer_count;
    if (load->depth > TILE_WORLD_DEPTH_MAX) {
        return engine_error(
            "[TILE_WORLD] %s: group '%s' is nested more than %d levels deep: reduce the nesting", load->path,
            group->name, TILE_WORLD_DEPTH_MAX);
    }
    for (const pugi::xml_node &node : parent.children()) {
        if (const LayerElement *element = _tile_layer_element(node)) {
            const Sint32 at = (*count)++;
            if (!_tile_read_layer(load, node, element->kind, group, &layers[at], &load->content->layers[at])) {
                return false;
            }
        } else if (_tile_is_group(node)) {
            TileLayer inner = {};
            if (!_tile_read_layer_head(load, node, group, &inner)) return false;
            load->depth++;
            const bool read = _tile_read_layers(load, node, &inner, layers);
            load->depth--;
            if (!read) return false;
        }
    }
    return true;
}

static bool _tile_read_all_layers(TileLoad *load, const pugi::xml_node &map) {
    const auto count = static_cast<size_t>(_tile_count_layers(map, 0));
    TileLayer *layers = _tile_load_new<TileLayer>(load, count);
    load->content->layers = _tile_load_new<TileLayerParts>(load, count);
    load->world->layers = layers;
    return layers && load->content->layers && _tile_read_layers(load, map, &ROOT_GROUP, layers);
}

// --- cells, once all tilesets are known ---

static int SDLCALL _tile_compare_cells(void *userdata, const void *a, const void *b) {
    const auto *content = static_cast<const TileContent *>(userdata);
    const auto *first = static_cast<const TileCellRef *>(a), *second = static_cast<const TileCellRef *>(b);
    const bool before = first->row != second->row ? (first->row < second->row) != content->from_bottom
                                                  : (first->col < second->col) != content->from_right;
    return first->row == second->row && first->col == second->col ? 0 : before ? -1 : 1;
}

// Counts a chunk's animated cells, and stores them unless `out` is null. Reports an error and returns -1 if a
// cell's tile is missing.
static int _tile_walk_chunk(const TileLoad *load, const char *layer, const TileChunk *chunk, TileCellRef *out) {
    const size_t count = static_cast<size_t>(chunk->cols) * static_cast<size_t>(chunk->rows);
    const TileSet *set = nullptr;
    int animated = 0;
    for (size_t i = 0; i < count; i++) {
        const Uint32 gid = chunk->cells[i], id = gid & TILE_ID_MASK;
        if (id == 0) continue;
        // Tries the previous cell's tileset first; only the last tileset contains all ids above its first.
        if (!set || id - set->first_gid >= static_cast<Uint32>(set->id_count) ||
            set != load->content->tilesets[load->content->tileset_count - 1]) {
            set = _tile_world_tileset(load->content, id);
        }
        const Uint8 kind = set ? set->kinds[id - set->first_gid] : Uint8{0};
        const int col = chunk->left + static_cast<int>(i % static_cast<size_t>(chunk->cols));
        const int row = chunk->top + static_cast<int>(i / static_cast<size_t>(chunk->cols));
        if (!(kind & TILE_EXISTS)) {
            engine_error(
                "[TILE_WORLD] %s: layer '%s' has tile %u at column %d, row %d, which is in none of the map's tilesets: "
                "erase it",
                load->path, layer, id, col, row);
            return -1;
        }
        if (!(kind & TILE_IS_ANIMATED)) continue;
        if (out) out[animated] = {col, row, gid};
        animated++;
    }
    return animated;
}

static bool _tile_find_animated(TileLoad *load, const char *name, TileLayerParts *parts) {
    int total = 0;
    for (int i = 0; i < parts->chunk_count; i++) {
        const int found = _tile_walk_chunk(load, name, &parts->chunks[i], nullptr);
        if (found < 0) return false;
        total += found;
    }
    if (total == 0) return true;
    TileCellRef *cells = _tile_load_new<TileCellRef>(load, static_cast<size_t>(total));
    if (!cells) return false;
    parts->animated = cells;
    for (int i = 0; i < parts->chunk_count; i++) {
        parts->animated_count += _tile_walk_chunk(load, name, &parts->chunks[i], cells + parts->animated_count);
    }
    SDL_qsort_r(cells, static_cast<size_t>(total), sizeof *cells, _tile_compare_cells, load->content);
    return true;
}

static bool _tile_check_cells(TileLoad *load) {
    for (int i = 0; i < load->world->layer_count; i++) {
        if (!_tile_find_animated(load, load->world->layers[i].name, &load->content->layers[i])) return false;
    }
    return true;
}

// How far tiles of any tileset extend beyond their cells. Transposed ones may be as wide as they are high.
static void _tile_measure_reach(const TileWorld *world, TileContent *content) {
    int left = 0, top = 0, right = 0, bottom = 0;
    for (int i = 0; i < content->tileset_count; i++) {
        const TileSet *set = content->tilesets[i];
        const int side = SDL_max(set->max_w, set->max_h);
        const int w = set->grid_size ? world->tile_w : side, h = set->grid_size ? world->tile_h : side;
        left = SDL_max(left, -set->offset.x);
        right = SDL_max(right, w + set->offset.x - world->tile_w);
        top = SDL_max(top, h - set->offset.y - world->tile_h);
        bottom = SDL_max(bottom, set->offset.y);
    }
    content->reach = {left, top, right, bottom};
}

static void _tile_measure_infinite(TileWorld *world, const TileContent *content) {
    int left = SDL_MAX_SINT32, top = SDL_MAX_SINT32, right = SDL_MIN_SINT32, bottom = SDL_MIN_SINT32;
    for (int i = 0; i < world->layer_count; i++) {
        const TileLayerParts *parts = &content->layers[i];
        for (int k = 0; k < parts->chunk_count; k++) {
            const TileChunk *chunk = &parts->chunks[k];
            left = SDL_min(left, chunk->left);
            top = SDL_min(top, chunk->top);
            right = SDL_max(right, chunk->left + chunk->cols);
            bottom = SDL_max(bottom, chunk->top + chunk->rows);
        }
    }
    const bool empty = left > right;
    world->left = empty ? 0 : left;
    world->top = empty ? 0 : top;
    world->cols = empty ? 0 : right - left;
    world->rows = empty ? 0 : bottom - top;
}

// --- the map ---

static bool _tile_read_map_head(TileLoad *load, const pugi::xml_node &map) {
    TileWorld *world = load->world;
    const char *orientation = map.attribute("orientation").value();
    if (*orientation && SDL_strcmp(orientation, "orthogonal") != 0) {
        return engine_error(
            "[TILE_WORLD] %s: map: its orientation is %s: only orthogonal maps can be drawn, choose that in the map's "
            "properties",
            load->path, orientation);
    }
    world->cols = map.attribute("width").as_int();
    world->rows = map.attribute("height").as_int();
    world->tile_w = map.attribute("tilewidth").as_int();
    world->tile_h = map.attribute("tileheight").as_int();
    load->content->infinite = map.attribute("infinite").as_bool();
    const bool tiles_usable = world->tile_w >= 1 && world->tile_h >= 1 && world->tile_w <= TILE_WORLD_TILE_SIZE_MAX &&
                              world->tile_h <= TILE_WORLD_TILE_SIZE_MAX;
    const bool usable = world->cols >= 1 && world->rows >= 1 && world->cols <= TILE_WORLD_COORDINATE_MAX &&
                        world->rows <= TILE_WORLD_COORDINATE_MAX;
    if (!tiles_usable || (!usable && !load->content->infinite)) {
        return engine_error(
            "[TILE_WORLD] %s: map: %dx%d tiles of %dx%d px: at least 1x1 of each, and tiles of at most %dx%d px, can "
            "be loaded",
            load->path, world->cols, world->rows, world->tile_w, world->tile_h, TILE_WORLD_TILE_SIZE_MAX,
            TILE_WORLD_TILE_SIZE_MAX);
    }
    const char *order = map.attribute("renderorder").value();
    load->content->from_right = SDL_strncmp(order, "left-", 5) == 0;
    load->content->from_bottom = SDL_strcmp(order, "right-up") == 0 || SDL_strcmp(order, "left-up") == 0;
    load->content->parallax_origin = {
        _tile_xml_number(map, "parallaxoriginx", 0), _tile_xml_number(map, "parallaxoriginy", 0)};
    _tile_xml_color(map.attribute("backgroundcolor").value(), &world->background);
    return _tile_load_properties(load, map, &world->properties);
}

static bool _tile_read_map(TileLoad *load, const pugi::xml_node &map, void *) {
    if (!_tile_read_map_head(load, map) || !_tile_read_tilesets(load, map)) return false;
    if (!_tile_read_all_layers(load, map) || !_tile_check_cells(load)) return false;
    _tile_measure_reach(load->world, load->content);
    if (load->content->infinite) _tile_measure_infinite(load->world, load->content);
    return true;
}

bool _tile_load_map(TileLoad *load) {
    const char *path = _tile_load_text(load, load->path);
    return path && _tile_load_xml(load, path, "map", _tile_read_map, nullptr);
}
