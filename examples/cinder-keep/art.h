// art: the two sprite sheets, the clips by number, and drawing from them.
#pragma once

#include "lumarind/toolkit/sprite_sheet.h"

// Of sprites.json: its tags, in the order of art.cpp's table.
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

// Of knight.json.
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
    Animation clips[CLIP_COUNT]; // one for all that need not begin at a time of their own
};

bool art_load(Art *art); // false: reported; art_cleanup releases what there is
void art_cleanup(Art *art);
void art_advance(Art *art, double dt); // the shared clips
Animation art_knight(const Art *art, int clip);
Animation art_thing(const Art *art, int clip); // from its first frame

// With the feet at `feet`, in view units, `zoom` times as large.
void art_draw_thing(const Art *art, const Animation *anim, SDL_FPoint feet, float zoom, int facing = 1);
void art_draw_knight(
    const Art *art, const Animation *anim, SDL_FPoint feet, float zoom, int facing, bool ghost = false);
