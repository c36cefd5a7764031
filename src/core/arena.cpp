#include "core/arena.h"

struct alignas(16) ArenaBlock {
    ArenaBlock *next;
    size_t used, size; // bytes after this header
};

size_t lumarind::arena_block_size = 32 << 10;
static constexpr size_t ALIGNMENT = alignof(ArenaBlock);

static ArenaBlock *_arena_add_block(Arena *arena, size_t size) {
    if (size > SDL_SIZE_MAX - sizeof(ArenaBlock)) return nullptr;
    auto *block = static_cast<ArenaBlock *>(SDL_calloc(1, sizeof(ArenaBlock) + size));
    if (!block) return nullptr;
    block->size = size;
    // A large allocation gets its own block, linked after the first block, which may still have room.
    ArenaBlock **at = arena->blocks && size > arena_block_size ? &arena->blocks->next : &arena->blocks;
    block->next = *at;
    *at = block;
    return block;
}

void *arena_alloc(Arena *arena, size_t size) {
    if (size > SDL_SIZE_MAX - ALIGNMENT) return nullptr;
    ArenaBlock *block = arena->blocks;
    if (!block || block->size - block->used < size) block = _arena_add_block(arena, SDL_max(size, arena_block_size));
    if (!block) return nullptr;
    Uint8 *memory = reinterpret_cast<Uint8 *>(block + 1) + block->used;
    block->used += SDL_min((size + ALIGNMENT - 1) & ~(ALIGNMENT - 1), block->size - block->used);
    return memory;
}

void arena_free(Arena *arena) {
    while (ArenaBlock *block = arena->blocks) {
        arena->blocks = block->next;
        SDL_free(block);
    }
}
