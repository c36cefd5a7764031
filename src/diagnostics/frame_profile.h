// frame_profile: frame timing per phase for the last 512 frames, with statistics and the geometry of a chart. A plain
// value without clock or allocation: timestamps are passed in, in ns of any monotonic clock; copying a profile copies
// its history. A zero-initialised profile is empty.
// Nanosecond sums saturate at 4,294,967,295 (about 4.29 s).
#pragma once

#include <cstdint>

enum FrameProfilePhase {
    PHASE_EVT,   // from the frame boundary to the end of event polling
    PHASE_SWAP,  // cleanup of the old screen and setup of the new one
    PHASE_FIX,   // all fixed steps
    PHASE_TICK,  // the screen's tick and the fade
    PHASE_OVL,   // overlays
    PHASE_PANEL, // the profiler panel while it is shown
    PHASE_PRES,  // present
    PHASE_SLEEP, // the frame-rate wait
    PHASE_COUNT,
};

constexpr const char *PHASE_NAMES[PHASE_COUNT] = {"evt", "swap", "fix", "tick", "ovl", "panel", "pres", "sleep"};

constexpr int FRAME_PROFILE_CAPACITY = 512;                                                // frames
constexpr double FRAME_PROFILE_LADDER[] = {2.0, 4.0, 8.0, 16.7, 33.3, 66.7, 100.0, 200.0}; // ms, chart scales

struct FrameRecord {
    uint32_t phase_ns[PHASE_COUNT];
    uint32_t total_ns; // the sum of the phases
    uint16_t steps;    // fixed steps; saturates at 65,535
};

struct FrameProfile {
    FrameRecord ring[FRAME_PROFILE_CAPACITY];
    int32_t head;         // slot of the next completed frame
    int32_t count;        // completed frames in the ring
    FrameRecord current;  // the frame being recorded
    int32_t open_phase;   // the phase that accumulates time since phase_start
    uint64_t phase_start; // ns
    bool started;         // the first boundary was recorded; marks before it are ignored
};

struct FrameStats { // durations in ns
    uint32_t avg_ns, min_ns, max_ns;
    uint32_t low_ns;       // 1 % low: average of the slowest hundredth of the frames (1 to 5)
    int32_t window_frames; // frames covered; if 0, all fields are 0
};

struct ChartLayout {
    float bar_width;        // width of one frame's column, in the unit of the chart's width
    int32_t visible_frames; // columns
};

// --- recording ---
void frame_profile_init(FrameProfile *profile);
void frame_profile_boundary(FrameProfile *profile, uint64_t now); // ends a frame and starts the next, in PHASE_EVT
// Accounts time from now on to `phase`; a phase may occur more than once per frame. Invalid phases are ignored.
void frame_profile_mark(FrameProfile *profile, int phase, uint64_t now);
void frame_profile_count_step(FrameProfile *profile);

// --- queries ---
const FrameRecord *frame_profile_at(const FrameProfile *profile, int age); // age 0: the newest; null if too old
void frame_profile_stats(const FrameProfile *profile, int window, FrameStats *out); // of the newest `window` frames

// --- chart ---
// Columns are at least 2 wide. If 512 fit, all frames share the width; otherwise the newest ones that fit are shown.
void frame_profile_chart_layout(int count, float width, ChartLayout *out);
// Returns the smallest scale of the ladder that is at least `peak`, both in ms, or else the largest. The scale grows at
// once, but shrinks only when the peak is below half of `current` (hysteresis).
double frame_profile_ladder_pick(double peak, double current);
float frame_profile_sample_y(uint32_t ns, double scale, float height); // bar height, 0 to height; scale in ms
