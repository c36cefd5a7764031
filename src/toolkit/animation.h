// animation: frame animation on sprite sheets, timed in milliseconds. An animation set is a constant table describing a
// sheet and its clips; an animation plays one clip of a set and is embedded in its owner.
#pragma once

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

// A frame of a packed or trimmed sheet.
struct AnimationFrame {
    SDL_Rect src;     // on the sheet, px
    SDL_Point offset; // of src within the untrimmed frame
};

struct AnimationClip {
    const char *name;
    Sint32 first_frame; // on the sheet
    Sint32 frame_count;
    const Sint32 *frame_ms;        // frame_count durations; a frame of 0 or less is held forever
    bool loop;                     // if false, it stops on its last frame
    const Sint32 *order = nullptr; // frame_count sheet frames in playing order; null: consecutive from first_frame
};

struct AnimationSet {
    const char *path;        // of the sheet's image; also names the set in messages
    Sint32 frame_w, frame_h; // px
    Sint32 columns, rows;    // of the sheet's grid; frames are numbered row by row from 0
    const AnimationClip *clips;
    Sint32 clip_count;
    const AnimationFrame *frames = nullptr; // columns × rows entries, if not a grid; frame_w, frame_h: the largest
};

struct Animation {
    const AnimationSet *set;
    Sint32 clip;
    Sint32 frame;      // of the clip, from 0
    double elapsed_ms; // on this frame
    bool playing;
    bool finished; // a non-looping clip has reached its end
};

// --- selection: the first two report errors ---
bool animation_init(Animation *anim, const AnimationSet *set, int clip); // and starts playing
bool animation_select_clip(Animation *anim, int clip); // from its first frame; an invalid clip changes nothing
int animation_find_clip(const AnimationSet *set, const char *name); // -1 if there is none

// --- playback: null is ignored ---
void animation_advance(Animation *anim, double dt_seconds); // by at most one pass through the clip
void animation_play(Animation *anim);
void animation_pause(Animation *anim);
void animation_restart(Animation *anim);              // from the first frame; stays paused if it was
void animation_set_frame(Animation *anim, int frame); // ignored outside the clip
void animation_next_frame(Animation *anim);           // wraps around
void animation_prev_frame(Animation *anim);

// --- queries ---
bool animation_is_usable(const Animation *anim);
const AnimationClip *animation_clip(const Animation *anim);             // null when not usable
int animation_sheet_frame(const Animation *anim);                       // -1 when not usable
SDL_FRect animation_frame_rect(const Animation *anim);                  // on the sheet, px; all 0 without a frame
SDL_FRect animation_set_frame_rect(const AnimationSet *set, int frame); // of the sheet's frames, from 0
