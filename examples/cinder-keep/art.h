// art: the two sprite sheets, their clip numbers, and sprite drawing.
#pragma once

#include "lumarind/toolkit/sprite_sheet.h"

// Clips of sprites.json, in the order of its tags.
enum ThingClip {
    CLIP_EMBER,
    CLIP_HEART,
    CLIP_KEY,
    CLIP_DOOR,
    CLIP_PLATFORM,
    CLIP_BRAZIER,
    CLIP_BRAZIER_LIT,
    CLIP_EXIT,
    CLIP_FIREBALL,
    CLIP_WALKER,
    CLIP_WALKER_HIT,
    CLIP_HOPPER_SIT,
    CLIP_HOPPER_CROUCH,
    CLIP_HOPPER_AIR,
    CLIP_HOPPER_HIT,
    CLIP_WATCHER,
    CLIP_WATCHER_CHARGE,
    CLIP_WATCHER_HIT,
    CLIP_COUNT,
};

// Clips of knight.json.
enum KnightClip {
    KNIGHT_IDLE,
    KNIGHT_RUN,
    KNIGHT_UP,
    KNIGHT_DOWN,
    KNIGHT_AIR_STRIKE,
    KNIGHT_ROLL,
    KNIGHT_STRIKE,
    KNIGHT_SPECIAL,
    KNIGHT_HURT,
    KNIGHT_DEATH,
    KNIGHT_COUNT,
};

struct Art {
    AnimationSet *things, *knight; // owned, as are the sheets
    SpriteSheet *things_sheet, *knight_sheet;
    Animation clips[CLIP_COUNT]; // shared by objects that play in sync
};

bool art_load(Art *art); // reports errors; art_cleanup releases a partial load
void art_cleanup(Art *art);
void art_advance(Art *art, double dt); // the shared clips
Animation art_knight(const Art *art, int clip);
Animation art_thing(const Art *art, int clip); // from its first frame

// Draws with the feet at `feet`, in view units, scaled by `zoom`.
void art_draw_thing(const Art *art, const Animation *anim, SDL_FPoint feet, float zoom, int facing = 1);
void art_draw_knight(
    const Art *art, const Animation *anim, SDL_FPoint feet, float zoom, int facing, bool ghost = false);
