// transition: fade through black between screens: fades out, changes the state behind a fully black frame, and fades in
// the new screen, each over the same duration. Main thread only.
#pragma once

#include "lumarind/engine/game_state.h"

// Starts the fade-out; a running fade-in is reversed from its current opacity. `duration` is in seconds for each half,
// above 0. Returns false, changing nothing, while another fade-out is running.
bool transition_fade_to(GameState target, double duration);

// --- called by the main loop ---
void transition_fixed_update(double dt);         // after the screen's, in every fixed step
void transition_tick();                          // draws the cover, in UI space; requests the state once fully black
void transition_screen_changed(GameState state); // after the new screen's setup

double transition_cover(double alpha); // opacity, 0 to 1, at this interpolation factor
