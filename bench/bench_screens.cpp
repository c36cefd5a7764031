// What drawing one frame of each screen costs at 1280 × 720, without overlays and presenting. The renderer is SDL's
// choice for the video driver: the software one on the dummy driver, OpenGL where SDL_VIDEO_DRIVER=offscreen has it.

#include "app/demo_game.h"
#include "app/main_loop.h"
#include "app/screen_registry.h"
#include "lumarind/engine/engine.h"

#include <SDL3/SDL_render.h>
#include <benchmark/benchmark.h>

static constexpr const char *NAMES[] = {"main-menu",   "text-demo",       "texture-demo", "tilemap-demo",
                                        "sprite-demo", "platformer-demo", "gamepad-demo", "logical-demo",
                                        "input-demo",  "audio-demo",      "physics-demo"};

static void screen_frame(benchmark::State &state) {
    char arguments[6][32] = {"LumarindEngine", "--no-config-save", "--window-size", "1280x720", "--screen"};
    SDL_strlcpy(arguments[5], NAMES[state.range(0)], sizeof arguments[5]);
    char *argv[6];
    for (int i = 0; i < 6; i++) argv[i] = arguments[i];
    if (main_loop_start(&demo_game, 6, argv) != MAIN_START_RUN) return state.SkipWithError("no screen");
    state.SetLabel(NAMES[state.range(0)]);
    const GameState screen = engine_get_state();
    for (auto _ : state) {
        screen_fixed_update(screen, engine_fixed_delta());
        screen_tick(screen);
        SDL_FlushRenderer(engine_renderer()); // until then the picture is a list of commands
    }
    main_loop_stop();
}
BENCHMARK(screen_frame)->DenseRange(0, SDL_arraysize(NAMES) - 1)->Unit(benchmark::kMicrosecond);
