// The program itself, as a process with a real window: keys, mouse, closing, resizing, exit codes and the files it
// leaves. Runs under an X server of its own (tools/dev/with_xvfb.sh); xdotool plays the user.

#include "support/desktop.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_filesystem.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

class ProgramTest : public ::testing::Test {
protected:
    void SetUp() override {
        setenv("SDL_VIDEO_DRIVER", "x11", 1);
        setenv("SDL_RENDER_DRIVER", "software", 1);
        setenv("SDL_FRAMEBUFFER_ACCELERATION", "0", 1);
        directory.link_assets();
    }
    void TearDown() override {
        if (HasFailure()) std::fprintf(stderr, "--- the program's log:\n%s", log().c_str());
        if (child_ <= 0) return;
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }

    void launch(const std::vector<std::string> &arguments) {
        std::vector<std::string> words = arguments;
        words.insert(words.begin(), std::string(SDL_GetBasePath()) + "LumarindEngine");
        std::vector<char *> argv;
        for (std::string &word : words) argv.push_back(word.data());
        argv.push_back(nullptr);
        child_ = fork();
        ASSERT_GE(child_, 0);
        if (child_ > 0) return;
        const int output = open("output.txt", O_WRONLY | O_CREAT | O_TRUNC, 0644);
        dup2(output, STDOUT_FILENO);
        dup2(output, STDERR_FILENO);
        execv(argv[0], argv.data());
        _exit(126);
    }

    // Waits for the end, doing something again and again meanwhile: a key can come before a window listens.
    // -1: the end never came, -2: a signal was the end.
    int exit_code(const std::function<void()> &meanwhile = [] {}) {
        int status = 0;
        const auto ended = [&] {
            meanwhile();
            return waitpid(child_, &status, WNOHANG) == child_;
        };
        if (!wait_until(ended)) return -1;
        child_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -2;
    }

    void terminate() const { kill(child_, SIGTERM); }

    static std::string log() { return read_file("lumarind-engine.log"); }
    static bool logged(const std::string &text) {
        return wait_until([&] { return log().find(text) != std::string::npos; });
    }
    bool window_up() { // the menu is there and listens
        if (!logged("GAME STATE HANDLED: ")) return false;
        window_ = find_window("Lumarind Engine v0.0.1");
        xdotool("windowfocus --sync " + window_);
        return !window_.empty();
    }
    std::string window() const { return window_; }

    TemporaryDirectory directory;

private:
    pid_t child_ = 0;
    std::string window_;
};

TEST_F(ProgramTest, KeysOpenAScreenComeBackAndQuitAndTheSizeIsSaved) {
    launch({});
    ASSERT_TRUE(window_up());
    xdotool("key Down");
    xdotool("key Return");
    ASSERT_TRUE(logged("GAME STATE HANDLED: 5"));
    xdotool("key Escape");
    ASSERT_TRUE(logged("GAME STATE: 5 -> 3"));
    xdotool("windowsize --sync " + window() + " 611 377");
    std::this_thread::sleep_for(std::chrono::milliseconds(300)); // until the program has seen it
    xdotool("key ctrl+q");
    EXPECT_EQ(exit_code(), 0);
    EXPECT_NE(
        log().find("[CONFIG] Config file saved: config/lumarind-engine.ini\n[ENGINE] SDL3 shutdown\n"), log().npos);
    EXPECT_NE(read_file("config/lumarind-engine.ini").find("width = 611\nheight = 377\n"), std::string::npos);
}

TEST_F(ProgramTest, TheMouseOpensAScreenAndExit) {
    launch({"--no-config-save", "--window-size", "800x600", "--ui-scale", "1"});
    ASSERT_TRUE(window_up());
    xdotool("mousemove --window " + window() + " 60 125");
    xdotool("click 3");
    xdotool("click 1");
    ASSERT_TRUE(logged("GAME STATE HANDLED: 4"));
    xdotool("key Escape");
    ASSERT_TRUE(logged("GAME STATE: 4 -> 3"));
    ASSERT_TRUE(wait_until([] { return log().rfind("GAME STATE HANDLED: 3") > log().find("GAME STATE: 4 -> 3"); }));
    xdotool("mousemove --window " + window() + " 60 475"); // Exit, the eleventh
    xdotool("click 1");
    EXPECT_EQ(exit_code(), 0);
    EXPECT_FALSE(std::filesystem::exists("config"));
}

TEST_F(ProgramTest, HelpAndBadStartsHaveTheirExitCodes) {
    launch({"--help"});
    EXPECT_EQ(exit_code(), 0);
    EXPECT_EQ(read_file("output.txt").find("Usage: LumarindEngine [options]\n"), 0u);

    launch({"--screen", "nowhere"}); // the box waits for its answer
    ASSERT_TRUE(logged("ERROR: [MAIN] Unknown screen: nowhere"));
    std::string windows; // the root window's id and the box's, whose name is of a kind that xdotool does not read
    ASSERT_TRUE(wait_until([&] {
        windows = output_of("xdotool search --onlyvisible --maxdepth 1 '.*' 2>/dev/null");
        return std::count(windows.begin(), windows.end(), '\n') == 2;
    }));
    const size_t second = windows.find('\n') + 1;
    const std::string box = windows.substr(second, windows.size() - second - 1);
    EXPECT_EQ(exit_code([&] { xdotool("key --window " + box + " Return"); }), 1);
}

TEST_F(ProgramTest, ClosingTheWindowAndBeingAskedToEndQuit) {
    for (const bool by_window : {true, false}) {
        launch({"--screen", "texture-demo"});
        ASSERT_TRUE(window_up());
        if (by_window) {
            ASSERT_TRUE(close_window(window()));
        } else {
            terminate();
        }
        EXPECT_EQ(exit_code(), 0) << (by_window ? "window" : "signal");
        EXPECT_NE(log().find("GAME STATE: 5 -> 2\n"), log().npos);
        std::filesystem::remove("lumarind-engine.log");
    }
}

} // namespace
