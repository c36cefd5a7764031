// transition_internal: for recordings, which may begin and end amid a fade.
#pragma once

#include "lumarind/engine/transition.h"

double _transition_seconds_to(GameState state); // of the fade that covers the old screen for this one; 0: there is none
void _transition_uncover(double seconds);       // as after the switch that such a fade ends with
