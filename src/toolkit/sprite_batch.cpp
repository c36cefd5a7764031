#include "lumarind/toolkit/sprite_batch.h"

#include "lumarind/core/error.h"
#include "toolkit/sprite_sheet_internal.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

#include <utility>

static constexpr int CORNERS = 4, INDICES = 6; // per sprite
static constexpr int CAPACITY_MAX = 1 << 24;   // sprites: indices must fit an int

// --- lifetime ---

static bool _sprite_batch_grow(SpriteBatch *batch, int capacity) {
    const size_t sprites = static_cast<size_t>(capacity);
    void *vertices = SDL_realloc(batch->vertices, sprites * CORNERS * sizeof(SDL_Vertex));
    if (vertices) batch->vertices = static_cast<SDL_Vertex *>(vertices);
    void *indices = vertices ? SDL_realloc(batch->indices, sprites * INDICES * sizeof(Sint32)) : nullptr;
    if (!indices) {
        return engine_error(
            "[SPRITE_BATCH] Memory allocation failed for %d sprites, error: %s", capacity, SDL_GetError());
    }
    batch->indices = static_cast<Sint32 *>(indices);
    for (int i = batch->capacity; i < capacity; i++) {
        constexpr Sint32 TWO_TRIANGLES[INDICES] = {0, 1, 2, 0, 2, 3};
        for (int k = 0; k < INDICES; k++) batch->indices[i * INDICES + k] = i * CORNERS + TWO_TRIANGLES[k];
    }
    batch->capacity = capacity;
    return true;
}

SpriteBatch *sprite_batch_new(int capacity) {
    auto *batch = static_cast<SpriteBatch *>(SDL_calloc(1, sizeof(SpriteBatch)));
    if (!batch) {
        engine_error("[SPRITE_BATCH] Memory allocation failed, error: %s", SDL_GetError());
        return nullptr;
    }
    if (!_sprite_batch_grow(batch, SDL_clamp(capacity, 1, CAPACITY_MAX))) sprite_batch_cleanup(&batch);
    return batch;
}

void sprite_batch_cleanup(SpriteBatch **batch) {
    if (!batch || !*batch) return;
    SDL_free((*batch)->vertices);
    SDL_free((*batch)->indices);
    SDL_free(*batch);
    *batch = nullptr;
}

// --- a frame ---

void sprite_batch_begin(SpriteBatch *batch, const SpriteSheet *sheet) {
    batch->sheet = sheet;
    batch->count = 0;
}

static bool _sprite_batch_has_room(SpriteBatch *batch) {
    if (batch->count < batch->capacity) return true;
    if (batch->capacity >= CAPACITY_MAX)
        return engine_error("[SPRITE_BATCH] %d sprites are too many", CAPACITY_MAX + 1);
    return _sprite_batch_grow(batch, SDL_min(batch->capacity * 2, CAPACITY_MAX));
}

bool sprite_batch_add(
    SpriteBatch *batch, const Animation *anim, SDL_FPoint pos, float scale, SDL_FlipMode flip, SDL_FColor tint) {
    SpritePlace place = {};
    if (!_sprite_sheet_place(batch->sheet, anim, pos, scale, flip, &place) || !_sprite_batch_has_room(batch))
        return false;
    const SpriteFrame *frame = place.frame;
    float left = frame->left, top = frame->top, right = frame->right, bottom = frame->bottom;
    if (flip & SDL_FLIP_HORIZONTAL) std::swap(left, right);
    if (flip & SDL_FLIP_VERTICAL) std::swap(top, bottom);
    const SDL_FRect dst = place.dst;
    SDL_Vertex *corner = &batch->vertices[batch->count++ * CORNERS];
    corner[0] = {{dst.x, dst.y}, tint, {left, top}};
    corner[1] = {{dst.x + dst.w, dst.y}, tint, {right, top}};
    corner[2] = {{dst.x + dst.w, dst.y + dst.h}, tint, {right, bottom}};
    corner[3] = {{dst.x, dst.y + dst.h}, tint, {left, bottom}};
    return true;
}

bool sprite_batch_draw(SDL_Renderer *renderer, const SpriteBatch *batch) {
    if (batch->count == 0) return true;
    const SDL_Vertex *first = batch->vertices;
    const bool drawn = SDL_RenderGeometryRaw(
        renderer, batch->sheet->texture, &first->position.x, sizeof *first, &first->color, sizeof *first,
        &first->tex_coord.x, sizeof *first, batch->count * CORNERS, batch->indices, batch->count * INDICES,
        sizeof *batch->indices);
    return drawn || engine_error("[SPRITE_BATCH] Could not draw %d sprites, error: %s", batch->count, SDL_GetError());
}
