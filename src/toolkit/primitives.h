// primitives: shapes and debug text for read-outs and debug views, in units of the current drawing space. Colours are
// packed, red in the lowest byte.
#pragma once

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

struct SDL_Renderer;

inline constexpr float DEBUG_CHARACTER_SIZE = 8; // width and height of SDL's debug text

constexpr Uint32 rgba(Uint8 r, Uint8 g, Uint8 b, Uint8 a) {
    return r | static_cast<Uint32>(g) << 8 | static_cast<Uint32>(b) << 16 | static_cast<Uint32>(a) << 24;
}

void set_color(SDL_Renderer *renderer, Uint32 color);                        // the renderer's draw colour
void fill_rect(SDL_Renderer *renderer, const SDL_FRect *rect, Uint32 color); // null: the whole view
void outline_rect(SDL_Renderer *renderer, const SDL_FRect *rect, Uint32 color);
void fill_circle(SDL_Renderer *renderer, float cx, float cy, float r, Uint32 color);
void outline_circle(SDL_Renderer *renderer, float cx, float cy, float r, Uint32 color);

// SDL's debug text, printf-style; (x, y) is its top-left corner.
void draw_text(SDL_Renderer *renderer, float x, float y, Uint32 color, SDL_PRINTF_FORMAT_STRING const char *fmt, ...)
    SDL_PRINTF_VARARG_FUNC(5);
void draw_centered_text(SDL_Renderer *renderer, float cx, float cy, const char *text, Uint32 color);
