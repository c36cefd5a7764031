#include "view.h"

#include "lumarind/engine/drawing_space.h"

static constexpr float VIEW_H = 240;                     // world px, approximately
static constexpr float LOOK_AHEAD = 44, LOOK_SPEED = 60; // px, px/s
static constexpr float CHEST = 24;                       // px above the feet: the camera's target
static constexpr double SHAKE_FADE = 30;                 // px/s

void view_reset(View *view, SDL_FRect bounds) {
    *view = {};
    view->camera = camera_make(1, bounds);
    view->camera.dead_zone = {0.44f, 0.38f, 0.12f, 0.2f};
}

void view_step(View *view, float direction, double dt) {
    const float change = LOOK_SPEED * static_cast<float>(dt);
    if (direction != 0) view->look_ahead += SDL_clamp(direction * LOOK_AHEAD - view->look_ahead, -change, change);
    view->shake = SDL_max(view->shake - static_cast<float>(SHAKE_FADE * dt), 0);
    view->shake_steps++;
}

void view_shake(View *view, float px) { view->shake = SDL_max(view->shake, px); }

TileWorldView view_frame(View *view, SDL_FPoint hero) {
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    Camera *camera = &view->camera;
    const int zoom = SDL_max(static_cast<int>(height / VIEW_H + 0.5f), 1);
    const SDL_FPoint target = {hero.x + view->look_ahead, hero.y - CHEST};
    if (!view->centered || zoom != camera->zoom) {
        camera->zoom = zoom;
        camera_center(camera, target, width, height);
        view->centered = true;
    }
    camera_follow(camera, target, width, height);
    return {camera_area(camera), static_cast<float>(zoom)};
}

SDL_FPoint view_origin(const View *view) {
    const SDL_FPoint origin = camera_origin(&view->camera);
    const float direction = view->shake_steps / 3 % 2 ? 1.0f : -1.0f;
    const float px = SDL_roundf(view->shake) * static_cast<float>(view->camera.zoom) / 2;
    return {origin.x + SDL_roundf(direction * px), origin.y + SDL_roundf((view->shake_steps / 2 % 2 ? px : -px) / 2)};
}
