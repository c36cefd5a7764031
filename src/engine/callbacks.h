// callbacks: what a screen wants to be told of the event queue. One chain of callbacks to an event type, called in
// the order of their registration. Main thread only; not from inside a callback of the same type.
#pragma once

#include "lumarind/core/typed_array.h"

#include <SDL3/SDL_events.h>

// True lets the next callback of the chain see the event; the engine's own keys see it in either case.
// Pointer positions are in the current drawing space.
using EventCallback = bool (*)(SDL_Event *event);

struct CallbackArrayTraits : ArrayOfValues<EventCallback> {
    static constexpr const char *TAG = "CALLBACK_ARRAY";
    static constexpr const char *PREFIX = "callback_array";
};
TYPED_ARRAY_STAMP(callback_array, CallbackArray, CallbackArrayTraits)
bool callback_array_add(CallbackArray *array, EventCallback cb);           // false: reported
int callback_array_index_of(const CallbackArray *array, EventCallback cb); // the first, or -1

inline constexpr Uint32 ENGINE_EVENT_TYPES = 0x1308; // event types below this can have callbacks

// A callback added twice is called twice. False: reported, for a type out of range or for lack of memory.
bool engine_add_callback(Uint32 type, EventCallback cb);
// Removes the first such entry; true also when there is none. False: reported, for a type out of range.
bool engine_remove_callback(Uint32 type, EventCallback cb);

// --- callbacks that are handed a pointer of their owner's, called after those without ---
using DataCallback = bool (*)(SDL_Event *event, void *data);
bool engine_add_callback(Uint32 type, DataCallback cb, void *data);
bool engine_remove_callback(Uint32 type, DataCallback cb, void *data); // the first with this pointer
