// text: fonts, prepared texts and the FPS read-out. Fonts are rasterised at their size times the UI scale and drawn
// on whole output pixels, so text is sharp at any scale. Main thread only.
#pragma once

#include <SDL3/SDL_pixels.h>
#include <SDL3/SDL_stdinc.h>

struct TTF_Font;
struct TTF_Text;
struct TTF_TextEngine;

// Slots of the fonts every screen may use.
inline constexpr int SHARED_FONT_UI = 0;
inline constexpr int SHARED_FONT_UI_HEADING = 1;

// --- fonts: sizes are points in UI units; a null or false is reported ---
bool font_file_exists(const char *path);
TTF_Font *font_open(const char *path, float size); // the caller's, until engine_add_font takes it
TTF_Font *font_copy(TTF_Font *font);               // of the same size
bool font_set_size(TTF_Font *font, float size);
void font_cleanup(TTF_Font *font); // null is fine. The engine may keep it for the next who opens the same
void fonts_close_kept();           // called by the engine's stop
bool fonts_rescale(float factor);  // called when the UI scale changes; false: reported, and they are as they were

// --- the engine's font list ---
int engine_add_font(TTF_Font *font); // its slot; the engine then owns it. -1: the list is full and the font still yours
TTF_Font *engine_get_font_by_index(int index); // null: no such slot
void engine_set_active_font(TTF_Font *font);   // remembered, not owned
TTF_Font *engine_get_font();

// --- texts: owned by who prepared them ---
TTF_TextEngine *engine_text_engine();
TTF_Text *engine_prepare_text(TTF_Font *font, const char *text, size_t length, SDL_Color color); // length 0: to the NUL
bool engine_set_text(TTF_Text *text, const char *content); // the old content stays on failure. False: reported
void engine_set_text_color(TTF_Text *text, SDL_Color color);
void engine_cleanup_text(TTF_Text **text);                          // destroys and nulls; null pointers are fine
void engine_render_text(TTF_Text *text, float x, float y);          // top-left corner, in the current drawing space
void engine_text_size(TTF_Text *text, float *width, float *height); // drawing units; either may be null

// --- FPS read-out ---
void engine_update_fps(); // from the last second's count; once a second
void engine_draw_fps();   // in UI space
