#include "support/damage.h"

#include "support/engine_fixture.h"

#include <SDL3/SDL_stdinc.h>

namespace fs = std::filesystem;

static Uint64 g_random;

void damage_seed() { g_random = number_from_environment("LUMARIND_DAMAGE_SEED", 1); }

size_t damage_below(size_t limit) { return static_cast<size_t>(SDL_rand_r(&g_random, static_cast<Sint32>(limit))); }

bool damage_is_exhaustive() { return std::getenv("LUMARIND_DAMAGE_EVERYWHERE") != nullptr; }

void damage_empty(std::string *content) { content->clear(); }

void damage_truncate(std::string *content) { content->resize(damage_below(content->size())); }

static void _fill_with_noise(std::string *content, size_t first) {
    for (size_t i = first; i < content->size(); i++) (*content)[i] = static_cast<char>(damage_below(256));
}
void damage_noise(std::string *content) { _fill_with_noise(content, 0); }
void damage_noise_behind_header(std::string *content) { _fill_with_noise(content, 64); }

void damage_flip_bits(std::string *content) {
    for (int i = 0; i < 20; i++) (*content)[damage_below(content->size())] ^= static_cast<char>(1 << damage_below(8));
}

std::vector<std::string> files_below(const fs::path &folder) {
    std::vector<std::string> files;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_directory()) files.push_back(fs::relative(entry.path(), folder).string());
    }
    return files;
}

void damage_file(const fs::path &intact, const std::string &file, Damage damage) {
    fs::remove_all("assets");
    for (const std::string &each : files_below(intact)) {
        const fs::path there = fs::path("assets") / each;
        fs::create_directories(there.parent_path());
        if (each != file) fs::create_symlink(intact / each, there);
    }
    if (!damage) return;
    std::string content = read_file(intact / file);
    damage(&content);
    write_file(fs::path("assets") / file, content);
}
