// animation_set: sprite sheets as a sprite editor exports them, a JSON file beside its picture, read into an animation
// set: tags become clips; frames may be packed, trimmed and last differently. Main thread only.
#pragma once

#include "lumarind/toolkit/animation.h"

// What a slice says from one frame on; px of the untrimmed frame.
struct AnimationSliceKey {
    Sint32 frame; // of the sheet
    SDL_Rect bounds;
    SDL_Rect center; // of a nine-patch, within the bounds; empty without one
    SDL_Point pivot; // within the bounds
    bool has_pivot;
};

struct AnimationSlice {
    const char *name, *data;       // never null
    const AnimationSliceKey *keys; // by rising frame
    Sint32 key_count;
};

// From a game file; the picture's path in it is relative to it. A tag's clip loops unless it has a repeat count;
// reverse and ping-pong ones list their frames in the order they are played. Without tags, all frames are one clip,
// "all". The caller owns the set, and it has to outlive the sheets and animations made of it. Null: reported, with the
// file, the key and what to do about it.
// Where files are followed (toolkit/reload.h), the set takes over what its changed file holds, once all sheets made of
// it fit: it stays where it is, but pointers to its clips, frames and slices end here. A version that is broken, has
// fewer clips or does not fit its picture changes nothing and is reported once.
AnimationSet *animation_set_load(const char *path);
void animation_set_cleanup(
    AnimationSet **set); // of a loaded set; nulls the caller's pointer; null pointers are ignored

// --- slices: of loaded sets ---
const AnimationSlice *animation_set_find_slice(const AnimationSet *set, const char *name); // null: none
const AnimationSliceKey *animation_slice_at(const AnimationSlice *slice, int frame); // null: not there yet, or null
