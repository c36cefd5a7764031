// The error report: what it logs, what it keeps, and that it works without memory.

#include "core/error.h"
#include "support/allocation_faults.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace {

class ErrorTest : public ::testing::Test {
protected:
    ~ErrorTest() override {
        engine_clear_error();
        engine_error_attach(nullptr);
    }
    LogCapture log;
    char *slot = nullptr;
};

TEST_F(ErrorTest, KeepsTheLastTextWhichMayQuoteTheOneBefore) {
    EXPECT_FALSE(engine_error("[TEST] %s is %d", "x", 3)) << "without a slot it only logs";
    EXPECT_TRUE(!engine_has_error() && !engine_get_error() && log.has("[TEST] x is 3"));
    engine_error_attach(&slot);
    engine_error("[TEST] first");
    engine_error("[TEST] second after %s", engine_get_error());
    EXPECT_STREQ(engine_get_error(), "[TEST] second after [TEST] first");
    engine_clear_error();
    EXPECT_FALSE(engine_has_error());
    EXPECT_EQ(log.errors().size(), 3u);
}

TEST_F(ErrorTest, LogsEvenWhenThereIsNoMemoryForTheText) {
    allocation_faults_install();
    engine_error_attach(&slot);
    engine_error("[TEST] old");
    allocation_faults_arm(1, true);
    EXPECT_FALSE(engine_error("[TEST] %s", "new"));
    EXPECT_GT(allocation_faults_disarm(), 0);
    EXPECT_EQ(log.errors().back(), "[TEST] new");
    EXPECT_FALSE(engine_has_error()) << "the old text must not stand for the new failure";
}

} // namespace
