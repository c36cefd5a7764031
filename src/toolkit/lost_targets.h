// lost_targets: tells that a renderer has lost what its render targets held.
#pragma once

#include <SDL3/SDL_atomic.h>

// From now on `lost` becomes 1 when that happens. It must stay where it is until it is no longer watched. False: SDL's
// error says why.
bool lost_targets_watch(SDL_AtomicInt *lost);
void lost_targets_unwatch(SDL_AtomicInt *lost); // also when it was not watched
