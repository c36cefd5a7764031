// Tilesets: one image divided into tiles, or one image per tile.
#include "lumarind/core/error.h"
#include "lumarind/toolkit/tile_grid.h"
#include "toolkit/tile_world_internal.h"

#include <SDL3/SDL_error.h>

#include <iterator>
#include <pugixml.hpp>
#include <utility>

static bool _tile_set_error(const TileLoad *load, const TileSet *set, const char *what) {
    return engine_error("[TILE_WORLD] %s: tileset '%s': %s", load->path, set->name, what);
}

// --- one image ---

static SDL_Rect _tile_sheet_rect(const TileSet *set, int id) {
    return {
        set->margin + id % set->columns * (set->tile_w + set->spacing),
        set->margin + id / set->columns * (set->tile_h + set->spacing), set->tile_w, set->tile_h};
}

static bool _tile_measure_sheet(TileLoad *load, const pugi::xml_node &node, TileSet *set) {
    const int columns = (set->texture->width - set->margin + set->spacing) / (set->tile_w + set->spacing);
    const int rows = (set->texture->height - set->margin + set->spacing) / (set->tile_h + set->spacing);
    const int declared = node.attribute("columns").as_int(columns);
    if (columns < 1 || rows < 1) return _tile_set_error(load, set, "its image is smaller than one tile");
    if (declared != columns) {
        return engine_error(
            "[TILE_WORLD] %s: tileset '%s' has %d columns, but its image, %d px wide, has %d: save the tileset again",
            load->path, set->name, declared, set->texture->width, columns);
    }
    if (columns > TILE_WORLD_TILES_MAX / rows) {
        return engine_error(
            "[TILE_WORLD] %s: tileset '%s' would have %d times %d tiles: at most %d can be loaded, divide it",
            load->path, set->name, columns, rows, TILE_WORLD_TILES_MAX);
    }
    set->columns = columns;
    set->id_count = columns * rows;
    set->max_w = set->tile_w;
    set->max_h = set->tile_h;
    return true;
}

static bool _tile_read_sheet(TileLoad *load, const pugi::xml_node &node, TileSet *set) {
    set->texture = _tile_load_picture(load, node.child("image"), set->name);
    if (!set->texture || !_tile_measure_sheet(load, node, set)) return false;
    set->kinds = _tile_load_new<Uint8>(load, static_cast<size_t>(set->id_count));
    if (!set->kinds) return false;
    for (int id = 0; id < set->id_count; id++) {
        const ImageAlpha alpha = image_alpha_of(&set->texture->alpha, _tile_sheet_rect(set, id));
        set->kinds[id] = static_cast<Uint8>(TILE_EXISTS | alpha);
    }
    return true;
}

// --- one image per tile ---

static bool _tile_measure_pictures(TileLoad *load, const pugi::xml_node &node, TileSet *set) {
    for (const pugi::xml_node &tile : node.children("tile")) {
        const int id = tile.attribute("id").as_int(-1);
        if (id < 0 || id >= TILE_WORLD_TILES_MAX) {
            return engine_error(
                "[TILE_WORLD] %s: tileset '%s' has a tile with the id '%s': ids must be 0 to %d, create the tileset "
                "again",
                load->path, set->name, tile.attribute("id").value(), TILE_WORLD_TILES_MAX - 1);
        }
        set->id_count = SDL_max(set->id_count, id + 1);
    }
    if (set->id_count == 0) return _tile_set_error(load, set, "it has neither an image nor tiles: remove it");
    set->kinds = _tile_load_new<Uint8>(load, static_cast<size_t>(set->id_count));
    return set->kinds != nullptr;
}

static bool _tile_read_picture(TileLoad *load, const pugi::xml_node &tile, TileSet *set, TileInfo *info) {
    const pugi::xml_node image = tile.child("image");
    if (!image) return _tile_set_error(load, set, "a tile has no image: add one, or remove the tile");
    info->texture = _tile_load_picture(load, image, set->name);
    if (!info->texture) return false;
    const SDL_Rect whole = {0, 0, info->texture->width, info->texture->height};
    const SDL_Rect part = {
        tile.attribute("x").as_int(), tile.attribute("y").as_int(), tile.attribute("width").as_int(whole.w),
        tile.attribute("height").as_int(whole.h)};
    if (!SDL_GetRectIntersection(&whole, &part, &info->src)) {
        return _tile_set_error(load, set, "a tile is outside its image: save the tileset again");
    }
    set->max_w = SDL_max(set->max_w, info->src.w);
    set->max_h = SDL_max(set->max_h, info->src.h);
    set->kinds[info->id] = static_cast<Uint8>(TILE_EXISTS | image_alpha_of(&info->texture->alpha, info->src));
    return true;
}

// --- data of single tiles ---

static bool _tile_read_frames(TileLoad *load, const pugi::xml_node &animation, TileInfo *info) {
    size_t count = 0;
    for (const pugi::xml_node &frame : animation.children("frame")) count += frame ? 1 : 0;
    if (count == 0) return true;
    TileFrame *frames = _tile_load_new<TileFrame>(load, count);
    if (!frames) return false;
    info->frames = frames;
    for (const pugi::xml_node &frame : animation.children("frame")) {
        constexpr int MS_MAX = 60 * 60 * 1000; // the sum of 596 frames fits an int
        const int ms = SDL_clamp(frame.attribute("duration").as_int(), 1, MS_MAX);
        frames[info->frame_count++] = {frame.attribute("tileid").as_int(-1), ms};
        info->loop_ms = ms > SDL_MAX_SINT32 - info->loop_ms ? SDL_MAX_SINT32 : info->loop_ms + ms;
    }
    return true;
}

static bool _tile_read_info(TileLoad *load, const pugi::xml_node &tile, TileSet *set, TileInfo *info) {
    const pugi::xml_attribute type = tile.attribute("type");
    info->id = tile.attribute("id").as_int(-1);
    info->type = _tile_load_text(load, type ? type.value() : tile.attribute("class").value());
    if (info->id < 0 || info->id >= set->id_count) {
        return engine_error(
            "[TILE_WORLD] %s: tileset '%s' refers to a tile with the id '%s', but has %d tiles: save the tileset again",
            load->path, set->name, tile.attribute("id").value(), set->id_count);
    }
    return info->type && (set->texture || _tile_read_picture(load, tile, set, info)) &&
           _tile_load_properties(load, tile, &info->properties) &&
           _tile_load_objects(load, tile.child("objectgroup"), false, &info->shapes, &info->shape_count) &&
           _tile_read_frames(load, tile.child("animation"), info);
}

static bool _tile_read_tile(TileLoad *load, const pugi::xml_node &tile, TileSet *set, TileInfo *info) {
    if (!_tile_read_info(load, tile, set, info)) return false;
    if (info->shape_count > 0) set->kinds[info->id] |= TILE_HAS_SHAPES;
    if (info->frame_count > 0) set->kinds[info->id] |= TILE_IS_ANIMATED;
    return true;
}

static int SDLCALL _tile_compare_infos(const void *a, const void *b) {
    return static_cast<const TileInfo *>(a)->id - static_cast<const TileInfo *>(b)->id;
}

static bool _tile_check_frames(const TileLoad *load, const TileSet *set) {
    for (int i = 0; i < set->info_count; i++) {
        const TileInfo *info = &set->infos[i];
        for (int k = 0; k < info->frame_count; k++) {
            const int id = info->frames[k].id;
            if (id >= 0 && id < set->id_count && set->kinds[id] & TILE_EXISTS) continue;
            return engine_error(
                "[TILE_WORLD] %s: tileset '%s': the animation of tile %d shows tile %d, which does not exist: remove "
                "that frame",
                load->path, set->name, info->id, id);
        }
    }
    return true;
}

static bool _tile_read_infos(TileLoad *load, const pugi::xml_node &node, TileSet *set) {
    size_t count = 0;
    for (const pugi::xml_node &tile : node.children("tile")) count += tile ? 1 : 0;
    if (count == 0) return true;
    TileInfo *infos = _tile_load_new<TileInfo>(load, count);
    if (!infos) return false;
    set->infos = infos;
    for (const pugi::xml_node &tile : node.children("tile")) {
        if (!_tile_read_tile(load, tile, set, &infos[set->info_count++])) return false;
    }
    SDL_qsort(infos, count, sizeof *infos, _tile_compare_infos);
    return _tile_check_frames(load, set);
}

const TileInfo *_tile_set_info(const TileSet *set, int id) {
    TileInfo key = {};
    key.id = id;
    if (set->info_count == 0) return nullptr;
    return static_cast<const TileInfo *>(
        SDL_bsearch(&key, set->infos, static_cast<size_t>(set->info_count), sizeof key, _tile_compare_infos));
}

SDL_Point _tile_size(const TileSet *set, const TileInfo *info) {
    return set->texture || !info ? SDL_Point{set->tile_w, set->tile_h} : SDL_Point{info->src.w, info->src.h};
}

SDL_FRect _tile_cell_box(const TileWorld *world, const TileSet *set, SDL_Point size, Uint32 gid, int col, int row) {
    const float cell_w = static_cast<float>(world->tile_w), cell_h = static_cast<float>(world->tile_h);
    const float left = static_cast<float>(col) * cell_w + static_cast<float>(set->offset.x);
    const float bottom = static_cast<float>(row + 1) * cell_h + static_cast<float>(set->offset.y);
    float w = static_cast<float>(size.x), h = static_cast<float>(size.y);
    if (gid & TILE_FLIP_D) std::swap(w, h);
    if (!set->grid_size) return {left, bottom - h, w, h};
    if (!set->keep_aspect) return {left, bottom - cell_h, cell_w, cell_h};
    const float scale = SDL_min(cell_w / w, cell_h / h);
    return {left + (cell_w - w * scale) / 2, bottom - cell_h + (cell_h - h * scale) / 2, w * scale, h * scale};
}

// --- tilesets ---

struct AlignmentName {
    const char *name;
    SDL_FPoint anchor;
};
static constexpr AlignmentName ALIGNMENTS[] = {
    {"topleft", {0, 0}},      {"top", {0.5f, 0}},   {"topright", {1, 0}},  {"left", {0, 0.5f}},
    {"center", {0.5f, 0.5f}}, {"right", {1, 0.5f}}, {"bottom", {0.5f, 1}}, {"bottomright", {1, 1}},
};

static SDL_FPoint _tile_alignment(const char *name) {
    for (const AlignmentName &row : ALIGNMENTS) {
        if (SDL_strcmp(row.name, name) == 0) return row.anchor;
    }
    return {0, 1}; // bottom left
}

static bool _tile_read_head(TileLoad *load, const pugi::xml_node &node, TileSet *set) {
    const pugi::xml_node offset = node.child("tileoffset");
    const auto bounded = [](int length) {
        return SDL_clamp(length, -TILE_WORLD_TILE_SIZE_MAX, TILE_WORLD_TILE_SIZE_MAX);
    };
    set->name = _tile_load_text(load, node.attribute("name").value());
    if (!set->name) return false;
    set->tile_w = node.attribute("tilewidth").as_int();
    set->tile_h = node.attribute("tileheight").as_int();
    set->spacing = bounded(SDL_max(node.attribute("spacing").as_int(), 0));
    set->margin = bounded(SDL_max(node.attribute("margin").as_int(), 0));
    set->offset = {bounded(offset.attribute("x").as_int()), bounded(offset.attribute("y").as_int())};
    set->object_anchor = _tile_alignment(node.attribute("objectalignment").value());
    set->grid_size = SDL_strcmp(node.attribute("tilerendersize").value(), "grid") == 0;
    set->keep_aspect = SDL_strcmp(node.attribute("fillmode").value(), "preserve-aspect-fit") == 0;
    const bool usable = set->tile_w >= 1 && set->tile_h >= 1 && set->tile_w <= TILE_WORLD_TILE_SIZE_MAX &&
                        set->tile_h <= TILE_WORLD_TILE_SIZE_MAX;
    return usable || engine_error(
                         "[TILE_WORLD] %s: tileset '%s': tiles of %dx%d px: 1x1 to %dx%d can be loaded", load->path,
                         set->name, set->tile_w, set->tile_h, TILE_WORLD_TILE_SIZE_MAX, TILE_WORLD_TILE_SIZE_MAX);
}

static bool _tile_read_tileset(TileLoad *load, const pugi::xml_node &node, void *result) {
    auto *set = static_cast<TileSet *>(result);
    if (!_tile_read_head(load, node, set)) return false;
    const bool is_sheet = node.child("image");
    return (is_sheet ? _tile_read_sheet(load, node, set) : _tile_measure_pictures(load, node, set)) &&
           _tile_read_infos(load, node, set);
}

static bool _tile_read_tileset_file(TileLoad *load, const pugi::xml_node &root, void *result) {
    if (!root.attribute("source")) return _tile_read_tileset(load, root, result);
    return engine_error(
        "[TILE_WORLD] %s: an external tileset refers to another one (%s): refer to that one in the map", load->path,
        root.attribute("source").value());
}

const TileSet *_tile_load_tileset(TileLoad *load, const pugi::xml_node &node, Uint32 first_gid) {
    const pugi::xml_attribute source = node.attribute("source");
    TileSet *set = _tile_load_new<TileSet>(load);
    if (!set) return nullptr;
    set->first_gid = first_gid;
    set->path = source ? _tile_load_resolve(load, "tileset", source.value()) : _tile_load_text(load, "");
    if (!set->path) return nullptr;
    const bool read = source ? _tile_load_xml(load, set->path, "tileset", _tile_read_tileset_file, set)
                             : _tile_read_tileset(load, node, set);
    return read ? set : nullptr;
}
