// engine_record: the engine's single record. For the engine's sources and tests; other code uses the functions of
// engine.h, drawing_space.h, text.h and callbacks.h.
#pragma once

#include "lumarind/engine/callbacks.h"
#include "lumarind/engine/game_state.h"
#include "lumarind/engine/timestep.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_mouse.h>
#include <SDL3/SDL_pixels.h>
#include <SDL3/SDL_stdinc.h>
#include <SDL3/SDL_time.h>

struct SDL_Renderer;
struct SDL_Texture;
struct SDL_Window;
struct TTF_Font;
struct TTF_TextEngine;
struct TextDraw;

constexpr int MAX_FONTS = 8;
constexpr int FONT_CACHE_SIZE = 8;
constexpr int FONT_PATH_SIZE = 256; // bytes, with the terminating NUL
constexpr int FPS_TEXT_SIZE = 64;   // bytes, with the terminating NUL

struct FontList {
    Sint32 count;
    TTF_Font *fonts[MAX_FONTS]; // owned
};

// A cached font of font_open. It stays open after its release and is reused, because the text engine never frees the
// glyphs it holds for a font: reopening fonts each time a screen is entered would leak them.
struct CachedFont {
    char path[FONT_PATH_SIZE];
    float size; // points, with the UI scale
    Uint64 file_size;
    SDL_Time file_time;
    Uint32 generation; // of the font when opened; it differs if an owner changed the size or style
    int line_skip;     // of the font when opened, px
    TTF_Font *font;    // null: free slot
    bool in_use;       // in use by an owner; otherwise the engine owns it
};

struct DataCallbackEntry {
    Uint32 type;
    DataCallback call;
    void *data; // borrowed
};
struct DataCallbackTraits : ArrayOfValues<DataCallbackEntry> {
    static constexpr const char *TAG = "CALLBACK_ARRAY";
    static constexpr const char *PREFIX = "data_callbacks";
};
TYPED_ARRAY_STAMP(data_callbacks, DataCallbackArray, DataCallbackTraits)

struct Engine {
    Sint32 state, prev_state; // GameState; they differ while a switch is pending
    bool restart;             // a restart of the current screen was requested
    bool paused;              // the screen's fixed updates are suspended
    bool geometry_saved;      // the configuration holds the window's geometry from before full screen
    bool show_frame_time_graph;
    Sint32 ui_scale;                                    // 1 to 8
    Sint32 logical_width, logical_height;               // of the current screen; 0 × 0: it draws in UI space
    bool ui_space;                                      // UI space forced, while overlays draw
    Sint32 cursor_type;                                 // SDL_SystemCursor: default or pointer
    char *title;                                        // owned
    char *error;                                        // owned; null: no error yet
    char *running_dir;                                  // owned; the current directory at start
    SDL_Event event;                                    // the last one polled
    Sint32 frames, fps;                                 // frames in this second; frames in the last full second
    Uint64 fps_window_start, frame_start, frame_period; // ns
    Uint64 target_fps;                                  // 0: no limit
    double fps_delta;                                   // s, the whole previous frame
    char *fps_text;                                     // owned, FPS_TEXT_SIZE bytes
    SDL_Color fps_color;
    Timestep timestep;
    Uint64 last_frame_ticks; // ns; 0: no frame yet
    Sint64 next_frame_ns;    // length of the next frame; -1: measured
    Uint64 frame_number;     // 1 in the first frame
    SDL_Window *window;      // owned, as are the renderer, the cursors and the text engine
    SDL_Renderer *renderer;
    SDL_Texture *sink; // render target of a fast replay, never displayed; destroyed with the renderer
    SDL_Cursor *default_cursor, *pointer_cursor;
    FontList *fonts; // owned
    CachedFont font_cache[FONT_CACHE_SIZE];
    TTF_Font *active_font; // borrowed
    TTF_TextEngine *text_engine;
    TextDraw *text_draw;      // owned; null until the first engine_draw_text
    CallbackArray *callbacks; // owned, one per event type: ENGINE_EVENT_TYPES of them
    DataCallbackArray data_callbacks;
};
namespace lumarind {
extern Engine *engine; // null before engine_start
}
using lumarind::engine;
