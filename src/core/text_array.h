// text_array: a typed array of prepared texts (TTF_Text). The array owns them and destroys each on removal, which must
// happen before their text engine is destroyed.
#pragma once

#include "lumarind/core/typed_array.h"

#include <SDL3/SDL_pixels.h>
#include <SDL3_ttf/SDL_ttf.h>

struct TextArrayTraits {
    using Element = TTF_Text *;
    static constexpr const char *TAG = "TEXT_ARRAY";
    static constexpr const char *PREFIX = "text_array";
    static void release(TTF_Text *text) { TTF_DestroyText(text); }
};
TYPED_ARRAY_STAMP(text_array, TextArray, TextArrayTraits)

// Prepares `text` (UTF-8) in the colour and appends it. Reports errors, leaving the array unchanged.
bool text_array_add(TextArray *array, TTF_TextEngine *text_engine, TTF_Font *font, const char *text, SDL_Color color);
