// Which game runs: for the main loop and tests.
#pragma once

#include "lumarind/engine/game.h"

void _engine_set_game(const Game *game); // copied; its tables and texts are borrowed

// Null, or what is wrong with the record, to be shown to the programmer. Lives until the next call.
const char *_engine_game_problem(const Game *game);
