// Command-line options. What is refused, and with which message, is covered by the digests of the fuzz seeds.

#include "app/args.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class ArgsTest : public ::testing::Test {
protected:
    ~ArgsTest() override { parse({}); }

    ArgsResult parse(std::vector<std::string> words) {
        argv_strings = std::move(words);
        argv_strings.insert(argv_strings.begin(), "LumarindEngine");
        std::vector<char *> argv;
        for (std::string &word : argv_strings) argv.push_back(word.data());
        ::testing::internal::CaptureStdout();
        const ArgsResult result = args_parse(static_cast<int>(argv.size()), argv.data());
        output = ::testing::internal::GetCapturedStdout();
        return result;
    }

    LogCapture log;
    std::string output;
    std::vector<std::string> argv_strings; // args borrows the strings
};

TEST_F(ArgsTest, ParsesEveryOptionAndLastOccurrenceWins) {
    ASSERT_EQ(
        parse(
            {"--screen", "first", "--screen", "--help", "--capture-at", "12abc", "--capture-every", "7", "--quit-at",
             " +9", "--window-size", "800x450", "--ui-scale", "8", "--no-config-save"}),
        ARGS_RUN);
    EXPECT_STREQ(args_start_screen(), "--help") << "the next word is the value, even if it looks like an option";
    EXPECT_TRUE(args_capture_at() == 12 && args_capture_every() == 7);
    EXPECT_TRUE(args_quit_at() == 9 && args_ui_scale() == 8);
    EXPECT_FALSE(args_config_save_enabled());
    int width = 0, height = 0;
    ASSERT_TRUE(args_window_size(&width, &height));
    EXPECT_TRUE(width == 800 && height == 450 && args_window_size(nullptr, nullptr));
    int number = 0; // too large numbers wrap around
    EXPECT_TRUE(args_take_positive_int("", "4294967297", &number) && number == 1);

    ASSERT_EQ(parse({}), ARGS_RUN) << "parsing resets earlier options";
    EXPECT_TRUE(args_config_save_enabled() && !args_start_screen());
    EXPECT_EQ(args_capture_at() + args_capture_every() + args_quit_at() + args_ui_scale(), 0);
    EXPECT_FALSE(args_window_size(&width, &height));
    EXPECT_EQ(width, 800) << "not written if not given";
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(ArgsTest, HelpStopsParsingAndPrintsUsageAsInReadme) {
    const std::string readme = read_file(README);
    const size_t begin = readme.find("LumarindEngine [options]"), end = readme.find("```", begin);
    for (const char *help : {"-h", "--help"}) {
        EXPECT_EQ(parse({"--quit-at", "3", help, "--nonsense"}), ARGS_HELP);
        EXPECT_EQ(output, "Usage: " + readme.substr(begin, end - begin));
    }
    EXPECT_TRUE(log.lines.empty());
}

} // namespace
