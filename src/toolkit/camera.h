// camera: 2D camera: the part of the world shown in the view. Follows a target with a dead zone, clamps to the world's
// bounds, and snaps to whole view units, which keeps pixel art sharp and tiles seamless. Pure functions.
// World coordinates are in the world's pixels, view coordinates in units of the current drawing space; y grows
// downwards.
#pragma once

#include <SDL3/SDL_rect.h>

struct Camera {
    SDL_FPoint position;  // world; the view's top-left corner
    int zoom;             // view units per world pixel, at least 1
    SDL_FRect bounds;     // world; the visible area is clamped to it. A side of 0 or less: not limited
    SDL_FRect dead_zone;  // fractions of the view, 0 to 1; the camera moves only if the target leaves it
    SDL_FPoint view_size; // view units; from the last camera_center or camera_follow
};

// A camera at the world's origin with a centred dead zone. A zoom below 1 counts as 1.
Camera camera_make(int zoom, SDL_FRect bounds);

// Both clamp to the bounds; a view larger than the bounds starts at their left or top edge.
void camera_center(Camera *camera, SDL_FPoint target, float view_width, float view_height);
void camera_follow(Camera *camera, SDL_FPoint target, float view_width, float view_height); // respects the dead zone

// camera_follow for one axis: returns the view's start; all in one unit. `low` and `high` are dead zone fractions.
float camera_follow_axis(float camera, float target, float view, float low, float high);

SDL_FPoint camera_origin(const Camera *camera); // the world's (0, 0) in view coordinates, in whole units
SDL_FPoint camera_to_view(const Camera *camera, SDL_FPoint world);
SDL_FPoint camera_to_world(const Camera *camera, SDL_FPoint view);
SDL_FRect camera_area(const Camera *camera); // the visible part of the world
