// castle: the castle's tile map, as the screens that show it share it.
#pragma once

struct RenderGrid;
struct Tilemap;

// The map at the given scale, and its baked chunks. The caller owns both, also after a failure, which is reported.
bool castle_load(Tilemap **map, RenderGrid **grid, float scale);

// Bakes anew, for when the renderer has lost its targets. The old chunks stay when that fails.
bool castle_bake_again(const Tilemap *map, RenderGrid **grid);

// Where a slow sweep to and fro is after t seconds: 0 to 1, beginning at 0 without speed. `speed` in radians a second.
double castle_pan(double t, double speed);

// Draws the part of the map that the sweep shows after t seconds, filling the current view where the map does.
void castle_draw_panning(const Tilemap *map, const RenderGrid *grid, double t);
