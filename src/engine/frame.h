// frame: what the main loop calls in every frame: its start, the event queue, its end. Main thread only.
#pragma once

#include <SDL3/SDL_events.h>

void engine_frame_start(); // the clock: time since the last frame goes to the fixed timestep
void engine_event_poll();  // drains the queue: input layer, callbacks, the engine's own keys
void engine_tick();        // overlays, capture, present, frame-rate wait, FPS count

// Acknowledges the current state after the new screen's setup: its time does not reach the simulation, and presses
// made before it are forgotten.
void engine_state_change_handled();

bool engine_take_restart(); // whether a restart of the screen was asked for; it no longer is

SDL_Event engine_event(); // a copy of the event polled last
