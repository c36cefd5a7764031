#include "app/screen_registry.h"

#include "app/args.h"
#include "engine/drawing_space.h"
#include "screens/audio_demo.h"
#include "screens/gamepad_demo.h"
#include "screens/input_demo.h"
#include "screens/logical_demo.h"
#include "screens/main_menu.h"
#include "screens/physics_demo.h"
#include "screens/platformer_demo.h"
#include "screens/sprite_demo.h"
#include "screens/text_demo.h"
#include "screens/texture_demo.h"
#include "screens/tilemap_demo.h"

#include <SDL3/SDL_log.h>

#include <iterator>

static constexpr Screen screens[] = {
    {}, // GAME_STATE_NONE
    {}, // GAME_STATE_INIT
    {}, // GAME_STATE_QUIT
    {.setup = main_menu_setup, .tick = main_menu_tick, .cleanup = main_menu_cleanup},
    {.setup = text_demo_setup, .tick = text_demo_tick, .cleanup = text_demo_cleanup},
    {.setup = texture_demo_setup,
     .fixed_update = texture_demo_fixed_update,
     .tick = texture_demo_tick,
     .cleanup = texture_demo_cleanup},
    {.setup = tilemap_demo_setup,
     .fixed_update = tilemap_demo_fixed_update,
     .tick = tilemap_demo_tick,
     .cleanup = tilemap_demo_cleanup},
    {.setup = sprite_demo_setup,
     .fixed_update = sprite_demo_fixed_update,
     .tick = sprite_demo_tick,
     .cleanup = sprite_demo_cleanup},
    {.setup = platformer_demo_setup,
     .fixed_update = platformer_demo_fixed_update,
     .tick = platformer_demo_tick,
     .cleanup = platformer_demo_cleanup},
    {.setup = gamepad_demo_setup, .tick = gamepad_demo_tick, .cleanup = gamepad_demo_cleanup},
    {.setup = logical_demo_setup,
     .fixed_update = logical_demo_fixed_update,
     .tick = logical_demo_tick,
     .cleanup = logical_demo_cleanup,
     .logical_width = 256,
     .logical_height = 144},
    {.setup = input_demo_setup,
     .fixed_update = input_demo_fixed_update,
     .tick = input_demo_tick,
     .cleanup = input_demo_cleanup},
    {.setup = audio_demo_setup,
     .fixed_update = audio_demo_fixed_update,
     .tick = audio_demo_tick,
     .cleanup = audio_demo_cleanup},
    {.setup = physics_demo_setup,
     .fixed_update = physics_demo_fixed_update,
     .tick = physics_demo_tick,
     .cleanup = physics_demo_cleanup},
};
static_assert(std::size(screens) == GAME_STATE_COUNT, "one row per game state");

struct ScreenName {
    const char *name = "";
    GameState state = GAME_STATE_NONE;
};
static constexpr ScreenName screen_names[] = {
    {.name = "main-menu", .state = GAME_STATE_MAIN_MENU},
    {.name = "text-demo", .state = GAME_STATE_TEXT_DEMO},
    {.name = "texture-demo", .state = GAME_STATE_TEXTURE_DEMO},
    {.name = "tilemap-demo", .state = GAME_STATE_TILEMAP_DEMO},
    {.name = "sprite-demo", .state = GAME_STATE_SPRITE_DEMO},
    {.name = "platformer-demo", .state = GAME_STATE_PLATFORMER_DEMO},
    {.name = "gamepad-demo", .state = GAME_STATE_GAMEPAD_DEMO},
    {.name = "logical-demo", .state = GAME_STATE_LOGICAL_DEMO},
    {.name = "input-demo", .state = GAME_STATE_INPUT_DEMO},
    {.name = "audio-demo", .state = GAME_STATE_AUDIO_DEMO},
    {.name = "physics-demo", .state = GAME_STATE_PHYSICS_DEMO},
};

static const Screen *resident_screen; // null: none

const Screen *screen_for(GameState state) {
    if (state < 0 || state >= GAME_STATE_COUNT) return nullptr;
    return screens[state].tick ? &screens[state] : nullptr;
}

bool screen_setup(GameState state) {
    resident_screen = screen_for(state);
    if (!resident_screen) return true;
    return engine_set_logical_size(
               static_cast<int>(resident_screen->logical_width), static_cast<int>(resident_screen->logical_height)) &&
           resident_screen->setup();
}

void screen_fixed_update(GameState state, double dt) {
    const Screen *screen = screen_for(state);
    if (screen && screen->fixed_update) screen->fixed_update(dt);
}

void screen_tick(GameState state) {
    const Screen *screen = screen_for(state);
    if (screen) screen->tick();
}

void screen_cleanup() {
    if (!resident_screen) return;
    resident_screen->cleanup();
    resident_screen = nullptr;
    engine_set_logical_size(0, 0);
}

GameState resolve_start_screen() {
    const char *wanted = args_start_screen();
    if (!wanted) return GAME_STATE_MAIN_MENU;
    for (const ScreenName &row : screen_names) {
        if (SDL_strcmp(row.name, wanted) == 0) return row.state;
    }
    SDL_LogError(SDL_LOG_CATEGORY_APPLICATION, "[MAIN] Unknown screen: %s", wanted);
    SDL_Log("Valid --screen names:");
    for (const ScreenName &row : screen_names) SDL_Log("  %s", row.name);
    return GAME_STATE_NONE;
}
