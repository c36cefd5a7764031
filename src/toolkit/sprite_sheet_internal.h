// Shared by single and batched sprite drawing; inlined, because it runs for thousands of sprites per frame.
#pragma once

#include "lumarind/core/error.h"
#include "lumarind/toolkit/sprite_sheet.h"

SpriteFrame _sprite_sheet_measure(const SpriteSheet *sheet, int index); // any index, also outside the sheet

// Prepares hot reload of a set from `fresh`: loads a new version of each of its sheets.
// Reports an error if a sheet does not fit.
bool _sprite_sheets_prepare(const AnimationSet *set, const AnimationSet *fresh);
void _sprite_sheets_finish(const AnimationSet *set, bool commit); // commits the new versions or discards them

// animation_sheet_frame without its function calls.
inline Sint32 _sprite_sheet_frame(const AnimationSet *set, const Animation *anim) {
    if (!set->clips || static_cast<Uint32>(anim->clip) >= static_cast<Uint32>(set->clip_count)) return -1;
    const AnimationClip *clip = &set->clips[anim->clip];
    return clip->order ? animation_sheet_frame(anim) : clip->first_frame + anim->frame;
}

// Flipping mirrors a trimmed frame's offset.
inline SDL_FRect
_sprite_sheet_dest(const SpriteSheet *sheet, const SpriteFrame *frame, SDL_FPoint pos, float scale, SDL_FlipMode flip) {
    if (flip == SDL_FLIP_NONE) {
        return {
            pos.x + frame->offset.x * scale, pos.y + frame->offset.y * scale, frame->src.w * scale,
            frame->src.h * scale};
    }
    const float w = static_cast<float>(sheet->set->frame_w), h = static_cast<float>(sheet->set->frame_h);
    const float x = flip & SDL_FLIP_HORIZONTAL ? w - frame->offset.x - frame->src.w : frame->offset.x;
    const float y = flip & SDL_FLIP_VERTICAL ? h - frame->offset.y - frame->src.h : frame->offset.y;
    return {pos.x + x * scale, pos.y + y * scale, frame->src.w * scale, frame->src.h * scale};
}

// sprite_sheet_place.
[[gnu::always_inline]] inline bool _sprite_sheet_place(
    const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale, SDL_FlipMode flip,
    SpritePlace *place) {
    if (!sheet || !sheet->texture || !anim) {
        engine_error("[SPRITE_SHEET] Nothing to draw");
        return false;
    }
    if (anim->set != sheet->set) {
        engine_error(
            "[SPRITE_SHEET] The animation is playing a different set from %s", sheet->set ? sheet->set->path : "");
        return false;
    }
    const Sint32 frame = _sprite_sheet_frame(sheet->set, anim);
    const bool precomputed = frame < sheet->frame_count;
    if (!precomputed) sheet->beyond = _sprite_sheet_measure(sheet, frame);
    if (frame >= 0) place->frame = precomputed ? &sheet->frames[frame] : &sheet->beyond;
    if (frame < 0 || place->frame->src.w <= 0) {
        engine_error("[SPRITE_SHEET] The animation has no current frame");
        return false;
    }
    place->dst = _sprite_sheet_dest(sheet, place->frame, pos, scale, flip);
    return true;
}
