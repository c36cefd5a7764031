#include "lumarind/toolkit/reload.h"

#include "lumarind/core/files.h"
#include "lumarind/core/storage.h"
#include "lumarind/engine/game.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_storage.h>
#include <SDL3/SDL_timer.h>

struct ReloadSettings {
    bool known; // false: the environment has not been read yet
    bool enabled;
    Uint64 interval_ms;
};
static ReloadSettings g_reload;

void reload_set(bool enabled, int interval_ms) {
    g_reload = {.known = true, .enabled = enabled, .interval_ms = static_cast<Uint64>(SDL_max(interval_ms, 0))};
}

bool reload_is_enabled() {
    if (!g_reload.known) {
        const char *setting = SDL_getenv("LUMARIND_RELOAD");
        reload_set(setting ? SDL_strcmp(setting, "1") == 0 : engine_game()->reload);
    }
    return g_reload.enabled;
}

static FileStamp _stamp(bool found, const SDL_PathInfo &info) {
    return found ? FileStamp{info.size, info.modify_time} : FileStamp{};
}

FileStamp file_stamp_of_path(const char *path) {
    SDL_PathInfo info = {};
    return _stamp(SDL_GetPathInfo(files_asset(path).text, &info), info);
}

FileStamp file_stamp_of_game_file(const char *path) {
    SDL_PathInfo info = {};
    return _stamp(SDL_GetStoragePathInfo(storage_game(), path, &info), info);
}

bool file_stamp_same(FileStamp a, FileStamp b) { return a.size == b.size && a.modified == b.modified; }

bool reload_is_due(Uint64 *last_ms) {
    if (!reload_is_enabled()) return false;
    const Uint64 now = SDL_GetTicks() + 1; // never 0, which stands for no earlier check
    if (*last_ms != 0 && now - *last_ms < g_reload.interval_ms) return false;
    *last_ms = now;
    return true;
}

// --- records ---

struct ReloadEntry {
    ReloadEntry *next;
    void *owner;
    ReloadChanged changed;
    char *path; // owned
    bool is_game_file;
    FileStamp stamp;
};
static ReloadEntry *g_reload_entries;
static Uint64 g_reload_checked_ms;

FileStamp reload_stamp(const char *path, bool is_game_file) {
    if (!reload_is_enabled()) return {};
    return is_game_file ? file_stamp_of_game_file(path) : file_stamp_of_path(path);
}

static ReloadEntry *_reload_entry(const void *owner, ReloadChanged changed) {
    for (ReloadEntry *entry = g_reload_entries; entry; entry = entry->next) {
        if (entry->owner == owner && entry->changed == changed) return entry;
    }
    return nullptr;
}

void reload_follow(void *owner, ReloadChanged changed, const char *path, bool is_game_file, FileStamp stamp) {
    if (!reload_is_enabled()) return;
    ReloadEntry *entry = _reload_entry(owner, changed);
    if (entry && SDL_strcmp(entry->path, path) == 0) { // also when called from the entry's own callback
        entry->stamp = stamp;
        return;
    }
    char *copy = SDL_strdup(path);
    if (copy && !entry) {
        entry = static_cast<ReloadEntry *>(SDL_calloc(1, sizeof *entry));
        if (entry) {
            entry->next = g_reload_entries;
            g_reload_entries = entry;
        }
    }
    if (!copy || !entry) {
        SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "[RELOAD] Out of memory, not watching %s", path);
        SDL_free(copy);
        return;
    }
    SDL_free(entry->path);
    *entry = {
        .next = entry->next,
        .owner = owner,
        .changed = changed,
        .path = copy,
        .is_game_file = is_game_file,
        .stamp = stamp};
}

void reload_forget(const void *owner) {
    for (ReloadEntry **at = &g_reload_entries; *at;) {
        ReloadEntry *entry = *at;
        if (entry->owner != owner) {
            at = &entry->next;
            continue;
        }
        *at = entry->next;
        SDL_free(entry->path);
        SDL_free(entry);
    }
}

bool reload_now(const void *owner) {
    bool found = false;
    for (ReloadEntry *entry = g_reload_entries; entry; entry = entry->next) {
        if (entry->owner != owner) continue;
        entry->stamp = reload_stamp(entry->path, entry->is_game_file);
        entry->changed(entry->owner, entry->path);
        found = true;
    }
    return found;
}

void reload_each_owner(ReloadChanged changed, void (*visit)(void *owner, void *context), void *context) {
    for (ReloadEntry *entry = g_reload_entries; entry; entry = entry->next) {
        if (entry->changed == changed) visit(entry->owner, context);
    }
}

void reload_tick() {
    if (!reload_is_due(&g_reload_checked_ms)) return;
    for (ReloadEntry *entry = g_reload_entries; entry; entry = entry->next) {
        const FileStamp now = reload_stamp(entry->path, entry->is_game_file);
        if (file_stamp_same(now, entry->stamp)) continue;
        entry->stamp = now; // also of an invalid version, so that it is tried only once
        entry->changed(entry->owner, entry->path);
    }
}
