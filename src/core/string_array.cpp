#include "lumarind/core/string_array.h"

bool string_array_add(StringArray *array, const char *text) {
    char *copy = SDL_strdup(text);
    if (!copy) {
        return engine_error(
            "[STRING_ARRAY] Memory allocation failed while copying a string, error: %s", SDL_GetError());
    }
    if (_typed_array_push<StringArrayTraits>(array, copy)) return true;
    SDL_free(copy);
    return false;
}
