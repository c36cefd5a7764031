// text: fonts, prepared texts and the FPS read-out. Glyphs are rasterised at the font size times the UI scale and drawn
// at whole output pixels, so text is sharp at any UI scale. Main thread only.
#pragma once

#include <SDL3/SDL_pixels.h>
#include <SDL3/SDL_stdinc.h>

struct TTF_Font;
struct TTF_Text;
struct TTF_TextEngine;

// Slots of the shared fonts.
inline constexpr int SHARED_FONT_UI = 0;
inline constexpr int SHARED_FONT_UI_HEADING = 1;

// --- fonts: sizes are points in UI units; opening, copying and resizing report errors ---
bool font_file_exists(const char *path);
TTF_Font *font_open(const char *path, float size); // the caller owns it until passing it to engine_add_font
TTF_Font *font_copy(TTF_Font *font);               // of the same size
bool font_set_size(TTF_Font *font, float size);
void font_cleanup(TTF_Font *font); // releases it; the engine may cache it for a later font_open. Null is ignored
void fonts_close_kept();           // closes the cached fonts; called by engine_stop
bool fonts_rescale(float factor);  // called when the UI scale changes. Reports errors and then changes nothing

// --- the engine's font list ---
int engine_add_font(TTF_Font *font);           // takes ownership and returns the slot; -1, without taking it, if full
TTF_Font *engine_get_font_by_index(int index); // null if there is no such slot
void engine_set_active_font(TTF_Font *font);   // borrowed
TTF_Font *engine_get_font();

// --- texts: the caller of engine_prepare_text owns them ---
TTF_TextEngine *engine_text_engine();
TTF_Text *engine_prepare_text(TTF_Font *font, const char *text, size_t length, SDL_Color color); // length 0: to the NUL
bool engine_set_text(TTF_Text *text, const char *content); // reports errors and then keeps the old content
void engine_set_text_color(TTF_Text *text, SDL_Color color);
void engine_cleanup_text(TTF_Text **text);                          // destroys it, sets null; null is ignored
void engine_render_text(TTF_Text *text, float x, float y);          // top-left corner, in the current drawing space
void engine_text_size(TTF_Text *text, float *width, float *height); // drawing units; either may be null

// --- FPS read-out ---
void engine_update_fps(); // once per second, from the last second's frame count
void engine_draw_fps();   // in UI space
