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

struct FuzzTarget {
    const char *name; // as in targets.list and the seed folders
    int (*run)(const uint8_t *data, size_t size);
};
inline constexpr FuzzTarget FUZZ_TARGETS[] = {
    {"tile-csv", fuzz_tile_csv},
    {"collision-csv", fuzz_collision_csv},
    {"config", fuzz_config},
    {"bindings", fuzz_bindings},
    {"args", fuzz_args},
    {"sheet", fuzz_sheet},
    {"tileset", fuzz_tileset},
    {"tile-map", fuzz_tile_map},
    {"sheet-json", fuzz_sheet_json},
    {"font", fuzz_font},
    {"sound", fuzz_sound},
    {"recording", fuzz_recording},
};
