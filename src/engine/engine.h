// engine: access to the running engine: window and renderer, game state, frame and fixed steps. Main thread only.
// Without an engine, getters in this and the other headers of the folder return 0, null or an empty string; all other
// functions may be called only between engine_start and engine_stop.
#pragma once

#include "lumarind/engine/game_state.h"

#include <SDL3/SDL_mouse.h>
#include <SDL3/SDL_stdinc.h>

struct SDL_Renderer;
struct SDL_Window;

// --- game state ---
void engine_set_state(GameState s); // a request: the main loop switches screens in its next frame
GameState engine_get_state();       // the last one requested
GameState engine_get_prev_state();  // differs from the state while a switch is pending
void engine_restart_state();        // a request: the same screen is cleaned up and set up again in the next frame

// While paused, fixed updates of the screen stop; ticks, fades and input continue. A screen change ends the pause.
void engine_set_paused(bool paused);
bool engine_is_paused();

// --- frame ---
Uint64 engine_frame_number();           // 1 during the first frame
double engine_fps_delta();              // s, the whole previous frame including its wait
void engine_set_target_fps(Uint64 fps); // 0: no limit. The wait is at the frame's end; not for use with vsync

// --- fixed timestep ---
double engine_fixed_delta();      // s, one step
bool engine_fixed_step_consume(); // true: a step was due and has been consumed
double engine_fixed_alpha();      // interpolation factor between the last two steps, 0 to below 1

// --- window ---
SDL_Window *engine_window(); // owned by the engine, as is the renderer
SDL_Renderer *engine_renderer();
void engine_set_title(const char *title); // changes only the stored title, not the window's
const char *engine_get_title();
bool engine_set_vsync_mode(int mode); // as in SDL_SetRenderVSync; returns false and logs if it fails
// Player settings: take effect at once and are stored in the configuration. Report errors and then change nothing.
bool engine_set_vsync(bool on); // if off, the configured frame-rate limit applies
bool engine_set_fullscreen(bool on);
bool engine_is_fullscreen();                          // the configured value
void engine_set_system_cursor(SDL_SystemCursor type); // pointer; any other type sets the default cursor
SDL_SystemCursor engine_get_system_cursor_type();

// --- profiler panel: whether it is shown is stored in the configuration ---
void engine_toggle_show_frame_time_graph();
void engine_set_show_frame_time_graph(bool show);
bool engine_get_show_frame_time_graph();
