#include "toolkit/sprite_sheet.h"

#include "core/error.h"
#include "toolkit/image.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

// --- lifetime ---

static bool _sprite_sheet_check_size(SDL_Texture *texture, const AnimationSet *set) {
    float width = 0, height = 0;
    if (!SDL_GetTextureSize(texture, &width, &height)) {
        return engine_error("[SPRITE_SHEET] SDL_GetTextureSize failed for %s, error: %s", set->path, SDL_GetError());
    }
    const int w = static_cast<int>(width), h = static_cast<int>(height);
    const int wanted_w = set->frame_w * set->columns, wanted_h = set->frame_h * set->rows;
    if (w == wanted_w && h == wanted_h) return true;
    return engine_error(
        "[SPRITE_SHEET] %s is %dx%d, but its set describes a %dx%d grid of %dx%d frames, which is %dx%d. Regenerate it "
        "with tools/aseprite_json_to_c",
        set->path, w, h, set->columns, set->rows, set->frame_w, set->frame_h, wanted_w, wanted_h);
}

// Takes the texture over, also when it fails.
static SpriteSheet *_sprite_sheet_make(SDL_Texture *texture, const AnimationSet *set) {
    SpriteSheet *sheet = nullptr;
    if (_sprite_sheet_check_size(texture, set)) {
        SDL_SetTextureScaleMode(texture, SDL_SCALEMODE_NEAREST);
        sheet = static_cast<SpriteSheet *>(SDL_malloc(sizeof(SpriteSheet)));
        if (!sheet) engine_error("[SPRITE_SHEET] Memory allocation failed, error: %s", SDL_GetError());
    }
    if (sheet) {
        *sheet = {.texture = texture, .set = set};
    } else {
        SDL_DestroyTexture(texture);
    }
    return sheet;
}

SpriteSheet *sprite_sheet_new(SDL_Renderer *renderer, const AnimationSet *set) {
    if (!renderer || !set || !set->path) {
        engine_error("[SPRITE_SHEET] No renderer or no animation set given");
        return nullptr;
    }
    if (set->frame_w <= 0 || set->frame_h <= 0 || set->columns <= 0 || set->rows <= 0) {
        engine_error(
            "[SPRITE_SHEET] Set '%s' has a %dx%d grid of %dx%d frames, which has no cells", set->path, set->columns,
            set->rows, set->frame_w, set->frame_h);
        return nullptr;
    }
    SDL_Texture *texture = image_load_texture(renderer, set->path);
    if (!texture) {
        engine_error("[SPRITE_SHEET] IMG_LoadTexture failed for %s, error: %s", set->path, SDL_GetError());
        return nullptr;
    }
    return _sprite_sheet_make(texture, set);
}

void sprite_sheet_cleanup(SpriteSheet **sheet) {
    if (!sheet || !*sheet) return;
    if ((*sheet)->texture) SDL_DestroyTexture((*sheet)->texture);
    SDL_free(*sheet);
    *sheet = nullptr;
}

// --- drawing ---

SDL_FRect sprite_sheet_dest_rect(const SpriteSheet *sheet, SDL_FPoint pos, float scale) {
    if (!sheet || !sheet->set) return {};
    return {
        pos.x, pos.y, static_cast<float>(sheet->set->frame_w) * scale, static_cast<float>(sheet->set->frame_h) * scale};
}

bool sprite_sheet_draw(
    SDL_Renderer *renderer, const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale,
    SDL_FlipMode flip) {
    if (!renderer || !sheet || !sheet->texture || !anim) return engine_error("[SPRITE_SHEET] Nothing to draw");
    if (anim->set != sheet->set) {
        return engine_error(
            "[SPRITE_SHEET] The animation is playing a different set from %s", sheet->set ? sheet->set->path : "");
    }
    const SDL_FRect src = animation_frame_rect(anim);
    if (src.w <= 0) return engine_error("[SPRITE_SHEET] The animation has no current frame");
    const SDL_FRect dst = sprite_sheet_dest_rect(sheet, pos, scale);
    const bool drawn = flip == SDL_FLIP_NONE
                           ? SDL_RenderTexture(renderer, sheet->texture, &src, &dst)
                           : SDL_RenderTextureRotated(renderer, sheet->texture, &src, &dst, 0, nullptr, flip);
    if (drawn) return true;
    return engine_error(
        "[SPRITE_SHEET] Could not draw frame %d, error: %s", animation_sheet_frame(anim), SDL_GetError());
}

// --- debugging ---

static void _outline_around(SDL_Renderer *renderer, SDL_FRect rect, SDL_Color color) {
    const SDL_FRect outline = {rect.x - 1, rect.y - 1, rect.w + 2, rect.h + 2};
    SDL_SetRenderDrawColor(renderer, color.r, color.g, color.b, color.a);
    SDL_RenderRect(renderer, &outline);
}

void sprite_sheet_draw_frame_outline(
    SDL_Renderer *renderer, const SpriteSheet *sheet, SDL_FPoint pos, float scale, SDL_Color color) {
    _outline_around(renderer, sprite_sheet_dest_rect(sheet, pos, scale), color);
}

void sprite_sheet_draw_debug_sheet(
    SDL_Renderer *renderer, const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale,
    SDL_Color sheet_color, SDL_Color frame_color) {
    if (!renderer || !sheet || !sheet->texture || !sheet->set) return;
    const AnimationSet *set = sheet->set;
    const SDL_FRect whole = {
        pos.x, pos.y, static_cast<float>(set->frame_w * set->columns) * scale,
        static_cast<float>(set->frame_h * set->rows) * scale};
    SDL_RenderTexture(renderer, sheet->texture, nullptr, &whole);
    _outline_around(renderer, whole, sheet_color);
    if (!anim || anim->set != set) return;
    const SDL_FRect frame = animation_frame_rect(anim);
    if (frame.w <= 0) return;
    const SDL_FRect current = {pos.x + frame.x * scale, pos.y + frame.y * scale, frame.w * scale, frame.h * scale};
    _outline_around(renderer, current, frame_color);
}
