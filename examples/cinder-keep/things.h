// things: what lies, stands and moves in a level besides foes: embers, hearts, the key and its door, checkpoints, the
// exit, and moving platforms, which carry the hero.
#pragma once

#include "art.h"
#include "hero.h"

struct TileObject;

enum ThingKind { THING_EMBER, THING_HEART, THING_KEY, THING_DOOR, THING_CHECKPOINT, THING_EXIT, THING_KIND_COUNT };

inline constexpr int THINGS_MAX = 224, PLATFORMS_MAX = 16;

struct Thing {
    ThingKind kind;
    SDL_FPoint feet;
    bool done; // taken, opened or lit
};

struct Platform {
    SDL_FRect box;      // now; world px
    SDL_FPoint prev;    // its corner before the step
    SDL_FPoint from;    // its corner at one end of its way
    SDL_FPoint way;     // to the other end, px
    double time, cycle; // s; there and back
};

struct Things {
    Thing items[THINGS_MAX];
    int count, embers; // embers: in the level
    Platform platforms[PLATFORMS_MAX];
    int platform_count;
};

bool things_add(Things *things, const TileObject *object); // false: of no kind here, or there is no room
int things_at(
    const Things *things, const SDL_FRect *box, int from);         // the next one not done that the box touches, or -1
int things_find(const Things *things, ThingKind kind, int number); // the number-th of its kind, or -1
int things_number(const Things *things, int index);                // which of its kind it is
const Animation *thing_look(const Thing *thing, const Art *art);

// What blocks besides the map: closed doors and platforms. Replaces the rectangles from `first` on. False: no memory.
bool things_add_solids(const Things *things, ColliderRects *solids, int first);
// Moves the platforms and whom they carry; they wait for one who is in their way. Before the hero's step.
void platforms_step(Things *things, Hero *hero, ColliderRects *solids, int first, double dt);
