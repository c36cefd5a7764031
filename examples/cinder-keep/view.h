// view: the camera: integer zoom to about 240 px of height, dead zone, look-ahead and screen shake.
#pragma once

#include "lumarind/toolkit/camera.h"
#include "lumarind/toolkit/tile_world.h"

struct View {
    Camera camera;
    float look_ahead;   // px, current look-ahead
    float shake;        // px, decaying amplitude
    Uint32 shake_steps; // counts steps, for the shake's direction
    bool centered;      // false: the next frame centres the camera on the hero
};

void view_reset(View *view, SDL_FRect bounds);          // bounds of the world, px
void view_step(View *view, float direction, double dt); // direction: -1 to 1, the hero's direction
void view_shake(View *view, float px);                  // a weaker shake does not replace a stronger one
TileWorldView view_frame(View *view, SDL_FPoint hero);  // moves the camera; once per frame
SDL_FPoint view_origin(const View *view);               // the world's origin in view units, including the shake
