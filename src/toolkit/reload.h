// reload: follows files while the program runs, for those who edit them. Off unless the environment says
// LUMARIND_RELOAD=1 or the program says so; off, it costs nothing. Main thread only.
#pragma once

#include <SDL3/SDL_stdinc.h>

inline constexpr int RELOAD_INTERVAL_MS = 250; // files are looked at this often at the most

void reload_set(bool enabled, int interval_ms = RELOAD_INTERVAL_MS);
bool reload_is_enabled();

// What tells one version of a file from the next. All 0: there is no such file.
struct FileStamp {
    Uint64 size;
    Sint64 modified; // SDL_Time
};
FileStamp file_stamp_of_path(const char *path);      // relative to the current folder
FileStamp file_stamp_of_game_file(const char *path); // in the title storage
bool file_stamp_same(FileStamp a, FileStamp b);

// Whether it is time to look at files again; `last_ms` is the caller's, 0 at first. Always false when it is off.
bool reload_is_due(Uint64 *last_ms);
