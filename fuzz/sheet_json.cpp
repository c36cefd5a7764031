// Animation sets from a sprite editor's JSON file, and sprite sheets made from them with a fixed image.
#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/animation_set.h"
#include "lumarind/toolkit/sprite_batch.h"

#include <SDL3/SDL_render.h>

#include <initializer_list>

static void play(const AnimationSet *set, const SpriteSheet *sheet) {
    SpriteBatch *batch = sprite_batch_new(4);
    sprite_batch_begin(batch, sheet);
    for (int clip = 0; clip < set->clip_count; clip++) {
        Animation anim = {};
        fuzz_check(animation_init(&anim, set, clip), "a loaded set's clips can be played");
        fuzz_note_text(set->clips[clip].name);
        fuzz_note(set->clips[clip].frame_count, set->clips[clip].loop);
        for (int i = 0; i < SDL_min(set->clips[clip].frame_count, 50); i++) {
            const auto flip = static_cast<SDL_FlipMode>(i & 3);
            const int frame = animation_sheet_frame(&anim);
            fuzz_check(frame >= 0 && frame < set->columns * set->rows, "a clip's frames are on the sheet");
            fuzz_note(frame, set->clips[clip].frame_ms[anim.frame]);
            if (sheet) {
                fuzz_check(sprite_sheet_draw(engine_renderer(), sheet, &anim, {3, 5}, 2, flip), "a frame can be drawn");
                fuzz_check(sprite_batch_add(batch, &anim, {40, 5}, 1, flip), "a frame can be added");
            }
            animation_advance(&anim, 0.07);
            animation_next_frame(&anim);
        }
    }
    fuzz_check(!sheet || sprite_batch_draw(engine_renderer(), batch), "a batch can be drawn");
    SDL_FlushRenderer(engine_renderer());
    sprite_batch_cleanup(&batch);
}

static void note_slice(const AnimationSlice *slice) {
    if (!slice) return;
    fuzz_note_text(slice->data);
    for (int frame = 0; frame < 9; frame++) {
        const AnimationSliceKey *key = animation_slice_at(slice, frame);
        if (!key) continue;
        for (const SDL_Rect &r : {key->bounds, key->center}) fuzz_note(r.x, r.y, r.w, r.h);
        fuzz_note(key->frame, key->pivot.x, key->pivot.y, key->has_pivot);
    }
}

int fuzz_sheet_json(const uint8_t *data, size_t size) {
    fuzz_start_engine();
    fuzz_save_picture("tiles.png");
    fuzz_set_game_file(data, size);
    fuzz_load_begins();
    AnimationSet *set = animation_set_load("sheet.json");
    fuzz_load_ends();
    fuzz_check(set || fuzz_logged_errors() == 1, "a set that does not load is reported once");
    if (set) {
        fuzz_load_begins();
        SpriteSheet *sheet = sprite_sheet_new(engine_renderer(), set);
        fuzz_load_ends();
        fuzz_check(sheet || fuzz_logged_errors() == 1, "a sheet that does not fit its set is reported once");
        fuzz_check(
            animation_slice_at(animation_set_find_slice(set, "hit"), -1) == nullptr, "no slice starts before frame 0");
        note_slice(animation_set_find_slice(set, "hit"));
        fuzz_note_text(set->path);
        fuzz_note(set->frame_w, set->frame_h, set->columns, set->rows);
        play(set, sheet);
        sprite_sheet_cleanup(&sheet);
    }
    animation_set_cleanup(&set);
    return 0;
}
