// main_loop: the program from its arguments to its exit code. Main thread only.
#pragma once

// Exit code: 0 after a run or the help text, 1 after a failed start, whose reason is in the log.
extern "C" int SDL_main(int argc, char *argv[]);

// --- its parts, for those who run the program a frame at a time ---

enum MainStart {
    MAIN_START_RUN,    // the first screen is up
    MAIN_START_HELP,   // nothing is up but the log: leave with success
    MAIN_START_FAILED, // nothing is up but the log: leave with failure
};
MainStart main_loop_start(int argc, char *argv[]);
bool main_loop_frame(); // false: the loop is over
void main_loop_stop();  // after main_loop_start returned MAIN_START_RUN
