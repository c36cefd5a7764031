// Each of Cinder Keep's assets removed, truncated, replaced by noise and with flipped bits, one at a time: every screen
// either starts without errors, or fails and reports why.
//   LUMARIND_DAMAGE_SEED        seed of the damage (default 1)
//   LUMARIND_DAMAGE_EVERYWHERE  if set, all kinds of damage and all screens

#include "game.h"
#include "keep/keep_fixture.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/game.h"

#include <SDL3/SDL_filesystem.h>

namespace fs = std::filesystem;

namespace {

enum Damage { REMOVED, CUT, EMPTY, NOISE, SCRATCHED, DAMAGE_COUNT };

class KeepDamage : public KeepTest {
protected:
    Game game = cinder_keep;
    fs::path intact;
    Uint64 random = 1;

    void SetUp() override {
        KeepTest::SetUp();
        intact = fs::canonical(fs::path(SDL_GetBasePath()) / "assets");
        if (const char *seed = std::getenv("LUMARIND_DAMAGE_SEED")) random = std::strtoull(seed, nullptr, 10);
        game.files = GAME_FILES_CURRENT_FOLDER; // the folder of the damaged files
        played = &game;
        write_file("config/cinder-keep.ini", "[graphics]\nvsync_enable = false\n");
    }
    size_t below(size_t limit) { return static_cast<size_t>(SDL_rand_r(&random, static_cast<Sint32>(limit))); }

    // Makes "assets" a folder of links to the real files, except for the damaged one.
    void damage_file(const std::string &file, Damage damage) {
        fs::remove_all("assets");
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(intact)) {
            const fs::path there = fs::path("assets") / fs::relative(entry.path(), intact);
            fs::create_directories(entry.is_directory() ? there : there.parent_path());
            if (!entry.is_directory()) fs::create_symlink(entry.path(), there);
        }
        const fs::path victim = fs::path("assets") / file;
        std::string content = read_file(victim);
        fs::remove(victim);
        if (damage == CUT) content.resize(below(content.size()));
        if (damage == EMPTY) content.clear();
        for (size_t i = 0; damage == NOISE && i < content.size(); i++) content[i] = static_cast<char>(below(256));
        for (int i = 0; damage == SCRATCHED && i < 20; i++)
            content[below(content.size())] ^= static_cast<char>(1 << below(8));
        if (damage != REMOVED) write_file(victim, content);
    }

    void visit(int screen) {
        log.lines.clear();
        if (!start({"--screen", "credits", "--window-size", "320x180", "--no-config-save"})) {
            EXPECT_FALSE(log.errors().empty()) << "the start fails without an error";
            return;
        }
        directory.use_as_game_files();
        engine_set_state(state_of(screen));
        bool survived = true;
        for (int i = 0; i < 4 && survived; i++) survived = frame(1.0 / 60);
        EXPECT_EQ(survived, log.errors().empty()) << "screen " << screen;
        stop();
    }
};

TEST_F(KeepDamage, DamagedAssetsAreReportedOrUsable) {
    const bool everywhere = std::getenv("LUMARIND_DAMAGE_EVERYWHERE") != nullptr;
    int files = 0;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(intact)) {
        if (entry.is_directory()) continue;
        const std::string file = fs::relative(entry.path(), intact).string();
        for (int damage = 0; damage < DAMAGE_COUNT; damage++) {
            if (!everywhere && damage != files % DAMAGE_COUNT) continue; // one kind per file, in rotation
            SCOPED_TRACE(file + ", damage " + std::to_string(damage));
            damage_file(file, static_cast<Damage>(damage));
            for (int screen = SCREEN_TITLE; screen <= SCREEN_LEVEL_2; screen++) {
                if (everywhere || screen != SCREEN_LEVEL_2) visit(screen);
            }
        }
        files++;
    }
    EXPECT_GT(files, 12);
}

} // namespace
