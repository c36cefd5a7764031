#include "lumarind/toolkit/primitives.h"

#include <SDL3/SDL_render.h>

static constexpr int CIRCLE_SEGMENTS = 24;
static constexpr int TEXT_MAX = 256; // bytes of one line with its NUL; longer lines are truncated

void set_color(SDL_Renderer *renderer, Uint32 color) {
    SDL_SetRenderDrawColor(
        renderer, static_cast<Uint8>(color), static_cast<Uint8>(color >> 8), static_cast<Uint8>(color >> 16),
        static_cast<Uint8>(color >> 24));
}

void fill_rect(SDL_Renderer *renderer, const SDL_FRect *rect, Uint32 color) {
    set_color(renderer, color);
    SDL_RenderFillRect(renderer, rect);
}

void outline_rect(SDL_Renderer *renderer, const SDL_FRect *rect, Uint32 color) {
    set_color(renderer, color);
    SDL_RenderRect(renderer, rect);
}

static SDL_FPoint _circle_point(float cx, float cy, float r, int i) {
    const float angle = 2.0f * SDL_PI_F * static_cast<float>(i) / CIRCLE_SEGMENTS;
    return {cx + SDL_cosf(angle) * r, cy + SDL_sinf(angle) * r};
}

static SDL_FColor _float_color(Uint32 color) {
    const auto channel = [=](int shift) { return static_cast<float>(color >> shift & 0xFF) / 255.0f; };
    return {channel(0), channel(8), channel(16), channel(24)};
}

void fill_circle(SDL_Renderer *renderer, float cx, float cy, float r, Uint32 color) {
    SDL_Vertex vertices[3 * CIRCLE_SEGMENTS];
    const SDL_FColor fill = _float_color(color);
    for (int i = 0; i < CIRCLE_SEGMENTS; i++) {
        vertices[3 * i] = {{cx, cy}, fill, {}};
        vertices[3 * i + 1] = {_circle_point(cx, cy, r, i), fill, {}};
        vertices[3 * i + 2] = {_circle_point(cx, cy, r, i + 1), fill, {}};
    }
    SDL_RenderGeometry(renderer, nullptr, vertices, 3 * CIRCLE_SEGMENTS, nullptr, 0);
}

void outline_circle(SDL_Renderer *renderer, float cx, float cy, float r, Uint32 color) {
    SDL_FPoint points[CIRCLE_SEGMENTS + 1];
    for (int i = 0; i <= CIRCLE_SEGMENTS; i++) points[i] = _circle_point(cx, cy, r, i);
    set_color(renderer, color);
    SDL_RenderLines(renderer, points, CIRCLE_SEGMENTS + 1);
}

void draw_text(SDL_Renderer *renderer, float x, float y, Uint32 color, const char *fmt, ...) {
    char text[TEXT_MAX];
    va_list args;
    va_start(args, fmt);
    SDL_vsnprintf(text, sizeof text, fmt, args);
    va_end(args);
    set_color(renderer, color);
    SDL_RenderDebugText(renderer, x, y, text);
}

void draw_centered_text(SDL_Renderer *renderer, float cx, float cy, const char *text, Uint32 color) {
    const float length = static_cast<float>(SDL_strlen(text));
    set_color(renderer, color);
    SDL_RenderDebugText(
        renderer, SDL_roundf(cx - DEBUG_CHARACTER_SIZE / 2 * length), SDL_roundf(cy - DEBUG_CHARACTER_SIZE / 2), text);
}
