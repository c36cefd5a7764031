// Images that move in fixed steps and are drawn interpolated between the previous and the current step, so that motion
// is smooth at any frame rate.

#include "screens/texture_demo.h"

#include "lumarind/core/error.h"
#include "lumarind/core/state_hash.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/timestep.h"
#include "lumarind/toolkit/image.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

static constexpr float SCALE = 4;
static constexpr float TOP = 50; // UI units, as are the following
static constexpr float SLIDER_LEFT = 50;
static constexpr float SPINNER_LEFT = 220;
static constexpr double SLIDE_FROM = 50;
static constexpr double SLIDE_RANGE = 50;
static constexpr double SLIDE_SPEED = 3.0; // rad/s
static constexpr double SPIN_SPEED = 30.0; // degrees/s

struct TextureSprite {
    double angle, prev_angle; // degrees, after and before the last fixed step
    SDL_FlipMode flip;
    SDL_FPoint center; // of rotation, relative to dst's corner
    SDL_FRect src, dst;
    SDL_Texture *texture; // owned
};

struct TextureDemo {
    TextureSprite slider, spinner;
    double phase, prev_phase; // rad, of the slider's oscillation
};
static TextureDemo *texture_demo;

static SDL_Texture *_texture_demo_load(SDL_Renderer *renderer, const char *file) {
    char *path = nullptr;
    if (SDL_asprintf(&path, "assets/texture_demo/%s", file) < 0) {
        path = nullptr;
        engine_error("[TEXTURE_DEMO] SDL_asprintf memory allocation failed, error: %s", SDL_GetError());
    }
    SDL_Texture *texture = image_load_texture(renderer, path);
    if (!texture) engine_error("[TEXTURE_DEMO] IMG_LoadTexture failed, error: %s", SDL_GetError());
    SDL_free(path);
    return texture;
}

static bool texture_demo_setup_texture(
    SDL_Renderer *renderer, const char *file, TextureSprite *sprite, float x, float y, float scale) {
    sprite->texture = _texture_demo_load(renderer, file);
    if (!sprite->texture) return false;
    float width = 0, height = 0;
    SDL_GetTextureSize(sprite->texture, &width, &height);
    sprite->src = {0, 0, width, height};
    sprite->dst = {x, y, width * scale, height * scale};
    sprite->center = {width * scale / 2, height * scale / 2};
    sprite->flip = SDL_FLIP_NONE;
    sprite->angle = sprite->prev_angle = 0;
    SDL_SetTextureScaleMode(sprite->texture, SDL_SCALEMODE_PIXELART);
    return true;
}

bool texture_demo_setup() {
    if (texture_demo) return true;
    texture_demo = static_cast<TextureDemo *>(SDL_calloc(1, sizeof *texture_demo));
    if (!texture_demo) return engine_error("[TEXTURE_DEMO] Memory allocation failed, error: %s", SDL_GetError());
    SDL_Renderer *renderer = engine_renderer();
    return texture_demo_setup_texture(renderer, "texture_a.png", &texture_demo->slider, SLIDER_LEFT, TOP, SCALE) &&
           texture_demo_setup_texture(renderer, "texture_b.png", &texture_demo->spinner, SPINNER_LEFT, TOP, SCALE);
}

double texture_demo_oscillate_x(double phase) { return SLIDE_FROM + (SDL_sin(phase) + 1) / 2 * SLIDE_RANGE; }

void texture_demo_fixed_update(double dt) {
    texture_demo->prev_phase = texture_demo->phase;
    texture_demo->phase += SLIDE_SPEED * dt;
    texture_demo->spinner.prev_angle = texture_demo->spinner.angle;
    texture_demo->spinner.angle += SPIN_SPEED * dt;
}

Uint64 texture_demo_state_hash() {
    const TextureDemo *demo = texture_demo;
    return state_hash_of(
        STATE_HASH_START, demo->phase, demo->prev_phase, demo->spinner.angle, demo->spinner.prev_angle);
}

void texture_demo_tick() {
    SDL_Renderer *renderer = engine_renderer();
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);

    const double alpha = engine_fixed_alpha();
    TextureSprite *slider = &texture_demo->slider;
    const double phase = timestep_lerp(texture_demo->prev_phase, texture_demo->phase, alpha);
    slider->dst.x = static_cast<float>(SDL_round(texture_demo_oscillate_x(phase)));
    SDL_RenderTexture(renderer, slider->texture, &slider->src, &slider->dst);

    const TextureSprite *spinner = &texture_demo->spinner;
    const double angle = timestep_lerp(spinner->prev_angle, spinner->angle, alpha);
    SDL_RenderTextureRotated(
        renderer, spinner->texture, &spinner->src, &spinner->dst, angle, &spinner->center, spinner->flip);
}

void texture_demo_cleanup() {
    if (!texture_demo) return;
    if (texture_demo->slider.texture) SDL_DestroyTexture(texture_demo->slider.texture);
    if (texture_demo->spinner.texture) SDL_DestroyTexture(texture_demo->spinner.texture);
    SDL_free(texture_demo);
    texture_demo = nullptr;
}
