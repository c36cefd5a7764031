// arena: a block allocator for many small allocations with one lifetime, such as everything read from one file.
// Allocations are not freed one by one. Main thread only.
#pragma once

#include <SDL3/SDL_stdinc.h>

struct ArenaBlock;

struct Arena { // zero-initialised: empty
    ArenaBlock *blocks;
};

// Minimum size of later blocks, in bytes. With 0, set by tests, each allocation is a block of its own: the sanitizers
// then notice overruns, and each allocation can fail.
namespace lumarind {
extern size_t arena_block_size;
}
using lumarind::arena_block_size;

// Memory is zeroed and aligned for any type. Returns null if out of memory, without reporting it.
void *arena_alloc(Arena *arena, size_t size);
void arena_free(Arena *arena); // frees all allocations; safe to call twice

// For trivial types: constructors are not called.
template <typename T> T *arena_new(Arena *arena, size_t count = 1) {
    if (count > SDL_SIZE_MAX / sizeof(T)) return nullptr;
    return static_cast<T *>(arena_alloc(arena, count * sizeof(T)));
}
