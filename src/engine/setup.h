// setup: engine start and stop: SDL and all engine-wide modules.
#pragma once

// Safe to call twice. `title` is copied. Reports errors and then stops everything it has started.
bool engine_start(const char *title);

// Stores the window's geometry and the profiler panel's flag in the configuration, releases everything, saves the
// configuration and quits SDL. Does nothing without an engine.
void engine_stop();
