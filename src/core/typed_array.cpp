#include "lumarind/core/typed_array.h"

bool _array_grow(void **items, Sint32 *capacity, Sint32 grow_by, size_t element_size, const char *tag) {
    const Sint32 new_capacity = *capacity + (grow_by > 0 ? grow_by : 1);
    void *grown = SDL_realloc(*items, static_cast<size_t>(new_capacity) * element_size);
    if (!grown) {
        return engine_error(
            "[%s] Memory allocation failed while growing the array to %d elements, error: %s", tag, new_capacity,
            SDL_GetError());
    }
    *items = grown;
    *capacity = new_capacity;
    return true;
}
