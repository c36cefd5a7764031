// The log file behind SDL's log.

#include "core/log.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_hints.h>
#include <gtest/gtest.h>

namespace {

constexpr const char *LOG_FILE = "lumarind-engine.log";

class LogTest : public ::testing::Test {
protected:
    ~LogTest() override { log_cleanup(); }
    TemporaryDirectory directory;
    LogCapture previous; // stands for SDL's own output, which has to go on
};

TEST_F(LogTest, PrefixesWarningsAndErrorsAndFlushesEveryLine) {
    log_setup();
    const int priorities[] = {
        SDL_LOG_PRIORITY_INFO, SDL_LOG_PRIORITY_WARN, SDL_LOG_PRIORITY_ERROR, SDL_LOG_PRIORITY_CRITICAL};
    for (const int priority : priorities) {
        SDL_LogMessage(SDL_LOG_CATEGORY_APPLICATION, static_cast<SDL_LogPriority>(priority), "x %d%%", priority);
    }
    SDL_LogDebug(SDL_LOG_CATEGORY_TEST, "[TEST] DEBUG: gets through");
    EXPECT_EQ(read_file(LOG_FILE), "x 4%\nWARNING: x 5%\nERROR: x 6%\nERROR: x 7%\n[TEST] DEBUG: gets through\n")
        << "read while the file is still open";
    EXPECT_EQ(previous.lines.size(), 5u);
    EXPECT_EQ(previous.lines[1].text, "x 5%");
    for (const int category : {SDL_LOG_CATEGORY_ERROR, SDL_LOG_CATEGORY_AUDIO, SDL_LOG_CATEGORY_INPUT}) {
        SDL_LogWarn(category, "heard");
    }
    EXPECT_EQ(previous.lines.size(), 8u) << "warnings get through in the categories they are given in";
}

TEST_F(LogTest, EachStartBeginsAnewAndCleanupEndsIt) {
    log_cleanup();
    log_setup();
    log_setup();
    SDL_Log("first run");
    log_cleanup();
    log_cleanup();
    SDL_Log("between");
    EXPECT_EQ(read_file(LOG_FILE), "first run\n");
    log_setup();
    SDL_Log("second run");
    EXPECT_EQ(read_file(LOG_FILE), "second run\n");
    EXPECT_EQ(previous.lines.size(), 3u) << "each line once to the output before";
}

TEST_F(LogTest, AFileThatCannotBeOpenedIsNoFailureAndTheUsersPrioritiesStay) {
    std::filesystem::create_directory(LOG_FILE);
    SDL_SetHint(SDL_HINT_LOGGING, "error=error");
    SDL_ResetLogPriorities();
    log_setup();
    SDL_LogWarn(SDL_LOG_CATEGORY_ERROR, "not heard");
    SDL_ResetHint(SDL_HINT_LOGGING);
    SDL_ResetLogPriorities();
    SDL_Log("still heard");
    log_cleanup();
    EXPECT_EQ(previous.lines.size(), 1u);
}

} // namespace
