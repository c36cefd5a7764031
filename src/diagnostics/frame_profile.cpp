#include "diagnostics/frame_profile.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

static constexpr uint32_t NS_MAX = UINT32_MAX;
static constexpr int LOW_SAMPLES_MAX = 5;
static constexpr float COLUMN_WIDTH_MIN = 2;
static constexpr double SHRINK_BELOW = 0.5; // hysteresis: fraction of the current scale
static constexpr double NS_PER_MS = 1e6;

// --- recording ---

static uint32_t ns_add(uint32_t a, uint64_t b) { return b > NS_MAX - a ? NS_MAX : a + static_cast<uint32_t>(b); }

static void close_open_phase(FrameProfile *profile, uint64_t now) {
    const uint64_t elapsed = now > profile->phase_start ? now - profile->phase_start : 0;
    uint32_t *open = &profile->current.phase_ns[profile->open_phase];
    *open = ns_add(*open, elapsed);
    profile->phase_start = now;
}

static void _frame_profile_complete(FrameProfile *profile) {
    FrameRecord *frame = &profile->current;
    frame->total_ns = 0;
    for (const uint32_t ns : frame->phase_ns) frame->total_ns = ns_add(frame->total_ns, ns);
    profile->ring[profile->head] = *frame;
    profile->head = (profile->head + 1) % FRAME_PROFILE_CAPACITY;
    profile->count = std::min(profile->count + 1, FRAME_PROFILE_CAPACITY);
}

void frame_profile_init(FrameProfile *profile) { *profile = {}; }

void frame_profile_boundary(FrameProfile *profile, uint64_t now) {
    if (profile->started) {
        close_open_phase(profile, now);
        _frame_profile_complete(profile);
    }
    profile->current = {};
    profile->open_phase = PHASE_EVT;
    profile->phase_start = now;
    profile->started = true;
}

void frame_profile_mark(FrameProfile *profile, int phase, uint64_t now) {
    if (!profile->started || phase < 0 || phase >= PHASE_COUNT) return;
    close_open_phase(profile, now);
    profile->open_phase = phase;
}

void frame_profile_count_step(FrameProfile *profile) {
    if (profile->current.steps < UINT16_MAX) profile->current.steps++;
}

// --- queries ---

const FrameRecord *frame_profile_at(const FrameProfile *profile, int age) {
    if (age < 0 || age >= profile->count) return nullptr;
    return &profile->ring[(profile->head - 1 - age + 2 * FRAME_PROFILE_CAPACITY) % FRAME_PROFILE_CAPACITY];
}

namespace {

struct Slowest { // the largest values seen, in descending order
    int capacity, count;
    uint32_t ns[LOW_SAMPLES_MAX];
};

} // namespace

static void _slowest_offer(Slowest *slowest, uint32_t ns) {
    if (slowest->count == slowest->capacity) {
        if (ns <= slowest->ns[slowest->count - 1]) return;
    } else {
        slowest->count++;
    }
    int i = slowest->count - 1;
    for (; i > 0 && slowest->ns[i - 1] < ns; i--) slowest->ns[i] = slowest->ns[i - 1];
    slowest->ns[i] = ns;
}

static uint32_t _slowest_average(const Slowest *slowest) {
    uint64_t sum = 0;
    for (int i = 0; i < slowest->count; i++) sum += slowest->ns[i];
    return static_cast<uint32_t>(sum / static_cast<uint64_t>(slowest->count));
}

void frame_profile_stats(const FrameProfile *profile, int window, FrameStats *out) {
    *out = {};
    const int frames = std::min(window, profile->count);
    if (frames < 1) return;
    uint64_t sum = 0;
    uint32_t shortest = NS_MAX, longest = 0;
    Slowest slowest = {.capacity = std::clamp(frames / 100, 1, LOW_SAMPLES_MAX), .count = 0, .ns = {}};
    for (int age = 0; age < frames; age++) {
        const uint32_t ns = frame_profile_at(profile, age)->total_ns;
        sum += ns;
        shortest = std::min(shortest, ns);
        longest = std::max(longest, ns);
        _slowest_offer(&slowest, ns);
    }
    out->avg_ns = static_cast<uint32_t>(sum / static_cast<uint64_t>(frames));
    out->min_ns = shortest;
    out->max_ns = longest;
    out->low_ns = _slowest_average(&slowest);
    out->window_frames = frames;
}

// --- chart ---

void frame_profile_chart_layout(int count, float width, ChartLayout *out) {
    *out = {.bar_width = COLUMN_WIDTH_MIN, .visible_frames = 0};
    if (!(width > 0) || count < 1) return;
    const float fitting = width / COLUMN_WIDTH_MIN; // float: may exceed the range of int
    if (fitting >= FRAME_PROFILE_CAPACITY) {
        out->bar_width = width / FRAME_PROFILE_CAPACITY;
        out->visible_frames = count;
    } else {
        out->visible_frames = std::min(static_cast<int>(fitting), count);
    }
}

double frame_profile_ladder_pick(double peak, double current) {
    const double *rung = std::find_if(
        std::begin(FRAME_PROFILE_LADDER), std::end(FRAME_PROFILE_LADDER), [=](double value) { return value >= peak; });
    if (rung == std::end(FRAME_PROFILE_LADDER)) rung--;
    return *rung >= current || peak < SHRINK_BELOW * current ? *rung : current;
}

float frame_profile_sample_y(uint32_t ns, double scale, float height) {
    if (!(scale > 0)) return 0;
    const double y = static_cast<double>(height) * (static_cast<double>(ns) / NS_PER_MS / scale);
    if (y <= 0) return 0;
    return y >= static_cast<double>(height) ? height : static_cast<float>(y);
}
