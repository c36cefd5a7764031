// replay: records a game's input and clock frame by frame, and replays them so that the simulation repeats bit for bit.
// Main thread only.
//
// A recording starts with the program's first frame or at a screen change, and is written while playing: if the program
// is killed, at most the last second is lost. It can be replayed by other builds of the same game, and on other
// machines.
#pragma once

#include <SDL3/SDL_stdinc.h>

// --- recording ---
// Starts at the next setup of a screen. Reports errors; the game then continues without recording.
bool replay_record(const char *path);
void replay_stop(); // ends recording or replaying; called at exit. Does nothing if neither is active

// --- queries ---
bool replay_is_recording();
bool replay_is_playing(); // input and clock come from a recording
bool replay_failed();     // the recording could not be replayed to its end, or a state hash differed
