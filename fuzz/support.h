// support: environment of the fuzz targets, set up once per process: a temporary working directory, a log output that
// counts errors, in-memory game files and, for targets that need it, the whole engine on SDL's dummy drivers.
#pragma once

#include <cstddef>
#include <cstdint>

void fuzz_check(bool holds, const char *sentence); // an assertion: prints `sentence` and aborts if `holds` is false

// --- lifetime ---
void fuzz_start(); // safe to call twice, as is the next one
void fuzz_start_engine();
void fuzz_stop();

// --- the input as a file ---
void fuzz_set_game_file(const uint8_t *data, size_t size); // content of every path in the title storage
// Content of paths that end with `suffix`, until the next fuzz_set_game_file.
void fuzz_set_game_file_by_suffix(const char *suffix, const uint8_t *data, size_t size);
const char *fuzz_memory_file(const uint8_t *data, size_t size); // returns the path; each call replaces the file

// Saves an image of 4 × 2 tiles of 8 pixels with all alpha classes, and its folder, unless the file exists.
void fuzz_save_picture(const char *path);

// Around the loading or drawing under test. `hook`, if set, is called with true and then false, to make calls fail
// between, until fuzz_stop.
void fuzz_set_load_hook(void (*hook)(bool begins));
void fuzz_load_begins();
void fuzz_load_ends();

// --- the log ---
void fuzz_clear_log();
int fuzz_logged_errors();
const char *fuzz_logged_problems(); // warnings and errors up to the libraries' own messages, one per line, indented

// --- the digest of a run: its log up to the libraries' own messages, and the loaded values that a target notes ---
void fuzz_note_bytes(const void *bytes, size_t size);
void fuzz_note_number(double number);
void fuzz_note_text(const char *text);
template <typename... Numbers> void fuzz_note(Numbers... numbers) {
    (fuzz_note_number(static_cast<double>(numbers)), ...);
}
uint64_t fuzz_take_digest(); // since the last call
