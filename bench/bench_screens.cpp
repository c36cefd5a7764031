// Cost of drawing one frame of each screen at 1280 × 720, without overlays and present, and of recording a frame. The
// renderer is SDL's default for the video driver: software on the dummy driver, OpenGL with SDL_VIDEO_DRIVER=offscreen
// if available.

#include "app/demo_game.h"
#include "app/main_loop.h"
#include "app/screen_registry.h"
#include "engine/engine_record.h"
#include "engine/frame.h"
#include "lumarind/engine/engine.h"
#include "replay/replay_feed.h"
#include "screens/screen_states.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_timer.h>
#include <benchmark/benchmark.h>

static constexpr const char *NAMES[] = {"main-menu",   "text-demo",       "texture-demo", "tilemap-demo",
                                        "sprite-demo", "platformer-demo", "gamepad-demo", "logical-demo",
                                        "input-demo",  "audio-demo",      "physics-demo"};

static bool start(const char *screen) {
    char arguments[6][32] = {"LumarindEngine", "--no-config-save", "--window-size", "1280x720", "--screen"};
    SDL_strlcpy(arguments[5], screen, sizeof arguments[5]);
    char *argv[6];
    for (int i = 0; i < 6; i++) argv[i] = arguments[i];
    return main_loop_start(&demo_game, 6, argv) == MAIN_START_RUN;
}

static void screen_frame(benchmark::State &state) {
    if (!start(NAMES[state.range(0)])) return state.SkipWithError("no screen");
    state.SetLabel(NAMES[state.range(0)]);
    const GameState screen = engine_get_state();
    for (auto _ : state) {
        screen_fixed_update(screen, engine_fixed_delta());
        screen_tick(screen);
        SDL_FlushRenderer(engine_renderer()); // executes the queued render commands
    }
    main_loop_stop();
}
BENCHMARK(screen_frame)->DenseRange(0, SDL_arraysize(NAMES) - 1)->Unit(benchmark::kMicrosecond);

// The parts of a frame that recording adds to: frame start, events (a key and a mouse motion) and step of the
// platformer, without its fixed update.
static void frame_recorded(benchmark::State &state) {
    const char *path = "bench.lmr";
    if (state.range(0) && !replay_record(path)) return state.SkipWithError("no recording");
    if (!start("platformer-demo")) return state.SkipWithError("no screen");
    float x = 0;
    for (auto _ : state) {
        SDL_Event event = {};
        event.type = SDL_EVENT_KEY_DOWN;
        event.key.scancode = SDL_SCANCODE_K;
        SDL_PushEvent(&event);
        event = {};
        event.type = SDL_EVENT_MOUSE_MOTION;
        event.motion.x = x++;
        SDL_PushEvent(&event);
        engine->next_frame_ns = SDL_NS_PER_SECOND / 60;
        engine_frame_start();
        engine_event_poll();
        while (engine_fixed_step_consume()) {
            replay_step("platformer-demo", screen_state_hash(GAME_STATE_PLATFORMER_DEMO));
        }
    }
    main_loop_stop();
    SDL_RemovePath(path);
}
BENCHMARK(frame_recorded)->ArgName("on")->Arg(0)->Arg(1);
