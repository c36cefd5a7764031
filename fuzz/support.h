// support: the world the fuzz targets run in, made once to a process: a temporary working directory, a log that is
// only counted, game files held in memory, and, for those who need it, the whole engine on SDL's dummy drivers.
#pragma once

#include <cstddef>
#include <cstdint>

void fuzz_check(bool holds, const char *sentence); // aborts with the sentence when it does not hold

// --- lifetime ---
void fuzz_start(); // safe twice, as is the next one
void fuzz_start_engine();
void fuzz_stop();

// --- the input as a file ---
void fuzz_set_game_file(const uint8_t *data, size_t size); // what every path of the title storage then holds
// but for those that end in `ending`. Forgotten by the next fuzz_set_game_file.
void fuzz_set_game_file_ending(const char *ending, const uint8_t *data, size_t size);
const char *fuzz_memory_file(const uint8_t *data, size_t size); // its path; there is one such file

// A picture of 4 × 2 tiles of 8 pixels, of all kinds of transparency, unless it is there.
void fuzz_save_picture(const char *path);

// --- the log ---
void fuzz_clear_log();
int fuzz_logged_errors();
