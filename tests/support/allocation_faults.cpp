#include "support/allocation_faults.h"

#include "lumarind/core/error.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_stdinc.h>
#include <gtest/gtest.h>

#include <cstdarg>
#include <mutex>
#include <unordered_set>

namespace {

struct Faults {
    SDL_calloc_func calloc = nullptr;
    SDL_realloc_func realloc = nullptr;
    SDL_free_func free = nullptr;
    bool armed = false, and_all_after = false;
    int countdown = 0, failed = 0;
    std::mutex mutex; // SDL's audio and timer threads allocate too
    std::unordered_set<void *> live;
};
Faults g_faults;

// Set from a call in this project's code until its allocation. Only that one is an own allocation; further ones made by
// SDL, such as for its error text, are not.
thread_local bool g_own_call;

bool should_fail() { // call with the mutex held
    if (!g_faults.armed || --g_faults.countdown > 0 || (g_faults.countdown < 0 && !g_faults.and_all_after))
        return false;
    g_faults.failed++;
    return true;
}

template <typename Allocate> void *allocate_or_fail(Allocate allocate) {
    const bool own = g_own_call;
    g_own_call = false;
    if (!own) return allocate();
    const std::lock_guard lock(g_faults.mutex);
    if (should_fail()) return nullptr;
    void *memory = allocate();
    g_faults.live.insert(memory);
    return memory;
}

void *SDLCALL hook_calloc(size_t count, size_t size) {
    return allocate_or_fail([=] { return g_faults.calloc(count, size); });
}

void *SDLCALL hook_realloc(void *memory, size_t size) {
    return allocate_or_fail([=] {
        g_faults.live.erase(memory);
        return g_faults.realloc(memory, size);
    });
}

void *SDLCALL hook_malloc(size_t size) { return hook_realloc(nullptr, size); }

void SDLCALL hook_free(void *memory) {
    {
        const std::lock_guard lock(g_faults.mutex);
        g_faults.live.erase(memory);
    }
    g_faults.free(memory);
}

// Returns false if there is no n-th allocation, or after a failed expectation.
bool run_with_fault(
    LogCapture *log, const std::function<bool()> &setup, const std::function<void()> &cleanup, int nth,
    bool and_all_after) {
    SCOPED_TRACE("allocation " + std::to_string(nth) + (and_all_after ? " and all after it fail" : " fails"));
    engine_clear_error(); // owned by the engine, not by the setup under test
    const int live_before = allocation_faults_live();
    log->lines.clear();
    allocation_faults_arm(nth, and_all_after);
    const bool ok = setup();
    const bool reached = allocation_faults_disarm() > 0;
    const bool reported = !log->errors().empty();
    cleanup();
    engine_clear_error();
    EXPECT_EQ(allocation_faults_live(), live_before) << "own allocations leaked";
    EXPECT_TRUE(reached || ok) << "failed without a fault: " << (reported ? log->errors().front() : "");
    EXPECT_TRUE(reported || !reached) << "a failed allocation was not reported";
    EXPECT_TRUE(setup()) << "setup failed after a failed setup";
    cleanup();
    return reached && !::testing::Test::HasFailure();
}

} // namespace

void allocation_faults_install() {
    if (g_faults.realloc) return;
    SDL_GetOriginalMemoryFunctions(nullptr, &g_faults.calloc, &g_faults.realloc, &g_faults.free);
    SDL_SetMemoryFunctions(hook_malloc, hook_calloc, hook_realloc, hook_free);
}

void allocation_faults_arm(int nth, bool and_all_after) {
    SDL_SetError("%512s", ""); // reserves SDL's error buffer, so that reporting errors does not allocate
    const std::lock_guard lock(g_faults.mutex);
    g_faults.armed = true;
    g_faults.and_all_after = and_all_after;
    g_faults.countdown = nth;
    g_faults.failed = 0;
}

int allocation_faults_disarm() {
    const std::lock_guard lock(g_faults.mutex);
    g_faults.armed = false;
    return g_faults.failed;
}

int allocation_faults_live() {
    const std::lock_guard lock(g_faults.mutex);
    return static_cast<int>(g_faults.live.size());
}

// --- the linker redirects this project's calls of SDL's allocation functions here (--wrap) ---

#define WRAPPED(Result, name, parameters, ...)                                                                         \
    Result __real_SDL_##name parameters;                                                                               \
    Result __wrap_SDL_##name parameters;                                                                               \
    Result __wrap_SDL_##name parameters {                                                                              \
        g_own_call = true;                                                                                             \
        Result result = __real_SDL_##name(__VA_ARGS__);                                                                \
        g_own_call = false;                                                                                            \
        return result;                                                                                                 \
    }

extern "C" {
WRAPPED(void *, malloc, (size_t size), size)
WRAPPED(void *, calloc, (size_t count, size_t size), count, size)
WRAPPED(void *, realloc, (void *memory, size_t size), memory, size)
WRAPPED(char *, strdup, (const char *text), text)
WRAPPED(int, vasprintf, (char **text, const char *fmt, va_list args), text, fmt, args)

int __wrap_SDL_asprintf(char **text, const char *fmt, ...) {
    va_list args;
    va_start(args, fmt);
    const int length = __wrap_SDL_vasprintf(text, fmt, args);
    va_end(args);
    return length;
}
}

void expect_allocation_faults_survived(
    LogCapture *log, const std::function<bool()> &setup, const std::function<void()> &cleanup) {
    allocation_faults_install();
    ASSERT_TRUE(setup()); // triggers one-time allocations of libraries
    cleanup();
    int faults = 0;
    for (const bool and_all_after : {false, true}) {
        for (int nth = 1; run_with_fault(log, setup, cleanup, nth, and_all_after); nth++) faults++;
    }
    EXPECT_GT(faults, 0) << "setup made no own allocation, so nothing was tested";
}
