// Removes, truncates, overwrites with noise or flips bits in each asset of Cinder Keep, one at a time: every screen
// either starts without errors, or fails and reports why. For the seed and the extent see support/damage.h.

#include "game.h"
#include "keep/keep_fixture.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/game.h"
#include "support/damage.h"

#include <SDL3/SDL_filesystem.h>

namespace fs = std::filesystem;

namespace {

constexpr Damage KINDS[] = {nullptr, damage_truncate, damage_empty, damage_noise, damage_flip_bits};

class KeepDamage : public KeepTest {
protected:
    Game game = cinder_keep;
    fs::path intact;

    void SetUp() override {
        KeepTest::SetUp();
        intact = fs::canonical(fs::path(SDL_GetBasePath()) / "assets");
        damage_seed();
        game.files = GAME_FILES_CURRENT_FOLDER; // the folder of the damaged files
        tested_game = &game;
        write_file("config/cinder-keep.ini", "[graphics]\nvsync_enable = false\n");
    }

    void visit(int screen) {
        log.lines.clear();
        if (!start({"--screen", "credits", "--window-size", "320x180", "--no-config-save"})) {
            EXPECT_FALSE(log.errors().empty()) << "startup fails without an error";
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
    const bool everywhere = damage_is_exhaustive();
    size_t files = 0;
    for (const std::string &file : files_below(intact)) {
        for (size_t kind = 0; kind < std::size(KINDS); kind++) {
            if (!everywhere && kind != files % std::size(KINDS)) continue; // one kind per file, in rotation
            SCOPED_TRACE(file + ", kind " + std::to_string(kind));
            damage_file(intact, file, KINDS[kind]);
            for (int screen = SCREEN_TITLE; screen <= SCREEN_LEVEL_2; screen++) {
                if (everywhere || screen != SCREEN_LEVEL_2) visit(screen);
            }
        }
        files++;
    }
    EXPECT_GT(files, 12U);
}

} // namespace
