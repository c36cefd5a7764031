// codec: bytes to write values into and to read them back from, by the same calls, so that both cannot disagree.
// Little-endian; small whole numbers take a byte.
#pragma once

#include <SDL3/SDL_stdinc.h>

#include <type_traits>

struct Codec {
    bool reading;
    Uint8 *bytes;    // writing: owned, codec_cleanup. Reading: borrowed
    size_t size, at; // bytes there are; reading: the next one
    size_t capacity; // writing
    bool bad;        // writing: there was no memory. Reading: the bytes end early, or hold what no writer writes
};

Codec codec_reader(const void *bytes, size_t size);
void codec_reset(Codec *codec); // writing: begins anew
void codec_cleanup(Codec *codec);

void codec_bytes(Codec *codec, void *bytes, size_t size);
void codec_unsigned(Codec *codec, Uint64 *value, Uint64 most = ~Uint64{0}); // what is above `most` is bad
void codec_float(Codec *codec, float *value);                               // short when it is a whole number
void codec_double(Codec *codec, double *value);
void codec_text(Codec *codec, char *text, size_t size);                     // cut to size - 1 bytes

// Any integer; signed ones are short near 0.
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

// What counts things from 0 to below `end`, an enum say.
template <typename T> void codec_index(Codec *codec, T *value, int end) {
    auto number = static_cast<Uint64>(*value);
    codec_unsigned(codec, &number, static_cast<Uint64>(end) - 1);
    if (codec->reading) *value = static_cast<T>(number);
}
