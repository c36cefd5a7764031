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

static bool _callback_type_is_supported(Uint32 type, const char *attempt) {
    if (type < ENGINE_EVENT_TYPES) return true;
    return engine_error(
        "[ENGINE] Attempting to %s a callback for a type that is not supported: 0x%x", attempt,
        static_cast<unsigned>(type));
}

bool engine_add_callback(Uint32 type, EventCallback cb) {
    return _callback_type_is_supported(type, "add") && callback_array_add(&engine->callbacks[type], cb);
}

bool engine_remove_callback(Uint32 type, EventCallback cb) {
    if (!_callback_type_is_supported(type, "remove")) return false;
    CallbackArray *chain = &engine->callbacks[type];
    const int index = callback_array_index_of(chain, cb);
    if (index >= 0) callback_array_remove(chain, index);
    return true;
}

bool engine_add_callback(Uint32 type, DataCallback cb, void *data) {
    return _callback_type_is_supported(type, "add") &&
           _typed_array_push<DataCallbackTraits>(&engine->data_callbacks, {type, cb, data});
}

// Preserves the order of the others: it is the order of calls.
bool engine_remove_callback(Uint32 type, DataCallback cb, void *data) {
    if (!_callback_type_is_supported(type, "remove")) return false;
    DataCallbackArray *array = &engine->data_callbacks;
    for (int i = 0; i < array->count; i++) {
        const DataCallbackEntry entry = array->items[i];
        if (entry.type != type || entry.call != cb || entry.data != data) continue;
        array->count--;
        SDL_memmove(&array->items[i], &array->items[i + 1], static_cast<size_t>(array->count - i) * sizeof entry);
        break;
    }
    return true;
}
