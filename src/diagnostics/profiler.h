// profiler: where a frame's time goes. Not recording yet; the main loop already says what it does when.
#pragma once

#include <SDL3/SDL_stdinc.h>

// --- lifetime ---
bool profiler_setup(); // false: reported
void profiler_cleanup();

// --- recording, by the main loop ---
void profiler_frame_boundary(Uint64 now_ns); // ends one frame and starts the next
void profiler_mark(int phase);               // a FrameProfilePhase begins
void profiler_count_step();                  // one fixed step has run

// --- panel ---
void profiler_tick(); // draws the panel when the engine's flag shows it
void profiler_toggle_freeze();
