#include "lumarind/core/files.h"

#include "core/files_internal.h"
#include "lumarind/engine/game.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_log.h>

struct FilesState {
    FilePath asset_root, user_root; // end with a slash; empty: the current folder
    bool found;                     // the asset root contains a folder "assets"
    char searched[FILE_PATH_SIZE];  // the folders searched, separated by ", "
};
static FilesState g_files;

static bool _files_try_root(const char *base, const char *below) {
    FilePath root = {}, assets = {};
    SDL_snprintf(root.text, sizeof root.text, "%s%s", base, below);
    SDL_snprintf(assets.text, sizeof assets.text, "%sassets", root.text);
    if (*g_files.searched) SDL_strlcat(g_files.searched, ", ", sizeof g_files.searched);
    SDL_strlcat(g_files.searched, assets.text, sizeof g_files.searched);
    SDL_PathInfo info = {};
    if (!SDL_GetPathInfo(assets.text, &info) || info.type != SDL_PATHTYPE_DIRECTORY) return false;
    g_files.asset_root = root;
    return true;
}

static bool _files_find_assets() {
    const char *base = SDL_GetBasePath();
    FilePath shared = {};
    SDL_snprintf(shared.text, sizeof shared.text, "../share/%s/", engine_game()->id);
    if (base && (_files_try_root(base, "") || _files_try_root(base, shared.text))) return true;
    char *current = SDL_GetCurrentDirectory(); // absolute: the current folder may change
    const bool found = current && _files_try_root(current, "");
    SDL_free(current);
    return found;
}

bool files_setup() {
    files_cleanup();
    const Game *game = engine_game();
    if (game->files == GAME_FILES_CURRENT_FOLDER) return true;
    char *user = SDL_GetPrefPath(game->organisation, game->program);
    if (!user) return false;
    SDL_strlcpy(g_files.user_root.text, user, FILE_PATH_SIZE);
    SDL_free(user);
    g_files.found = _files_find_assets();
    return true;
}

void files_cleanup() { g_files = {}; }

void files_log() {
    if (engine_game()->files == GAME_FILES_CURRENT_FOLDER) return;
    if (g_files.found) {
        SDL_Log("[FILES] Assets in: %sassets", g_files.asset_root.text);
    } else {
        SDL_LogWarn(SDL_LOG_CATEGORY_ERROR, "[FILES] No assets folder found; searched: %s", g_files.searched);
    }
    SDL_Log("[FILES] User files in: %s", g_files.user_root.text);
}

const char *files_asset_root() { return g_files.asset_root.text; }

static FilePath _files_join(const FilePath &root, const char *path) {
    FilePath joined = {};
    if (!path) return joined; // the caller ran out of memory; opening an empty path fails
    const bool absolute = *path == '/' || *path == '\\' || (*path && path[1] == ':');
    SDL_snprintf(joined.text, sizeof joined.text, "%s%s", absolute ? "" : root.text, path);
    return joined;
}

FilePath files_asset(const char *path) { return _files_join(g_files.asset_root, path); }

FilePath files_user(const char *path) { return _files_join(g_files.user_root, path); }
