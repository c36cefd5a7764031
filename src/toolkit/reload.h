// reload: hot reload: watches files and reports changes while the program runs. Enabled by LUMARIND_RELOAD=1, or by the
// game's record if the variable is not set; costs nothing when disabled. Main thread only.
#pragma once

#include <SDL3/SDL_stdinc.h>

inline constexpr int RELOAD_INTERVAL_MS = 250; // shortest time between checks of the files

void reload_set(bool enabled, int interval_ms = RELOAD_INTERVAL_MS);
bool reload_is_enabled();

// Identifies a version of a file. All 0: the file does not exist.
struct FileStamp {
    Uint64 size;
    Sint64 modified; // SDL_Time
};
FileStamp file_stamp_of_path(const char *path);      // of an asset
FileStamp file_stamp_of_game_file(const char *path); // in the title storage
bool file_stamp_same(FileStamp a, FileStamp b);

// --- callbacks for changed files ---

// Calls `changed` when the file no longer matches `stamp`. One file per owner and function: a later call replaces the
// path. Does nothing when disabled.
using ReloadChanged = void (*)(void *owner, const char *path);
void reload_follow(void *owner, ReloadChanged changed, const char *path, bool is_game_file, FileStamp stamp);
void reload_forget(const void *owner);                       // stops watching an owner's files; call before freeing it
FileStamp reload_stamp(const char *path, bool is_game_file); // call before reading the file; all 0 when disabled
// For owners that are reloaded together: calls the owner's callbacks as if its files had changed. Returns false if it
// has none.
bool reload_now(const void *owner);
void reload_each_owner(ReloadChanged changed, void (*visit)(void *owner, void *context), void *context);
void reload_tick(); // called by the engine once per frame: checks the files when due

// --- polling ---

// Returns whether a check is due; `last_ms` is the caller's, initially 0. Always false when disabled.
bool reload_is_due(Uint64 *last_ms);
