// codec: binary serialisation in which the same calls write and read, so that both always agree on the format.
// Little-endian; small integers take one byte.
#pragma once

#include <SDL3/SDL_stdinc.h>

#include <type_traits>

struct Codec {
    bool reading;
    Uint8 *bytes;    // writing: owned, codec_cleanup. Reading: borrowed
    size_t size, at; // bytes in use; when reading, the position
    size_t capacity; // when writing
    bool bad;        // writing: out of memory. Reading: truncated or invalid data
};

Codec codec_reader(const void *bytes, size_t size);
void codec_reset(Codec *codec); // when writing: discards all bytes
void codec_cleanup(Codec *codec);

void codec_bytes(Codec *codec, void *bytes, size_t size);
void codec_unsigned(Codec *codec, Uint64 *value, Uint64 max = ~Uint64{0}); // values above `max` set `bad`
void codec_float(Codec *codec, float *value);                              // compact for integral values
void codec_double(Codec *codec, double *value);
void codec_text(Codec *codec, char *text, size_t size); // truncated to size - 1 bytes

// Any integer type; values near 0 are compact (zigzag).
template <typename T> void codec_int(Codec *codec, T *value) {
    static_assert(std::is_integral_v<T>);
    const auto wide = static_cast<Sint64>(*value);
    Uint64 zigzag = static_cast<Uint64>(wide) << 1 ^ static_cast<Uint64>(wide >> 63);
    codec_unsigned(codec, &zigzag);
    const auto back = static_cast<Sint64>(zigzag >> 1 ^ (~(zigzag & 1) + 1));
    if (!codec->reading) return;
    *value = static_cast<T>(back);
    if (static_cast<Sint64>(*value) != back) codec->bad = true;
}

// An index from 0 to end - 1, such as an enum.
template <typename T> void codec_index(Codec *codec, T *value, int end) {
    auto number = static_cast<Uint64>(*value);
    codec_unsigned(codec, &number, static_cast<Uint64>(end) - 1);
    if (codec->reading) *value = static_cast<T>(number);
}
