// A game's headers and objects with the same names as the engine's, to check that they do not clash.

#include "config/config.h"
#include "engine/engine.h"
#include "lumarind/config/config.h"
#include "lumarind/engine/engine.h"

extern int audio, config, engine, files, game, input, profiler, resident_screen, storage, transition;
int audio = OWN_CONFIG, config, engine = OWN_ENGINE, files, game, input, profiler, resident_screen, storage, transition;
