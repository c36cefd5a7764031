// targets: the fuzz targets. A target accepts any bytes and aborts with a message if the engine violates a rule. Called
// by the fuzzer, and by the tests with the seeds.
#pragma once

#include <cstddef>
#include <cstdint>

// The signature of LLVMFuzzerTestOneInput; they return 0.
int fuzz_tile_csv(const uint8_t *data, size_t size);
int fuzz_collision_csv(const uint8_t *data, size_t size);
int fuzz_config(const uint8_t *data, size_t size);
int fuzz_bindings(const uint8_t *data, size_t size);
int fuzz_args(const uint8_t *data, size_t size);
int fuzz_sheet(const uint8_t *data, size_t size);
int fuzz_tileset(const uint8_t *data, size_t size);
int fuzz_tile_map(const uint8_t *data, size_t size);
int fuzz_sheet_json(const uint8_t *data, size_t size);
int fuzz_font(const uint8_t *data, size_t size);
int fuzz_sound(const uint8_t *data, size_t size);
int fuzz_recording(const uint8_t *data, size_t size);

enum FuzzFormat {
    FUZZ_TEXT,   // parsed by this project
    FUZZ_BINARY, // the same
    FUZZ_DECODED // by libraries
};

struct FuzzTarget {
    const char *name; // as in targets.list and the seed folders
    int (*run)(const uint8_t *data, size_t size);
    FuzzFormat format;
};
inline constexpr FuzzTarget FUZZ_TARGETS[] = {
    {"tile-csv", fuzz_tile_csv, FUZZ_TEXT},
    {"collision-csv", fuzz_collision_csv, FUZZ_TEXT},
    {"config", fuzz_config, FUZZ_TEXT},
    {"bindings", fuzz_bindings, FUZZ_TEXT},
    {"args", fuzz_args, FUZZ_TEXT},
    {"sheet", fuzz_sheet, FUZZ_DECODED},
    {"tileset", fuzz_tileset, FUZZ_DECODED},
    {"tile-map", fuzz_tile_map, FUZZ_TEXT},
    {"sheet-json", fuzz_sheet_json, FUZZ_TEXT},
    {"font", fuzz_font, FUZZ_DECODED},
    {"sound", fuzz_sound, FUZZ_DECODED},
    {"recording", fuzz_recording, FUZZ_BINARY},
};
