// Every asset removed, cut and turned to noise, one at a time, under every screen that reads it: the failure is said
// and stays with those screens.
//   LUMARIND_DAMAGE_SEED        what the damage is drawn from (default 1)
//   LUMARIND_DAMAGE_EVERYWHERE  when set, all screens are visited for each file

#include "engine/engine.h"
#include "support/engine_fixture.h"
#include "support/log_kinds.h"

#include <SDL3/SDL_stdinc.h>

#include <algorithm>
#include <cstdlib>

namespace fs = std::filesystem;

namespace {

constexpr int SCREENS_END = GAME_STATE_PHYSICS_DEMO + 1;

struct Asset {
    const char *file = ""; // within assets; one row stands for all files in its folder where it ends in /
    std::initializer_list<GameState> readers = {};
    const char *missing = ""; // what is logged without it
    bool needed_to_start = false;
};
const Asset ASSETS[] = {
    {.file = "fonts/EuroStyle Normal.ttf", .missing = "[FONTS] Font file not found (*)", .needed_to_start = true},
    {.file = "fonts/Perfect DOS VGA 437 Win.ttf",
     .readers = {GAME_STATE_TEXT_DEMO},
     .missing = "[FONTS] Font file not found (*)"},
    {.file = "audio/", .readers = {GAME_STATE_AUDIO_DEMO}, .missing = "[AUDIO] Unable to load *, error: *"},
    {.file = "fireknight/sprites/fireknight.json", .readers = {}}, // the same sheet, for games
    {.file = "fireknight/sprites/",
     .readers = {GAME_STATE_SPRITE_DEMO, GAME_STATE_PLATFORMER_DEMO},
     .missing = "[SPRITE_SHEET] IMG_LoadTexture failed for *"},
    {.file = "fireknight/tilemaps/castle-tilemap-collisions.csv",
     .readers = {GAME_STATE_PLATFORMER_DEMO},
     .missing = "[STORAGE] Error reading file: *"},
    {.file = "fireknight/tilemaps/castle-tilemap.csv",
     .readers = {GAME_STATE_TILEMAP_DEMO, GAME_STATE_LOGICAL_DEMO, GAME_STATE_PLATFORMER_DEMO},
     .missing = "[STORAGE] Error reading file: *"},
    {.file = "fireknight/tilemaps/old-dark-castle-interior-tileset.png",
     .readers = {GAME_STATE_TILEMAP_DEMO, GAME_STATE_LOGICAL_DEMO, GAME_STATE_PLATFORMER_DEMO},
     .missing = "[TILEMAP] IMG_LoadTexture failed for *"},
    {.file = "fireknight/tilemaps/", .readers = {}}, // the map editor's own files
    {.file = "texture_demo/",
     .readers = {GAME_STATE_TEXTURE_DEMO},
     .missing = "[TEXTURE_DEMO] IMG_LoadTexture failed, error: *"},
};

const Asset &asset_of(const std::string &file) {
    for (const Asset &asset : ASSETS) {
        const std::string name = asset.file;
        if (file == name || (name.back() == '/' && file.rfind(name, 0) == 0)) return asset;
    }
    throw std::runtime_error("no row for " + file);
}

bool is_reader(GameState screen, const Asset &asset) {
    return std::find(asset.readers.begin(), asset.readers.end(), screen) != asset.readers.end();
}

// How a file's content is damaged. Null: the file is removed.
using Damage = void (*)(std::string *content, Uint64 *random);

int below(Uint64 *random, size_t limit) { return SDL_rand_r(random, static_cast<Sint32>(limit)); }

void make_empty(std::string *content, Uint64 *) { content->clear(); }

void cut_short(std::string *content, Uint64 *random) {
    content->resize(static_cast<size_t>(below(random, content->size())));
}

void fill_with_noise(std::string *content, Uint64 *random) {
    for (char &byte : *content) byte = static_cast<char>(below(random, 256));
}

void fill_with_noise_behind_the_header(std::string *content, Uint64 *random) {
    const std::string header = content->substr(0, 64); // enough to be taken for what the file was
    fill_with_noise(content, random);
    content->replace(0, header.size(), header);
}

void scratch(std::string *content, Uint64 *random) {
    for (int i = 0; i < 20; i++) {
        char &byte = (*content)[static_cast<size_t>(below(random, content->size()))];
        byte = static_cast<char>(byte ^ 1 << below(random, 8));
    }
}

class DamageTest : public EngineTest {
protected:
    fs::path intact;
    Uint64 random = 1;
    Damage damage = nullptr;
    bool everywhere = false;

    void SetUp() override {
        EngineTest::SetUp();
        intact = fs::canonical("assets");
        if (const char *seed = std::getenv("LUMARIND_DAMAGE_SEED")) random = std::strtoull(seed, nullptr, 10);
        everywhere = std::getenv("LUMARIND_DAMAGE_EVERYWHERE") != nullptr;
    }

    // assets becomes a folder of links to the real files, but for the one.
    void damage_file(const std::string &file) {
        fs::remove_all("assets");
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(intact)) {
            const fs::path there = fs::path("assets") / fs::relative(entry.path(), intact);
            if (entry.is_directory()) {
                fs::create_directories(there);
            } else {
                fs::create_directories(there.parent_path());
                fs::create_symlink(entry.path(), there);
            }
        }
        const fs::path victim = fs::path("assets") / file;
        std::string content = read_file(victim);
        fs::remove(victim);
        if (!damage) return;
        damage(&content, &random);
        write_file(victim, content);
    }

    bool start_on_damaged() {
        if (!start()) return false;
        directory.use_as_game_files();
        return frame();
    }

    bool survives(GameState screen) {
        engine_set_state(screen);
        for (int i = 0; i < 4; i++) {
            if (!frame(1 / 60.0)) return false;
        }
        return true;
    }

    void expect_known_lines() const {
        for (const LogLine &line : log.lines) EXPECT_EQ(unknown_line(line), "");
    }

    // Opens a screen from the menu, and a new menu when that ends the program.
    void visit(GameState screen, const Asset &asset) {
        SCOPED_TRACE(testing::Message() << "screen " << screen);
        const bool reader = is_reader(screen, asset);
        log.lines.clear();
        const bool survived = survives(screen);
        expect_known_lines();
        EXPECT_EQ(survived, log.errors().empty());
        EXPECT_TRUE(survived || reader) << "fails, though it does not read the file";
        if (reader && !damage) {
            EXPECT_FALSE(survived);
            EXPECT_TRUE(matches(log.errors().at(0), asset.missing)) << log.errors().at(0);
        }
        if (survived) return;
        stop();
        ASSERT_TRUE(start_on_damaged()) << "the menu does not open any more";
    }

    // Screens that do not read the file are visited as well, but seldom: two of them take half a second to load.
    bool is_visited(GameState screen, const Asset &asset) {
        return everywhere || is_reader(screen, asset) || (!damage && below(&random, 4) == 0);
    }

    void visit_screens(const Asset &asset) {
        for (GameState screen = GAME_STATE_TEXT_DEMO; screen < SCREENS_END; screen++) {
            if (is_visited(screen, asset)) visit(screen, asset);
        }
    }

    void expect_survived(Damage kind) {
        int files = 0;
        damage = kind;
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(intact)) {
            if (entry.is_directory()) continue;
            const std::string file = fs::relative(entry.path(), intact).string();
            SCOPED_TRACE(file);
            files++;
            const Asset &asset = asset_of(file);
            damage_file(file);
            log.lines.clear();
            const bool started = start_on_damaged();
            expect_known_lines();
            EXPECT_EQ(started, log.errors().empty());
            EXPECT_TRUE(started || asset.needed_to_start);
            EXPECT_FALSE(started && asset.needed_to_start && !damage);
            if (!started) continue;
            visit_screens(asset);
            stop();
        }
        EXPECT_GT(files, 20);
    }
};

TEST_F(DamageTest, RemovedAssetsAreSaidAndStayWithTheirReaders) { expect_survived(nullptr); }
TEST_F(DamageTest, EmptyAssetsAreSaid) { expect_survived(make_empty); }
TEST_F(DamageTest, AssetsCutShortAreSaidOrStillGood) { expect_survived(cut_short); }
TEST_F(DamageTest, NoiseIsSaid) { expect_survived(fill_with_noise); }
TEST_F(DamageTest, NoiseBehindTheHeaderIsSaidOrShown) { expect_survived(fill_with_noise_behind_the_header); }
TEST_F(DamageTest, ScratchedAssetsAreSaidOrShown) { expect_survived(scratch); }

} // namespace
