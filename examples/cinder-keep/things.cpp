#include "things.h"

#include "lumarind/toolkit/tile_world.h"

struct KindRow {
    const char *type = "";        // of the map objects
    float w = 0, h = 0;           // px; contact box, upwards from the feet
    int clip = 0, done_clip = -1; // -1: not drawn
};
static constexpr KindRow KINDS[] = {
    {.type = "ember", .w = 14, .h = 18, .clip = CLIP_EMBER},
    {.type = "heart", .w = 16, .h = 18, .clip = CLIP_HEART},
    {.type = "key", .w = 16, .h = 28, .clip = CLIP_KEY},
    {.type = "door", .w = 16, .h = 64, .clip = CLIP_DOOR},
    {.type = "checkpoint", .w = 20, .h = 40, .clip = CLIP_BRAZIER, .done_clip = CLIP_BRAZIER_LIT},
    {.type = "exit", .w = 16, .h = 40, .clip = CLIP_EXIT, .done_clip = CLIP_EXIT},
};
static_assert(SDL_arraysize(KINDS) == THING_KIND_COUNT, "one row per kind");

static constexpr float PLATFORM_W = 48, PLATFORM_H = 12; // px
static constexpr float DOOR_TOUCH = 4;                   // px added on each side of the contact box

static SDL_FRect thing_box(const Thing *thing) {
    const KindRow &row = KINDS[thing->kind];
    const float more = thing->kind == THING_DOOR ? DOOR_TOUCH : 0;
    return {thing->feet.x - row.w / 2 - more, thing->feet.y - row.h, row.w + 2 * more, row.h};
}

static bool platform_add(Things *things, const TileObject *object) {
    if (things->platform_count == PLATFORMS_MAX) return false;
    const SDL_FPoint from = {SDL_roundf(object->x - PLATFORM_W / 2), SDL_roundf(object->y)};
    const double seconds = tile_property_float(&object->properties, "seconds", 4);
    things->platforms[things->platform_count++] = {
        .box = {from.x, from.y, PLATFORM_W, PLATFORM_H},
        .prev = from,
        .from = from,
        .travel =
            {static_cast<float>(tile_property_float(&object->properties, "dx", 0)),
             static_cast<float>(tile_property_float(&object->properties, "dy", 0))},
        .time = 0,
        .cycle = 2 * SDL_max(seconds, 0.5)};
    return true;
}

bool things_add(Things *things, const TileObject *object) {
    if (SDL_strcmp(object->type, "platform") == 0) return platform_add(things, object);
    for (int kind = 0; kind < THING_KIND_COUNT && things->count < THINGS_MAX; kind++) {
        if (SDL_strcmp(KINDS[kind].type, object->type) != 0) continue;
        things->items[things->count++] = {static_cast<ThingKind>(kind), {object->x, object->y}, false};
        things->embers += kind == THING_EMBER;
        return true;
    }
    return false;
}

int things_at(const Things *things, const SDL_FRect *box, int from) {
    for (int i = from; i < things->count; i++) {
        const SDL_FRect own = thing_box(&things->items[i]);
        if (!things->items[i].done && rect_intersect_rect(&own, box)) return i;
    }
    return -1;
}

int things_find(const Things *things, ThingKind kind, int number) {
    for (int i = 0; i < things->count; i++) {
        if (things->items[i].kind == kind && number-- == 0) return i;
    }
    return -1;
}

int things_number(const Things *things, int index) {
    int number = 0;
    for (int i = 0; i < index; i++) number += things->items[i].kind == things->items[index].kind;
    return number;
}

const Animation *thing_animation(const Thing *thing, const Art *art) {
    const KindRow &row = KINDS[thing->kind];
    const int clip = thing->done ? row.done_clip : row.clip;
    return clip < 0 ? nullptr : &art->clips[clip];
}

bool things_add_solids(const Things *things, ColliderRects *solids, int first) {
    solids->count = first;
    for (int i = 0; i < things->platform_count; i++) {
        if (!colliders_rects_add(solids, &things->platforms[i].box)) return false;
    }
    for (int i = 0; i < things->count; i++) {
        if (things->items[i].kind != THING_DOOR || things->items[i].done) continue;
        const KindRow &row = KINDS[THING_DOOR];
        const SDL_FPoint feet = things->items[i].feet;
        const SDL_FRect box = {feet.x - row.w / 2, feet.y - row.h, row.w, row.h};
        if (!colliders_rects_add(solids, &box)) return false;
    }
    return true;
}

static bool platform_carries(const Platform *platform, const Hero *hero) {
    const PlayerBody *body = &hero->body;
    return body->grounded && SDL_fabsf(body->pos.y - platform->box.y) < 1.5f &&
           body->pos.x + body->w / 2 > platform->box.x && body->pos.x - body->w / 2 < platform->box.x + platform->box.w;
}

// Position at a time: eases in and out; rounded to whole pixels, so that a carried hero does not jitter.
static SDL_FPoint platform_position(const Platform *platform, double time) {
    const float progress = static_cast<float>(0.5 - 0.5 * SDL_cos(time / platform->cycle * 2 * SDL_PI_D));
    return {
        SDL_roundf(platform->from.x + platform->travel.x * progress),
        SDL_roundf(platform->from.y + platform->travel.y * progress)};
}

void platforms_step(Things *things, Hero *hero, ColliderRects *solids, int first, double dt) {
    for (int i = 0; i < things->platform_count; i++) {
        Platform *platform = &things->platforms[i];
        const SDL_FPoint to = platform_position(platform, platform->time + dt);
        const float dx = to.x - platform->box.x, dy = to.y - platform->box.y;
        const bool carries = platform_carries(platform, hero);
        const SDL_FRect moved = {to.x, to.y, platform->box.w, platform->box.h};
        const SDL_FRect body = player_body_rect(&hero->body);
        if (!carries && rect_intersect_rect(&moved, &body)) continue; // blocked: it waits
        SDL_FRect *solid = &solids->items[first + i];
        if (dy > 0) *solid = moved; // moving down: the platform first, then the hero
        if (carries) {
            const float vel_y = hero->body.vel.y;
            player_body_move_x(&hero->body, dx, solids);
            player_body_move_y(&hero->body, dy, solids);
            hero->body.vel.y = vel_y;
        }
        platform->box = *solid = moved;
        platform->time += dt;
    }
}
