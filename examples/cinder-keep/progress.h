// progress: the player's save, one small text file, written atomically. Older versions are read too; a damaged file is
// copied before it is overwritten.
#pragma once

#include "game.h"

#include <SDL3/SDL_stdinc.h>

inline constexpr int PROGRESS_WORDS = 4; // 64 embers in each

struct LevelProgress {
    Sint64 best_ms; // 0: not finished yet
    int embers;     // most collected in one run
    int deaths;     // total of finished runs
};

// An unfinished run, saved at a checkpoint.
struct RunProgress {
    int level = -1;     // -1: no run
    int checkpoint = 0; // number of the last one lit
    Sint64 ms = 0;      // elapsed
    int deaths = 0;
    bool has_key = false, door_open = false;
    Uint64 embers[PROGRESS_WORDS] = {}; // bit set of the collected ones
};

struct Progress {
    int reached = 1; // unlocked levels, 1 to LEVEL_COUNT
    bool finished = false;
    LevelProgress levels[LEVEL_COUNT] = {};
    RunProgress run;
};

extern Progress progress;

enum ProgressLoad { PROGRESS_NEW, PROGRESS_READ, PROGRESS_DAMAGED }; // damaged: copied, then reset
ProgressLoad progress_load();                                        // loads once; later calls return the same result
ProgressLoad progress_load_again();                                  // discards the progress and loads the file
bool progress_save();                                                // reports errors
void progress_forget_run();
bool progress_has_game(); // whether "Continue" is possible
