// callbacks: event callbacks of screens. Each event type has a chain of callbacks, called in the order of registration.
// Main thread only; a callback must not add or remove callbacks of its own event type.
#pragma once

#include "lumarind/core/typed_array.h"

#include <SDL3/SDL_events.h>

// Returns true to pass the event on to the next callback of the chain; the engine's hot keys are handled in any case.
// Pointer positions are in the current drawing space.
using EventCallback = bool (*)(SDL_Event *event);

struct CallbackArrayTraits : ArrayOfValues<EventCallback> {
    static constexpr const char *TAG = "CALLBACK_ARRAY";
    static constexpr const char *PREFIX = "callback_array";
};
TYPED_ARRAY_STAMP(callback_array, CallbackArray, CallbackArrayTraits)
bool callback_array_add(CallbackArray *array, EventCallback cb);           // reports errors
int callback_array_index_of(const CallbackArray *array, EventCallback cb); // the first, or -1

inline constexpr Uint32 ENGINE_EVENT_TYPES = 0x1308; // event types below this can have callbacks

// A callback added twice is called twice. Reports errors: invalid type or out of memory.
bool engine_add_callback(Uint32 type, EventCallback cb);
// Removes the first matching entry; returns true also if there is none. Reports an invalid type as an error.
bool engine_remove_callback(Uint32 type, EventCallback cb);

// --- callbacks with user data: called after those without ---
using DataCallback = bool (*)(SDL_Event *event, void *data);
bool engine_add_callback(Uint32 type, DataCallback cb, void *data);
bool engine_remove_callback(Uint32 type, DataCallback cb, void *data); // the first entry with this `data`
