#include "lumarind/toolkit/tile_world.h"

#include "lumarind/core/error.h"
#include "lumarind/toolkit/tile_grid.h"
#include "toolkit/tile_world_internal.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_log.h>

// --- lifetime ---

// Loads into an empty world. Reports errors and then leaves it empty.
static bool _tile_world_fill(TileWorld *world, SDL_Renderer *renderer, const char *path) {
    TileWorldParts *parts = world->parts;
    TileLoad load = {};
    load.renderer = renderer;
    load.world = world;
    load.content = &parts->content;
    load.path = path;
    if (_tile_load_map(&load)) return true;
    _tile_content_cleanup(&parts->content);
    *world = {};
    world->parts = parts;
    return false;
}

static TileWorld *_tile_world_new(SDL_Renderer *renderer, const char *path) {
    auto *world = static_cast<TileWorld *>(SDL_calloc(1, sizeof(TileWorld)));
    if (world) world->parts = static_cast<TileWorldParts *>(SDL_calloc(1, sizeof(TileWorldParts)));
    if (world && world->parts) world->parts->path = SDL_strdup(path);
    if (!world || !world->parts || !world->parts->path) {
        engine_error("[TILE_WORLD] Memory allocation failed, error: %s", SDL_GetError());
        tile_world_cleanup(&world);
        return nullptr;
    }
    world->parts->renderer = renderer;
    world->parts->cache = _tile_cache_new(renderer);
    if (!world->parts->cache) tile_world_cleanup(&world);
    return world;
}

TileWorld *tile_world_load(SDL_Renderer *renderer, const char *path) {
    if (!renderer || !path) {
        engine_error("[TILE_WORLD] No renderer or no path given");
        return nullptr;
    }
    TileWorld *world = _tile_world_new(renderer, path);
    if (world && !_tile_world_fill(world, renderer, path)) tile_world_cleanup(&world);
    return world;
}

// --- hot reload ---

// Updates the stamps, so that an invalid version is tried only once.
static bool _tile_world_files_changed(TileContent *content) {
    bool changed = false;
    for (TileSourceFile *file = content->files; file; file = file->next) {
        const FileStamp now = _tile_file_stamp(file);
        changed = changed || !file_stamp_same(now, file->stamp);
        file->stamp = now;
    }
    return changed;
}

void _tile_world_follow_files(TileWorld *world) {
    TileWorldParts *parts = world->parts;
    if (!reload_is_due(&parts->checked_ms) || !_tile_world_files_changed(&parts->content)) return;
    TileWorldParts fresh_parts = {};
    TileWorld fresh = {};
    fresh.parts = &fresh_parts;
    if (!_tile_world_fill(&fresh, parts->renderer, parts->path)) return;
    _tile_cache_clear(parts->cache);
    _tile_content_cleanup(&parts->content);
    parts->content = fresh_parts.content;
    fresh.parts = parts;
    fresh.generation = world->generation + 1;
    *world = fresh;
    SDL_Log("[TILE_WORLD] Reloaded: %s", parts->path);
}

// --- end ---

void tile_world_cleanup(TileWorld **world) {
    if (!world || !*world) return;
    if (TileWorldParts *parts = (*world)->parts) {
        _tile_cache_free(parts->cache);
        _tile_content_cleanup(&parts->content);
        SDL_free(parts->path);
        SDL_free(parts);
    }
    SDL_free(*world);
    *world = nullptr;
}

// --- queries ---

int tile_world_find_layer(const TileWorld *world, const char *name) {
    for (int i = 0; i < world->layer_count; i++) {
        if (SDL_strcmp(world->layers[i].name, name) == 0) return i;
    }
    return -1;
}

template <typename Is> static const TileObject *_tile_world_first_object(const TileWorld *world, Is is) {
    for (int i = 0; i < world->layer_count; i++) {
        const TileLayer *layer = &world->layers[i];
        for (int k = 0; k < layer->object_count; k++) {
            if (is(&layer->objects[k])) return &layer->objects[k];
        }
    }
    return nullptr;
}

const TileObject *tile_world_find_object(const TileWorld *world, const char *name) {
    return _tile_world_first_object(world, [name](const TileObject *o) { return SDL_strcmp(o->name, name) == 0; });
}

const TileObject *tile_world_object(const TileWorld *world, int id) {
    return _tile_world_first_object(world, [id](const TileObject *o) { return o->id == id; });
}

Uint32 tile_world_gid(const TileWorld *world, int layer, int col, int row) {
    if (layer < 0 || layer >= world->layer_count) return 0;
    const TileLayerParts *parts = &world->parts->content.layers[layer];
    for (int i = 0; i < parts->chunk_count; i++) {
        const TileChunk *chunk = &parts->chunks[i];
        const Sint64 x = Sint64{col} - chunk->left, y = Sint64{row} - chunk->top;
        if (x >= 0 && x < chunk->cols && y >= 0 && y < chunk->rows) return chunk->cells[y * chunk->cols + x];
    }
    return 0;
}

static const TileInfo *_tile_world_info(const TileWorld *world, Uint32 gid) {
    const TileSet *set = _tile_world_tileset(&world->parts->content, gid);
    return set ? _tile_set_info(set, static_cast<int>((gid & TILE_ID_MASK) - set->first_gid)) : nullptr;
}

const TileProperties *tile_world_tile_properties(const TileWorld *world, Uint32 gid) {
    static constexpr TileProperties NONE = {};
    const TileInfo *info = _tile_world_info(world, gid);
    return info ? &info->properties : &NONE;
}

const char *tile_world_tile_type(const TileWorld *world, Uint32 gid) {
    const TileInfo *info = _tile_world_info(world, gid);
    return info ? info->type : "";
}
