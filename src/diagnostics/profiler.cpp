#include "diagnostics/profiler.h"

bool profiler_setup() { return true; }
void profiler_cleanup() {}
void profiler_frame_boundary(Uint64) {}
void profiler_mark(int) {}
void profiler_count_step() {}
void profiler_tick() {}
void profiler_toggle_freeze() {}
