#include "lumarind/engine/text.h"

#include "engine/engine_record.h"
#include "lumarind/core/error.h"
#include "lumarind/core/files.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/text_draw.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_render.h>
#include <SDL3_ttf/SDL_ttf.h>

static float _ui_scale() { return static_cast<float>(engine->ui_scale); }

// --- fonts ---

bool font_file_exists(const char *path) { return SDL_GetPathInfo(files_asset(path).text, nullptr); }

// Returns a cached, unused font of the same file and size, or null.
static TTF_Font *_font_cache_acquire(const char *path, float size, const SDL_PathInfo &file) {
    for (CachedFont &cached : engine->font_cache) {
        if (!cached.font || cached.in_use || cached.size != size || SDL_strcmp(cached.path, path) != 0) continue;
        if (cached.file_size != file.size || cached.file_time != file.modify_time) continue;
        cached.in_use = true;
        return cached.font;
    }
    return nullptr;
}

// Returns a free cache slot, closing an unused font if necessary; null if all are in use.
static CachedFont *_font_cache_slot() {
    CachedFont *slot = nullptr;
    for (CachedFont &cached : engine->font_cache) {
        if (!cached.font) return &cached;
        if (!cached.in_use && !slot) slot = &cached;
    }
    if (slot) TTF_CloseFont(slot->font);
    return slot;
}

static void _font_cache_add(TTF_Font *font, const char *path, float size, const SDL_PathInfo &file) {
    CachedFont *slot = SDL_strlen(path) < FONT_PATH_SIZE ? _font_cache_slot() : nullptr;
    if (!slot) return; // not cached; font_cleanup closes it
    *slot = {
        .path = "",
        .size = size,
        .file_size = file.size,
        .file_time = file.modify_time,
        .generation = TTF_GetFontGeneration(font),
        .line_skip = TTF_GetFontLineSkip(font),
        .font = font,
        .in_use = true,
    };
    SDL_strlcpy(slot->path, path, FONT_PATH_SIZE);
}

TTF_Font *font_open(const char *path, float size) {
    SDL_Log("[FONTS] Setting up font: %s", path);
    SDL_PathInfo file = {};
    const FilePath asset = files_asset(path);
    if (!SDL_GetPathInfo(asset.text, &file)) {
        engine_error("[FONTS] Font file not found (%s)", path);
        return nullptr;
    }
    const float pixels = size * _ui_scale();
    TTF_Font *font = _font_cache_acquire(path, pixels, file);
    if (font) return font;
    font = TTF_OpenFont(asset.text, pixels);
    if (font) {
        _font_cache_add(font, path, pixels, file);
    } else {
        engine_error("[FONTS] Font loading failed, error: %s", SDL_GetError());
    }
    return font;
}

TTF_Font *font_copy(TTF_Font *font) {
    TTF_Font *copy = TTF_CopyFont(font);
    if (!copy) engine_error("[FONTS] Font copying failed, error: %s", SDL_GetError());
    return copy;
}

bool font_set_size(TTF_Font *font, float size) {
    if (TTF_SetFontSize(font, size * _ui_scale())) return true;
    return engine_error("[FONTS] Unable to change font size, error: %s", SDL_GetError());
}

// Resets properties that an owner may have changed without changing the font's generation.
static void _font_reset(CachedFont *cached) {
    TTF_Font *font = cached->font;
    TTF_ClearFallbackFonts(font);
    TTF_SetFontStyle(font, TTF_STYLE_NORMAL);
    TTF_SetFontKerning(font, true);
    TTF_SetFontWrapAlignment(font, TTF_HORIZONTAL_ALIGN_LEFT);
    TTF_SetFontLineSkip(font, cached->line_skip);
    TTF_SetFontDirection(font, TTF_DIRECTION_INVALID); // unset, as script and language: detected from the text
    TTF_SetFontScript(font, 0);
    TTF_SetFontLanguage(font, nullptr);
    cached->generation = TTF_GetFontGeneration(font);
}

void font_cleanup(TTF_Font *font) {
    if (!font) return;
    text_draw_forget(font);
    for (CachedFont &cached : engine->font_cache) {
        if (cached.font != font) continue;
        cached.in_use = false;
        if (TTF_GetFontGeneration(font) == cached.generation) {
            _font_reset(&cached);
            return;
        }
        cached.font = nullptr; // the owner changed its size or style, so it is not reused
    }
    TTF_CloseFont(font);
}

static bool _font_is_listed(const TTF_Font *font) {
    const FontList *list = engine->fonts;
    for (int i = 0; list && i < list->count; i++) {
        if (list->fonts[i] == font) return true;
    }
    return false;
}

// Reports errors and then keeps the size.
static bool _font_rescale(TTF_Font *font, float factor) {
    return TTF_SetFontSize(font, TTF_GetFontSize(font) * factor) ||
           engine_error("[FONTS] Unable to change font size, error: %s", SDL_GetError());
}

bool fonts_rescale(float factor) {
    const FontList *list = engine->fonts;
    for (int i = 0; list && i < list->count; i++) {
        if (_font_rescale(list->fonts[i], factor)) continue;
        while (--i >= 0) _font_rescale(list->fonts[i], 1 / factor);
        return false;
    }
    for (CachedFont &cached : engine->font_cache) {
        if (!cached.font || !cached.in_use) continue;
        const bool listed = _font_is_listed(cached.font);
        if (!listed && !_font_rescale(cached.font, factor)) continue; // its texts keep their size
        cached.size *= factor;
        cached.generation = TTF_GetFontGeneration(cached.font);
        cached.line_skip = TTF_GetFontLineSkip(cached.font);
    }
    return true;
}

void fonts_close_kept() {
    for (CachedFont &cached : engine->font_cache) {
        if (cached.font && !cached.in_use) TTF_CloseFont(cached.font);
        cached.font = nullptr;
    }
}

// --- the engine's font list ---

int engine_add_font(TTF_Font *font) {
    FontList *list = engine->fonts;
    if (list->count == MAX_FONTS) {
        engine_error("[ENGINE] Maximum number of fonts reached: fonts: MAX_FONTS=%d", MAX_FONTS);
        return -1;
    }
    list->fonts[list->count] = font;
    return list->count++;
}

TTF_Font *engine_get_font_by_index(int index) {
    const FontList *list = engine ? engine->fonts : nullptr;
    return list && index >= 0 && index < list->count ? list->fonts[index] : nullptr;
}

void engine_set_active_font(TTF_Font *font) { engine->active_font = font; }
TTF_Font *engine_get_font() { return engine ? engine->active_font : nullptr; }

// --- texts ---

TTF_TextEngine *engine_text_engine() { return engine ? engine->text_engine : nullptr; }

TTF_Text *engine_prepare_text(TTF_Font *font, const char *text, size_t length, SDL_Color color) {
    TTF_Text *prepared = TTF_CreateText(engine->text_engine, font, text, length);
    if (!prepared) {
        engine_error("[ENGINE] Creating the text failed, error: %s", SDL_GetError());
        return nullptr;
    }
    engine_set_text_color(prepared, color);
    return prepared;
}

bool engine_set_text(TTF_Text *text, const char *content) {
    if (text && SDL_strcmp(text->text ? text->text : "", content) == 0) return true; // avoids a new layout
    return TTF_SetTextString(text, content, 0) ||
           engine_error("[ENGINE] Changing the text failed, error: %s", SDL_GetError());
}

void engine_set_text_color(TTF_Text *text, SDL_Color color) {
    TTF_SetTextColor(text, color.r, color.g, color.b, color.a);
}

void engine_cleanup_text(TTF_Text **text) {
    if (!text || !*text) return;
    TTF_DestroyText(*text);
    *text = nullptr;
}

// Glyphs were rasterised at output size, so the render scale is reset to 1 while they are drawn.
void engine_render_text(TTF_Text *text, float x, float y) {
    const float s = _ui_scale();
    const bool logical = engine_in_logical_space();
    const float drawing = logical ? 1.0f / s : 1.0f;
    const float after = logical ? 1.0f : s;
    SDL_SetRenderScale(engine->renderer, drawing, drawing);
    TTF_DrawRendererText(text, SDL_roundf(x * s), SDL_roundf(y * s));
    SDL_SetRenderScale(engine->renderer, after, after);
}

void engine_text_size(TTF_Text *text, float *width, float *height) {
    int pixels_wide = 0, pixels_high = 0;
    if (!TTF_GetTextSize(text, &pixels_wide, &pixels_high)) pixels_wide = pixels_high = 0;
    const float scale = engine ? _ui_scale() : 1;
    if (width) *width = static_cast<float>(pixels_wide) / scale;
    if (height) *height = static_cast<float>(pixels_high) / scale;
}

// --- FPS read-out ---

static constexpr float FPS_RIGHT = 230; // distance from the view's right edge to the read-out's left edge, UI units
static constexpr float FPS_TOP = 10;
static constexpr int FPS_GOOD = 29; // above: green
static constexpr int FPS_FAIR = 14; // above: orange; else red
static constexpr SDL_Color FPS_GREEN = {76, 175, 80, 255};
static constexpr SDL_Color FPS_ORANGE = {255, 152, 0, 255};
static constexpr SDL_Color FPS_RED = {244, 67, 54, 255};

void engine_update_fps() {
    const int fps = engine->fps;
    engine->fps_color = fps > FPS_GOOD ? FPS_GREEN : fps > FPS_FAIR ? FPS_ORANGE : FPS_RED;
    SDL_snprintf(engine->fps_text, FPS_TEXT_SIZE, "FPS: %d, delta: %f", fps, engine->fps_delta);
}

void engine_draw_fps() {
    SDL_Renderer *renderer = engine->renderer;
    const SDL_Color c = engine->fps_color;
    SDL_SetRenderDrawColor(renderer, c.r, c.g, c.b, c.a);
    SDL_SetRenderScale(renderer, _ui_scale(), _ui_scale());
    float view_width = 0;
    engine_view_size(&view_width, nullptr);
    SDL_RenderDebugText(renderer, view_width - FPS_RIGHT, FPS_TOP, engine->fps_text);
}
