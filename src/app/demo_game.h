// demo_game: the Game record of the demonstration program.
#pragma once

struct Game;

extern const Game demo_game;
