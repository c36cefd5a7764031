#include "app/demo_game.h"

#include "lumarind/engine/game.h"
#include "screens/audio_demo.h"
#include "screens/gamepad_demo.h"
#include "screens/input_demo.h"
#include "screens/logical_demo.h"
#include "screens/main_menu.h"
#include "screens/physics_demo.h"
#include "screens/platformer_demo.h"
#include "screens/screen_states.h"
#include "screens/sprite_demo.h"
#include "screens/text_demo.h"
#include "screens/texture_demo.h"
#include "screens/tilemap_demo.h"

#include <iterator>

static constexpr GameScreen screens[] = {
    {"main-menu", {.setup = main_menu_setup, .tick = main_menu_tick, .cleanup = main_menu_cleanup}},
    {"text-demo", {.setup = text_demo_setup, .tick = text_demo_tick, .cleanup = text_demo_cleanup}},
    {"texture-demo",
     {.setup = texture_demo_setup,
      .fixed_update = texture_demo_fixed_update,
      .tick = texture_demo_tick,
      .cleanup = texture_demo_cleanup},
     texture_demo_state_hash},
    {"tilemap-demo",
     {.setup = tilemap_demo_setup,
      .fixed_update = tilemap_demo_fixed_update,
      .tick = tilemap_demo_tick,
      .cleanup = tilemap_demo_cleanup},
     tilemap_demo_state_hash},
    {"sprite-demo",
     {.setup = sprite_demo_setup,
      .fixed_update = sprite_demo_fixed_update,
      .tick = sprite_demo_tick,
      .cleanup = sprite_demo_cleanup},
     sprite_demo_state_hash},
    {"platformer-demo",
     {.setup = platformer_demo_setup,
      .fixed_update = platformer_demo_fixed_update,
      .tick = platformer_demo_tick,
      .cleanup = platformer_demo_cleanup},
     platformer_demo_state_hash},
    {"gamepad-demo", {.setup = gamepad_demo_setup, .tick = gamepad_demo_tick, .cleanup = gamepad_demo_cleanup}},
    {"logical-demo",
     {.setup = logical_demo_setup,
      .fixed_update = logical_demo_fixed_update,
      .tick = logical_demo_tick,
      .cleanup = logical_demo_cleanup,
      .logical_width = 256,
      .logical_height = 144},
     logical_demo_state_hash},
    {"input-demo",
     {.setup = input_demo_setup,
      .fixed_update = input_demo_fixed_update,
      .tick = input_demo_tick,
      .cleanup = input_demo_cleanup},
     input_demo_state_hash},
    {"audio-demo",
     {.setup = audio_demo_setup,
      .fixed_update = audio_demo_fixed_update,
      .tick = audio_demo_tick,
      .cleanup = audio_demo_cleanup}},
    {"physics-demo",
     {.setup = physics_demo_setup,
      .fixed_update = physics_demo_fixed_update,
      .tick = physics_demo_tick,
      .cleanup = physics_demo_cleanup},
     physics_demo_state_hash},
};
static_assert(GAME_STATE_FIRST_SCREEN + std::size(screens) == GAME_STATE_COUNT, "one row per screen state");

const Game demo_game = {
    .title = "Lumarind Engine v0.0.1",
    .name = "Lumarind Engine",
    .program = "LumarindEngine",
    .id = "lumarind-engine",
    .organisation = "lumarind",
    .screens = screens,
    .screen_count = std::size(screens),
    .ui_font = "assets/fonts/EuroStyle Normal.ttf",
    .window_x = 200,
    .window_y = 400,
    .show_fps = true,
    .files = GAME_FILES_CURRENT_FOLDER,
};
