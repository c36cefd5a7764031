// engine_run's validation of the Game record: each error is reported once, in the log and in a message box, before
// anything starts.

#include "engine/game_internal.h"
#include "support/engine_fixture.h"
#include "support/sdl_calls.h"

#include <iterator>

namespace {

bool setup() { return false; }
void nothing() {}
bool apply(const char *) { return true; }

constexpr Screen SCREEN = {.setup = setup, .tick = nothing, .cleanup = nothing};
constexpr GameScreen SCREENS[] = {{"title", SCREEN}, {"play", SCREEN}};
constexpr GameScreen SAME_SCREENS[] = {{"title", SCREEN}, {"title", SCREEN}};
constexpr GameScreen NAMELESS_SCREENS[] = {{"title", SCREEN}, {"", SCREEN}};
constexpr GameScreen TICKLESS_SCREENS[] = {{"title", {.setup = setup, .cleanup = nothing}}};
constexpr GameAction SAME_ACTIONS[] = {{"left", "A"}, {"right", "D"}, {"Left", "Left"}};
constexpr GameAction NAMELESS_ACTIONS[] = {{"left", "A"}, {nullptr, "D"}};
constexpr GameAction MANY_ACTIONS[GAME_MAX_ACTIONS + 1] = {{"left", "A"}};
constexpr GameSetting SAME_SETTINGS[] = {{"level", "1"}, {"level", "2"}};
constexpr GameOption SAME_OPTIONS[] = {{.name = "--level", .apply = apply}, {.name = "--level", .apply = apply}};
constexpr GameOption APPLYLESS_OPTIONS[] = {{.name = "--level", .value_name = "n", .help = "Begin with this level."}};

constexpr Game USABLE = {
    .title = "First Game", .id = "first-game", .screens = SCREENS, .screen_count = std::size(SCREENS)};

template <typename Row, size_t COUNT>
void set(const Row *Game::*rows, Sint32 Game::*count, const Row (&table)[COUNT], Game *game) {
    game->*rows = table;
    game->*count = COUNT;
}

class EngineGame : public EngineTest {};

TEST_F(EngineGame, InvalidRecordIsReportedOnceAndFailsStart) {
    const struct {
        const char *problem;
        void (*corrupt)(Game *game);
    } faults[] = {
        {"it was built for ABI 99, the library has 2", [](Game *game) { game->abi = 99; }},
        {"title is empty", [](Game *game) { game->title = ""; }},
        {"id is empty", [](Game *game) { game->id = nullptr; }},
        {"program is not a file name: a/b", [](Game *game) { game->program = "a/b"; }},
        {"id is not a file name: ..", [](Game *game) { game->id = ".."; }},
        {"organisation is not a file name: c:", [](Game *game) { game->organisation = "c:"; }},
        {"it has no screens", [](Game *game) { game->screen_count = 0; }},
        {"it has no screens", [](Game *game) { game->screens = nullptr; }},
        {"screens: duplicate name title", [](Game *game) { game->screens = SAME_SCREENS; }},
        {"the name of screens[1] is empty", [](Game *game) { game->screens = NAMELESS_SCREENS; }},
        {"screen title lacks setup, tick or cleanup",
         [](Game *game) { set(&Game::screens, &Game::screen_count, TICKLESS_SCREENS, game); }},
        {"33 actions are out of range, 0 to 32",
         [](Game *game) { set(&Game::actions, &Game::action_count, MANY_ACTIONS, game); }},
        {"-1 actions are out of range, 0 to 32", [](Game *game) { game->action_count = -1; }},
        {"1 actions, but the table is null", [](Game *game) { game->action_count = 1; }},
        {"actions: duplicate name Left",
         [](Game *game) { set(&Game::actions, &Game::action_count, SAME_ACTIONS, game); }},
        {"the name of actions[1] is empty",
         [](Game *game) { set(&Game::actions, &Game::action_count, NAMELESS_ACTIONS, game); }},
        {"settings: duplicate name level",
         [](Game *game) { set(&Game::settings, &Game::setting_count, SAME_SETTINGS, game); }},
        {"65 settings are out of range, 0 to 64", [](Game *game) { game->setting_count = 65; }},
        {"options: duplicate name --level",
         [](Game *game) { set(&Game::options, &Game::option_count, SAME_OPTIONS, game); }},
        {"option --level has no apply function",
         [](Game *game) { set(&Game::options, &Game::option_count, APPLYLESS_OPTIONS, game); }},
        {"a font size is not positive",
         [](Game *game) {
             game->ui_font = "assets/ui.ttf";
             game->heading_font_size = 0;
         }},
        {"the window's size is not positive", [](Game *game) { game->window_height = 0; }},
    };
    char program[] = "first-game";
    char *argv[] = {program, nullptr};
    const auto expect_report = [&](const Game *game, const std::string &problem) {
        sdl_calls.clear();
        log.lines.clear();
        EXPECT_EQ(engine_run(game, 1, argv), 1) << problem;
        EXPECT_EQ(log.errors(), std::vector{"[MAIN] Invalid Game record: " + problem});
        EXPECT_EQ(sdl_calls, "Invalid Game record: " + problem + " box 16; ");
    };
    expect_report(nullptr, "it is null");
    for (const auto &[problem, corrupt] : faults) {
        Game game = USABLE;
        corrupt(&game);
        expect_report(&game, problem);
    }
    Game limit = USABLE; // every number at its limit
    std::vector<std::string> names(GAME_MAX_ACTIONS);
    std::vector<GameAction> most;
    for (std::string &name : names) most.push_back({(name = std::to_string(most.size())).c_str(), ""});
    limit.actions = most.data();
    limit.action_count = GAME_MAX_ACTIONS;
    limit.screen_count = limit.window_width = limit.window_height = 1;
    limit.ui_font = "font";
    limit.ui_font_size = limit.heading_font_size = 1;
    EXPECT_STREQ(_engine_game_problem(&limit), nullptr);
    _engine_set_game(&USABLE);
    EXPECT_STREQ(engine_game()->name, "First Game");
    EXPECT_STREQ(engine_game()->program, "first-game");
}

} // namespace
