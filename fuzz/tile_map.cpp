// Files of a map editor. The input is a map, optionally followed by a tileset and a template, each after a separator.
#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/tile_grid.h"
#include "lumarind/toolkit/tile_world.h"

#include <SDL3/SDL_render.h>

#include <cmath>
#include <string_view>

static constexpr std::string_view NEXT_FILE = "<!--next-->";

static void set_files(std::string_view input) {
    const char *suffixes[] = {".tmx", ".tsx", ".tx"};
    for (const char *suffix : suffixes) {
        const size_t end = input.find(NEXT_FILE);
        const std::string_view file = input.substr(0, end);
        const auto *data = reinterpret_cast<const uint8_t *>(file.data());
        if (suffix == suffixes[0]) fuzz_set_game_file(data, file.size());
        fuzz_set_game_file_by_suffix(suffix, data, file.size());
        input = end == input.npos ? std::string_view() : input.substr(end + NEXT_FILE.size());
    }
}

static void walk_properties(const TileProperties *properties) {
    for (int i = 0; i < properties->count; i++) {
        const TileProperty *property = &properties->items[i];
        fuzz_check(tile_property_find(properties, property->name) != nullptr, "a property is found by its name");
        fuzz_check(property->text && std::isfinite(property->number), "a property has a text and a number");
        fuzz_note_text(property->text);
        fuzz_note(property->type, property->number);
        const char *name = property->name; // read as every type
        const SDL_Color color = tile_property_color(properties, name, {1, 2, 3, 4});
        fuzz_note_text(tile_property_string(properties, name, "none"));
        fuzz_note(
            tile_property_int(properties, name, 4), tile_property_float(properties, name, 5),
            tile_property_bool(properties, name, true), color.r, color.g, color.b, color.a);
    }
}

static void walk_objects(const TileWorld *world, const TileLayer *layer) {
    for (int i = 0; i < layer->object_count; i++) {
        const TileObject *object = &layer->objects[i];
        fuzz_check(object->name && object->type && object->text, "an object's strings are never null");
        fuzz_check(
            object->opacity >= 0 && object->opacity <= 1 && object->width >= 0, "an object's numbers are in range");
        fuzz_check(tile_world_object(world, object->id) != nullptr, "an object is found by its id");
        const TileObject *named = tile_world_find_object(world, object->name);
        fuzz_check(named && std::string_view(named->name) == object->name, "an object is found by its name");
        for (const char *text : {object->name, object->type, object->text}) fuzz_note_text(text);
        fuzz_note(
            object->shape, object->id, object->x, object->y, object->width, object->height, object->rotation,
            object->opacity, object->visible, object->gid);
        for (int k = 0; k < object->point_count; k++) {
            fuzz_note(object->points[k].x, object->points[k].y);
            fuzz_check(std::isfinite(object->points[k].x + object->points[k].y), "points are finite");
        }
        walk_properties(&object->properties);
    }
}

static void walk(const TileWorld *world) {
    walk_properties(&world->properties);
    fuzz_note(world->cols, world->rows, world->left, world->top, world->tile_w, world->tile_h);
    for (const int layer : {-1, static_cast<int>(world->layer_count)}) // no such layer
        fuzz_note(tile_world_gid(world, layer, 0, 0), tile_world_find_open(world, layer, {0, 0, 1, 1}));
    fuzz_note(world->background.r, world->background.g, world->background.b, world->background.a);
    for (int i = 0; i < world->layer_count; i++) {
        const TileLayer *layer = &world->layers[i];
        fuzz_check(tile_world_find_layer(world, layer->name) >= 0, "a layer is found by its name");
        fuzz_check(layer->opacity >= 0 && layer->opacity <= 1, "an opacity is in range");
        for (const char *text : {layer->name, layer->type}) fuzz_note_text(text);
        fuzz_note(
            layer->kind, layer->id, layer->visible, layer->opacity, layer->offset.x, layer->offset.y, layer->parallax.x,
            layer->parallax.y, layer->tint.r, layer->tint.g, layer->tint.b, layer->tint.a);
        walk_properties(&layer->properties);
        walk_objects(world, layer);
        for (int cell = 0; cell < SDL_min(world->cols * Sint64{world->rows}, 1000); cell++) {
            const int col = world->left + cell % world->cols, row = world->top + cell / world->cols;
            const Uint32 gid = tile_world_gid(world, i, col, row);
            const auto px = [](int at, int size) { return static_cast<float>(at) * static_cast<float>(size); };
            const SDL_FRect area = {
                px(col, world->tile_w), px(row, world->tile_h), px(1, world->tile_w), px(1, world->tile_h)};
            fuzz_note(gid, tile_world_find_open(world, i, area));
            fuzz_note_text(tile_world_tile_type(world, gid));
            walk_properties(tile_world_tile_properties(world, gid));
        }
    }
}

static void collide(const TileWorld *world) {
    ColliderRects rects = {};
    ColliderTris tris = {};
    for (int i = -1; i < world->layer_count; i++) {
        const int rects_before = rects.count, tris_before = tris.count, errors = fuzz_logged_errors();
        fuzz_load_begins();
        const bool made = tile_world_colliders(world, i < 0 ? nullptr : world->layers[i].name, &rects, &tris);
        fuzz_load_ends();
        fuzz_check(made || fuzz_logged_errors() == errors + 1, "rejected shapes are reported once");
        fuzz_check(
            made || (rects.count == rects_before && tris.count == tris_before),
            "rejected shapes leave the sets unchanged");
    }
    tile_world_colliders(world, nullptr, &rects, nullptr);
    tile_world_colliders(world, nullptr, nullptr, &tris);
    if (world->layer_count == 0)
        fuzz_check(!tile_world_colliders(world, "no such layer", &rects, &tris), "layers are found by their names");
    for (int i = 0; i < rects.count; i++) {
        const SDL_FRect r = rects.items[i];
        fuzz_note(r.x, r.y, r.w, r.h);
    }
    for (int i = 0; i < tris.count; i++) {
        const Tri t = tris.items[i];
        fuzz_note(t.a.x, t.a.y, t.b.x, t.b.y, t.c.x, t.c.y);
    }
    colliders_rects_cleanup(&rects);
    colliders_tris_cleanup(&tris);
}

static void draw(TileWorld *world) {
    const TileWorldView views[] = {
        {{0, 0, 320, 240}, 1},
        {{static_cast<float>(world->left * world->tile_w) - 20, static_cast<float>(world->top * world->tile_h), 100,
          80},
         3},
        {{-5.5f, 7, 640, 480}, 0.5f}};
    for (const TileWorldView &view : views) {
        const int errors = fuzz_logged_errors();
        fuzz_load_begins();
        const bool drawn = tile_world_draw(engine_renderer(), world, &view);
        fuzz_load_ends();
        fuzz_check(drawn || fuzz_logged_errors() > errors, "a world can be drawn, or it is reported");
        fuzz_note(drawn);
        tile_world_advance(world, 0.05);
    }
    SDL_FlushRenderer(engine_renderer());
}

int fuzz_tile_map(const uint8_t *data, size_t size) {
    fuzz_start_engine();
    fuzz_save_picture("levels/one/tiles.png");
    set_files({reinterpret_cast<const char *>(data), size});
    fuzz_load_begins();
    TileWorld *world = tile_world_load(engine_renderer(), "levels/one/map.tmx");
    fuzz_load_ends();
    fuzz_check(world || fuzz_logged_errors() == 1, "a map that does not load is reported once");
    if (world) {
        walk(world);
        collide(world);
        draw(world);
    }
    tile_world_cleanup(&world);
    return 0;
}
