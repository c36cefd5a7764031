// storage: the game's read-only data files (title storage, the folder of the executable) and the user's own files
// (user storage). Paths are relative, with "/" between names; "." and ".." are rejected. Main thread only.
#pragma once

#include "lumarind/core/string_array.h"

struct SDL_Storage;

// --- lifetime ---
bool storage_setup();   // safe to call twice. Reports errors; storage_cleanup releases a partial setup
void storage_cleanup(); // safe to call twice, and after a failed setup

// --- reading ---
// Reads the whole file and appends a 0 byte; the caller frees it with SDL_free. Reports errors, also for an empty file.
char *storage_read_file(SDL_Storage *storage, const char *path);
char *storage_read_game_file(const char *path);
char *storage_read_user_file(const char *path);

// --- writing ---
// Replaces a user file atomically: after a crash or on a full disk the old one is intact. Missing folders in
// `path` are created. Reports errors.
bool storage_write_user_file(const char *path, const void *data, size_t size);

// --- lines ---
// Replaces the contents of `lines` with the lines of `text` and returns their number. Empty lines are skipped; a
// carriage return stays at the end of its line. `text` is modified.
int storage_parse_lines(char *text, StringArray *lines);

// --- handles ---
SDL_Storage *storage_game(); // null before setup
SDL_Storage *storage_user();
