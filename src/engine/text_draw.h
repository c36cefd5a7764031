// text_draw: draws text in one call, with a cache of laid-out texts, for menus and read-outs. For texts that the caller
// owns see engine/text.h. Main thread only.
#pragma once

#include <SDL3/SDL_pixels.h>

struct TTF_Font;

enum TextAlign { TEXT_LEFT, TEXT_CENTER, TEXT_RIGHT }; // which part of the text is at x

inline constexpr int TEXT_DRAW_KEPT = 128; // capacity of the cache; the least recently used text is evicted

// Draws in the current drawing space; y is the text's upper edge. An empty text or a null font draws nothing. Reports
// errors.
bool engine_draw_text(TTF_Font *font, const char *text, float x, float y, SDL_Color color, TextAlign align = TEXT_LEFT);
// In drawing units. The height is one line of the font, also for an empty text. Outputs may be null.
void engine_measure_text(TTF_Font *font, const char *text, float *width, float *height);

// --- called by the engine ---
void text_draw_forget(const TTF_Font *font); // evicts a font's texts before it is closed; null: frees the cache
