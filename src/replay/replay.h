// replay: what reached a game from its devices and the clock, recorded frame by frame and given to it again, so that it
// does the same, to the bit. Main thread only.
//
// A recording begins with the first frame of the program or with a change of screens, and is written as it happens: one
// that a killed program leaves behind ends at most a second early. It fits another build, and another machine, of the
// same game.
#pragma once

#include <SDL3/SDL_stdinc.h>

// --- recording ---
// Begins with the next setup of a screen. False: reported; the game goes on without.
bool replay_record(const char *path);
void replay_stop(); // ends recording or replaying; called by the engine's stop as well. Does nothing without either

// --- questions ---
bool replay_is_recording();
bool replay_is_playing(); // what the devices and the clock say comes from a recording
bool replay_failed();     // the recording could not be replayed to its end, or its hashes differ: reported
