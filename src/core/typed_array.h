// typed_array: dynamic array template, from which the `<prefix>_` array functions are generated. Main thread only.
//
// A traits record with the element type defines an array type:
//
//     struct PointArrayTraits : ArrayOfValues<SDL_FPoint> {
//         static constexpr const char *TAG = "POINTS";       // tag of its log messages
//         static constexpr const char *PREFIX = "points";    // function prefix in its log messages
//     };
//     TYPED_ARRAY_STAMP(points, PointArray, PointArrayTraits)
//     TYPED_ARRAY_STAMP_ADD(points, PointArray, PointArrayTraits)
//
// It has, for T = Traits::Element:
//     PointArray *points_new(int capacity, int grow_by)          reports errors. The caller owns the record:
//                                                                points_cleanup, then SDL_free.
//     T    points_get(array, i)                                  a zero T if i is out of range
//     void points_remove(array, i)                               releases element i, moves the last one into its slot
//     bool points_move(src, i, dst)                              moves element i, with ownership, to the end of dst
//     void points_reset(array)                                   releases all elements, keeps the buffer
//     void points_cleanup(array)                                 releases elements and buffer, keeps the record
//     bool points_add(array, const T *)                          copies the value; reports errors, changing nothing
//
// Elements must be trivially copyable; removal changes their order. A zero-initialised record is an empty array.
#pragma once

#include "lumarind/core/error.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_stdinc.h>

#include <type_traits>

template <typename T> struct TypedArray {
    Sint32 capacity; // elements allocated in items
    Sint32 count;    // elements in use, in slots 0 to count - 1
    Sint32 grow_by;  // slots added when full; 0 or less means 1
    T *items;        // owned; null when capacity is 0
};

// Traits of elements that own nothing.
template <typename T> struct ArrayOfValues {
    using Element = T;
    static void release(T &) {}
};

// Reallocates *items to hold grow_by more elements. Reports errors under the tag, changing nothing.
bool _array_grow(void **items, Sint32 *capacity, Sint32 grow_by, size_t element_size, const char *tag);

template <typename Traits> TypedArray<typename Traits::Element> *_typed_array_new(int capacity, int grow_by) {
    using T = typename Traits::Element;
    static_assert(std::is_trivially_copyable_v<T>, "elements must be trivially copyable");
    auto *array = static_cast<TypedArray<T> *>(SDL_calloc(1, sizeof(TypedArray<T>)));
    if (!array) {
        engine_error(
            "[%s] Memory allocation failed in %s_new(), error: %s", Traits::TAG, Traits::PREFIX, SDL_GetError());
        return nullptr;
    }
    if (capacity > 0) {
        array->items = static_cast<T *>(SDL_calloc(static_cast<size_t>(capacity), sizeof(T)));
        if (!array->items) {
            SDL_free(array);
            engine_error(
                "[%s] Element memory allocation failed in %s_new(), error: %s", Traits::TAG, Traits::PREFIX,
                SDL_GetError());
            return nullptr;
        }
        array->capacity = capacity;
    }
    array->grow_by = grow_by;
    return array;
}

template <typename T> T _typed_array_get(const TypedArray<T> *array, int i) {
    return i >= 0 && i < array->count ? array->items[i] : T{};
}

template <typename T> void _typed_array_close_gap(TypedArray<T> *array, int i) {
    array->items[i] = array->items[array->count - 1];
    array->count--;
}

template <typename Traits> void _typed_array_remove(TypedArray<typename Traits::Element> *array, int i) {
    if (i < 0 || i >= array->count) return;
    Traits::release(array->items[i]);
    _typed_array_close_gap(array, i);
}

// Appends the element and takes ownership of its resources if this returns true.
template <typename Traits>
bool _typed_array_push(TypedArray<typename Traits::Element> *array, typename Traits::Element element) {
    using T = typename Traits::Element;
    if (array->count == array->capacity) {
        void *items = array->items;
        if (!_array_grow(&items, &array->capacity, array->grow_by, sizeof(T), Traits::TAG)) return false;
        array->items = static_cast<T *>(items);
    }
    array->items[array->count++] = element; // passed by value: a reference into the old block would dangle
    return true;
}

template <typename Traits>
bool _typed_array_move(TypedArray<typename Traits::Element> *src, int i, TypedArray<typename Traits::Element> *dst) {
    if (i < 0 || i >= src->count || !_typed_array_push<Traits>(dst, src->items[i])) return false;
    _typed_array_close_gap(src, i);
    return true;
}

template <typename Traits> void _typed_array_reset(TypedArray<typename Traits::Element> *array) {
    for (int i = 0; i < array->count; i++) Traits::release(array->items[i]);
    array->count = 0;
}

template <typename Traits> void _typed_array_cleanup(TypedArray<typename Traits::Element> *array) {
    if (!array->items) return;
    _typed_array_reset<Traits>(array);
    SDL_free(array->items);
    array->items = nullptr;
    array->capacity = 0;
}

#define TYPED_ARRAY_STAMP(prefix, Array, Traits)                                                                       \
    using Array = TypedArray<Traits::Element>;                                                                         \
    [[nodiscard]] inline Array *prefix##_new(int capacity, int grow_by) {                                              \
        return _typed_array_new<Traits>(capacity, grow_by);                                                            \
    }                                                                                                                  \
    inline Traits::Element prefix##_get(const Array *array, int i) { return _typed_array_get(array, i); }              \
    inline void prefix##_remove(Array *array, int i) { _typed_array_remove<Traits>(array, i); }                        \
    inline bool prefix##_move(Array *src, int i, Array *dst) { return _typed_array_move<Traits>(src, i, dst); }        \
    inline void prefix##_reset(Array *array) { _typed_array_reset<Traits>(array); }                                    \
    inline void prefix##_cleanup(Array *array) { _typed_array_cleanup<Traits>(array); }

#define TYPED_ARRAY_STAMP_ADD(prefix, Array, Traits)                                                                   \
    inline bool prefix##_add(Array *array, const Traits::Element *element) {                                           \
        return _typed_array_push<Traits>(array, *element);                                                             \
    }
