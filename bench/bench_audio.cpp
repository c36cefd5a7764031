// Sound synthesis: seconds of sound per second of one core, for each preset over many seeds and for each wave; and the
// setup time of the audio demo with all its sounds, with its files in the page cache.

#include "app/demo_game.h"
#include "app/main_loop.h"
#include "audio/sfx_params.h"
#include "audio/sfx_synth.h"
#include "lumarind/audio/sfx.h"
#include "screens/audio_demo.h"

#include <SDL3/SDL_log.h>
#include <benchmark/benchmark.h>

#include <iterator>

static constexpr Uint64 SEEDS = 64, SEED_STEP = 0x9e3779b97f4a7c15; // large: small seeds give similar first numbers

static void report_seconds(benchmark::State &state, Sint64 frames) {
    state.counters["sound_s/s"] =
        benchmark::Counter(static_cast<double>(frames) / SFX_SAMPLE_RATE, benchmark::Counter::kIsRate);
}

static void sfx_preset(benchmark::State &state) {
    const int preset = static_cast<int>(state.range(0));
    state.SetLabel(sfx_preset_name(preset));
    Sint64 frames = 0;
    Uint64 count = 0;
    for (auto _ : state) {
        float *samples = nullptr;
        frames += sfx_render(preset, count++ % SEEDS * SEED_STEP, &samples);
        SDL_free(samples);
    }
    report_seconds(state, frames);
}
BENCHMARK(sfx_preset)->DenseRange(0, SFX_PRESET_COUNT - 1)->Unit(benchmark::kMicrosecond);

// Two seconds with the low-pass filter on.
static void sfx_wave(benchmark::State &state) {
    static constexpr const char *NAMES[SFX_WAVE_COUNT] = {"square", "sawtooth", "sine", "noise", "triangle", "pink"};
    state.SetLabel(NAMES[state.range(0)]);
    SfxSynth *synth = sfx_allocSynth(SFX_FORMAT_F32, SFX_SAMPLE_RATE, 2);
    SfxParams params = {};
    sfx_resetParams(&params);
    params.waveType = static_cast<Sint32>(state.range(0));
    params.sustainTime = 1;
    params.lpfCutoff = 0.7f;
    Sint64 frames = 0;
    for (auto _ : state) frames += sfx_generateWave(synth, &params);
    SDL_free(synth);
    report_seconds(state, frames);
}
BENCHMARK(sfx_wave)->DenseRange(0, SFX_WAVE_COUNT - 1)->Unit(benchmark::kMillisecond);

static void audio_demo_set_up(benchmark::State &state) {
    SDL_SetLogOutputFunction([](void *, int, SDL_LogPriority, const char *) {}, nullptr);
    char program[] = "LumarindEngine", no_save[] = "--no-config-save";
    char *argv[] = {program, no_save};
    const bool runs = main_loop_start(&demo_game, std::size(argv), argv) == MAIN_START_RUN;
    if (!runs) return state.SkipWithError("the engine does not start");
    for (auto _ : state) {
        const bool ok = audio_demo_setup();
        state.PauseTiming();
        if (!ok) state.SkipWithError("the setup failed");
        audio_demo_cleanup();
        state.ResumeTiming();
    }
    main_loop_stop();
}
BENCHMARK(audio_demo_set_up)->Unit(benchmark::kMillisecond);
