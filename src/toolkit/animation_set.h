// animation_set: loads sprite sheets exported by a sprite editor (JSON with an image) as animation sets: tags become
// clips; frames may be packed, trimmed and of different durations. Main thread only.
#pragma once

#include "lumarind/toolkit/animation.h"

// A slice's values from one frame on, in px of the untrimmed frame.
struct AnimationSliceKey {
    Sint32 frame; // of the sheet
    SDL_Rect bounds;
    SDL_Rect center; // of a nine-patch, within the bounds; empty without one
    SDL_Point pivot; // within the bounds
    bool has_pivot;
};

struct AnimationSlice {
    const char *name, *data;       // never null
    const AnimationSliceKey *keys; // in ascending frame order
    Sint32 key_count;
};

// Loads a game file; the image path in it is relative to it. A tag's clip loops unless it has a repeat count; reverse
// and ping-pong clips list their frames in playing order. Without tags all frames are one clip, "all". The caller owns
// the set, which must outlive its sheets and animations. Reports errors with file, key and remedy.
// With hot reload (toolkit/reload.h), a changed file replaces the set's contents once all its sheets match: the set
// keeps its address, but pointers to its clips, frames and slices become invalid. An invalid file, or one with fewer
// clips or an image that does not match, is reported once and changes nothing.
AnimationSet *animation_set_load(const char *path);
void animation_set_cleanup(AnimationSet **set); // loaded sets only; sets the pointer to null; null is ignored

// --- slices: of loaded sets ---
const AnimationSlice *animation_set_find_slice(const AnimationSet *set, const char *name); // null if there is none
const AnimationSliceKey *animation_slice_at(const AnimationSlice *slice, int frame);       // null before the first key
