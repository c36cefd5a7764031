// castle: the castle's tile map, shared by the screens that show it.
#pragma once

struct RenderGrid;
struct Tilemap;

// Embedded in a screen's record, zero-initialised.
struct Castle {
    Tilemap *map;     // owned
    RenderGrid *grid; // owned; the map's baked chunks
};

bool castle_load(Castle *castle, float scale); // reports errors; castle_cleanup releases a partial load
void castle_cleanup(Castle *castle);           // safe to call twice, and after a failed load

// Bakes the chunks again if their contents are lost or the map has changed. Call before drawing them.
void castle_refresh(Castle *castle);

// Position of a slow back-and-forth pan after t seconds, 0 to 1, starting at 0 at rest. `speed` is in radians per
// second.
double castle_pan(double t, double speed);

// Draws the part of the map that the pan shows after t seconds. The map fills the view if it is large enough.
void castle_draw_panning(Castle *castle, double t);
