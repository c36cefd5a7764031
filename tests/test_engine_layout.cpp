// Pure calculations of the engine: UI scale, menu columns, fixed timestep.

#include "lumarind/engine/menu_layout.h"
#include "lumarind/engine/timestep.h"
#include "lumarind/engine/ui_scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

TEST(UiScale, CommandLineOverridesConfigurationOverridesDisplay) {
    const struct {
        float display;
        int configured, from_args, expected;
    } cases[] = {
        {1.25f, 0, 0, 1}, {1.5f, 0, 0, 2},  {1.75f, 0, 0, 2}, {2.0f, 0, 0, 2},     {2.5f, 0, 0, 3}, {0.75f, 0, 0, 1},
        {10.0f, 0, 0, 8}, {NAN, 0, 0, 1},   {-3, 0, 0, 1},    {INFINITY, 0, 0, 8}, {7.6f, 0, 0, 8}, {1, 12, 0, 8},
        {1, 2, 3, 3},     {2.0f, -5, 0, 2}, {2.0f, 1, 0, 1},  {1, 0, 99, 8},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(ui_scale_pick(c.display, c.configured, c.from_args), c.expected)
            << c.display << ", " << c.configured << ", " << c.from_args;
    }
}

TEST(MenuLayout, StepColumnKeepsRowAndStopsAtLastEntry) {
    EXPECT_EQ(menu_layout_rows(505, 35), 14);
    EXPECT_EQ(menu_layout_rows(20, 35), 1);
    const struct {
        int index, rows, delta, expected;
    } cases[] = {{9, 4, -1, 5}, {5, 4, 1, 9},   {7, 4, 1, 10},  {2, 4, -1, 2},  {9, 4, 1, 9},
                 {0, 1, 1, 1},  {10, 1, 1, 10}, {9, 10, 1, 10}, {0, 10, 1, 10}, {3, 14, 1, 3}};
    for (const auto &c : cases) {
        EXPECT_EQ(menu_layout_step_column(c.index, 11, c.rows, c.delta), c.expected) << c.index << ", " << c.rows;
    }
}

// --- timestep ---

TEST(TimestepTest, StepsAndAccumulatorAddUpToElapsedTime) {
    std::mt19937 random(3);
    for (const int hz : {1, 30, 60, 144, 1000}) {
        Timestep ts = {.step = 9, .accumulator = 9};
        timestep_init(&ts, hz);
        double elapsed = 0;
        int steps = 0;
        for (int i = 0; i < 5000; i++) {
            const double dt = i == 0 ? 2 : static_cast<double>(random() % 100'000) / 1e6;
            elapsed += std::min(dt, 0.25); // longer frames are clamped
            timestep_advance(&ts, dt);
            while (timestep_consume_step(&ts)) steps++;
            ASSERT_GE(timestep_alpha(&ts), 0.0);
            ASSERT_LT(timestep_alpha(&ts), 1.0);
        }
        EXPECT_NEAR(steps * ts.step + ts.accumulator, elapsed, 1e-6) << hz;
    }
}

} // namespace
