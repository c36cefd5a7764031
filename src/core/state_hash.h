// state_hash: a hash of simulation state, to check that two runs are bit-identical.
//
//     Uint64 hash = STATE_HASH_START;
//     for (float value : {body.pos.x, body.pos.y}) hash = state_hash_add(hash, value);
//
// Fields are added one by one, because the padding of a record is indeterminate.
#pragma once

#include <SDL3/SDL_stdinc.h>

#include <type_traits>

inline constexpr Uint64 STATE_HASH_START = 14695981039346656037u;

// FNV-1a.
inline Uint64 state_hash_bytes(Uint64 hash, const void *bytes, size_t size) {
    const auto *at = static_cast<const Uint8 *>(bytes);
    for (size_t i = 0; i < size; i++) hash = (hash ^ at[i]) * 1099511628211u;
    return hash;
}

template <typename T> Uint64 state_hash_add(Uint64 hash, const T &value) {
    static_assert(std::is_arithmetic_v<T> || std::is_enum_v<T>, "add the fields of a record one by one");
    return state_hash_bytes(hash, &value, sizeof value);
}

template <typename... T> Uint64 state_hash_of(Uint64 hash, const T &...values) {
    ((hash = state_hash_add(hash, values)), ...);
    return hash;
}
