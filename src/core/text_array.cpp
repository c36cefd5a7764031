#include "lumarind/core/text_array.h"

bool text_array_add(TextArray *array, TTF_TextEngine *text_engine, TTF_Font *font, const char *text, SDL_Color color) {
    TTF_Text *element = TTF_CreateText(text_engine, font, text, SDL_strlen(text));
    if (!element) return engine_error("[TEXT_ARRAY] Creating the text element failed, error: %s", SDL_GetError());
    if (!TTF_SetTextColor(element, color.r, color.g, color.b, color.a)) {
        engine_error("[TEXT_ARRAY] Error setting text element color: %s", SDL_GetError());
    } else if (_typed_array_push<TextArrayTraits>(array, element)) {
        return true;
    }
    TTF_DestroyText(element);
    return false;
}
