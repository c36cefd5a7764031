// storage: the game's read-only data files (title storage, the folder of the executable) and the user's own files
// (user storage). Paths are relative, with "/" between names; "." and ".." are refused. Main thread only.
#pragma once

#include "lumarind/core/string_array.h"

struct SDL_Storage;

// --- lifetime ---
bool storage_setup();   // safe twice. False: reported; storage_cleanup releases what was opened
void storage_cleanup(); // safe twice, and after a failed setup

// --- reading ---
// The whole file, followed by a 0 byte; the caller owns it (SDL_free). Null: reported. An empty file is an error.
char *storage_read_file(SDL_Storage *storage, const char *path);
char *storage_read_game_file(const char *path);
char *storage_read_user_file(const char *path);

// --- writing ---
// Writes the whole file among the user's own, or leaves it as it was: a crash or a full disk loses nothing. Folders in
// `path` are made. False: reported.
bool storage_write_user_file(const char *path, const void *data, size_t size);

// --- lines ---
// Replaces what `lines` holds by the lines of `text` and returns their number. Empty lines give none; a carriage
// return stays at its line's end. The text is cut up in the process.
int storage_parse_lines(char *text, StringArray *lines);

// --- questions ---
SDL_Storage *storage_game(); // null before setup
SDL_Storage *storage_user();
