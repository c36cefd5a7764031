// animation: clips of frames on a sprite sheet, played in milliseconds. A set describes a sheet and its clips and is a
// constant table; an animation plays one clip of a set and is embedded in its owner.
#pragma once

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

// A frame of a sheet whose frames are not cells of a grid.
struct AnimationFrame {
    SDL_Rect src;     // on the sheet, px
    SDL_Point offset; // of what is on the sheet within the whole frame, which may have been trimmed
};

struct AnimationClip {
    const char *name;
    Sint32 first_frame; // on the sheet
    Sint32 frame_count;
    const Sint32 *frame_ms;        // frame_count durations; a frame of 0 or less holds for ever
    bool loop;                     // else it stops on its last frame
    const Sint32 *order = nullptr; // frame_count frames of the sheet as they are played; null: from first_frame on
};

struct AnimationSet {
    const char *path;        // of the sheet's image; also the set's name in messages
    Sint32 frame_w, frame_h; // px
    Sint32 columns, rows;    // of frames on the sheet, which are numbered row by row from 0
    const AnimationClip *clips;
    Sint32 clip_count;
    const AnimationFrame *frames = nullptr; // columns × rows of them, where they are no grid; px then are the largest's
};

struct Animation {
    const AnimationSet *set;
    Sint32 clip;
    Sint32 frame;      // of the clip, from 0
    double elapsed_ms; // on this frame
    bool playing;
    bool finished; // a clip that does not loop has reached its end
};

// --- choosing: false is reported ---
bool animation_init(Animation *anim, const AnimationSet *set, int clip); // and plays
bool animation_select_clip(Animation *anim, int clip); // from its first frame; a wrong clip leaves the old one
int animation_find_clip(const AnimationSet *set, const char *name); // -1: none

// --- playing: all accept null ---
void animation_advance(Animation *anim, double dt_seconds); // at most once through the clip
void animation_play(Animation *anim);
void animation_pause(Animation *anim);
void animation_restart(Animation *anim);              // at the first frame; a paused one stays so
void animation_set_frame(Animation *anim, int frame); // ignored outside the clip
void animation_next_frame(Animation *anim);           // round the clip's end
void animation_prev_frame(Animation *anim);

// --- questions ---
bool animation_is_usable(const Animation *anim);
const AnimationClip *animation_clip(const Animation *anim);             // null when not usable
int animation_sheet_frame(const Animation *anim);                       // -1 when not usable
SDL_FRect animation_frame_rect(const Animation *anim);                  // on the sheet, px; all 0 without a frame
SDL_FRect animation_set_frame_rect(const AnimationSet *set, int frame); // of the sheet's frames, from 0
