// progress: what the player has done, kept in one small text file: written whole or not at all, read also in its older
// version, and set aside when it is damaged.
#pragma once

#include "game.h"

#include <SDL3/SDL_stdinc.h>

inline constexpr int PROGRESS_WORDS = 4; // 64 embers in each

struct LevelProgress {
    Sint64 best_ms; // 0: not finished yet
    int embers;     // most found in one run
    int deaths;     // in all runs
};

// A run that was left at a checkpoint.
struct RunProgress {
    int level = -1;     // -1: there is none
    int checkpoint = 0; // the number of the last one that was lit
    Sint64 ms = 0;      // so far
    int deaths = 0;
    bool has_key = false, door_open = false;
    Uint64 embers[PROGRESS_WORDS] = {}; // bits of those found
};

struct Progress {
    int reached = 1; // levels that may be played, 1 to LEVEL_COUNT
    bool finished = false;
    LevelProgress levels[LEVEL_COUNT] = {};
    RunProgress run;
};

extern Progress progress;

enum ProgressLoad { PROGRESS_NEW, PROGRESS_READ, PROGRESS_DAMAGED }; // damaged: set aside, and begun anew
ProgressLoad progress_load();                                        // once; later calls say the same
ProgressLoad progress_load_again();                                  // from the file, whatever was before
bool progress_save();                                                // false: reported
void progress_forget_run();
bool progress_has_game(); // there is something to continue
