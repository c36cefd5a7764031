// arena: memory for many small things that live and go together, such as everything read from one file. Nothing in it
// is freed alone. Main thread only.
#pragma once

#include <SDL3/SDL_stdinc.h>

struct ArenaBlock;

struct Arena { // zeroed: empty
    ArenaBlock *blocks;
};

// Zeroed and aligned for any type. Null: no memory, and nothing is reported.
void *arena_alloc(Arena *arena, size_t size);
char *arena_copy_text(Arena *arena, const char *text);
void arena_free(Arena *arena); // all of it; safe to call twice

// For plain records, whose constructors do nothing.
template <typename T> T *arena_new(Arena *arena, size_t count = 1) {
    if (count > SDL_SIZE_MAX / sizeof(T)) return nullptr;
    return static_cast<T *>(arena_alloc(arena, count * sizeof(T)));
}
