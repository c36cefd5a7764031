// Cost of profiling a frame, of drawing the profiler panel, and of a capture within its frame. Panel and captures are
// measured at 1280 x 720 on the software renderer, and on the offscreen video driver's renderer if it is available.

#include "app/demo_game.h"
#include "app/main_loop.h"
#include "diagnostics/capture_internal.h"
#include "diagnostics/profiler.h"
#include "diagnostics/profiler_internal.h"
#include "engine/frame.h"
#include "lumarind/config/config.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_timer.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace fs = std::filesystem;

namespace {

// Runs the program on a given driver, in a temporary folder.
class Program {
public:
    Program(const char *video, const char *renderer, const std::string &capture_format)
        : previous_(fs::current_path()) {
        folder_ = previous_ / "bench-diagnostics";
        fs::remove_all(folder_);
        fs::create_directories(folder_ / "config");
        std::error_code none;
        fs::create_directory_symlink(previous_ / "assets", folder_ / "assets", none);
        fs::current_path(folder_);
        std::ofstream("config/lumarind-engine.ini")
            << "[graphics]\nvsync_enable = false\nui_scale = 1\nshow_frame_time_graph = true\nfps_limit = 60\n"
            << "[capture]\nformat = " << capture_format << "\njpeg_quality = 90\n";
        SDL_SetLogOutputFunction([](void *, int, SDL_LogPriority, const char *) {}, nullptr);
        SDL_SetHintWithPriority(SDL_HINT_VIDEO_DRIVER, video, SDL_HINT_OVERRIDE);
        SDL_SetHintWithPriority(SDL_HINT_AUDIO_DRIVER, "dummy", SDL_HINT_OVERRIDE);
        SDL_SetHintWithPriority(SDL_HINT_RENDER_DRIVER, renderer, SDL_HINT_OVERRIDE);
        char name[] = "bench", no_save[] = "--no-config-save", size[] = "--window-size", value[] = "1280x720";
        char *argv[] = {name, no_save, size, value};
        runs = main_loop_start(&demo_game, 4, argv) == MAIN_START_RUN;
    }
    ~Program() {
        if (runs) main_loop_stop();
        fs::current_path(previous_);
        std::error_code none;
        fs::remove_all(folder_, none);
    }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    bool runs = false;

private:
    fs::path previous_, folder_;
};

// 512 frames with every phase, step count and jitter class, some of them very slow.
void fill_history(FrameProfile *profile) {
    std::mt19937 random(7);
    uint64_t now = 0;
    frame_profile_init(profile);
    for (int frame = 0; frame <= FRAME_PROFILE_CAPACITY; frame++) {
        frame_profile_boundary(profile, now);
        for (int phase = 0; phase < PHASE_COUNT; phase++) {
            frame_profile_mark(profile, phase, now);
            now += random() % 3'000'000;
        }
        if (frame % 64 == 0) now += 300'000'000;
        for (auto steps = random() % 5; steps > 0; steps--) frame_profile_count_step(profile);
    }
}

struct Driver {
    const char *name, *video, *renderer;
};
constexpr Driver DRIVERS[] = {
    {"software", "dummy", "software"},
    {"offscreen_opengl", "offscreen", "opengl"},
    {"offscreen_gpu", "offscreen", "gpu"},
};

// --- recording ---

void marks(benchmark::State &state) {
    const Program program("dummy", "software", "png");
    if (!program.runs) return state.SkipWithError("the engine does not start");
    profiler_frame_boundary(SDL_GetTicksNS());
    int phase = 0;
    for (auto _ : state) profiler_mark(phase = (phase + 1) % PHASE_COUNT);
}
BENCHMARK(marks)->Name("profiler_mark");

void frame_marks(benchmark::State &state) { // all recording of a frame with the panel shown and one step
    const Program program("dummy", "software", "png");
    if (!program.runs) return state.SkipWithError("the engine does not start");
    for (auto _ : state) {
        profiler_frame_boundary(SDL_GetTicksNS());
        for (const int phase : {PHASE_FIX, PHASE_TICK, PHASE_OVL, PHASE_PANEL, PHASE_PRES, PHASE_SLEEP}) {
            profiler_mark(phase);
        }
        profiler_count_step();
    }
}
BENCHMARK(frame_marks)->Name("profiler_marks_of_a_frame");

void statistics(benchmark::State &state) {
    FrameProfile profile;
    fill_history(&profile);
    FrameStats stats;
    for (auto _ : state) {
        frame_profile_stats(&profile, FRAME_PROFILE_CAPACITY, &stats);
        benchmark::DoNotOptimize(stats);
    }
}
BENCHMARK(statistics)->Name("frame_profile_stats_512");

// --- panel: drawn and flushed, but not presented ---

void panel(benchmark::State &state, const Driver &driver) {
    const Program program(driver.video, driver.renderer, "png");
    if (!program.runs) return state.SkipWithMessage("this driver does not start here");
    state.SetLabel(SDL_GetRendererName(engine_renderer()));
    fill_history(&profiler->frozen_copy);
    profiler->frozen = true;
    engine_use_ui_space();
    for (auto _ : state) {
        profiler_tick();
        SDL_FlushRenderer(engine_renderer());
    }
    SDL_RenderPresent(engine_renderer());
}

// --- capture: from read-back to the written file, of the menu with the panel ---

void capture_stall(benchmark::State &state, const Driver &driver, const char *format) {
    const Program program(driver.video, driver.renderer, format);
    if (!program.runs) return state.SkipWithMessage("this driver does not start here");
    state.SetLabel(SDL_GetRendererName(engine_renderer()));
    for (auto _ : state) {
        state.PauseTiming();
        main_loop_frame();
        engine_use_ui_space();
        SDL_FlushRenderer(engine_renderer());
        state.ResumeTiming();
        if (!capture_save(engine_frame_number())) return state.SkipWithError("the capture failed");
    }
}

const bool registered = [] {
    for (const Driver &driver : DRIVERS) {
        const std::string name = driver.name;
        benchmark::RegisterBenchmark("profiler_panel_512/" + name, [driver](auto &state) {
            panel(state, driver);
        })->Unit(benchmark::kMicrosecond);
        for (const char *format : {"png", "jpg"}) {
            benchmark::RegisterBenchmark(
                "capture_1280x720_" + std::string(format) + "/" + name,
                [driver, format](auto &state) { capture_stall(state, driver, format); })
                ->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}();

} // namespace
