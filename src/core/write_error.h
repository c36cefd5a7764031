// write_error: the reason of a failed write, for messages.
#pragma once

#include <SDL3/SDL_error.h>

// SDL's error, or a general text if it is empty: a short write sets none, so that SDL_ClearError must be called before.
inline const char *write_error() {
    const char *reason = SDL_GetError();
    return *reason ? reason : "the file could not be written";
}
