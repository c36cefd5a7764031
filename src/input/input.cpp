#include "input/input.h"

bool input_setup() { return true; }
void input_cleanup() {}
void input_frame_start() {}
void input_handle_event(const SDL_Event *) {}
void input_fixed_step_begin() {}
void input_fixed_step_end() {}
void input_clear_presses() {}
