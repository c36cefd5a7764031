// reload: follows files while the program runs, for those who edit them. Off unless the environment says
// LUMARIND_RELOAD=1, or is silent and the game says so; off, it costs nothing. Main thread only.
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
FileStamp file_stamp_of_path(const char *path);      // of an asset
FileStamp file_stamp_of_game_file(const char *path); // in the title storage
bool file_stamp_same(FileStamp a, FileStamp b);

// --- records that follow one file or another ---

// From now on `changed` is called when the file is no longer as `stamp` says. One file for each owner and function: a
// later call replaces it. Nothing happens when it is off.
using ReloadChanged = void (*)(void *owner, const char *path);
void reload_follow(void *owner, ReloadChanged changed, const char *path, bool is_game_file, FileStamp stamp);
void reload_forget(const void *owner);                       // all of the owner's files; to be called before it goes
FileStamp reload_stamp(const char *path, bool is_game_file); // to be taken before reading; empty when it is off
// For owners that follow files together. Calls what the owner's files call, as if they had changed. False: it has none.
bool reload_now(const void *owner);
void reload_each_owner(ReloadChanged changed, void (*visit)(void *owner, void *context), void *context);
void reload_tick(); // the engine's, once per frame: looks at the files when it is time

// --- for those who look by themselves ---

// Whether it is time to look at files again; `last_ms` is the caller's, 0 at first. Always false when it is off.
bool reload_is_due(Uint64 *last_ms);
