// A game's own headers in folders that the engine has too, and its own objects with the names of the engine's.

#include "config/config.h"
#include "engine/engine.h"
#include "lumarind/config/config.h"
#include "lumarind/engine/engine.h"

extern int audio, config, engine, files, game, input, profiler, resident_screen, storage, transition;
int audio = OWN_CONFIG, config, engine = OWN_ENGINE, files, game, input, profiler, resident_screen, storage, transition;
