#include "fuzz/checksums.h"

#include <SDL3/SDL_endian.h>
#include <SDL3/SDL_stdinc.h>

#include <algorithm>
#include <iterator>

// --- PNG: a signature of 8 bytes, then chunks of length, type, data and CRC, big-endian ---

static uint32_t read_be32(const uint8_t *at) {
    uint32_t number = 0;
    SDL_memcpy(&number, at, sizeof number);
    return SDL_Swap32BE(number);
}

void fuzz_fix_png_checksums(std::vector<uint8_t> *file) {
    constexpr size_t SIGNATURE = 8, OVERHEAD = 12; // bytes; OVERHEAD: length, type and CRC
    for (size_t at = SIGNATURE; at + OVERHEAD <= file->size();) {
        const size_t length = read_be32(file->data() + at);
        if (length > file->size() - at - OVERHEAD) return;
        const uint32_t crc = SDL_Swap32BE(SDL_crc32(0, file->data() + at + 4, 4 + length));
        SDL_memcpy(file->data() + at + 8 + length, &crc, sizeof crc);
        at += OVERHEAD + length;
    }
}

// --- Ogg: pages with a header of 27 bytes, whose last byte is the length of the segment table that follows ---

static uint32_t ogg_crc(const uint8_t *data, size_t size) {
    constexpr uint32_t POLYNOMIAL = 0x04C11DB7;
    uint32_t crc = 0;
    for (size_t i = 0; i < size; i++) {
        crc ^= static_cast<uint32_t>(data[i]) << 24;
        for (int bit = 0; bit < 8; bit++) crc = crc & 0x80000000u ? crc << 1 ^ POLYNOMIAL : crc << 1;
    }
    return crc;
}

void fuzz_fix_ogg_checksums(std::vector<uint8_t> *file) {
    constexpr size_t HEADER = 27, CRC_AT = 22;
    constexpr char CAPTURE[] = {'O', 'g', 'g', 'S'};
    for (auto page = file->begin();; ++page) {
        page = std::search(page, file->end(), std::begin(CAPTURE), std::end(CAPTURE));
        const auto left = static_cast<size_t>(file->end() - page);
        if (left < HEADER) return;
        uint8_t *bytes = &*page;
        const size_t sizes = bytes[HEADER - 1];
        size_t length = HEADER + sizes;
        for (size_t i = 0; i < sizes && HEADER + i < left; i++) length += bytes[HEADER + i];
        SDL_memset(bytes + CRC_AT, 0, 4);
        const uint32_t crc = SDL_Swap32LE(ogg_crc(bytes, std::min(length, left)));
        SDL_memcpy(bytes + CRC_AT, &crc, sizeof crc);
    }
}
