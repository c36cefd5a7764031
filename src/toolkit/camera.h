// camera: which part of a game's world the view shows. Follows a target with a dead zone, stays within the world, and
// places everything on whole units of the view, which keeps pixel art sharp and tiles together. Pure functions.
// World coordinates are the world's pixels, view coordinates are units of the current drawing space; y downwards in
// both.
#pragma once

#include <SDL3/SDL_rect.h>

struct Camera {
    SDL_FPoint position;  // world; the view's top-left corner
    int zoom;             // view units to a world pixel, at least 1
    SDL_FRect bounds;     // world; what may be seen. A side of 0 or less: unlimited in that direction
    SDL_FRect dead_zone;  // shares of the view, 0 to 1; while the target is inside, the camera stays
    SDL_FPoint view_size; // view units; of the last camera_center or camera_follow
};

// The camera at the origin of a world, with a dead zone of the middle of the view. A zoom below 1 counts as 1.
Camera camera_make(int zoom, SDL_FRect bounds);

// Both stop at the bounds; a view larger than the bounds shows their left or top edge.
void camera_center(Camera *camera, SDL_FPoint target, float view_width, float view_height);
void camera_follow(Camera *camera, SDL_FPoint target, float view_width, float view_height); // out of the dead zone only

// One axis of camera_follow: where the view begins, all in one unit. `low` and `high` are the dead zone's shares.
float camera_follow_axis(float camera, float target, float view, float low, float high);

SDL_FPoint camera_origin(const Camera *camera); // where the world's (0, 0) is in the view: whole units
SDL_FPoint camera_to_view(const Camera *camera, SDL_FPoint world);
SDL_FPoint camera_to_world(const Camera *camera, SDL_FPoint view);
SDL_FRect camera_area(const Camera *camera); // world; what the view shows
