// player_body: collision box and movement of the player in a level of solid rectangles and walkable slopes, pixel by
// pixel. World pixels (y grows downwards) and pixels per second. Independent of input and animation.
//
// Rectangles block. Triangles do not: their upper outline is a slope, and a box that has moved into one is lifted onto
// it. A box that starts a move clear of all rectangles ends it clear of them, at any speed (no tunnelling); a box that
// starts inside a rectangle cannot move along that axis.
#pragma once

#include "lumarind/toolkit/colliders.h"

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

struct PlayerBody {
    SDL_FPoint pos;      // the feet: middle of the box's bottom edge
    SDL_FPoint prev_pos; // pos before the current step, for interpolation; maintained by the owner
    SDL_FPoint vel;      // px/s; written by the owner
    float w, h;          // px
    float remainder_x;   // sub-pixel movement carried over to the next step, -0.5 to 0.5
    float remainder_y;
    bool grounded; // set by player_body_update_ground
    Sint32 facing; // 1: right, -1: left; written by the owner
};

void player_body_init(PlayerBody *body, SDL_FPoint feet, float w, float h); // at rest, airborne, facing right
SDL_FRect player_body_rect(const PlayerBody *body);

// One step: moves by vel × dt, snaps to slopes and updates `grounded`. Returns true if a rectangle stopped it
// horizontally; vel.x does not change. tris is null if the level has no slopes.
bool player_body_step(PlayerBody *body, double dt, const ColliderRects *rects, const ColliderTris *tris);

// --- the parts of a step, in this order ---

// Moves by dx or dy px plus the remainder. Returns true if a rectangle stopped it; the remainder is then 0.
// On the ground, ledges of up to 10 px are climbed; vel.x does not change.
bool player_body_move_x(PlayerBody *body, float dx, const ColliderRects *rects);
bool player_body_move_y(PlayerBody *body, float dy, const ColliderRects *rects); // true: vel.y was set to 0

// Lifts feet below the slope onto it, and keeps a grounded body on a slope that descends by up to 8 px; vel.y is then
// 0. Rectangles still block.
void player_body_snap_to_slope(PlayerBody *body, const ColliderRects *rects, const ColliderTris *tris);

// Grounded: a rectangle is within one pixel below the feet, or a slope at most half a pixel below them.
void player_body_update_ground(PlayerBody *body, const ColliderRects *rects, const ColliderTris *tris);

// --- queries ---
// The highest point of all triangles' outlines at x. Returns false if there is none. `surface_y` may be null.
bool player_body_slope_surface_y(const ColliderTris *tris, float x, float *surface_y);
