// demo_game: the demonstration, the engine's first game.
#pragma once

struct Game;

extern const Game demo_game;
