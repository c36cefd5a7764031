// The frame profile: recording, statistics and chart geometry, with synthetic timestamps.

#include "diagnostics/frame_profile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <random>
#include <vector>

namespace {

constexpr uint64_t MS = 1'000'000;
constexpr uint32_t NS_MAX = UINT32_MAX;

class FrameProfileTest : public ::testing::Test {
protected:
    void SetUp() override { frame_profile_init(&profile); }

    FrameProfile profile;
    uint64_t now = 1'000 * MS;
};

// --- recording ---

TEST_F(FrameProfileTest, TimeIsAccumulatedInOpenPhase) {
    frame_profile_mark(&profile, PHASE_FIX, 5);
    EXPECT_EQ(profile.open_phase, PHASE_EVT) << "nothing is recorded before the first boundary";
    frame_profile_boundary(&profile, 100);
    frame_profile_mark(&profile, PHASE_FIX, 110);
    frame_profile_mark(&profile, PHASE_FIX, 130);
    frame_profile_count_step(&profile);
    frame_profile_mark(&profile, PHASE_TICK, 160);
    frame_profile_mark(&profile, PHASE_FIX, 150); // the clock went backwards
    frame_profile_mark(&profile, PHASE_COUNT, 151);
    frame_profile_mark(&profile, -1, 152);
    frame_profile_boundary(&profile, 200);
    const FrameRecord *frame = frame_profile_at(&profile, 0);
    ASSERT_NE(frame, nullptr);
    const std::vector<uint32_t> phases(std::begin(frame->phase_ns), std::end(frame->phase_ns));
    EXPECT_EQ(phases, (std::vector<uint32_t>{10, 0, 100, 0, 0, 0, 0, 0}));
    EXPECT_EQ(frame->total_ns, 110u);
    EXPECT_EQ(frame->steps, 1);
    EXPECT_EQ(profile.current.phase_ns[PHASE_FIX] + profile.current.steps, 0u) << "the next frame starts empty";
    for (int i = 0; i < 70'000; i++) frame_profile_count_step(&profile);
    EXPECT_EQ(profile.current.steps, UINT16_MAX);
}

// --- statistics ---

// Reference implementation: sorts the totals of all frames.
FrameStats slow_stats(const std::vector<uint32_t> &totals, size_t window) {
    window = std::min({window, totals.size(), size_t{512}});
    std::vector<uint32_t> sorted(totals.end() - static_cast<std::ptrdiff_t>(window), totals.end());
    std::sort(sorted.rbegin(), sorted.rend());
    const auto average = [&](size_t n) {
        return static_cast<uint32_t>(
            std::accumulate(sorted.begin(), sorted.begin() + static_cast<std::ptrdiff_t>(n), uint64_t{0}) / n);
    };
    const size_t low = window < 200 ? 1 : std::min<size_t>(window / 100, 5);
    return {average(window), sorted.back(), sorted.front(), average(low), static_cast<int32_t>(window)};
}

TEST_F(FrameProfileTest, StatisticsMatchReferenceOnRandomHistories) {
    std::mt19937_64 random(20240611);
    const auto below = [&](uint64_t n) { return random() % n; };
    for (int history = 0; history < 40; history++) {
        frame_profile_init(&profile);
        frame_profile_boundary(&profile, now);
        std::vector<std::vector<uint64_t>> records; // ns per phase
        std::vector<uint32_t> totals;
        const uint64_t frames = 1 + below(700), longest = history % 4 == 0 ? 6'000 * MS : 1 + below(40 * MS);
        const bool few_values = history % 3 == 0; // many frames of equal length
        for (uint64_t i = 0; i < frames; i++) {
            int open = PHASE_EVT;
            std::vector<uint64_t> record(PHASE_COUNT);
            for (uint64_t marks = below(12) + 1; marks > 0; marks--) {
                const uint64_t ns = few_values ? below(3) * 1'000 : below(longest);
                record[static_cast<size_t>(open)] += ns;
                open = static_cast<int>(below(PHASE_COUNT));
                marks > 1 ? frame_profile_mark(&profile, open, now += ns) : frame_profile_boundary(&profile, now += ns);
            }
            uint64_t total = 0;
            for (uint64_t &ns : record) total += ns = std::min<uint64_t>(ns, NS_MAX);
            totals.push_back(static_cast<uint32_t>(std::min<uint64_t>(total, NS_MAX)));
            records.push_back(record);
        }
        ASSERT_EQ(profile.count, static_cast<int>(std::min<uint64_t>(frames, 512)));
        for (const int none : {-1, profile.count}) ASSERT_EQ(frame_profile_at(&profile, none), nullptr);
        for (int age = 0; age < profile.count; age++) {
            const FrameRecord *frame = frame_profile_at(&profile, age);
            const auto &expected = records[static_cast<size_t>(frames) - 1 - static_cast<size_t>(age)];
            ASSERT_TRUE(std::equal(expected.begin(), expected.end(), std::begin(frame->phase_ns))) << age;
        }
        for (const size_t window : {size_t{1}, size_t{199}, size_t{200}, size_t{1 + below(600)}, size_t{512}}) {
            FrameStats found;
            frame_profile_stats(&profile, static_cast<int>(window), &found);
            const FrameStats expected = slow_stats(totals, window);
            EXPECT_EQ(std::memcmp(&found, &expected, sizeof found), 0)
                << "history " << history << ", window " << window;
        }
    }
}

// --- chart ---

TEST(FrameChart, ShowsAsManyColumnsAsFit) {
    const struct {
        int count;
        float width, bar_width;
        int frames;
    } cases[] = {{40, 1200, 2.34375f, 40}, {512, 1024, 2, 512}, {512, 1023, 2, 511}, {40, 300, 2, 40},
                 {512, 1.9f, 2, 0},        {512, -5, 2, 0},     {0, 1200, 2, 0},     {512, 1e30f, 1e30f / 512, 512}};
    for (const auto &c : cases) {
        ChartLayout layout = {};
        frame_profile_chart_layout(c.count, c.width, &layout);
        EXPECT_EQ(layout.bar_width, c.bar_width) << c.count << " in " << c.width;
        EXPECT_EQ(layout.visible_frames, c.frames) << c.count << " in " << c.width;
    }
}

TEST(FrameChart, ScaleGrowsAtOnceAndShrinksWithHysteresis) {
    const struct {
        double peak, current, scale;
    } cases[] = {{17, 0, 33.3}, {55, 100, 100}, {45, 100, 66.7}, {12, 33.3, 16.7},    {250, 0, 200},  {250, 200, 200},
                 {0, 0, 2},     {0, 200, 2},    {16.7, 8, 16.7}, {16.65, 33.3, 33.3}, {50, 100, 100}, {8.001, 2, 16.7}};
    for (const auto &c : cases) {
        EXPECT_EQ(frame_profile_ladder_pick(c.peak, c.current), c.scale) << c.peak << " at " << c.current;
    }
}

} // namespace
