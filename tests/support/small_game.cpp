#include "support/small_game.h"

#include "lumarind/core/error.h"
#include "lumarind/engine/transition.h"

#include <iterator>

std::string small_calls;
bool small_takes_escape, small_setup_fails;

static bool _note(const char *call, bool result = true) { return small_calls += call, result; }

static constexpr GameScreen SCREENS[] = {
    {"home", {.setup = [] { return _note("h+"); }, .tick = [] { _note("h."); }, .cleanup = [] { _note("h-"); }}},
    {"room",
     {.setup = [] { return _note("r+", !small_setup_fails || engine_error("[ROOM] No room")); },
      .fixed_update = [](double) { _note(transition_cover(1) > 0 ? "r6" : "r5"); },
      .tick = [] { _note("r."); },
      .cleanup = [] { _note("r-"); },
      .logical_width = 100,
      .logical_height = 50}},
};
static constexpr GameAction ACTIONS[] = {{"fire", "F, pad:a"}, {"Wait", "W"}};
static constexpr GameSetting SETTINGS[] = {{"name", "nobody"}, {"best_time", "12.5"}};
static constexpr GameOption OPTIONS[] = {
    {"--level", "n", "Begins with level n.",
     [](const char *value) { return _note(("o" + std::string(value)).c_str(), *value != '0'); }},
    {"--easy", nullptr, "Fewer enemies.", [](const char *) { return _note("oeasy"); }},
};

const Game small_game = {
    .title = "Small 1.0",
    .name = "Small",
    .program = "SmallGame",
    .id = "small-game",
    .organisation = "tests",
    .screens = SCREENS,
    .screen_count = std::size(SCREENS),
    .actions = ACTIONS,
    .action_count = std::size(ACTIONS),
    .settings = SETTINGS,
    .setting_count = std::size(SETTINGS),
    .options = OPTIONS,
    .option_count = std::size(OPTIONS),
    .window_width = 300,
    .window_height = 200,
    .hot_keys = GAME_KEY_ESCAPE | GAME_KEY_PROFILER,
    .escape = [] { return _note("E", small_takes_escape); },
};
