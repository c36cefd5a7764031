#include "lumarind/engine/callbacks.h"

#include "engine/engine_record.h"

bool callback_array_add(CallbackArray *array, EventCallback cb) {
    return _typed_array_push<CallbackArrayTraits>(array, cb);
}

int callback_array_index_of(const CallbackArray *array, EventCallback cb) {
    for (int i = 0; i < array->count; i++) {
        if (array->items[i] == cb) return i;
    }
    return -1;
}

bool engine_add_callback(Uint32 type, EventCallback cb) {
    if (type >= ENGINE_EVENT_TYPES) {
        return engine_error(
            "[ENGINE] Attempting to add a callback for a type that is not supported: 0x%x",
            static_cast<unsigned>(type));
    }
    return callback_array_add(&engine->callbacks[type], cb);
}

bool engine_remove_callback(Uint32 type, EventCallback cb) {
    if (type >= ENGINE_EVENT_TYPES) {
        return engine_error(
            "[ENGINE] Attempting to remove a callback for a type that is not supported: 0x%x",
            static_cast<unsigned>(type));
    }
    CallbackArray *chain = &engine->callbacks[type];
    const int index = callback_array_index_of(chain, cb);
    if (index >= 0) callback_array_remove(chain, index);
    return true;
}
