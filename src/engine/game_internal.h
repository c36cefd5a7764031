// game_internal: the running game, for the main loop and tests.
#pragma once

#include "lumarind/engine/game.h"

void _engine_set_game(const Game *game); // copies the record; its tables and strings are borrowed

// Validates the record: returns null, or an error message for the programmer that is valid until the next call.
const char *_engine_game_problem(const Game *game);
