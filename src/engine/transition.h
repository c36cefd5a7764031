// transition: the fade through black from one screen to the next. Covers the screen over a duration, has the state
// changed behind a fully black frame, and uncovers the new screen over the same duration. Main thread only.
#pragma once

#include "lumarind/engine/game_state.h"

// Starts covering, also out of a running uncovering and from its opacity. `duration` is seconds for one direction,
// above 0. False: another fade is already covering, and nothing changes.
bool transition_fade_to(GameState target, double duration);

// --- called by the main loop ---
void transition_fixed_update(double dt);         // in every fixed step, after the screen's
void transition_tick();                          // draws the cover, in UI space; asks for the switch when it is full
void transition_screen_changed(GameState state); // after a switch of screens

double transition_cover(double alpha); // opacity at an interpolation factor, 0 to 1
