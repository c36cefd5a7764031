#include "lumarind/toolkit/render_grid.h"

#include "lumarind/core/error.h"
#include "toolkit/lost_targets.h"
#include "toolkit/view_copy.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

// --- lifetime ---

static SDL_Texture *_render_grid_new_chunk(SDL_Renderer *renderer, int width, int height) {
    SDL_Texture *chunk = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGBA32, SDL_TEXTUREACCESS_TARGET, width, height);
    if (chunk) SDL_SetTextureScaleMode(chunk, SDL_SCALEMODE_NEAREST);
    return chunk;
}

static size_t _render_grid_count(const RenderGrid *grid) {
    return static_cast<size_t>(grid->rows) * static_cast<size_t>(grid->cols);
}

static bool _render_grid_check_size(int rows, int cols, int chunk_w, int chunk_h) {
    if (rows < 1 || cols < 1 || chunk_w < 1 || chunk_h < 1) {
        return engine_error(
            "[RENDER_GRID] A grid of %dx%d chunks of %dx%d px is not usable", cols, rows, chunk_w, chunk_h);
    }
    const double mb = 4.0 * rows * cols * chunk_w * chunk_h / (1 << 20); // double, to avoid overflow
    if (mb <= RENDER_GRID_MAX_MB) return true;
    return engine_error(
        "[RENDER_GRID] A grid of %dx%d chunks of %dx%d px would take %.0f MB, more than %d", cols, rows, chunk_w,
        chunk_h, mb, RENDER_GRID_MAX_MB);
}

RenderGrid *render_grid_new(SDL_Renderer *renderer, int rows, int cols, int chunk_w, int chunk_h) {
    if (!_render_grid_check_size(rows, cols, chunk_w, chunk_h)) return nullptr;
    RenderGrid empty = {};
    empty.rows = rows;
    empty.cols = cols;
    empty.chunk_w = chunk_w;
    empty.chunk_h = chunk_h;
    const size_t count = _render_grid_count(&empty);
    auto *grid = static_cast<RenderGrid *>(SDL_malloc(sizeof(RenderGrid)));
    if (grid) {
        *grid = empty;
        grid->chunks = static_cast<SDL_Texture **>(SDL_calloc(count, sizeof(SDL_Texture *)));
    }
    if (!grid || !grid->chunks) {
        engine_error("[RENDER_GRID] Memory allocation failed, error: %s", SDL_GetError());
        SDL_free(grid);
        return nullptr;
    }
    for (size_t i = 0; i < count; i++) {
        grid->chunks[i] = _render_grid_new_chunk(renderer, chunk_w, chunk_h);
        if (grid->chunks[i]) continue;
        engine_error("[RENDER_GRID] Could not create chunk %zu of %zu, error: %s", i + 1, count, SDL_GetError());
        render_grid_cleanup(&grid);
        return nullptr;
    }
    if (lost_targets_watch(&grid->lost)) return grid;
    engine_error("[RENDER_GRID] Watching for lost render targets failed, error: %s", SDL_GetError());
    render_grid_cleanup(&grid);
    return nullptr;
}

void render_grid_cleanup(RenderGrid **grid) {
    if (!grid || !*grid) return;
    lost_targets_unwatch(&(*grid)->lost);
    const size_t count = _render_grid_count(*grid);
    for (size_t i = 0; (*grid)->chunks && i < count; i++) {
        if ((*grid)->chunks[i]) SDL_DestroyTexture((*grid)->chunks[i]);
    }
    SDL_free((*grid)->chunks);
    SDL_free(*grid);
    *grid = nullptr;
}

// --- filling ---

bool render_grid_begin_chunk(SDL_Renderer *renderer, RenderGrid *grid, int row, int col, SDL_Texture **saved_target) {
    SDL_Texture *chunk = render_grid_get(grid, row, col);
    if (!chunk) return engine_error("[RENDER_GRID] No chunk at row %d col %d", row, col);
    *saved_target = SDL_GetRenderTarget(renderer);
    if (!SDL_SetRenderTarget(renderer, chunk)) {
        return engine_error(
            "[RENDER_GRID] Could not target chunk at row %d col %d, error: %s", row, col, SDL_GetError());
    }
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 0);
    SDL_RenderClear(renderer);
    return true;
}

bool render_grid_end_chunk(SDL_Renderer *renderer, SDL_Texture *saved_target) {
    if (SDL_SetRenderTarget(renderer, saved_target)) return true;
    return engine_error("[RENDER_GRID] Could not restore the render target, error: %s", SDL_GetError());
}

// --- drawing ---

bool render_grid_draw_range(
    SDL_Renderer *renderer, const RenderGrid *grid, TileRange rows, TileRange cols, SDL_FPoint origin, float scale) {
    rows = tile_range_clamp(rows, grid->rows);
    cols = tile_range_clamp(cols, grid->cols);
    const float w = static_cast<float>(grid->chunk_w) * scale, h = static_cast<float>(grid->chunk_h) * scale;
    for (int row = rows.first; row < rows.end; row++) {
        for (int col = cols.first; col < cols.end; col++) {
            SDL_Texture *chunk = render_grid_get(grid, row, col);
            if (!chunk) continue;
            const SDL_FRect dst = {
                origin.x + static_cast<float>(col) * w, origin.y + static_cast<float>(row) * h, w, h};
            if (copy_texture_in_view(renderer, chunk, nullptr, &dst)) continue;
            return engine_error(
                "[RENDER_GRID] Could not draw chunk at row %d col %d, error: %s", row, col, SDL_GetError());
        }
    }
    return true;
}

bool render_grid_draw(SDL_Renderer *renderer, const RenderGrid *grid, SDL_FPoint origin, float scale) {
    return render_grid_draw_range(renderer, grid, {0, grid->rows}, {0, grid->cols}, origin, scale);
}

// --- queries ---

bool render_grid_is_lost(RenderGrid *grid) { return SDL_GetAtomicInt(&grid->lost) != 0; }

SDL_Texture *render_grid_get(const RenderGrid *grid, int row, int col) {
    if (!grid || !grid->chunks || row < 0 || row >= grid->rows || col < 0 || col >= grid->cols) return nullptr;
    return grid->chunks[static_cast<size_t>(row) * static_cast<size_t>(grid->cols) + static_cast<size_t>(col)];
}

TileRange render_grid_visible_rows(const RenderGrid *grid, float view_y, float view_h, SDL_FPoint origin, float scale) {
    return tile_range_covering(view_y, view_h, origin.y, static_cast<float>(grid->chunk_h), scale, grid->rows);
}

TileRange render_grid_visible_cols(const RenderGrid *grid, float view_x, float view_w, SDL_FPoint origin, float scale) {
    return tile_range_covering(view_x, view_w, origin.x, static_cast<float>(grid->chunk_w), scale, grid->cols);
}
