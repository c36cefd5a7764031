#include "lumarind/core/error.h"

#include <SDL3/SDL_log.h>

static char **g_slot; // null: errors are logged but not stored

bool engine_error(const char *fmt, ...) {
    va_list args;
    va_start(args, fmt);
    char *text = nullptr;
    va_list copy;
    va_copy(copy, args);
    if (SDL_vasprintf(&text, fmt, copy) < 0) text = nullptr;
    va_end(copy);

    if (text) {
        SDL_LogError(SDL_LOG_CATEGORY_ERROR, "%s", text);
    } else { // out of memory: SDL formats short messages on its stack
        SDL_LogMessageV(SDL_LOG_CATEGORY_ERROR, SDL_LOG_PRIORITY_ERROR, fmt, args);
    }
    va_end(args);

    engine_clear_error(); // last: the arguments may point to the old text
    if (g_slot) {
        *g_slot = text;
    } else {
        SDL_free(text);
    }
    return false;
}

void engine_clear_error() {
    if (!g_slot) return;
    SDL_free(*g_slot);
    *g_slot = nullptr;
}

const char *engine_get_error() { return g_slot ? *g_slot : nullptr; }

bool engine_has_error() { return engine_get_error() != nullptr; }

void engine_error_attach(char **slot) { g_slot = slot; }
