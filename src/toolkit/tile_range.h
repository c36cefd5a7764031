// tile_range: visible cells: the cells of an evenly spaced row or column that a span covers. Pure functions.
#pragma once

struct TileRange {
    int first; // included
    int end;   // excluded
};

struct TileCoord {
    int row, col;
};

// Clamps to 0 to count; the end is never before the first.
TileRange tile_range_clamp(TileRange range, int count);

// The cells that overlap the span [start, start + length). Cell 0 of `count` starts at `origin`; each is tile_size ×
// scale long. A size of 0 or less covers nothing.
TileRange tile_range_covering(float start, float length, float origin, float tile_size, float scale, int count);

// The cell at a point, not clamped to a grid; {0, 0} for cells of size 0.
TileCoord tile_coord_at(float x, float y, float origin_x, float origin_y, int tile_w, int tile_h, float scale);
