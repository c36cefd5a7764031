#include "fuzz/support.h"

#include "app/args.h"
#include "core/arena.h"
#include "core/storage_internal.h"
#include "engine/setup.h"
#include "lumarind/core/state_hash.h"
#include "lumarind/core/storage.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_storage.h>
#include <SDL3/SDL_surface.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

struct GameFile {
    const char *suffix;  // of the path
    const uint8_t *data; // borrowed for one run
    size_t size;
};

struct FuzzWorld {
    std::unique_ptr<TemporaryDirectory> directory;
    size_t block_size; // of arenas before
    bool engine_started;
    GameFile game_files[4]; // the first is used for all other paths
    int game_file_count;
    int memory_file;           // descriptor
    char memory_file_path[64]; // under /proc
    void (*load_hook)(bool begins);
    int errors;
    std::string problems;
    uint64_t digest;
};
static FuzzWorld world;

void fuzz_check(bool holds, const char *sentence) {
    if (holds) return;
    std::fprintf(stderr, "fuzz: broken: %s\n", sentence);
    std::abort();
}

void fuzz_set_load_hook(void (*hook)(bool begins)) { world.load_hook = hook; }
void fuzz_load_begins() {
    if (world.load_hook) world.load_hook(true);
}
void fuzz_load_ends() {
    if (world.load_hook) world.load_hook(false);
}

// --- the log ---

void fuzz_note_bytes(const void *bytes, size_t size) { world.digest = state_hash_bytes(world.digest, bytes, size); }

void fuzz_note_number(double number) { fuzz_note_bytes(&number, sizeof number); }

void fuzz_note_text(const char *text) { fuzz_note_bytes(text, SDL_strlen(text) + 1); }

uint64_t fuzz_take_digest() {
    const uint64_t digest = world.digest;
    world.digest = 0;
    return digest;
}

static void SDLCALL note_line(void *, int, SDL_LogPriority priority, const char *text) {
    if (priority >= SDL_LOG_PRIORITY_ERROR) world.errors++;
    std::string own = text;
    for (const char *end : {", error", " at byte "}) own.resize(std::min(own.size(), own.find(end)));
    const std::string_view path = world.memory_file_path; // its number differs
    if (const size_t at = path.empty() ? own.npos : own.find(path); at != own.npos)
        own.replace(at, path.size(), "input");
    fuzz_note_bytes(own.data(), own.size());
    if (priority >= SDL_LOG_PRIORITY_WARN) world.problems += "  " + own + "\n";
}

void fuzz_clear_log() {
    world.errors = 0;
    world.problems.clear();
}
int fuzz_logged_errors() { return world.errors; }
const char *fuzz_logged_problems() { return world.problems.c_str(); }

// --- the input as a file ---

static GameFile game_file_of(const char *path) {
    for (int i = 1; i < world.game_file_count; i++) {
        if (std::string_view(path).ends_with(world.game_files[i].suffix)) return world.game_files[i];
    }
    return world.game_files[0];
}

static bool SDLCALL game_file_info(void *, const char *path, SDL_PathInfo *info) {
    *info = {};
    info->type = SDL_PATHTYPE_FILE;
    info->size = game_file_of(path).size;
    return true;
}

static bool SDLCALL read_game_file(void *, const char *path, void *destination, Uint64 length) {
    const GameFile file = game_file_of(path);
    if (length != file.size) return false;
    if (length > 0) SDL_memcpy(destination, file.data, static_cast<size_t>(length));
    return true;
}

static void open_game_files() {
    SDL_StorageInterface files;
    SDL_INIT_INTERFACE(&files);
    files.info = game_file_info;
    files.read_file = read_game_file;
    SDL_CloseStorage(storage->game);
    storage->game = SDL_OpenStorage(&files, nullptr);
    fuzz_check(storage->game != nullptr, "the in-memory storage opens");
}

void fuzz_set_game_file(const uint8_t *data, size_t size) {
    world.game_files[0] = {"", data, size};
    world.game_file_count = 1;
}

void fuzz_set_game_file_by_suffix(const char *suffix, const uint8_t *data, size_t size) {
    fuzz_check(world.game_file_count < static_cast<int>(std::size(world.game_files)), "there is room for another file");
    world.game_files[world.game_file_count++] = {suffix, data, size};
}

const char *fuzz_memory_file(const uint8_t *data, size_t size) {
    if (world.memory_file <= 0) {
        world.memory_file = memfd_create("input", MFD_CLOEXEC);
        std::snprintf(world.memory_file_path, sizeof world.memory_file_path, "/proc/self/fd/%d", world.memory_file);
    }
    const bool written =
        ftruncate(world.memory_file, 0) == 0 && pwrite(world.memory_file, data, size, 0) == static_cast<ssize_t>(size);
    fuzz_check(written, "the input is written to the in-memory file");
    return world.memory_file_path;
}

void fuzz_save_picture(const char *path) {
    if (SDL_GetPathInfo(path, nullptr)) return;
    SDL_Surface *picture = SDL_CreateSurface(32, 16, SDL_PIXELFORMAT_RGBA32);
    for (int y = 0; y < 16; y++) {
        for (int x = 0; x < 32; x++) {
            const int alpha = y < 8 ? 255 : x < 16 ? 255 * ((x + y) & 1) : x * 8;
            SDL_WriteSurfacePixel(
                picture, x, y, static_cast<Uint8>(8 * x), static_cast<Uint8>(16 * y), 99, static_cast<Uint8>(alpha));
        }
    }
    std::error_code ignored; // of a path without a folder
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    fuzz_check(picture && SDL_SavePNG(picture, path), "the picture is saved");
    SDL_DestroySurface(picture);
}

// --- lifetime ---

void fuzz_start() {
    if (world.directory) return;
    world.directory = std::make_unique<TemporaryDirectory>();
    static char name[] = "fuzz", *no_arguments[] = {name, nullptr}; // those of an earlier test may be left
    args_parse(1, no_arguments);
    world.block_size = std::exchange(arena_block_size, 0); // the sanitizers then notice overruns
    SDL_SetLogOutputFunction(note_line, nullptr);
    SDL_SetLogPriorities(SDL_LOG_PRIORITY_INFO); // so that warnings are formatted too
    fuzz_check(storage_setup(), "both storages open");
    open_game_files();
}

void fuzz_start_engine() {
    fuzz_start();
    if (world.engine_started) return;
    write_file(
        "config/lumarind-engine.ini", "[graphics]\nvsync_enable = false\nui_scale = 1\n"
                                      "[window]\nwidth = 320\nheight = 240\n");
    SDL_SetHintWithPriority(SDL_HINT_VIDEO_DRIVER, "dummy", SDL_HINT_OVERRIDE);
    SDL_SetHintWithPriority(SDL_HINT_AUDIO_DRIVER, "dummy", SDL_HINT_OVERRIDE);
    SDL_SetHintWithPriority(SDL_HINT_RENDER_DRIVER, "software", SDL_HINT_OVERRIDE);
    fuzz_check(engine_start("fuzz"), "the engine starts on the dummy drivers");
    world.engine_started = true;
}

void fuzz_stop() {
    if (!world.directory) return;
    if (world.engine_started) engine_stop(); // also cleans up the storages
    storage_cleanup();
    if (world.memory_file > 0) close(world.memory_file);
    SDL_SetLogOutputFunction(SDL_GetDefaultLogOutputFunction(), nullptr);
    arena_block_size = world.block_size;
    world = {};
}
