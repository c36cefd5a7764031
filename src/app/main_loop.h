// main_loop: engine_run's parts, for those who run a game a frame at a time. Main thread only.
#pragma once

struct Game;

enum MainStart {
    MAIN_START_RUN,    // the first screen is up
    MAIN_START_HELP,   // nothing is up but the log: leave with success
    MAIN_START_FAILED, // nothing is up but the log: leave with failure
};
MainStart main_loop_start(const Game *game, int argc, char *argv[]); // the game's record has been checked
bool main_loop_frame();                                              // false: the loop is over
void main_loop_stop();                                               // after main_loop_start returned MAIN_START_RUN
