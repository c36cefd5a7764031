#include "lumarind/toolkit/sprite_sheet.h"

#include "lumarind/core/error.h"
#include "lumarind/toolkit/image.h"
#include "lumarind/toolkit/reload.h"
#include "toolkit/sprite_sheet_internal.h"
#include "toolkit/view_copy.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

#include <utility>

static constexpr int FRAMES_PRECOMPUTED_MAX = 1 << 16; // 2.5 MB

// --- lifetime ---

static bool _sprite_sheet_check_frames(int w, int h, const AnimationSet *set) {
    for (int i = 0; i < set->columns * set->rows; i++) {
        const SDL_Rect src = set->frames[i].src;
        if (src.x + src.w <= w && src.y + src.h <= h) continue;
        return engine_error(
            "[SPRITE_SHEET] %s is %dx%d, but frame %d of its set ends at %d, %d: export both again", set->path, w, h, i,
            src.x + src.w, src.y + src.h);
    }
    return true;
}

static bool _sprite_sheet_check_size(SDL_Texture *texture, const AnimationSet *set) {
    float width = 0, height = 0;
    if (!SDL_GetTextureSize(texture, &width, &height)) {
        return engine_error("[SPRITE_SHEET] SDL_GetTextureSize failed for %s, error: %s", set->path, SDL_GetError());
    }
    const int w = static_cast<int>(width), h = static_cast<int>(height);
    if (set->frames) return _sprite_sheet_check_frames(w, h, set);
    const int expected_w = set->frame_w * set->columns, expected_h = set->frame_h * set->rows;
    if (w == expected_w && h == expected_h) return true;
    return engine_error(
        "[SPRITE_SHEET] %s is %dx%d, but its set describes a %dx%d grid of %dx%d frames, which is %dx%d. Regenerate it "
        "with tools/aseprite_json_to_c",
        set->path, w, h, set->columns, set->rows, set->frame_w, set->frame_h, expected_w, expected_h);
}

SpriteFrame _sprite_sheet_measure(const SpriteSheet *sheet, int index) {
    SpriteFrame frame = {};
    frame.src = animation_set_frame_rect(sheet->set, index);
    // The software renderer truncates position and length, times the texture's size, to texels; rounding may leave
    // either a texel short. A hundredth of a texel is invisible up to a magnification of 50.
    constexpr float NUDGE = 1.0f / 256;
    frame.left = (frame.src.x + NUDGE) / sheet->width;
    frame.top = (frame.src.y + NUDGE) / sheet->height;
    frame.right = (frame.src.x + frame.src.w + 3 * NUDGE) / sheet->width;
    frame.bottom = (frame.src.y + frame.src.h + 3 * NUDGE) / sheet->height;
    const bool in_table = sheet->set->frames && index >= 0 && index < sheet->set->columns * sheet->set->rows;
    if (in_table) {
        const SDL_Point offset = sheet->set->frames[index].offset;
        frame.offset = {static_cast<float>(offset.x), static_cast<float>(offset.y)};
    }
    return frame;
}

static bool _sprite_sheet_fill(SpriteSheet *sheet) {
    const AnimationSet *set = sheet->set;
    if (!_sprite_sheet_check_size(sheet->texture, set)) return false;
    SDL_SetTextureScaleMode(sheet->texture, SDL_SCALEMODE_NEAREST);
    sheet->width = static_cast<float>(sheet->texture->w);
    sheet->height = static_cast<float>(sheet->texture->h);
    sheet->frame_count = SDL_min(set->columns * set->rows, FRAMES_PRECOMPUTED_MAX);
    sheet->frames =
        static_cast<SpriteFrame *>(SDL_calloc(static_cast<size_t>(sheet->frame_count), sizeof(SpriteFrame)));
    if (!sheet->frames) return engine_error("[SPRITE_SHEET] Memory allocation failed, error: %s", SDL_GetError());
    for (int i = 0; i < sheet->frame_count; i++) sheet->frames[i] = _sprite_sheet_measure(sheet, i);
    return true;
}

// Takes ownership of the texture, also on failure.
static SpriteSheet *_sprite_sheet_make(SDL_Texture *texture, const AnimationSet *set) {
    auto *sheet = static_cast<SpriteSheet *>(SDL_calloc(1, sizeof(SpriteSheet)));
    if (!sheet) {
        engine_error("[SPRITE_SHEET] Memory allocation failed, error: %s", SDL_GetError());
        SDL_DestroyTexture(texture);
        return nullptr;
    }
    sheet->texture = texture;
    sheet->set = set;
    if (!_sprite_sheet_fill(sheet)) sprite_sheet_cleanup(&sheet);
    return sheet;
}

static SpriteSheet *_sprite_sheet_load(SDL_Renderer *renderer, const AnimationSet *set) {
    SDL_Texture *texture = image_load_texture(renderer, set->path);
    if (texture) return _sprite_sheet_make(texture, set);
    engine_error("[SPRITE_SHEET] IMG_LoadTexture failed for %s, error: %s", set->path, SDL_GetError());
    return nullptr;
}

// --- hot reload: on failure the old content is kept ---

static void _sprite_sheet_commit(SpriteSheet *sheet, const AnimationSet *set) {
    SpriteSheet *fresh = sheet->fresh;
    sheet->fresh = nullptr;
    std::swap(*sheet, *fresh);
    sheet->set = set;
    sprite_sheet_cleanup(&fresh);
}

// A set loaded from a file is reloaded together with its image, because both are exported together.
static void _sprite_sheet_reload(void *owner, const char *) {
    auto *sheet = static_cast<SpriteSheet *>(owner);
    if (reload_now(sheet->set)) return;
    sheet->fresh = _sprite_sheet_load(SDL_GetRendererFromTexture(sheet->texture), sheet->set);
    if (sheet->fresh) _sprite_sheet_commit(sheet, sheet->set);
}

struct SheetReload {
    const AnimationSet *set, *fresh;
    bool fit;
};

bool _sprite_sheets_prepare(const AnimationSet *set, const AnimationSet *fresh) {
    SheetReload sheets = {set, fresh, true};
    const auto prepare = [](void *owner, void *context) {
        auto *to = static_cast<SheetReload *>(context);
        auto *sheet = static_cast<SpriteSheet *>(owner);
        if (sheet->set != to->set || !to->fit) return;
        reload_follow(sheet, _sprite_sheet_reload, to->fresh->path, false, reload_stamp(to->fresh->path, false));
        sheet->fresh = _sprite_sheet_load(SDL_GetRendererFromTexture(sheet->texture), to->fresh);
        to->fit = sheet->fresh != nullptr;
    };
    reload_each_owner(_sprite_sheet_reload, prepare, &sheets);
    return sheets.fit;
}

void _sprite_sheets_finish(const AnimationSet *set, bool commit) {
    SheetReload sheets = {set, nullptr, commit};
    const auto finish = [](void *owner, void *context) {
        const auto *to = static_cast<SheetReload *>(context);
        auto *sheet = static_cast<SpriteSheet *>(owner);
        if (sheet->set != to->set || !sheet->fresh) return;
        if (!to->fit) {
            sprite_sheet_cleanup(&sheet->fresh);
            return;
        }
        _sprite_sheet_commit(sheet, to->set);
    };
    reload_each_owner(_sprite_sheet_reload, finish, &sheets);
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
    const FileStamp stamp = reload_stamp(set->path, false);
    SpriteSheet *sheet = _sprite_sheet_load(renderer, set);
    if (sheet) reload_follow(sheet, _sprite_sheet_reload, set->path, false, stamp);
    return sheet;
}

void sprite_sheet_cleanup(SpriteSheet **sheet) {
    if (!sheet || !*sheet) return;
    reload_forget(*sheet);
    if ((*sheet)->texture) SDL_DestroyTexture((*sheet)->texture);
    if ((*sheet)->preview) SDL_DestroyTexture((*sheet)->preview);
    SDL_free((*sheet)->frames);
    SDL_free(*sheet);
    *sheet = nullptr;
}

// --- drawing ---

SDL_FRect sprite_sheet_dest_rect(const SpriteSheet *sheet, SDL_FPoint pos, float scale) {
    if (!sheet || !sheet->set) return {};
    return {
        pos.x, pos.y, static_cast<float>(sheet->set->frame_w) * scale, static_cast<float>(sheet->set->frame_h) * scale};
}

bool sprite_sheet_place(
    const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale, SDL_FlipMode flip,
    SpritePlace *place) {
    return _sprite_sheet_place(sheet, anim, pos, scale, flip, place);
}

bool sprite_sheet_draw(
    SDL_Renderer *renderer, const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale,
    SDL_FlipMode flip) {
    SpritePlace place = {};
    if (!renderer) return engine_error("[SPRITE_SHEET] Nothing to draw");
    if (!_sprite_sheet_place(sheet, anim, pos, scale, flip, &place)) return false;
    if (copy_texture_in_view(renderer, sheet->texture, &place.frame->src, &place.dst, flip)) return true;
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

// Draws the sheet at `size` on the current render target, without blending, and reads it back.
static SDL_Surface *_shrink(SDL_Renderer *renderer, const SpriteSheet *sheet, SDL_FPoint size) {
    const SDL_FRect all = {0, 0, size.x, size.y};
    SDL_BlendMode blend = SDL_BLENDMODE_BLEND;
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 0);
    SDL_RenderClear(renderer); // a new target is uninitialised, and the last column and row may be partly covered
    SDL_GetTextureBlendMode(sheet->texture, &blend);
    SDL_SetTextureBlendMode(sheet->texture, SDL_BLENDMODE_NONE);
    const bool drawn = SDL_RenderTexture(renderer, sheet->texture, nullptr, &all);
    SDL_SetTextureBlendMode(sheet->texture, blend);
    return drawn ? SDL_RenderReadPixels(renderer, nullptr) : nullptr;
}

// The sheet scaled down, in output pixels. A static texture, because render targets may be lost. Null on failure.
static SDL_Texture *_make_preview(SDL_Renderer *renderer, const SpriteSheet *sheet, SDL_FPoint size) {
    const int width = static_cast<int>(SDL_ceilf(size.x)), height = static_cast<int>(SDL_ceilf(size.y));
    SDL_Texture *target = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGBA32, SDL_TEXTUREACCESS_TARGET, width, height);
    if (!target) return nullptr;
    SDL_Texture *before = SDL_GetRenderTarget(renderer);
    SDL_Surface *small = SDL_SetRenderTarget(renderer, target) ? _shrink(renderer, sheet, size) : nullptr;
    SDL_SetRenderTarget(renderer, before);
    SDL_DestroyTexture(target);
    SDL_Texture *preview = small ? SDL_CreateTextureFromSurface(renderer, small) : nullptr;
    SDL_DestroySurface(small);
    if (preview) SDL_SetTextureScaleMode(preview, SDL_SCALEMODE_NEAREST);
    return preview;
}

// Scaling down millions of texels takes the software renderer milliseconds per frame, and tens of milliseconds if the
// texture is also drawn unscaled, because it then stores it compressed. Therefore the result is cached.
static bool _draw_preview(SDL_Renderer *renderer, const SpriteSheet *sheet, const SDL_FRect *whole) {
    SDL_RendererLogicalPresentation presentation = SDL_LOGICAL_PRESENTATION_DISABLED;
    SDL_FPoint scale = {1, 1};
    SDL_GetRenderLogicalPresentation(renderer, nullptr, nullptr, &presentation);
    SDL_GetRenderScale(renderer, &scale.x, &scale.y);
    const SDL_FPoint size = {whole->w * scale.x, whole->h * scale.y};
    if (presentation != SDL_LOGICAL_PRESENTATION_DISABLED || !(size.x >= 1) || !(size.y >= 1)) return false;
    if (size.x != sheet->preview_size.x || size.y != sheet->preview_size.y) {
        if (sheet->preview) SDL_DestroyTexture(sheet->preview);
        sheet->preview = _make_preview(renderer, sheet, size);
        sheet->preview_size = size;
    }
    const SDL_FRect at = {whole->x, whole->y, SDL_ceilf(size.x) / scale.x, SDL_ceilf(size.y) / scale.y};
    return sheet->preview && SDL_RenderTexture(renderer, sheet->preview, nullptr, &at);
}

void sprite_sheet_draw_debug_sheet(
    SDL_Renderer *renderer, const SpriteSheet *sheet, const Animation *anim, SDL_FPoint pos, float scale,
    SDL_Color sheet_color, SDL_Color frame_color) {
    if (!renderer || !sheet || !sheet->texture || !sheet->set) return;
    const AnimationSet *set = sheet->set;
    const SDL_FRect whole = {pos.x, pos.y, sheet->width * scale, sheet->height * scale};
    const bool small = scale < 1 && _draw_preview(renderer, sheet, &whole);
    if (!small) copy_texture_in_view(renderer, sheet->texture, nullptr, &whole);
    _outline_around(renderer, whole, sheet_color);
    if (!anim || anim->set != set) return;
    const SDL_FRect frame = animation_frame_rect(anim);
    if (frame.w <= 0) return;
    const SDL_FRect current = {pos.x + frame.x * scale, pos.y + frame.y * scale, frame.w * scale, frame.h * scale};
    _outline_around(renderer, current, frame_color);
}
