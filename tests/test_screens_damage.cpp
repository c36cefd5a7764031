// Removes, truncates or corrupts each asset in turn: every screen that uses it reports the error and either fails or
// runs, and no other screen is affected. For the seed and the extent see support/damage.h.

#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/tile_world.h"
#include "screens/screen_states.h"
#include "support/damage.h"
#include "support/engine_fixture.h"
#include "support/log_kinds.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

struct Asset {
    const char *file = ""; // below assets; if it ends in /, all files in that folder
    std::initializer_list<GameState> readers = {};
    const char *missing = ""; // the error logged if the file is missing
    bool needed_to_start = false;
};
constexpr GameState TEXT = GAME_STATE_TEXT_DEMO, TEXTURE = GAME_STATE_TEXTURE_DEMO, TILEMAP = GAME_STATE_TILEMAP_DEMO,
                    SPRITE = GAME_STATE_SPRITE_DEMO, PLATFORMER = GAME_STATE_PLATFORMER_DEMO,
                    LOGICAL = GAME_STATE_LOGICAL_DEMO, AUDIO = GAME_STATE_AUDIO_DEMO;
const Asset ASSETS[] = {
    {"fonts/EuroStyle Normal.ttf", {}, "[FONTS] Font file not found (*)", true},
    {"fonts/Perfect DOS VGA 437 Win.ttf", {TEXT}, "[FONTS] Font file not found (*)"},
    {"audio/", {AUDIO}, "[AUDIO] Unable to load *, error: *"},
    {"fireknight/sprites/fireknight.json", {}}, // the same sheet as JSON, not used by screens
    {"fireknight/sprites/", {SPRITE, PLATFORMER}, "[SPRITE_SHEET] IMG_LoadTexture failed for *"},
    {"fireknight/tilemaps/castle-tilemap-collisions.csv", {PLATFORMER}, "[STORAGE] Error reading file: *"},
    {"fireknight/tilemaps/castle-tilemap.csv", {TILEMAP, LOGICAL, PLATFORMER}, "[STORAGE] Error reading file: *"},
    {"fireknight/tilemaps/old-dark-castle-interior-tileset.png",
     {TILEMAP, LOGICAL, PLATFORMER},
     "[TILEMAP] IMG_LoadTexture failed for *"},
    {"fireknight/tilemaps/", {}}, // the map editor's files, not used by screens: see visit_world
    {"texture_demo/", {TEXTURE}, "[TEXTURE_DEMO] IMG_LoadTexture failed, error: *"},
};

const Asset &asset_of(const std::string &file) {
    for (const Asset &asset : ASSETS) {
        const std::string name = asset.file;
        if (file == name || (name.back() == '/' && file.rfind(name, 0) == 0)) return asset;
    }
    throw std::runtime_error("no row for " + file);
}

class DamageTest : public EngineTest {
protected:
    fs::path intact;
    Damage damage = nullptr;

    void SetUp() override {
        EngineTest::SetUp();
        intact = fs::canonical("assets");
        damage_seed();
    }

    bool start_on_damaged() {
        if (!start()) return false;
        directory.use_as_game_files();
        return frame();
    }

    // Failures must be reported, and all log lines must be known.
    void expect_log_of(bool success) const {
        for (const LogLine &line : log.lines) EXPECT_EQ(unknown_line(line), "");
        EXPECT_EQ(success, log.errors().empty());
    }

    // Opens a screen from the menu, restarting if that ended the program. Null: the screen does not use the file.
    void visit(GameState screen, const char *error_of_missing) {
        SCOPED_TRACE(testing::Message() << "screen " << screen);
        log.lines.clear();
        engine_set_state(screen);
        bool survived = true;
        for (int i = 0; i < 4 && survived; i++) survived = frame(1 / 60.0);
        expect_log_of(survived);
        EXPECT_TRUE(survived || error_of_missing) << "the screen fails although it does not use the file";
        if (error_of_missing && !damage) {
            EXPECT_FALSE(survived);
            EXPECT_TRUE(matches(log.errors().at(0), error_of_missing)) << log.errors().at(0);
        }
        if (survived) return;
        stop();
        ASSERT_TRUE(start_on_damaged()) << "the menu no longer starts";
    }

    // The castle as a tile world, with a camera that moves across it.
    void visit_world(bool reads) {
        log.lines.clear();
        TileWorld *world = tile_world_load(engine_renderer(), "assets/fireknight/tilemaps/castle-tilemap.tmx");
        for (float x = 0; world && x < 2000; x += 400) {
            const TileWorldView view = {{x, x / 8, 400, 300}, 1};
            EXPECT_TRUE(tile_world_draw(engine_renderer(), world, &view));
            tile_world_advance(world, 0.1);
        }
        expect_log_of(world != nullptr);
        EXPECT_TRUE(reads ? damage || !world : world != nullptr);
        tile_world_cleanup(&world);
    }

    // Screens that do not use the file are visited too, but rarely: two of them take half a second to load.
    void visit_screens(const Asset &asset) {
        for (GameState screen = GAME_STATE_TEXT_DEMO; screen <= GAME_STATE_PHYSICS_DEMO; screen++) {
            const bool reader = std::ranges::count(asset.readers, screen) > 0;
            if (damage_is_exhaustive() || reader || (!damage && damage_below(4) == 0))
                visit(screen, reader ? asset.missing : nullptr);
        }
    }

    void expect_survived(Damage kind) {
        int files = 0;
        damage = kind;
        for (const std::string &file : files_below(intact)) {
            SCOPED_TRACE(file);
            files++;
            const Asset &asset = asset_of(file);
            damage_file(intact, file, damage);
            log.lines.clear();
            const bool started = start_on_damaged();
            expect_log_of(started);
            EXPECT_TRUE(started || asset.needed_to_start);
            EXPECT_FALSE(started && asset.needed_to_start && !damage);
            if (!started) continue;
            visit_screens(asset);
            if (file.find("/tilemaps/") != file.npos) visit_world(!file.ends_with(".csv"));
            stop();
        }
        EXPECT_GT(files, 20);
    }
};

TEST_F(DamageTest, RemovedAssetsAreReportedAndAffectOnlyTheirScreens) { expect_survived(nullptr); }
TEST_F(DamageTest, EmptyAssetsAreReported) { expect_survived(damage_empty); }
TEST_F(DamageTest, TruncatedAssetsAreReportedOrUsable) { expect_survived(damage_truncate); }
TEST_F(DamageTest, NoiseIsReported) { expect_survived(damage_noise); }
TEST_F(DamageTest, NoiseAfterHeaderIsReportedOrShown) { expect_survived(damage_noise_behind_header); }
TEST_F(DamageTest, ScratchedAssetsAreReportedOrShown) { expect_survived(damage_flip_bits); }

} // namespace
