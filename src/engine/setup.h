// setup: engine start and stop: SDL and all engine-wide modules.
#pragma once

// Safe to call twice. False: reported, and everything started was stopped again. `title` is copied.
bool engine_start(const char *title);

// Stores the window's geometry and the profiler panel's flag in the configuration, releases everything, saves the
// configuration and quits SDL. Does nothing without an engine.
void engine_stop();
