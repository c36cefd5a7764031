// string_array: a typed array of strings. The array owns a copy of each and frees it on removal.
#pragma once

#include "lumarind/core/typed_array.h"

struct StringArrayTraits {
    using Element = char *;
    static constexpr const char *TAG = "STRING_ARRAY";
    static constexpr const char *PREFIX = "string_array";
    static void release(char *text) { SDL_free(text); }
};
TYPED_ARRAY_STAMP(string_array, StringArray, StringArrayTraits)

bool string_array_add(StringArray *array, const char *text); // stores a copy; reports errors, changing nothing
