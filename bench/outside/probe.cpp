// Preloaded into an unmodified SDL program: records presents and frame-rate waits, and at exit writes them to the file
// named by LUMARIND_PROBE.
// Lines: "memory <KiB>", the peak after 60 frames; "present <time>"; "wait <begin> <end> <CPU time of the wait, or
// -1>". Times are in ns; begin, end and the time of a present are those of the monotonic clock.

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_timer.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>

static constexpr int ROWS_MAX = 100'000;
static constexpr int FRAMES_BEFORE_MEMORY = 60;
static constexpr int WAITS_PER_CPU_SAMPLE = 16;

struct Wait {
    uint64_t begin, end;
    int64_t cpu; // -1: not sampled
};
static uint64_t presents[ROWS_MAX]; // untouched pages cost no memory
static Wait waits[ROWS_MAX];
static int present_count, wait_count;
static long peak_kib;

static uint64_t clock_ns(clockid_t clock) {
    timespec now = {};
    clock_gettime(clock, &now);
    return static_cast<uint64_t>(now.tv_sec) * 1'000'000'000 + static_cast<uint64_t>(now.tv_nsec);
}

template <typename Function> static Function next(const char *name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

static long read_peak_kib() {
    char line[256];
    long kib = 0;
    std::FILE *status = std::fopen("/proc/self/status", "r");
    while (status && std::fgets(line, sizeof line, status)) std::sscanf(line, "VmHWM: %ld", &kib);
    if (status) std::fclose(status);
    return kib;
}

extern "C" bool SDL_RenderPresent(SDL_Renderer *renderer) {
    static const auto real = next<bool (*)(SDL_Renderer *)>("SDL_RenderPresent");
    const bool ok = real(renderer);
    if (present_count < ROWS_MAX) presents[present_count++] = clock_ns(CLOCK_MONOTONIC);
    if (present_count == FRAMES_BEFORE_MEMORY && peak_kib == 0) peak_kib = read_peak_kib();
    return ok;
}

// Only some waits are sampled: reading the CPU time takes a microsecond, which would affect the pacing.
extern "C" void SDL_DelayPrecise(Uint64 ns) {
    static const auto real = next<void (*)(Uint64)>("SDL_DelayPrecise");
    const bool sampled = wait_count % WAITS_PER_CPU_SAMPLE == 0;
    const uint64_t cpu = sampled ? clock_ns(CLOCK_PROCESS_CPUTIME_ID) : 0;
    const uint64_t begin = clock_ns(CLOCK_MONOTONIC);
    real(ns);
    const uint64_t end = clock_ns(CLOCK_MONOTONIC);
    const int64_t used = sampled ? static_cast<int64_t>(clock_ns(CLOCK_PROCESS_CPUTIME_ID) - cpu) : -1;
    if (wait_count < ROWS_MAX) waits[wait_count++] = {begin, end, used};
}

[[gnu::destructor]] static void write_records() {
    const char *path = std::getenv("LUMARIND_PROBE");
    std::FILE *file = path ? std::fopen(path, "w") : nullptr;
    if (!file) return;
    std::fprintf(file, "memory %ld\n", peak_kib);
    for (int i = 0; i < present_count; i++) std::fprintf(file, "present %" PRIu64 "\n", presents[i]);
    for (int i = 0; i < wait_count; i++) {
        std::fprintf(file, "wait %" PRIu64 " %" PRIu64 " %" PRId64 "\n", waits[i].begin, waits[i].end, waits[i].cpu);
    }
    std::fclose(file);
}
