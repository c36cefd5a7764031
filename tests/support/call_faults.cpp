#include "support/call_faults.h"

#include "support/log_capture.h"

#include <SDL3/SDL.h>
#include <SDL3_image/SDL_image.h>
#include <SDL3_mixer/SDL_mixer.h>
#include <SDL3_ttf/SDL_ttf.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <tuple>

namespace {

struct NthCall {
    bool armed, any_call, and_all_after; // only allocations, unless `any_call`
    int countdown, failed;
} nth_call;

bool nth_call_fails(bool allocation) {
    if (!nth_call.armed || (!allocation && !nth_call.any_call) || --nth_call.countdown > 0) return false;
    if (nth_call.countdown < 0 && !nth_call.and_all_after) return false;
    nth_call.failed++;
    return true;
}

constexpr int CALLS_OF_A_PLACE = 2; // those in a loop or in a helper are many

// A place in the code is identified by the return address. Of each run, the first call that has not failed yet fails.
bool armed;
std::map<const void *, int> calls_in_run, failed_calls;
std::string failed_call; // of this run

bool is_to_fail(const char *name, const void *place) {
    if (!armed) return false;
    const int call = ++calls_in_run[place];
    if (!failed_call.empty() || call > CALLS_OF_A_PLACE || call <= failed_calls[place]) return false;
    failed_calls[place] = call;
    failed_call = name;
    return true;
}

template <typename Function> struct Signature;
template <typename R, typename... Arguments> struct Signature<R(Arguments...)> {
    using Result = R;
    template <size_t I> using Argument = std::tuple_element_t<I, std::tuple<Arguments...>>;
};

} // namespace

bool call_fails(const char *name, const void *place) {
    if (!nth_call_fails(false) && !is_to_fail(name, place)) return false;
    if (std::string("SDL_WriteIO") != name) SDL_SetError("%s was made to fail", name); // a full disk sets none
    return true;
}

// The linker redirects the project's calls of these functions here (--wrap).
#define RESULT(name) Signature<decltype(name)>::Result
#define IN(name, i) Signature<decltype(name)>::Argument<i>
#define WRAPPED(name, parameters, ...)                                                                                 \
    extern "C" RESULT(name) __real_##name parameters;                                                                  \
    extern "C" RESULT(name) __wrap_##name parameters {                                                                 \
        if (call_fails(#name, __builtin_return_address(0))) return {};                                                 \
        return __real_##name(__VA_ARGS__);                                                                             \
    }
#define OF_0(name) WRAPPED(name, ())
#define OF_1(name) WRAPPED(name, (IN(name, 0) a), a)
#define OF_2(name) WRAPPED(name, (IN(name, 0) a, IN(name, 1) b), a, b)
#define OF_3(name) WRAPPED(name, (IN(name, 0) a, IN(name, 1) b, IN(name, 2) c), a, b, c)
#define OF_4(name) WRAPPED(name, (IN(name, 0) a, IN(name, 1) b, IN(name, 2) c, IN(name, 3) d), a, b, c, d)
#define OF_5(name)                                                                                                     \
    WRAPPED(name, (IN(name, 0) a, IN(name, 1) b, IN(name, 2) c, IN(name, 3) d, IN(name, 4) e), a, b, c, d, e)
#define OF_6(name)                                                                                                     \
    WRAPPED(                                                                                                           \
        name, (IN(name, 0) a, IN(name, 1) b, IN(name, 2) c, IN(name, 3) d, IN(name, 4) e, IN(name, 5) f), a, b, c, d,  \
        e, f)

// clang-format off
OF_0(MIX_Init) OF_0(SDL_CreateProperties) OF_0(SDL_GetBasePath) OF_0(SDL_GetCurrentDirectory)
OF_0(SDL_IOFromDynamicMem) OF_0(TTF_Init)
OF_1(MIX_CreateTrack) OF_1(SDL_CreateDirectory) OF_1(SDL_FlushIO) OF_1(SDL_GetCurrentTime) OF_1(SDL_Init)
OF_1(SDL_StorageReady) OF_1(TTF_CopyFont) OF_1(TTF_CreateRendererTextEngine)
OF_2(IMG_SavePNG) OF_2(MIX_CreateMixerDevice) OF_2(MIX_GetAudioDecoderFormat) OF_2(MIX_GetAudioFormat)
OF_2(MIX_SetTrackAudio) OF_2(MIX_TagTrack) OF_2(SDL_AddEventWatch) OF_2(SDL_ConvertSurface)
OF_2(SDL_CreateRenderer) OF_2(SDL_CreateStorageDirectory) OF_2(SDL_CreateTextureFromSurface) OF_2(SDL_GetPathInfo)
OF_2(SDL_GetRenderViewport) OF_2(SDL_IOFromFile) OF_2(SDL_LoadFile) OF_2(SDL_OpenTitleStorage)
OF_2(SDL_RenamePath) OF_2(SDL_RenderReadPixels) OF_2(SDL_SetRenderTarget) OF_2(TTF_OpenFont) OF_2(TTF_SetFontSize)
OF_3(SDL_GetStorageFileSize) OF_3(SDL_GetTextureSize) OF_3(SDL_OpenUserStorage) OF_3(SDL_ReadIO)
OF_3(SDL_RenameStoragePath) OF_3(SDL_SeekIO) OF_3(SDL_SetRenderScale) OF_3(SDL_TimeToDateTime) OF_3(SDL_WriteIO)
OF_3(TTF_GetTextSize) OF_3(TTF_SetTextString)
OF_4(IMG_SaveJPG_IO) OF_4(MIX_LoadRawAudio) OF_4(SDL_ReadStorageFile) OF_4(SDL_RenderTexture)
OF_4(SDL_SetRenderLogicalPresentation) OF_4(SDL_WriteStorageFile) OF_4(TTF_CreateText)
OF_5(SDL_RenderTextureTiled) OF_5(TTF_SetTextColor)
OF_6(SDL_RenderGeometry)
extern "C" bool __real_SDL_CloseIO(SDL_IOStream *file);
// clang-format on

extern "C" bool __wrap_SDL_CloseIO(SDL_IOStream *file) {
    return __real_SDL_CloseIO(file) && !call_fails("SDL_CloseIO", __builtin_return_address(0));
}

#define ALLOCATION(Result, name, failure, parameters, ...)                                                             \
    extern "C" Result __real_##name parameters;                                                                        \
    extern "C" Result __wrap_##name parameters {                                                                       \
        if (!nth_call_fails(true) && !is_to_fail(#name, __builtin_return_address(0)))                                  \
            return __real_##name(__VA_ARGS__);                                                                         \
        SDL_OutOfMemory();                                                                                             \
        return failure;                                                                                                \
    }
ALLOCATION(void *, SDL_malloc, nullptr, (size_t size), size)
ALLOCATION(void *, SDL_calloc, nullptr, (size_t count, size_t size), count, size)
ALLOCATION(void *, SDL_realloc, nullptr, (void *memory, size_t size), memory, size)
ALLOCATION(char *, SDL_strdup, nullptr, (const char *text), text)
ALLOCATION(int, SDL_vasprintf, -1, (char **text, const char *format, va_list values), text, format, values)

extern "C" int __wrap_SDL_asprintf(char **text, const char *format, ...) {
    va_list values;
    va_start(values, format);
    const int length = __wrap_SDL_vasprintf(text, format, values);
    va_end(values);
    return length;
}

// A new target contains noise, as on a GPU; the software renderer's would be clear.
extern "C" SDL_Texture *
__real_SDL_CreateTexture(SDL_Renderer *renderer, SDL_PixelFormat format, SDL_TextureAccess access, int w, int h);
extern "C" SDL_Texture *
__wrap_SDL_CreateTexture(SDL_Renderer *renderer, SDL_PixelFormat format, SDL_TextureAccess access, int w, int h) {
    if (call_fails("SDL_CreateTexture", __builtin_return_address(0))) return nullptr;
    SDL_Texture *made = __real_SDL_CreateTexture(renderer, format, access, w, h),
                *before = SDL_GetRenderTarget(renderer);
    if (!made || access != SDL_TEXTUREACCESS_TARGET) return made;
    SDL_FColor color = {};
    SDL_GetRenderDrawColorFloat(renderer, &color.r, &color.g, &color.b, &color.a);
    __real_SDL_SetRenderTarget(renderer, made);
    SDL_SetRenderDrawColor(renderer, 255, 0, 255, 255);
    SDL_RenderClear(renderer);
    __real_SDL_SetRenderTarget(renderer, before);
    SDL_SetRenderDrawColorFloat(renderer, color.r, color.g, color.b, color.a);
    return made;
}

extern "C" size_t __wrap_SDL_IOprintf(SDL_IOStream *file, const char *format, ...) {
    va_list values;
    va_start(values, format);
    const size_t written =
        call_fails("SDL_IOprintf", __builtin_return_address(0)) ? 0 : SDL_IOvprintf(file, format, values);
    va_end(values);
    return written;
}

// Without the parts that change with the versions of libraries, and with time.
static std::string _stable(std::string line) {
    const size_t reason = line.find("error: ");
    const bool own = line.ends_with("was made to fail") || line.ends_with("an earlier error");
    if (reason != line.npos && !own && line.size() > reason + 7) line.replace(reason + 7, line.npos, "...");
    const size_t name = line.find("/capture-");
    return name == line.npos ? line : line.erase(name, line.find('.', name) - name);
}

std::string with_failing_calls(LogCapture *log, const std::function<bool()> &run) {
    std::string text;
    std::set<std::string> reports;
    failed_calls.clear();
    for (;;) {
        log->lines.clear();
        failed_call.clear();
        calls_in_run.clear();
        SDL_SetError("an earlier error");
        armed = true;
        const bool ok = run();
        armed = false;
        EXPECT_TRUE(ok || !failed_call.empty()) << "failed without a failing call";
        if (failed_call.empty()) break;
        const std::vector<std::string> problems = log->at_least(SDL_LOG_PRIORITY_WARN);
        std::string report = failed_call + (ok ? ": ok" : ": failed");
        for (const std::string &problem : problems) report += "; " + _stable(problem);
        report += ok && problems.empty() ? ", " : "\n";
        if (reports.insert(report).second) text += report;
    }
    return text + "\n";
}

void allocation_faults_arm(int nth, bool and_all_after) { nth_call = {true, false, and_all_after, nth, 0}; }

void call_faults_arm(int nth) { nth_call = {true, true, false, nth, 0}; }

int call_faults_disarm() {
    nth_call.armed = false;
    return nth_call.failed;
}

// Returns false if there is no n-th allocation, or after a failed expectation.
static bool _run_with_fault(
    LogCapture *log, const std::function<bool()> &setup, const std::function<void()> &cleanup, int nth,
    bool and_all_after) {
    SCOPED_TRACE("allocation " + std::to_string(nth) + (and_all_after ? " and all after it fail" : " fails"));
    log->lines.clear();
    allocation_faults_arm(nth, and_all_after);
    const bool ok = setup();
    const bool reached = call_faults_disarm() > 0;
    const bool reported = !log->errors().empty();
    cleanup();
    EXPECT_TRUE(reached || ok) << "failed without a fault: " << (reported ? log->errors().front() : "");
    EXPECT_TRUE(reported || !reached) << "a failed allocation was not reported";
    EXPECT_TRUE(setup()) << "setup failed after a failed setup";
    cleanup();
    return reached && !::testing::Test::HasFailure();
}

void expect_allocation_faults_survived(
    LogCapture *log, const std::function<bool()> &setup, const std::function<void()> &cleanup) {
    int faults = 0;
    for (const bool and_all_after : {false, true}) {
        for (int nth = 1; _run_with_fault(log, setup, cleanup, nth, and_all_after); nth++) faults++;
    }
    EXPECT_GT(faults, 0) << "setup made no own allocation, so nothing was tested";
}
