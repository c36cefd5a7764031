#include "support/temporary_directory.h"

#include "core/storage_internal.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_stdinc.h>
#include <SDL3/SDL_storage.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

void set_environment(const char *name, const char *value) {
    value ? setenv(name, value, 1) : unsetenv(name);
    if (value) {
        SDL_SetEnvironmentVariable(SDL_GetEnvironment(), name, value, true);
    } else {
        SDL_UnsetEnvironmentVariable(SDL_GetEnvironment(), name);
    }
}

TemporaryDirectory::TemporaryDirectory() : previous_(fs::current_path()) {
    std::string name = (fs::temp_directory_path() / "lumarind-test-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("no temporary directory");
    path = name;
    fs::current_path(path);
    set_environment("XDG_DATA_HOME", path.c_str());
}

TemporaryDirectory::~TemporaryDirectory() {
    set_environment("XDG_DATA_HOME", nullptr);
    fs::current_path(previous_);
    std::error_code error;
    fs::remove_all(path, error);
}

void TemporaryDirectory::link_assets() const {
    fs::create_directory_symlink(fs::canonical(fs::path(SDL_GetBasePath()) / "assets"), path / "assets");
}

void TemporaryDirectory::use_as_game_files(const char *folder) const {
    SDL_CloseStorage(storage->game);
    storage->game = SDL_OpenFileStorage((path / folder).c_str());
}

void write_file(const fs::path &path, const std::string &content) {
    if (path.has_parent_path()) fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

std::string read_file(const fs::path &path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}
