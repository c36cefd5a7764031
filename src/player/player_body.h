// player_body: the player's box and how it moves through a level of solid rectangles and walkable triangles, in whole
// pixels. World pixels (y grows downwards) and pixels a second. It knows no controls and no animation.
//
// Rectangles block. Triangles never do: their upper outline is a slope, and a box that has passed into one is lifted
// onto it. A box that begins a move clear of the rectangles ends it clear of them, whatever its speed; one that begins
// inside a rectangle is stuck along that axis.
#pragma once

#include "lumarind/toolkit/colliders.h"

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

struct PlayerBody {
    SDL_FPoint pos;      // the feet: middle of the box's bottom edge
    SDL_FPoint prev_pos; // pos before the current step, for drawing between steps; its owner's to keep
    SDL_FPoint vel;      // px/s; written by its owner
    float w, h;          // px
    float remainder_x;   // px of movement owed, -0.5 to 0.5; kept from step to step
    float remainder_y;
    bool grounded; // as player_body_update_ground found it last
    Sint32 facing; // 1: right, -1: left; written by its owner
};

void player_body_init(PlayerBody *body, SDL_FPoint feet, float w, float h); // at rest, airborne, facing right
SDL_FRect player_body_rect(const PlayerBody *body);

// --- one step, in this order; null for the triangles: the level has no slopes ---

// Moves by dx or dy px, and what earlier moves still owe. True: a rectangle has stopped it, which cancels what is owed.
// On the ground, ledges of up to 10 px are climbed on the way; vel.x stays as it is.
bool player_body_move_x(PlayerBody *body, float dx, const ColliderRects *rects);
bool player_body_move_y(PlayerBody *body, float dy, const ColliderRects *rects); // true: vel.y is 0 as well

// Lifts feet that are below the slope onto it, and keeps those that stand on the ground on a slope that falls away by
// up to 8 px; vel.y is then 0. Rectangles still block.
void player_body_snap_to_slope(PlayerBody *body, const ColliderRects *rects, const ColliderTris *tris);

// Grounded: a rectangle within the pixel below the feet, or a slope at most half a pixel below them.
void player_body_update_ground(PlayerBody *body, const ColliderRects *rects, const ColliderTris *tris);

// --- questions ---
// The highest point of any triangle's outline at x; false: no triangle is there. `surface_y` may be null.
bool player_body_slope_surface_y(const ColliderTris *tris, float x, float *surface_y);
