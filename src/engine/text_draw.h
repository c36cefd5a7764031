// text_draw: a text in one call, for menus and read-outs whose texts come and go. What is drawn again in the next frame
// is kept, laid out; engine/text.h has texts that their owner keeps. Main thread only.
#pragma once

#include <SDL3/SDL_pixels.h>

struct TTF_Font;

enum TextAlign { TEXT_LEFT, TEXT_CENTER, TEXT_RIGHT }; // which part of the text is at x

inline constexpr int TEXT_DRAW_KEPT = 128; // texts; beyond them the one drawn longest ago goes

// In the current drawing space; y is its upper edge. An empty text, or no font, draws nothing. Returns false and
// reports the error when the text could not be made.
bool engine_draw_text(TTF_Font *font, const char *text, float x, float y, SDL_Color color, TextAlign align = TEXT_LEFT);
// Drawing units; the height is that of a line of the font, also for an empty text. Both may be null.
void engine_measure_text(TTF_Font *font, const char *text, float *width, float *height);

// --- called by the engine ---
void text_draw_forget(const TTF_Font *font); // before a font is closed; null: all of them
