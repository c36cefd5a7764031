// main_loop: the parts of engine_run, for tests and benchmarks that step the program frame by frame. Main thread only.
#pragma once

struct Game;

enum MainStart {
    MAIN_START_RUN,    // the first screen is set up
    MAIN_START_HELP,   // only the log is open: exit with success
    MAIN_START_FAILED, // only the log is open: exit with failure
};
MainStart main_loop_start(const Game *game, int argc, char *argv[]); // the record must be valid
bool main_loop_frame();                                              // false: the loop has ended
void main_loop_stop();                                               // only after MAIN_START_RUN
