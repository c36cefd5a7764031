#include "lumarind/toolkit/animation.h"

#include "lumarind/core/error.h"

// --- selection ---

static bool _animation_check_set(const AnimationSet *set) {
    const char *name = set->path ? set->path : "(unnamed)";
    if (!set->clips || set->clip_count <= 0) return engine_error("[ANIMATION] Set '%s' holds no clips", name);
    if (set->frame_w > 0 && set->frame_h > 0 && set->columns > 0 && set->rows > 0) return true;
    return engine_error(
        "[ANIMATION] Set '%s' has a %dx%d grid of %dx%d frames, which has no cells", name, set->columns, set->rows,
        set->frame_w, set->frame_h);
}

bool animation_init(Animation *anim, const AnimationSet *set, int clip) {
    if (!anim) return engine_error("[ANIMATION] No animation to initialise");
    if (!set) return engine_error("[ANIMATION] No animation set given");
    if (!_animation_check_set(set)) return false;
    *anim = {};
    anim->set = set;
    anim->playing = true;
    return animation_select_clip(anim, clip);
}

bool animation_select_clip(Animation *anim, int clip) {
    if (!anim || !anim->set) return engine_error("[ANIMATION] No animation to select a clip on");
    if (clip < 0 || clip >= anim->set->clip_count) {
        return engine_error(
            "[ANIMATION] Clip %d is outside the %d clips of '%s'", clip, anim->set->clip_count, anim->set->path);
    }
    anim->clip = clip;
    animation_restart(anim);
    return true;
}

int animation_find_clip(const AnimationSet *set, const char *name) {
    if (!set || !set->clips || !name) return -1;
    for (int i = 0; i < set->clip_count; i++) {
        if (set->clips[i].name && SDL_strcmp(set->clips[i].name, name) == 0) return i;
    }
    return -1;
}

// --- playback ---

static double _clip_length_ms(const AnimationClip *clip) {
    double total = 0;
    for (int i = 0; i < clip->frame_count; i++) total += SDL_max(clip->frame_ms[i], 0);
    return total;
}

// Moves to the next frame. Returns false at the end of a non-looping clip.
static bool _animation_step(Animation *anim, const AnimationClip *clip) {
    if (anim->frame + 1 < clip->frame_count) {
        anim->frame++;
    } else if (clip->loop) {
        anim->frame = 0;
    } else {
        anim->elapsed_ms = 0;
        anim->finished = true;
        anim->playing = false;
        return false;
    }
    return true;
}

void animation_advance(Animation *anim, double dt_seconds) {
    const AnimationClip *clip = animation_clip(anim);
    if (clip && anim->frame >= clip->frame_count) animation_restart(anim); // hot reload has shortened the clip
    if (!clip || !anim->playing || !(dt_seconds > 0)) return;
    if (!clip->frame_ms || anim->frame < 0 || anim->frame >= clip->frame_count) return;
    anim->elapsed_ms = SDL_min(anim->elapsed_ms + 1000.0 * dt_seconds, _clip_length_ms(clip));
    for (;;) {
        const double duration = clip->frame_ms[anim->frame];
        if (duration <= 0 || duration > anim->elapsed_ms) return;
        anim->elapsed_ms -= duration;
        if (!_animation_step(anim, clip)) return;
    }
}

void animation_play(Animation *anim) {
    if (anim) anim->playing = true;
}

void animation_pause(Animation *anim) {
    if (anim) anim->playing = false;
}

void animation_restart(Animation *anim) {
    if (!anim) return;
    anim->frame = 0;
    anim->elapsed_ms = 0;
    anim->finished = false;
}

void animation_set_frame(Animation *anim, int frame) {
    const AnimationClip *clip = animation_clip(anim);
    if (!clip || frame < 0 || frame >= clip->frame_count) return;
    animation_restart(anim);
    anim->frame = frame;
}

static void _animation_skip(Animation *anim, int frames) {
    const AnimationClip *clip = animation_clip(anim);
    if (!clip || clip->frame_count <= 0) return;
    animation_set_frame(anim, (clip->frame_count + anim->frame + frames) % clip->frame_count);
}

void animation_next_frame(Animation *anim) { _animation_skip(anim, 1); }
void animation_prev_frame(Animation *anim) { _animation_skip(anim, -1); }

// --- queries ---

bool animation_is_usable(const Animation *anim) {
    return anim && anim->set && anim->set->clips && anim->set->columns >= 1 && anim->clip >= 0 &&
           anim->clip < anim->set->clip_count;
}

const AnimationClip *animation_clip(const Animation *anim) {
    return animation_is_usable(anim) ? &anim->set->clips[anim->clip] : nullptr;
}

int animation_sheet_frame(const Animation *anim) {
    const AnimationClip *clip = animation_clip(anim);
    if (!clip || !clip->order) return clip ? clip->first_frame + anim->frame : -1;
    const Sint32 frame = SDL_min(anim->frame, clip->frame_count - 1); // hot reload may have shortened the clip
    return frame >= 0 ? clip->order[frame] : -1;
}

SDL_FRect animation_frame_rect(const Animation *anim) {
    const int frame = animation_sheet_frame(anim);
    return frame < 0 ? SDL_FRect{} : animation_set_frame_rect(anim->set, frame);
}

SDL_FRect animation_set_frame_rect(const AnimationSet *set, int frame) {
    if (set->frames) {
        SDL_FRect rect = {};
        if (frame >= 0 && frame < set->columns * set->rows) SDL_RectToFRect(&set->frames[frame].src, &rect);
        return rect;
    }
    const int row = frame / set->columns, column = frame % set->columns;
    return {
        static_cast<float>(set->frame_w * column), static_cast<float>(set->frame_h * row),
        static_cast<float>(set->frame_w), static_cast<float>(set->frame_h)};
}
