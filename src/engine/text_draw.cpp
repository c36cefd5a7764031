#include "lumarind/engine/text_draw.h"

#include "engine/engine_record.h"
#include "lumarind/core/error.h"
#include "lumarind/core/state_hash.h"
#include "lumarind/engine/text.h"

#include <SDL3/SDL_error.h>
#include <SDL3_ttf/SDL_ttf.h>

struct CachedText {
    TTF_Text *text; // owned; null: free slot
    TTF_Font *font;
    Uint64 hash; // of the content
    Uint64 used; // value of `draws` at the last use
};

struct TextDraw {
    CachedText cache[TEXT_DRAW_KEPT];
    Uint64 draws;
};

static TextDraw *_text_draw() {
    if (!engine->text_draw) engine->text_draw = static_cast<TextDraw *>(SDL_calloc(1, sizeof(TextDraw)));
    if (!engine->text_draw) engine_error("[ENGINE] Text memory allocation failed, error: %s", SDL_GetError());
    return engine->text_draw;
}

static TTF_Text *_text_draw_find(TTF_Font *font, const char *text) {
    TextDraw *draw = _text_draw();
    if (!draw) return nullptr;
    const Uint64 hash = state_hash_bytes(STATE_HASH_START, text, SDL_strlen(text));
    CachedText *oldest = &draw->cache[0];
    draw->draws++;
    for (CachedText &cached : draw->cache) {
        if (cached.text && cached.font == font && cached.hash == hash && SDL_strcmp(cached.text->text, text) == 0) {
            cached.used = draw->draws;
            return cached.text;
        }
        if (cached.used < oldest->used) oldest = &cached;
    }
    TTF_Text *prepared = engine_prepare_text(font, text, 0, {255, 255, 255, 255});
    if (!prepared) return nullptr;
    engine_cleanup_text(&oldest->text);
    *oldest = {.text = prepared, .font = font, .hash = hash, .used = draw->draws};
    return prepared;
}

bool engine_draw_text(TTF_Font *font, const char *text, float x, float y, SDL_Color color, TextAlign align) {
    if (!font || !*text) return true;
    TTF_Text *prepared = _text_draw_find(font, text);
    if (!prepared) return false;
    float width = 0;
    if (align != TEXT_LEFT) engine_text_size(prepared, &width, nullptr);
    engine_set_text_color(prepared, color);
    engine_render_text(prepared, align == TEXT_LEFT ? x : align == TEXT_RIGHT ? x - width : x - width / 2, y);
    return true;
}

void engine_measure_text(TTF_Font *font, const char *text, float *width, float *height) {
    TTF_Text *prepared = font && *text ? _text_draw_find(font, text) : nullptr;
    if (width) *width = 0;
    if (prepared) engine_text_size(prepared, width, nullptr);
    const int scale = engine ? SDL_max(engine->ui_scale, 1) : 1;
    if (height) *height = font ? static_cast<float>(TTF_GetFontHeight(font)) / static_cast<float>(scale) : 0;
}

void text_draw_forget(const TTF_Font *font) {
    if (!engine || !engine->text_draw) return;
    for (CachedText &cached : engine->text_draw->cache) {
        if (!cached.text || (font && cached.font != font)) continue;
        engine_cleanup_text(&cached.text);
        cached = {};
    }
    if (font) return;
    SDL_free(engine->text_draw);
    engine->text_draw = nullptr;
}
