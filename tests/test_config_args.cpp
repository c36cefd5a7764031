// The command line.

#include "app/args.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class ArgsTest : public ::testing::Test {
protected:
    ~ArgsTest() override { parse({}); }

    ArgsResult parse(std::vector<std::string> words) {
        kept_ = std::move(words);
        kept_.insert(kept_.begin(), "LumarindEngine");
        std::vector<char *> argv;
        for (std::string &word : kept_) argv.push_back(word.data());
        ::testing::internal::CaptureStdout();
        const ArgsResult result = args_parse(static_cast<int>(argv.size()), argv.data());
        output = ::testing::internal::GetCapturedStdout();
        return result;
    }

    LogCapture log;
    std::string output;

private:
    std::vector<std::string> kept_;
};

TEST_F(ArgsTest, TakesEveryOptionAndTheLastOfRepeatedOnes) {
    ASSERT_EQ(
        parse(
            {"--screen", "first", "--screen", "--help", "--capture-at", "12abc", "--capture-every", "7", "--quit-at",
             " +9", "--window-size", "800x450", "--ui-scale", "8", "--no-config-save"}),
        ARGS_RUN);
    EXPECT_STREQ(args_start_screen(), "--help") << "a value is the next word, whatever it looks like";
    EXPECT_EQ(args_capture_at(), 12);
    EXPECT_EQ(args_capture_every(), 7);
    EXPECT_EQ(args_quit_at(), 9);
    EXPECT_EQ(args_ui_scale(), 8);
    EXPECT_FALSE(args_config_save_enabled());
    int width = 0, height = 0;
    ASSERT_TRUE(args_window_size(&width, &height));
    EXPECT_EQ(width, 800);
    EXPECT_EQ(height, 450);

    ASSERT_EQ(parse({}), ARGS_RUN) << "a new parse starts from nothing";
    EXPECT_TRUE(args_config_save_enabled());
    EXPECT_EQ(args_start_screen(), nullptr);
    EXPECT_EQ(args_capture_at() + args_capture_every() + args_quit_at() + args_ui_scale(), 0);
    EXPECT_FALSE(args_window_size(&width, &height));
    EXPECT_EQ(width, 800) << "nothing is written when there is nothing to say";
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(ArgsTest, RefusesBadWordsWithAMessageAndTheUsage) {
    const struct {
        std::vector<std::string> words;
        std::string message;
    } cases[] = {
        {{"--quit-at"}, "[ARGS] Missing value for: --quit-at"},
        {{"--screen"}, "[ARGS] Missing value for: --screen"},
        {{"--capture-every", "0"}, "[ARGS] --capture-every expects a positive number: 0"},
        {{"--capture-at", "-3"}, "[ARGS] --capture-at expects a positive number: -3"},
        {{"--quit-at", "soon"}, "[ARGS] --quit-at expects a positive number: soon"},
        {{"--window-size", "800X450"}, "[ARGS] --window-size expects WxH, e.g. 800x450: 800X450"},
        {{"--window-size", "800"}, "[ARGS] --window-size expects WxH, e.g. 800x450: 800"},
        {{"--window-size", "0x450"}, "[ARGS] --window-size expects WxH, e.g. 800x450: 0x450"},
        {{"--window-size", "800x-1"}, "[ARGS] --window-size expects WxH, e.g. 800x450: 800x-1"},
        {{"--ui-scale", "9"}, "[ARGS] --ui-scale expects 1 to 8: 9"},
        {{"--ui-scale", "0"}, "[ARGS] --ui-scale expects a positive number: 0"},
        {{"--Screen", "x"}, "[ARGS] Unknown argument: --Screen"},
        {{"--screen=x"}, "[ARGS] Unknown argument: --screen=x"},
        {{""}, "[ARGS] Unknown argument: "},
    };
    for (const auto &c : cases) {
        log.lines.clear();
        EXPECT_EQ(parse(c.words), ARGS_FAILED) << c.message;
        EXPECT_EQ(log.errors(), std::vector<std::string>{c.message});
        EXPECT_EQ(output.find("Usage: LumarindEngine [options]\n\n  --no-config-save"), 0u) << c.message;
    }
}

TEST_F(ArgsTest, HelpEndsTheParsingAtOnce) {
    for (const char *help : {"-h", "--help"}) {
        EXPECT_EQ(parse({"--quit-at", "3", help, "--nonsense"}), ARGS_HELP);
        EXPECT_NE(
            output.find("  --ui-scale <n>        Override the UI scale (1 to 8), without saving it.\n"), output.npos);
        EXPECT_EQ(output.substr(output.size() - 45), "  -h, --help            Show this help and exit.\n" + 4);
    }
    EXPECT_TRUE(log.lines.empty());
}

} // namespace
