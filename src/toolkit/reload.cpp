#include "toolkit/reload.h"

#include "core/storage.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_storage.h>
#include <SDL3/SDL_timer.h>

struct ReloadSettings {
    bool known; // else the environment has not been asked yet
    bool enabled;
    Uint64 interval_ms;
};
static ReloadSettings g_reload;

void reload_set(bool enabled, int interval_ms) {
    g_reload = {.known = true, .enabled = enabled, .interval_ms = static_cast<Uint64>(SDL_max(interval_ms, 0))};
}

bool reload_is_enabled() {
    if (!g_reload.known) {
        const char *wish = SDL_getenv("LUMARIND_RELOAD");
        reload_set(wish && SDL_strcmp(wish, "1") == 0);
    }
    return g_reload.enabled;
}

static FileStamp _stamp(bool found, const SDL_PathInfo &info) {
    return found ? FileStamp{info.size, info.modify_time} : FileStamp{};
}

FileStamp file_stamp_of_path(const char *path) {
    SDL_PathInfo info = {};
    return _stamp(SDL_GetPathInfo(path, &info), info);
}

FileStamp file_stamp_of_game_file(const char *path) {
    SDL_PathInfo info = {};
    return _stamp(SDL_GetStoragePathInfo(storage_game(), path, &info), info);
}

bool file_stamp_same(FileStamp a, FileStamp b) { return a.size == b.size && a.modified == b.modified; }

bool reload_is_due(Uint64 *last_ms) {
    if (!reload_is_enabled()) return false;
    const Uint64 now = SDL_GetTicks();
    if (*last_ms != 0 && now - *last_ms < g_reload.interval_ms) return false;
    *last_ms = SDL_max(now, Uint64{1});
    return true;
}
