#include "lumarind/toolkit/camera.h"

#include <SDL3/SDL_stdinc.h>

static constexpr SDL_FRect DEAD_ZONE = {0.35f, 0.4f, 0.3f, 0.2f};

Camera camera_make(int zoom, SDL_FRect bounds) {
    return {
        .position = {0, 0}, .zoom = SDL_max(zoom, 1), .bounds = bounds, .dead_zone = DEAD_ZONE, .view_size = {0, 0}};
}

static float _zoom(const Camera *camera) { return static_cast<float>(camera->zoom); }

static float _camera_limit(float position, float view, float first, float size) {
    return size > 0 ? SDL_clamp(position, first, first + SDL_max(size - view, 0)) : position;
}

static void _camera_move(Camera *camera, SDL_FPoint to) {
    const SDL_FRect *bounds = &camera->bounds;
    camera->position = {
        _camera_limit(to.x, camera->view_size.x / _zoom(camera), bounds->x, bounds->w),
        _camera_limit(to.y, camera->view_size.y / _zoom(camera), bounds->y, bounds->h)};
}

void camera_center(Camera *camera, SDL_FPoint target, float view_width, float view_height) {
    camera->view_size = {view_width, view_height};
    const float half = 2 * _zoom(camera);
    _camera_move(camera, {target.x - view_width / half, target.y - view_height / half});
}

float camera_follow_axis(float camera, float target, float view, float low, float high) {
    if (target - high * view > camera) return target - high * view;
    if (target - low * view < camera) return target - low * view;
    return camera;
}

void camera_follow(Camera *camera, SDL_FPoint target, float view_width, float view_height) {
    camera->view_size = {view_width, view_height};
    const SDL_FRect *zone = &camera->dead_zone;
    _camera_move(
        camera,
        {camera_follow_axis(camera->position.x, target.x, view_width / _zoom(camera), zone->x, zone->x + zone->w),
         camera_follow_axis(camera->position.y, target.y, view_height / _zoom(camera), zone->y, zone->y + zone->h)});
}

SDL_FPoint camera_origin(const Camera *camera) {
    return {SDL_roundf(-camera->position.x * _zoom(camera)), SDL_roundf(-camera->position.y * _zoom(camera))};
}

SDL_FPoint camera_to_view(const Camera *camera, SDL_FPoint world) {
    const SDL_FPoint origin = camera_origin(camera);
    return {origin.x + world.x * _zoom(camera), origin.y + world.y * _zoom(camera)};
}

SDL_FPoint camera_to_world(const Camera *camera, SDL_FPoint view) {
    const SDL_FPoint origin = camera_origin(camera);
    return {(view.x - origin.x) / _zoom(camera), (view.y - origin.y) / _zoom(camera)};
}

SDL_FRect camera_area(const Camera *camera) {
    const SDL_FPoint corner = camera_to_world(camera, {0, 0});
    return {corner.x, corner.y, camera->view_size.x / _zoom(camera), camera->view_size.y / _zoom(camera)};
}
