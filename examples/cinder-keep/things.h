// things: level objects other than enemies: embers, hearts, the key and its door, checkpoints, the exit, and moving
// platforms, which carry the hero.
#pragma once

#include "art.h"
#include "hero.h"

struct TileObject;

enum ThingKind { THING_EMBER, THING_HEART, THING_KEY, THING_DOOR, THING_CHECKPOINT, THING_EXIT, THING_KIND_COUNT };

inline constexpr int THINGS_MAX = 224, PLATFORMS_MAX = 16;

struct Thing {
    ThingKind kind;
    SDL_FPoint feet;
    bool done; // collected, opened or lit
};

struct Platform {
    SDL_FRect box;      // current; world px
    SDL_FPoint prev;    // top-left corner before the step
    SDL_FPoint from;    // top-left corner at one end of the path
    SDL_FPoint travel;  // offset of the other end, px
    double time, cycle; // s; a cycle is there and back
};

struct Things {
    Thing items[THINGS_MAX];
    int count, embers; // embers: how many of the items are embers
    Platform platforms[PLATFORMS_MAX];
    int platform_count;
};

bool things_add(Things *things, const TileObject *object); // false: unknown type, or full
int things_at(
    const Things *things, const SDL_FRect *box, int from);         // index of the next one touched and not done, or -1
int things_find(const Things *things, ThingKind kind, int number); // index of the nth of a kind, or -1
int things_number(const Things *things, int index);                // the inverse: its number within its kind
const Animation *thing_animation(const Thing *thing, const Art *art);

// Replaces the rectangles from `first` on with the platforms and closed doors. Reports errors.
bool things_add_solids(const Things *things, ColliderRects *solids, int first);
// Moves the platforms and the hero standing on one; a platform blocked by the hero waits. Call before hero_step.
void platforms_step(Things *things, Hero *hero, ColliderRects *solids, int first, double dt);
