// What drawing sprites one by one and in batches share, inlined: it is done for each of thousands in every frame.
#pragma once

#include "lumarind/core/error.h"
#include "lumarind/toolkit/sprite_sheet.h"

SpriteFrame _sprite_sheet_measure(const SpriteSheet *sheet, int index); // any of the sheet's frames, or one beyond

// A loaded set is about to become `fresh`: makes for each sheet of it, where files are followed, what it will be.
// False: one does not fit; reported.
bool _sprite_sheets_prepare(const AnimationSet *set, const AnimationSet *fresh);
void _sprite_sheets_finish(const AnimationSet *set, bool take); // or leaves it

// animation_sheet_frame without its calls, for what is asked of every sprite in every frame.
inline Sint32 _sprite_sheet_frame(const AnimationSet *set, const Animation *anim) {
    if (!set->clips || static_cast<Uint32>(anim->clip) >= static_cast<Uint32>(set->clip_count)) return -1;
    const AnimationClip *clip = &set->clips[anim->clip];
    return clip->order ? animation_sheet_frame(anim) : clip->first_frame + anim->frame;
}

// A trimmed frame's part is as far from the other side when it is mirrored.
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
    const bool kept = frame < sheet->frame_count;
    if (!kept) sheet->beyond = _sprite_sheet_measure(sheet, frame);
    if (frame >= 0) place->frame = kept ? &sheet->frames[frame] : &sheet->beyond;
    if (frame < 0 || place->frame->src.w <= 0) {
        engine_error("[SPRITE_SHEET] The animation has no current frame");
        return false;
    }
    place->dst = _sprite_sheet_dest(sheet, place->frame, pos, scale, flip);
    return true;
}
