// view: which part of the level is seen, and how large: about 240 px high, with a dead zone, a look ahead and a shake.
#pragma once

#include "lumarind/toolkit/camera.h"
#include "lumarind/toolkit/tile_world.h"

struct View {
    Camera camera;
    float look;         // px the view is ahead of the hero
    float shake;        // px, dying away
    Uint32 shake_steps; // counts steps, for the shake's direction
    bool placed;        // false: the next frame centres it
};

void view_reset(View *view, SDL_FRect bounds);         // the world's
void view_step(View *view, float way, double dt);      // way: -1 to 1, how the hero runs
void view_shake(View *view, float px);                 // the strongest counts
TileWorldView view_frame(View *view, SDL_FPoint hero); // moves the camera for this frame
SDL_FPoint view_origin(const View *view);              // where the world's origin is, in view units
