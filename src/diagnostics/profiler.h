// profiler: the live frame profile, recorded by the main loop, and the panel along the bottom of the window that shows
// it with the frame budget, statistics and a legend. Main thread only.
// Without setup all calls do nothing.
#pragma once

#include <SDL3/SDL_stdinc.h>

// --- lifetime: set up after the renderer is created, clean up before it is destroyed ---
bool profiler_setup();   // safe to call twice. Reports errors; profiler_cleanup releases a partial setup
void profiler_cleanup(); // safe to call twice, and after a failed setup

// --- recording, by the main loop; continues while the panel is hidden or frozen ---
void profiler_frame_boundary(Uint64 now_ns); // ends one frame and starts the next
void profiler_mark(int phase);               // starts a FrameProfilePhase
void profiler_count_step();                  // one fixed step has run

// --- panel ---
void profiler_tick();          // once per frame, in UI space; draws the panel if it is shown
void profiler_toggle_freeze(); // freezes the panel at the current history, or returns to the live one
