// input: the actions' bindings and presses. Not listening yet; the frame loop already tells it everything.
#pragma once

#include <SDL3/SDL_events.h>

bool input_setup(); // false: reported
void input_cleanup();

// --- called by the frame loop ---
void input_frame_start();
void input_handle_event(const SDL_Event *event);
void input_fixed_step_begin();
void input_fixed_step_end();
void input_clear_presses();
