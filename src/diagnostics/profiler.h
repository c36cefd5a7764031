// profiler: where a frame's time goes: the live frame profile, recorded by the main loop, and the panel that draws it
// along the bottom of the window, with the frame budget, statistics and a legend. Main thread only.
// Without setup every call does nothing.
#pragma once

#include <SDL3/SDL_stdinc.h>

// --- lifetime: after the renderer exists, and before it goes ---
bool profiler_setup();   // safe twice. False: reported; profiler_cleanup releases what was made
void profiler_cleanup(); // safe twice, and after a failed setup

// --- recording, by the main loop; goes on while the panel is hidden or frozen ---
void profiler_frame_boundary(Uint64 now_ns); // ends one frame and starts the next
void profiler_mark(int phase);               // a FrameProfilePhase begins
void profiler_count_step();                  // one fixed step has run

// --- panel ---
void profiler_tick();          // in UI space, once a frame; draws when the engine's flag shows the panel
void profiler_toggle_freeze(); // the panel stands still on the history up to now, or goes back to the live one
