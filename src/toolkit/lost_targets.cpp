#include "toolkit/lost_targets.h"

#include <SDL3/SDL_events.h>

// An event watch, because these event types are above those that engine callbacks support. May be called on another
// thread.
static bool SDLCALL _lost_targets_event(void *lost, SDL_Event *event) {
    if (event->type == SDL_EVENT_RENDER_TARGETS_RESET || event->type == SDL_EVENT_RENDER_DEVICE_RESET) {
        SDL_SetAtomicInt(static_cast<SDL_AtomicInt *>(lost), 1);
    }
    return true;
}

bool lost_targets_watch(SDL_AtomicInt *lost) { return SDL_AddEventWatch(_lost_targets_event, lost); }

void lost_targets_unwatch(SDL_AtomicInt *lost) { SDL_RemoveEventWatch(_lost_targets_event, lost); }
