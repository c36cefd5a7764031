// setup: the engine's start, which brings up SDL and every engine-wide module, and its stop.
#pragma once

// Safe twice. False: reported, and what had been started is stopped again. `title` is copied.
bool engine_start(const char *title);

// Writes the window's place and the profiler panel's flag into the configuration, releases everything, saves the
// configuration and quits SDL. Safe without an engine.
void engine_stop();
