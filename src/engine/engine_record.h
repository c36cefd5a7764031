// engine_record: the engine's single record. For the engine's own sources and tests; everyone else asks through the
// operations of engine.h, drawing_space.h, text.h and callbacks.h.
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
constexpr int KEPT_FONTS = 8;
constexpr int FONT_PATH_SIZE = 256; // bytes, with the terminating NUL
constexpr int FPS_TEXT_SIZE = 64;   // bytes, with the terminating NUL

struct FontList {
    Sint32 count;
    TTF_Font *fonts[MAX_FONTS]; // owned
};

// A font that font_open opened. Between two owners it stays open: what the text engine keeps for a font, its glyphs
// among them, it keeps for good, so that fonts opened anew at each visit of a screen would fill the memory.
struct KeptFont {
    char path[FONT_PATH_SIZE];
    float size; // points, with the UI scale
    Uint64 file_size;
    SDL_Time file_time;
    Uint32 generation; // of the font when it was new; another one: its owner changed its size or look
    int line_skip;     // of the font when it was new, px
    TTF_Font *font;    // null: the place is free
    bool lent;         // an owner has it; else it is the engine's
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
    bool restart;             // of the current screen, pending
    bool paused;              // the screen's fixed updates stand still
    bool geometry_kept;       // the configuration has the window's place from before it filled the screen
    bool show_frame_time_graph;
    Sint32 ui_scale;                                    // 1 to 8
    Sint32 logical_width, logical_height;               // of the current screen; 0 × 0: it draws in UI space
    bool ui_space;                                      // UI space forced, while overlays draw
    Sint32 cursor_type;                                 // SDL_SystemCursor: default or pointer
    char *title;                                        // owned
    char *error;                                        // owned; null: no error yet
    char *running_dir;                                  // owned; the current directory at start
    SDL_Event event;                                    // the one polled last
    Sint32 frames, fps;                                 // counted in this second, and the result of the last full one
    Uint64 fps_window_start, frame_start, frame_period; // ns
    Uint64 target_fps;                                  // 0: no limit
    double fps_delta;                                   // s, the whole previous frame
    char *fps_text;                                     // owned, FPS_TEXT_SIZE bytes
    SDL_Color fps_color;
    Timestep timestep;
    Uint64 last_frame_ticks; // ns; 0: no frame yet
    Sint64 given_frame_ns;   // of the next frame; -1: the clock says it
    Uint64 frame_number;     // 1 in the first frame
    SDL_Window *window;      // owned, as are the renderer, the cursors and the text engine
    SDL_Renderer *renderer;
    SDL_Texture *sink; // what a replay that nobody watches is drawn on; goes with the renderer
    SDL_Cursor *default_cursor, *pointer_cursor;
    FontList *fonts; // owned
    KeptFont kept_fonts[KEPT_FONTS];
    TTF_Font *active_font; // borrowed
    TTF_TextEngine *text_engine;
    TextDraw *text_draw;      // owned; null until a text is drawn without having been prepared
    CallbackArray *callbacks; // owned, ENGINE_EVENT_TYPES of them
    DataCallbackArray data_callbacks;
};
namespace lumarind {
extern Engine *engine; // null: not started
}
using lumarind::engine;
