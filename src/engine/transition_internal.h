// transition_internal: the state of a fade, for recordings that start or end during one.
#pragma once

#include "lumarind/engine/transition.h"

double _transition_seconds_to(GameState state); // duration of a running fade-out to this state; 0 if there is none
void _transition_start_fade_in(double seconds); // starts a fade-in of that duration
