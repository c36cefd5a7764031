// frame: the steps of a frame, called by the main loop: start, event polling, end. Main thread only.
#pragma once

#include <SDL3/SDL_events.h>

void engine_frame_start(); // feeds the time since the last frame to the fixed timestep
void engine_event_poll();  // drains the event queue: recording, input layer, callbacks, hot keys
void engine_tick();        // overlays, capture, present, frame-rate wait, FPS count

// Acknowledges a state change after the new screen's setup: time spent in setup is not simulated, and earlier presses
// are discarded.
void engine_state_change_handled();

bool engine_take_restart(); // returns and clears a pending request to restart the screen

SDL_Event engine_event(); // a copy of the last event polled
