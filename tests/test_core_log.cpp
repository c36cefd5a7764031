// The log file and log priorities, and error reporting.

#include "core/log.h"
#include "lumarind/core/error.h"
#include "support/call_faults.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_hints.h>
#include <gtest/gtest.h>

namespace {

constexpr const char *LOG_FILE = "lumarind-engine.log";

class LogTest : public ::testing::Test {
protected:
    ~LogTest() override { log_cleanup(); }
    TemporaryDirectory directory;
    LogCapture previous; // replaces SDL's own output, which must continue
};

TEST_F(LogTest, SetupTruncatesFileAndEveryLineIsFlushed) {
    log_cleanup();
    log_setup();
    SDL_Log("first run");
    log_cleanup();
    log_cleanup();
    SDL_Log("between");
    EXPECT_EQ(read_file(LOG_FILE), "first run\n");
    log_setup();
    log_setup();
    for (int priority = SDL_LOG_PRIORITY_INFO; priority <= SDL_LOG_PRIORITY_CRITICAL; priority++) {
        SDL_LogMessage(SDL_LOG_CATEGORY_APPLICATION, static_cast<SDL_LogPriority>(priority), "x %d%%", priority);
    }
    SDL_LogDebug(SDL_LOG_CATEGORY_TEST, "[TEST] DEBUG: logged");
    EXPECT_EQ(read_file(LOG_FILE), "x 4%\nWARNING: x 5%\nERROR: x 6%\nERROR: x 7%\n[TEST] DEBUG: logged\n");
    for (const int category : {SDL_LOG_CATEGORY_ERROR, SDL_LOG_CATEGORY_AUDIO, SDL_LOG_CATEGORY_INPUT}) {
        SDL_LogWarn(category, "logged");
    }
    EXPECT_EQ(previous.lines.size(), 10u) << "each line once, including warnings in all categories used";
    EXPECT_EQ(previous.lines[3].text, "x 5%");
}

TEST_F(LogTest, UnopenableFileIsIgnoredAndUserPrioritiesAreKept) {
    std::filesystem::create_directory(LOG_FILE);
    SDL_SetHint(SDL_HINT_LOGGING, "error=error");
    SDL_ResetLogPriorities();
    log_setup();
    SDL_LogWarn(SDL_LOG_CATEGORY_ERROR, "suppressed");
    SDL_ResetHint(SDL_HINT_LOGGING);
    SDL_ResetLogPriorities();
    SDL_Log("logged");
    log_cleanup();
    EXPECT_EQ(previous.lines.size(), 1u);
}

TEST_F(LogTest, ErrorsAreLoggedWhenOutOfMemoryAndLastTextIsStored) {
    EXPECT_FALSE(engine_error("[TEST] %s is %d", "x", 3) || engine_has_error()) << "without a slot it is only logged";
    char *slot = nullptr;
    engine_error_attach(&slot);
    engine_error("[TEST] first");
    engine_error("[TEST] second after %s", engine_get_error());
    EXPECT_STREQ(engine_get_error(), "[TEST] second after [TEST] first");
    allocation_faults_arm(1, true);
    EXPECT_FALSE(engine_error("[TEST] %s", "third"));
    EXPECT_GT(call_faults_disarm(), 0);
    EXPECT_FALSE(engine_has_error()) << "the text of an earlier error is cleared";
    engine_error("[TEST] last");
    engine_clear_error();
    EXPECT_FALSE(engine_has_error());
    engine_error_attach(nullptr);
    const std::vector<std::string> logged = {
        "[TEST] x is 3", "[TEST] first", "[TEST] second after [TEST] first", "[TEST] third", "[TEST] last"};
    EXPECT_EQ(previous.errors(), logged);
}

} // namespace
