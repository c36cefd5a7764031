// tile_range: which cells of an evenly spaced row or column a span covers. Pure calculations.
#pragma once

struct TileRange {
    int first; // included
    int end;   // excluded
};

struct TileCoord {
    int row, col;
};

// Within 0 to count, and never backwards.
TileRange tile_range_clamp(TileRange range, int count);

// The cells that overlap the span from start to start + length. Cell 0 of `count` begins at `origin`; each is
// tile_size × scale long. A size of 0 or less covers nothing.
TileRange tile_range_covering(float start, float length, float origin, float tile_size, float scale, int count);

// The cell under a point, not clamped to any grid; {0, 0} for cells without a size.
TileCoord tile_coord_at(float x, float y, float origin_x, float origin_y, int tile_w, int tile_h, float scale);
