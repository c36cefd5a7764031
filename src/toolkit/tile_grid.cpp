#include "lumarind/toolkit/tile_grid.h"

#include "lumarind/core/error.h"

#include <SDL3/SDL_error.h>

#include <cstring>

// --- lifetime ---

TileGrid *tile_grid_new(int rows, int cols) {
    if (rows < 1 || cols < 1) {
        engine_error("[TILE_GRID] A grid of %dx%d has no cells", cols, rows);
        return nullptr;
    }
    auto *grid = static_cast<TileGrid *>(SDL_calloc(1, sizeof(TileGrid)));
    if (grid) grid->cells = static_cast<Uint32 *>(SDL_calloc(static_cast<size_t>(rows) * static_cast<size_t>(cols), 4));
    if (!grid || !grid->cells) {
        engine_error("[TILE_GRID] Memory allocation failed, error: %s", SDL_GetError());
        SDL_free(grid);
        return nullptr;
    }
    grid->rows = rows;
    grid->cols = cols;
    return grid;
}

void tile_grid_cleanup(TileGrid *grid) {
    if (!grid) return;
    SDL_free(grid->cells);
    *grid = {};
}

// --- CSV ---

static bool is_space(char c) { return c == ' ' || c == '\t'; }

// Returns the end of the line at `start`, without its line break; *next is the start of the next one, or null.
static const char *line_end(const char *start, const char **next) {
    const char *feed = std::strchr(start, '\n');
    const char *end = feed ? feed : start + std::strlen(start);
    *next = feed ? feed + 1 : nullptr;
    return end > start && end[-1] == '\r' ? end - 1 : end;
}

static const char *skip_spaces(const char *start, const char *end) {
    while (start < end && is_space(*start)) start++;
    return start;
}

static bool line_is_blank(const char *start, const char *end) { return skip_spaces(start, end) == end; }

// Parses a decimal number. Returns null if there is none or it is too large for a GID.
static const char *parse_value(const char *at, const char *end, Uint32 *value) {
    const char *first = at;
    Uint64 number = 0;
    for (; at < end; at++) {
        const unsigned digit = static_cast<unsigned char>(*at) - unsigned{'0'};
        if (digit > 9) break;
        number = number * 10 + digit;
        if (number > SDL_MAX_UINT32) return nullptr;
    }
    *value = static_cast<Uint32>(number);
    return at == first ? nullptr : at;
}

// Returns the number of values on a line, or -1 if it is malformed. Stores up to `capacity` of them unless `out` is
// null.
static int parse_line(const char *start, const char *end, Uint32 *out, int capacity) {
    int count = 0;
    for (const char *at = start;; at++) { // skips the comma
        at = skip_spaces(at, end);
        if (at == end) return count > 0 ? count : -1; // trailing comma
        Uint32 value = 0;
        at = parse_value(at, end, &value);
        if (!at) return -1;
        if (out && count < capacity) out[count] = value;
        count++;
        at = skip_spaces(at, end);
        if (at == end) return count;
        if (*at != ',') return -1;
    }
}

// Counts rows and columns and validates every line before anything is allocated.
static bool measure_csv(const char *text, int *rows, int *cols) {
    *rows = *cols = 0;
    for (const char *start = text, *next = nullptr; start; start = next) {
        const char *end = line_end(start, &next);
        if (line_is_blank(start, end)) continue;
        ++*rows;
        const int count = parse_line(start, end, nullptr, 0);
        if (count < 0) return engine_error("[TILE_GRID] Malformed value on CSV line %d", *rows);
        if (*rows == 1) *cols = count;
        if (count != *cols) {
            return engine_error("[TILE_GRID] CSV line %d has %d values, expected %d", *rows, count, *cols);
        }
    }
    return *rows > 0 || engine_error("[TILE_GRID] CSV holds no tile rows");
}

TileGrid *tile_grid_parse_csv(const char *text) {
    int rows = 0, cols = 0;
    if (!text) engine_error("[TILE_GRID] No CSV text to parse");
    if (!text || !measure_csv(text, &rows, &cols)) return nullptr;
    TileGrid *grid = tile_grid_new(rows, cols);
    if (!grid) return nullptr;
    Uint32 *row = grid->cells;
    for (const char *start = text, *next = nullptr; start; start = next) {
        const char *end = line_end(start, &next);
        if (line_is_blank(start, end)) continue;
        parse_line(start, end, row, cols);
        row += cols;
    }
    return grid;
}

// --- cells ---

static Uint32 *cell_at(const TileGrid *grid, int row, int col) {
    if (!grid || !grid->cells || row < 0 || row >= grid->rows || col < 0 || col >= grid->cols) return nullptr;
    return &grid->cells[static_cast<size_t>(row) * static_cast<size_t>(grid->cols) + static_cast<size_t>(col)];
}

Uint32 tile_grid_gid(const TileGrid *grid, int row, int col) {
    const Uint32 *cell = cell_at(grid, row, col);
    return cell ? *cell : 0;
}

bool tile_grid_set_gid(TileGrid *grid, int row, int col, Uint32 gid) {
    Uint32 *cell = cell_at(grid, row, col);
    if (cell) *cell = gid;
    return cell != nullptr;
}

Uint32 tile_grid_max_gid(const TileGrid *grid) {
    if (!grid || !grid->cells) return 0;
    const size_t count = static_cast<size_t>(grid->rows) * static_cast<size_t>(grid->cols);
    Uint32 max = 0;
    for (size_t i = 0; i < count; i++) max = SDL_max(max, grid->cells[i] & TILE_ID_MASK);
    return max;
}
