#include "lumarind/toolkit/tile_range.h"

#include <SDL3/SDL_stdinc.h>

// Converts to a cell index; saturates, and NaN becomes the lower limit.
static int _to_cell(float cell) {
    constexpr float LIMIT = 1 << 30;
    if (!(cell > -LIMIT)) return -(1 << 30);
    return cell < LIMIT ? static_cast<int>(cell) : 1 << 30;
}

TileRange tile_range_clamp(TileRange range, int count) {
    const int limit = SDL_max(count, 0);
    range.first = SDL_clamp(range.first, 0, limit);
    range.end = SDL_clamp(range.end, 0, limit);
    if (range.end < range.first) range.end = range.first;
    return range;
}

TileRange tile_range_covering(float start, float length, float origin, float tile_size, float scale, int count) {
    const float step = tile_size * scale;
    if (!(step > 0)) return {0, 0};
    const int first = _to_cell(SDL_floorf((start - origin) / step));
    const int end = _to_cell(SDL_ceilf((start + length - origin) / step));
    return tile_range_clamp({first, end}, count);
}

TileCoord tile_coord_at(float x, float y, float origin_x, float origin_y, int tile_w, int tile_h, float scale) {
    const float w = static_cast<float>(tile_w) * scale, h = static_cast<float>(tile_h) * scale;
    if (!(w > 0) || !(h > 0)) return {0, 0};
    return {_to_cell(SDL_floorf((y - origin_y) / h)), _to_cell(SDL_floorf((x - origin_x) / w))};
}
