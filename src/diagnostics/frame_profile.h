// frame_profile: where the time of the last 512 frames went, phase by phase, with the statistics and the chart
// geometry drawn from them. A plain value without clock or allocation: timestamps are the caller's, in ns on any
// monotonic clock, and copying a profile copies its whole history. A zeroed profile is an empty one.
// Nanosecond sums stop at 4,294,967,295 (about 4.29 s) instead of wrapping.
#pragma once

#include <cstdint>

enum FrameProfilePhase {
    PHASE_EVT,   // from the frame's boundary through the event queue
    PHASE_SWAP,  // the old screen's clean-up and the new one's set-up
    PHASE_FIX,   // all fixed steps
    PHASE_TICK,  // the screen's drawing and the fade
    PHASE_OVL,   // overlays
    PHASE_PANEL, // the profiler panel while it is shown
    PHASE_PRES,  // presenting
    PHASE_SLEEP, // the frame-rate wait
    PHASE_COUNT,
};

constexpr const char *PHASE_NAMES[PHASE_COUNT] = {"evt", "swap", "fix", "tick", "ovl", "panel", "pres", "sleep"};

constexpr int FRAME_PROFILE_CAPACITY = 512;                                                // frames
constexpr double FRAME_PROFILE_LADDER[] = {2.0, 4.0, 8.0, 16.7, 33.3, 66.7, 100.0, 200.0}; // ms, chart scales

struct FrameRecord {
    uint32_t phase_ns[PHASE_COUNT];
    uint32_t total_ns; // the sum of the phases
    uint16_t steps;    // fixed steps; stops at 65,535
};

struct FrameProfile {
    FrameRecord ring[FRAME_PROFILE_CAPACITY];
    int32_t head;         // slot of the next completed frame
    int32_t count;        // completed frames in the ring
    FrameRecord current;  // being recorded
    int32_t open_phase;   // receives the time from phase_start on
    uint64_t phase_start; // ns
    bool started;         // a first boundary was seen; nothing is recorded before it
};

struct FrameStats { // durations in ns
    uint32_t avg_ns, min_ns, max_ns;
    uint32_t low_ns;       // average of the slowest hundredth of the frames: 1 to 5 of them
    int32_t window_frames; // frames covered; 0 leaves everything 0
};

struct ChartLayout {
    float bar_width;        // of one frame's column, in the width's unit
    int32_t visible_frames; // columns
};

// --- recording ---
void frame_profile_init(FrameProfile *profile);
void frame_profile_boundary(FrameProfile *profile, uint64_t now); // ends a frame and starts the next, in PHASE_EVT
// Gives the time from now on to `phase`, which may come up more than once. Other numbers than phases are ignored.
void frame_profile_mark(FrameProfile *profile, int phase, uint64_t now);
void frame_profile_count_step(FrameProfile *profile);

// --- questions ---
const FrameRecord *frame_profile_at(const FrameProfile *profile, int age); // age 0: completed last. Null: none so old
void frame_profile_stats(const FrameProfile *profile, int window, FrameStats *out); // of the newest `window` frames

// --- chart ---
// Columns at least 2 wide: all frames when 512 would fit, which then share the width; otherwise the newest that fit.
void frame_profile_chart_layout(int count, float width, ChartLayout *out);
// The rung that holds `peak`, both in ms. It rises at once and falls only when the peak is below half of `current`.
double frame_profile_ladder_pick(double peak, double current);
float frame_profile_sample_y(uint32_t ns, double scale, float height); // bar height, 0 to height; scale in ms
