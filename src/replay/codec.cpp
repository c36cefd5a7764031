#include "replay/codec.h"

#include <SDL3/SDL_endian.h>

Codec codec_reader(const void *bytes, size_t size) {
    Codec codec = {};
    codec.reading = true;
    codec.bytes = const_cast<Uint8 *>(static_cast<const Uint8 *>(bytes)); // never written when reading
    codec.size = size;
    return codec;
}

void codec_reset(Codec *codec) { codec->size = 0; }

void codec_cleanup(Codec *codec) {
    if (!codec->reading) SDL_free(codec->bytes);
    *codec = {};
}

static bool _codec_has_room(Codec *codec, size_t size) {
    if (codec->reading) return size <= codec->size - codec->at;
    if (codec->size + size <= codec->capacity) return true;
    const size_t capacity = 2 * (codec->size + size);
    auto *grown = static_cast<Uint8 *>(SDL_realloc(codec->bytes, capacity));
    if (!grown) return false;
    codec->bytes = grown;
    codec->capacity = capacity;
    return true;
}

void codec_bytes(Codec *codec, void *bytes, size_t size) {
    if (codec->bad || !_codec_has_room(codec, size)) {
        codec->bad = true;
        if (codec->reading) SDL_memset(bytes, 0, size);
    } else if (codec->reading) {
        SDL_memcpy(bytes, codec->bytes + codec->at, size);
        codec->at += size;
    } else {
        SDL_memcpy(codec->bytes + codec->size, bytes, size);
        codec->size += size;
    }
}

void codec_unsigned(Codec *codec, Uint64 *value, Uint64 max) { // LEB128: 7 bits per byte, lowest first
    constexpr Uint8 MORE = 0x80;
    if (!codec->reading) {
        Uint64 rest = *value;
        do {
            Uint8 byte = static_cast<Uint8>((rest & 0x7F) | (rest > 0x7F ? MORE : 0));
            codec_bytes(codec, &byte, 1);
            rest >>= 7;
        } while (rest != 0);
        return;
    }
    *value = 0;
    Uint8 byte = MORE;
    for (int shift = 0; (byte & MORE) && !codec->bad; shift += 7) {
        codec_bytes(codec, &byte, 1);
        if (shift > 63 || (shift == 63 && byte > 1)) codec->bad = true;
        if (!codec->bad) *value |= static_cast<Uint64>(byte & 0x7F) << shift;
    }
    if (*value > max) codec->bad = true;
    if (codec->bad) *value = 0;
}

// An integral value n is encoded as 2n; any other value, including negative zero, as 1 followed by its bits.
void codec_float(Codec *codec, float *value) {
    constexpr float WHOLE_MAX = 1 << 20;
    Uint32 bits = 0;
    Sint64 head = 1;
    if (!codec->reading) {
        SDL_memcpy(&bits, value, sizeof bits);
        const Sint32 whole = SDL_fabsf(*value) <= WHOLE_MAX ? static_cast<Sint32>(*value) : 0;
        const float back = static_cast<float>(whole);
        if (SDL_memcmp(&back, &bits, sizeof back) == 0) head = 2 * Sint64{whole};
    }
    codec_int(codec, &head);
    if (head == 1) {
        bits = SDL_Swap32LE(bits);
        codec_bytes(codec, &bits, sizeof bits);
        bits = SDL_Swap32LE(bits);
        if (codec->reading) SDL_memcpy(value, &bits, sizeof bits);
    } else if (codec->reading) {
        const Sint64 whole = head / 2;
        *value = static_cast<float>(whole);
    }
}

void codec_double(Codec *codec, double *value) {
    Uint64 bits = 0;
    SDL_memcpy(&bits, value, sizeof bits);
    bits = SDL_Swap64LE(bits);
    codec_bytes(codec, &bits, sizeof bits);
    bits = SDL_Swap64LE(bits);
    SDL_memcpy(value, &bits, sizeof bits);
}

void codec_text(Codec *codec, char *text, size_t size) {
    Uint64 length = codec->reading ? 0 : SDL_min(SDL_strlen(text), size - 1);
    codec_unsigned(codec, &length, size - 1);
    codec_bytes(codec, text, static_cast<size_t>(length));
    if (codec->reading) text[length] = '\0';
}
