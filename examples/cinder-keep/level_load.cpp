// level_load: creates a level from its map and the saved run.

#include "level.h"
#include "lumarind/core/error.h"
#include "lumarind/engine/engine.h"
#include "progress.h"

static constexpr const char *PATHS[] = {"assets/levels/level-1.tmx", "assets/levels/level-2.tmx"};
static_assert(SDL_arraysize(PATHS) == LEVEL_COUNT, "one map per level");

static bool level_add_object(Level *level, const TileObject *object) {
    const int facing = tile_property_int(&object->properties, "facing", 1);
    if (SDL_strcmp(object->type, "spawn") == 0) {
        level->spawn = {object->x, object->y};
    } else if (SDL_strcmp(object->type, "sign") == 0 && level->sign_count < SIGNS_MAX) {
        level->signs[level->sign_count++] = {
            {object->x, object->y, object->width, object->height},
            tile_property_string(&object->properties, "text", ""),
            tile_property_bool(&object->properties, "until_key", false)};
    } else if (
        !things_add(&level->things, object) &&
        !enemies_add(&level->enemies, &level->art, object->type, {object->x, object->y}, facing)) {
        return engine_error(
            "[LEVEL] %s: object %d has an unknown type: \"%s\"", PATHS[level->number], object->id, object->type);
    }
    return true;
}

static bool level_add_objects(Level *level) {
    for (int i = 0; i < level->world->layer_count; i++) {
        const TileLayer &layer = level->world->layers[i];
        for (int n = 0; n < layer.object_count; n++) {
            if (!level_add_object(level, &layer.objects[n])) return false;
        }
    }
    return level->spawn.x > 0 || engine_error("[LEVEL] %s: there is no object of type spawn", PATHS[level->number]);
}

static void level_restore_run(Level *level) {
    const RunProgress &run = progress.run;
    for (int i = 0, ember = 0; i < level->things.count; i++) {
        Thing *thing = &level->things.items[i];
        if (thing->kind == THING_EMBER) {
            thing->done = run.embers[ember / 64 % PROGRESS_WORDS] >> ember % 64 & 1;
            level->embers += thing->done;
            ember++;
        }
        if (thing->kind == THING_KEY) thing->done = run.has_key || run.door_open;
        if (thing->kind == THING_DOOR) thing->done = run.door_open;
    }
    level->hero.has_key = run.has_key;
    level->checkpoint = things_find(&level->things, THING_CHECKPOINT, run.checkpoint);
    if (level->checkpoint >= 0) level->things.items[level->checkpoint].done = true;
    level->time = static_cast<double>(run.ms) / 1000;
    level->deaths = run.deaths;
    level->whole_run = false;
}

bool level_load(Level *level, int number, bool from_checkpoint) {
    level->number = number;
    level->checkpoint = -1;
    level->whole_run = true;
    if (!art_load(&level->art) || !ghost_setup(&level->ghost) || !ghost_setup(&level->best)) return false;
    TileWorld *world = level->world = tile_world_load(engine_renderer(), PATHS[number]);
    if (!world || !level_add_objects(level)) return false;
    if (!tile_world_colliders(world, "castle", &level->solids, nullptr)) return false;
    if (!tile_world_colliders(world, "hazards", &level->hazards, nullptr)) return false;
    level->map_solids = level->solids.count;
    if (!things_add_solids(&level->things, &level->solids, level->map_solids)) return false;
    level->generation = world->generation;
    level->layer_castle = tile_world_find_layer(world, "castle");
    level->layer_hazards = tile_world_find_layer(world, "hazards");
    level->seconds_to_beat = tile_property_float(&world->properties, "seconds", 0);
    ghost_load(&level->best, number);
    if (from_checkpoint && progress.run.level == number) level_restore_run(level);
    view_reset(
        &level->view,
        {0, 0, static_cast<float>(world->cols * world->tile_w), static_cast<float>(world->rows * world->tile_h)});
    level->hero.body.facing = 1;
    level_back_to_checkpoint(level);
    level->hero.flames = level->whole_run ? 0 : HERO_FLAMES;
    return true;
}

void level_cleanup(Level *level) {
    ghost_cleanup(&level->ghost);
    ghost_cleanup(&level->best);
    colliders_rects_cleanup(&level->solids);
    colliders_rects_cleanup(&level->hazards);
    tile_world_cleanup(&level->world);
    art_cleanup(&level->art);
}
