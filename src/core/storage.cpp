#include "lumarind/core/storage.h"

#include "core/files_internal.h"
#include "core/storage_internal.h"
#include "lumarind/core/error.h"
#include "lumarind/engine/game.h"

#include <SDL3/SDL_storage.h>
#include <SDL3/SDL_timer.h>

static constexpr int READY_WAIT_MS = 10'000; // local storage is ready at once; remote storage may take a while

StorageState *lumarind::storage;

bool storage_setup_game() {
    const char *root = files_asset_root(); // empty: the folder of the executable
    storage->game = SDL_OpenTitleStorage(*root ? root : nullptr, 0);
    if (storage->game) return true;
    return engine_error("[STORAGE] SDL3: Game (title) storage setup failed, error: %s", SDL_GetError());
}

bool storage_setup_user() {
    storage->user = SDL_OpenUserStorage(engine_game()->organisation, engine_game()->program, 0);
    if (storage->user) return true;
    return engine_error("[STORAGE] SDL3: User storage setup failed, error: %s", SDL_GetError());
}

bool storage_setup() {
    if (storage) return true;
    storage = static_cast<StorageState *>(SDL_calloc(1, sizeof *storage));
    if (!storage) return engine_error("[STORAGE] Memory allocation failed, error: %s", SDL_GetError());
    return storage_setup_game() && storage_setup_user();
}

void storage_cleanup() {
    if (!storage) return;
    if (storage->game) SDL_CloseStorage(storage->game);
    if (storage->user) SDL_CloseStorage(storage->user);
    SDL_free(storage);
    storage = nullptr;
}

static bool _storage_wait(SDL_Storage *from) {
    for (int waited_ms = 0; waited_ms < READY_WAIT_MS; waited_ms++) {
        if (SDL_StorageReady(from)) return true;
        SDL_Delay(1);
    }
    return false;
}

static char *_storage_read(SDL_Storage *from, const char *path, Uint64 size) {
    char *buffer = static_cast<char *>(SDL_malloc(static_cast<size_t>(size) + 1));
    if (!buffer) {
        engine_error("[STORAGE] Memory allocation failed while reading file, error: %s", SDL_GetError());
        return nullptr;
    }
    if (!SDL_ReadStorageFile(from, path, buffer, size)) {
        engine_error("[STORAGE] Error reading data from file: %s, error: %s", path, SDL_GetError());
        SDL_free(buffer);
        return nullptr;
    }
    buffer[size] = '\0';
    return buffer;
}

char *storage_read_file(SDL_Storage *from, const char *path) {
    Uint64 size = 0;
    if (!from) {
        engine_error("[STORAGE] Storage is NULL, can't read file: %s", path);
    } else if (!_storage_wait(from)) {
        engine_error("[STORAGE] Storage not ready, can't read file: %s", path);
    } else if (!SDL_GetStorageFileSize(from, path, &size)) {
        engine_error("[STORAGE] Error reading file: %s, file not found or permission error.", path);
    } else if (size == 0) {
        engine_error("[STORAGE] Error determining file size or file is empty: %s", path);
    } else {
        return _storage_read(from, path, size);
    }
    return nullptr;
}

char *storage_read_game_file(const char *path) { return storage_read_file(storage_game(), path); }

char *storage_read_user_file(const char *path) { return storage_read_file(storage_user(), path); }

// Creates the folder of `path` and its parents if missing.
static bool _storage_make_folder(const char *path) {
    const char *end = SDL_strrchr(path, '/');
    if (!end) return true;
    char *folder = SDL_strndup(path, static_cast<size_t>(end - path));
    const bool made = folder && SDL_CreateStorageDirectory(storage_user(), folder);
    SDL_free(folder);
    return made;
}

// Writes a temporary file in the same folder and renames it: `path` is a complete file at any time.
static bool _storage_replace(const char *path, const char *temporary, const void *data, size_t size) {
    return _storage_make_folder(path) && SDL_WriteStorageFile(storage_user(), temporary, data, size) &&
           SDL_RenameStoragePath(storage_user(), temporary, path);
}

bool storage_write_user_file(const char *path, const void *data, size_t size) {
    if (!storage_user()) return engine_error("[STORAGE] Storage is NULL, can't write file: %s", path);
    if (!_storage_wait(storage_user())) return engine_error("[STORAGE] Storage not ready, can't write file: %s", path);
    char *temporary = nullptr;
    if (SDL_asprintf(&temporary, "%s.new", path) < 0) {
        return engine_error("[STORAGE] Memory allocation failed while writing file, error: %s", SDL_GetError());
    }
    const bool written = _storage_replace(path, temporary, data, size);
    if (!written) {
        engine_error("[STORAGE] Error writing file: %s, error: %s", path, SDL_GetError());
        SDL_RemoveStoragePath(storage_user(), temporary); // it may exist, truncated
    }
    SDL_free(temporary);
    return written;
}

int storage_parse_lines(char *text, StringArray *lines) {
    string_array_reset(lines);
    char *rest = nullptr;
    for (char *line = SDL_strtok_r(text, "\n", &rest); line; line = SDL_strtok_r(nullptr, "\n", &rest)) {
        string_array_add(lines, line); // reports errors; the line is then skipped
    }
    return lines->count;
}

SDL_Storage *storage_game() { return storage ? storage->game : nullptr; }

SDL_Storage *storage_user() { return storage ? storage->user : nullptr; }
