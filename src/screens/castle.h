// castle: the castle's tile map, as the screens that show it share it.
#pragma once

struct RenderGrid;
struct Tilemap;

// Embedded in its screen's record, zeroed.
struct Castle {
    Tilemap *map;     // owned, as is the grid
    RenderGrid *grid; // the map's baked chunks
};

bool castle_load(Castle *castle, float scale); // false: reported; castle_cleanup releases what was made
void castle_cleanup(Castle *castle);           // safe twice, and after a failed load

// Bakes the chunks again when the renderer has lost them or the map has changed; to be called before they are drawn.
void castle_refresh(Castle *castle);

// Where a slow sweep to and fro is after t seconds: 0 to 1, beginning at 0 without speed. `speed` in radians a second.
double castle_pan(double t, double speed);

// Draws the part of the map that the sweep shows after t seconds, filling the current view where the map does.
void castle_draw_panning(Castle *castle, double t);
