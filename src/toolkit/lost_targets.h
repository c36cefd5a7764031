// lost_targets: detects that a renderer has lost the contents of its render targets.
#pragma once

#include <SDL3/SDL_atomic.h>

// Sets `lost` to 1 whenever contents are lost, until it is unwatched; its address must stay valid. Returns false with
// SDL's error set.
bool lost_targets_watch(SDL_AtomicInt *lost);
void lost_targets_unwatch(SDL_AtomicInt *lost); // does nothing if it is not watched
