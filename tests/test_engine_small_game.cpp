// A game other than the demonstration: screens, actions, settings, options, keys and files, and library features that
// the demonstration does not use.

#include "core/files_internal.h"
#include "engine/game_internal.h"
#include "lumarind/config/config.h"
#include "lumarind/core/files.h"
#include "lumarind/core/storage.h"
#include "lumarind/engine/callbacks.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/input/input.h"
#include "lumarind/toolkit/picture.h"
#include "support/engine_fixture.h"
#include "support/sdl_calls.h"
#include "support/small_game.h"

#include <SDL3/SDL_mouse.h>
#include <SDL3/SDL_render.h>
#include <SDL3_ttf/SDL_ttf.h>

namespace fs = std::filesystem;

namespace {

class SmallGameTest : public EngineTest {
protected:
    void SetUp() override {
        set_environment("XDG_DATA_HOME", (directory.path / "user").c_str());
        EngineTest::SetUp();
        tested_game = &small_game;
        config.clear();
        small_calls.clear();
        small_takes_escape = small_setup_fails = false;
    }
    void TearDown() override {
        EngineTest::TearDown();
        files_cleanup();
    }
    std::string calls() { return std::exchange(small_calls, ""); }
    fs::path folder = directory.path / "user/tests/SmallGame";
};

TEST_F(SmallGameTest, ScreensRunInTheirStatesStartingAtHome) {
    sdl_calls.clear();
    ASSERT_TRUE(start());
    EXPECT_EQ(sdl_calls.find("x=805240832 y=805240832 width=300 height=200 "), 0u) << "in the middle: " << sdl_calls;
    EXPECT_NE(sdl_calls.find("place 805240832 805240832; "), sdl_calls.npos) << sdl_calls;
    play("1");
    EXPECT_EQ(calls(), "h+h.");
    engine_set_state(SMALL_ROOM);
    play("1 2");
    EXPECT_EQ(calls(), "h-r+r.r5r.r5r.") << "the first step follows the screen change";
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    EXPECT_TRUE(width == 100 && height == 50);

    engine_set_paused(true);
    play("Right 2");
    EXPECT_EQ(calls(), "r.r.");
    engine_restart_state();
    play("2");
    EXPECT_EQ(calls(), "r-r+r.r5r.") << "a restart ends the pause";
    EXPECT_FALSE(engine_is_paused());

    small_takes_escape = true;
    calls();
    play("Escape ~Escape 1");
    EXPECT_EQ(engine_get_state(), SMALL_ROOM);
    EXPECT_EQ(calls(), "Er5r.") << "auto-repeat is not passed on";
    small_takes_escape = false;
    play("Escape 2");
    EXPECT_EQ(calls(), "Er5r.r6r.") << "the screen's fixed update runs before the fade's";
    play("20 Escape 1");
    EXPECT_EQ(engine_get_state(), GAME_STATE_QUIT) << "on the home screen";
    play("ctrl:Q F12 1"); // disabled hot keys
    EXPECT_FALSE(fs::exists(folder / "captures"));
    calls();

    ASSERT_TRUE(start({"--screen", "room", "--level", "7", "--easy"}));
    EXPECT_EQ(calls(), "o7oeasyr+");
    play("ctrl:Q 1");
    EXPECT_EQ(engine_get_state(), SMALL_ROOM);
    play("F3 1");
    EXPECT_TRUE(engine_get_show_frame_time_graph());
    stop();
    testing::internal::CaptureStdout();
    EXPECT_FALSE(start({"--level", "0"}) || start({"--level"}) || start({"--screen", "text-demo"}));
    const std::string usage = testing::internal::GetCapturedStdout();
    EXPECT_NE(usage.find("\n  --level <n>           Begins with level n.\n  --easy                Few"), usage.npos);
    EXPECT_TRUE(log.has("[ARGS] Missing value for: --level") && log.has("  room"));
    EXPECT_FALSE(log.has("  text-demo"));
}

TEST_F(SmallGameTest, FilesAreStoredInUserFolder) {
    ASSERT_TRUE(start());
    EXPECT_STREQ(cfg_get_setting("name"), "nobody");
    EXPECT_EQ(cfg_get_setting_number("best_time"), 12.5);
    EXPECT_TRUE(cfg_set_setting("name", "an ; owl\n") && cfg_set_setting_number("best_time", 1.0 / 3));
    EXPECT_FALSE(cfg_set_setting("Name", "x") || *cfg_get_setting("Name"));
    EXPECT_TRUE(log.only_error_starts("[CONFIG] The game has no setting of this name: Name"));
    EXPECT_TRUE(input_bind(1, "Q, pad:b"));
    play("+F 1");
    EXPECT_TRUE(input_held(0) && !input_held(1) && !input_held(2));
    stop();

    const std::string settings = read_file(folder / "config/small-game.ini");
    for (const char *line :
         {"\nwidth = 300\n", "show_fps = false\n", "[input]\nfire = F, pad:a\nWait = Q, pad:b\n",
          "[game]\nname = an; owl \nbest_time = 0.333333333\n"}) {
        EXPECT_NE(settings.find(line), settings.npos) << line << "in\n" << settings;
    }
    EXPECT_TRUE(read_file(folder / "small-game.log").ends_with("[ENGINE] SDL3 shutdown\n"));
    for (const char *name : {"config", "captures", "lumarind-engine.log", "small-game.log"})
        EXPECT_FALSE(fs::exists(name)) << name;

    ASSERT_TRUE(start({"--capture-at", "1"}));
    EXPECT_STREQ(cfg_get_setting("name"), "an; owl");
    play("1");
    EXPECT_FALSE(fs::is_empty(folder / "captures"));
    EXPECT_TRUE(storage_write_user_file("saves/one", "old", 3) && storage_write_user_file("saves/one", "newer", 5));
    EXPECT_EQ(read_file(folder / "saves/one"), "newer");
    fs::create_directory(folder / "saves/one.new"); // the temporary file cannot be created
    log.lines.clear();
    EXPECT_FALSE(storage_write_user_file("saves/one", "cut", 3) || storage_write_user_file("../out", "", 0));
    EXPECT_EQ(log.errors().size(), 2u);
    EXPECT_TRUE(read_file(folder / "saves/one") == "newer" && !fs::exists(folder.parent_path() / "out"));
}

TEST_F(SmallGameTest, AssetsAreFoundFromAnyCurrentFolder) {
    const fs::path base = SDL_GetBasePath();
    fs::create_directory("elsewhere");
    fs::current_path("elsewhere");
    ASSERT_TRUE(start());
    EXPECT_EQ(files_asset_root(), base.string());
    EXPECT_TRUE(log.has("[FILES] Assets in: " + base.string() + "assets"));
    const std::string font = "assets/fonts/EuroStyle Normal.ttf";
    EXPECT_EQ(files_asset(font.c_str()).text, base.string() + font);
    for (const char *absolute : {"/a", "\\a", "c:a"}) EXPECT_STREQ(files_asset(absolute).text, absolute);
    TTF_Font *opened = font_open(font.c_str(), 20);
    ASSERT_NE(opened, nullptr);
    char *data = storage_read_game_file(font.c_str());
    EXPECT_NE(data, nullptr);
    SDL_free(data);

    TTF_Text *text = engine_prepare_text(opened, "one", 0, {255, 255, 255, 255});
    float before = 0, after = 0;
    engine_text_size(text, &before, nullptr);
    EXPECT_TRUE(engine_set_text(text, "one and more") && engine_set_text(text, "one and more"));
    engine_text_size(text, &after, nullptr);
    EXPECT_GT(after, 2 * before);
    engine_cleanup_text(&text);
    font_cleanup(opened);
    fs::current_path("..");
}

TEST_F(SmallGameTest, DrawsPicturesAndReportsMousePosition) {
    const Picture two(SDL_CreateSurface(2, 1, SDL_PIXELFORMAT_RGBA32));
    SDL_WriteSurfacePixel(two.get(), 0, 0, 255, 0, 0, 255);
    SDL_WriteSurfacePixel(two.get(), 1, 0, 0, 0, 255, 255);
    ASSERT_TRUE(SDL_SavePNG(two.get(), "two.png") && start({"--screen", "room", "--window-size", "320x160"}));
    const std::string path = fs::absolute("two.png").string();
    SDL_Texture *sharp = picture_load(path.c_str()), *smooth = picture_load(path.c_str(), PICTURE_LINEAR);
    ASSERT_TRUE(sharp && smooth && !picture_load("none.png"));
    EXPECT_TRUE(log.only_error_starts("[PICTURE] Unable to load none.png, error: "));
    EXPECT_TRUE(picture_draw(sharp, 10, 10, {.scale = 8}) && picture_draw(smooth, 10, 20, {.scale = 8}));
    EXPECT_TRUE(picture_draw(sharp, 40, 10, {.cell = {1, 0, 1, 1}, .scale = 8}));
    EXPECT_TRUE(picture_draw(sharp, 60, 10, {.scale = 8, .flip = SDL_FLIP_HORIZONTAL}));
    EXPECT_TRUE(picture_draw(sharp, 80, 14, {.scale = 8, .angle = 180}));
    const Picture drawn = picture(); // the logical 100 x 50 are magnified by 3, starting at (10, 5)
    const auto at = [&](int x, int y) { return pixel_at(drawn, 10 + 3 * x, 5 + 3 * y); };
    constexpr SDL_Color RED = {255, 0, 0, 255}, BLUE = {0, 0, 255, 255};
    EXPECT_TRUE(same_color(at(17, 12), RED) && same_color(at(18, 12), BLUE));
    EXPECT_TRUE(same_color(at(41, 12), BLUE) && same_color(at(47, 17), BLUE));
    EXPECT_TRUE(same_color(at(62, 12), BLUE) && same_color(at(74, 12), RED));
    EXPECT_TRUE(same_color(at(82, 16), BLUE) && same_color(at(94, 16), RED));
    EXPECT_TRUE(at(17, 22).b > 20 && at(17, 22).r > 20) << "linear filtering blends";
    SDL_DestroyTexture(sharp);
    SDL_DestroyTexture(smooth);

    set_environment("LUMARIND_RECORD", "run.lmr");
    ASSERT_TRUE(start({"--screen", "room", "--window-size", "320x160"}));
    SDL_WarpMouseInWindow(engine->window, 70, 65);
    const auto mouse_is_there = [] {
        float x = 0, y = 0;
        engine_mouse_position(&x, &y);
        return x == 20 && y == 20;
    };
    play("2");
    EXPECT_TRUE(mouse_is_there());
    SDL_WarpMouseInWindow(engine->window, 0, 0);
    set_environment("LUMARIND_RECORD", nullptr);
    set_environment("LUMARIND_REPLAY", "run.lmr");
    ASSERT_TRUE(start() && frame());
    EXPECT_TRUE(mouse_is_there()) << "in the replay";
    set_environment("LUMARIND_REPLAY", nullptr);
}

bool note_data(SDL_Event *, void *data) { return ++*static_cast<int *>(data) < 2; }
bool no_more(SDL_Event *) { return false; }

TEST_F(SmallGameTest, CallbacksReceiveUserData) {
    ASSERT_TRUE(start());
    play("1");
    int first = 0, second = 0;
    ASSERT_TRUE(engine_add_callback(SDL_EVENT_GAMEPAD_ADDED, note_data, &first)); // never called
    for (int *data : {&first, &second, &first}) ASSERT_TRUE(engine_add_callback(SDL_EVENT_KEY_DOWN, note_data, data));
    play("A 1");
    EXPECT_TRUE(first == 2 && second == 1);
    EXPECT_TRUE(engine_remove_callback(SDL_EVENT_KEY_DOWN, note_data, &first));
    EXPECT_EQ(engine->data_callbacks.items[0].type, SDL_EVENT_GAMEPAD_ADDED);
    play("A 1");
    EXPECT_TRUE(first == 2 && second == 2) << "the second callback is now first and ends the chain";
    EXPECT_TRUE(engine_add_callback(SDL_EVENT_KEY_DOWN, no_more));
    play("A 1");
    EXPECT_EQ(second, 2) << "callbacks without data come first";
    EXPECT_FALSE(engine_add_callback(ENGINE_EVENT_TYPES, note_data, &first));
    EXPECT_FALSE(engine_remove_callback(ENGINE_EVENT_TYPES, note_data, &first));
}

TEST_F(SmallGameTest, FailedStartShowsPathOfLog) {
    small_setup_fails = true;
    char program[] = "SmallGame", option[] = "--screen", room[] = "room";
    char *argv[] = {program, option, room};
    sdl_calls.clear();
    EXPECT_EQ(engine_run(&small_game, 3, argv), 1);
    const std::string box = "Small could not start. See " + (folder / "small-game.log").string() + " for the reason.";
    EXPECT_NE(sdl_calls.find(box), std::string::npos) << sdl_calls;
    EXPECT_NE(read_file(folder / "small-game.log").find("ERROR: [ROOM] No room\n"), std::string::npos);
}

} // namespace
