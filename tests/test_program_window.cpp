// The program as a process with a real window: keys, mouse, resizing, termination, exit codes and files. Runs under its
// own X server (tools/dev/with_xvfb.sh), with input from xdotool.

#include "support/desktop.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_process.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <thread>
#include <vector>

namespace {

class ProgramTest : public ::testing::Test {
protected:
    void SetUp() override {
        SDL_Environment *environment = SDL_GetEnvironment();
        SDL_SetEnvironmentVariable(environment, "SDL_VIDEO_DRIVER", "x11", true);
        SDL_SetEnvironmentVariable(environment, "SDL_RENDER_DRIVER", "software", true);
        SDL_SetEnvironmentVariable(environment, "SDL_FRAMEBUFFER_ACCELERATION", "0", true);
        directory.link_assets();
    }
    ~ProgramTest() override { SDL_KillProcess(process.get(), true); }

    void launch(const std::vector<const char *> &options) {
        const std::string program = std::string(SDL_GetBasePath()) + "LumarindEngine";
        std::vector<const char *> words = {program.c_str()};
        words.insert(words.end(), options.begin(), options.end());
        words.push_back(nullptr);
        process.reset(SDL_CreateProcess(words.data(), true), SDL_DestroyProcess);
        ASSERT_NE(process, nullptr) << SDL_GetError();
    }

    // Waits for the exit and repeats an action until then, because input may arrive before the window is ready.
    // Returns -255 on a timeout, the negative signal number if killed.
    int exit_code(const std::function<void()> &meanwhile = [] {}) {
        int code = -255;
        wait_until([&] {
            meanwhile();
            return SDL_WaitProcess(process.get(), false, &code);
        });
        return code;
    }

    static std::string log() { return read_file("lumarind-engine.log"); }
    static bool logged(const std::string &text) {
        return wait_until([&] { return log().find(text) != std::string::npos; });
    }
    bool window_up() { // waits until the menu is shown and accepts input
        if (!logged("GAME STATE HANDLED: ")) return false;
        window = find_window("Lumarind Engine v0.0.1");
        xdotool("windowfocus --sync " + window);
        return !window.empty();
    }

    TemporaryDirectory directory;
    std::shared_ptr<SDL_Process> process;
    std::string window; // its id
};

TEST_F(ProgramTest, MouseAndKeysOpenScreensQuitAndSizeIsSaved) {
    write_file("config/lumarind-engine.ini", "[graphics]\nui_scale = 1\n[window]\nwidth = 800\nheight = 600\n");
    launch({});
    ASSERT_TRUE(window_up());
    xdotool("mousemove --window " + window + " 60 125");
    xdotool("click 3");
    xdotool("click 1");
    ASSERT_TRUE(logged("GAME STATE HANDLED: 4"));
    xdotool("key Escape");
    ASSERT_TRUE(logged("GAME STATE: 4 -> 3"));
    ASSERT_TRUE(wait_until([] { return log().rfind("GAME STATE HANDLED: 3") > log().find("GAME STATE: 4 -> 3"); }));
    xdotool("key Down");
    xdotool("key Return");
    ASSERT_TRUE(logged("GAME STATE HANDLED: 5"));
    xdotool("windowsize --sync " + window + " 611 377");
    std::this_thread::sleep_for(std::chrono::milliseconds(300)); // until the program has handled it
    xdotool("key ctrl+q");
    EXPECT_EQ(exit_code(), 0);
    EXPECT_NE(
        log().find("[CONFIG] Config file saved: config/lumarind-engine.ini\n[ENGINE] SDL3 shutdown\n"), log().npos);
    EXPECT_NE(read_file("config/lumarind-engine.ini").find("width = 611\nheight = 377\n"), std::string::npos);
}

TEST_F(ProgramTest, HelpFailedStartAndSignalsSetExitCode) {
    launch({"--help"});
    int code = -1;
    const std::shared_ptr<void> output(SDL_ReadProcess(process.get(), nullptr, &code), SDL_free);
    EXPECT_EQ(code, 0);
    EXPECT_TRUE(std::string(static_cast<const char *>(output.get())).starts_with("Usage: LumarindEngine [options]\n"));

    launch({"--screen", "nowhere"}); // the message box waits
    ASSERT_TRUE(logged("ERROR: [MAIN] Unknown screen: nowhere"));
    std::string windows; // ids of the root window and the box, whose name xdotool cannot read
    ASSERT_TRUE(wait_until([&] {
        windows = output_of("xdotool search --onlyvisible --maxdepth 1 '.*' 2>/dev/null");
        return std::count(windows.begin(), windows.end(), '\n') == 2;
    }));
    const std::string box = windows.substr(windows.find('\n') + 1);
    EXPECT_EQ(exit_code([&] { xdotool("key --window " + box.substr(0, box.size() - 1) + " Return"); }), 1);

    std::filesystem::remove("lumarind-engine.log");
    launch({"--no-config-save", "--screen", "texture-demo"});
    ASSERT_TRUE(window_up());
    SDL_KillProcess(process.get(), false); // a termination request, handled like the close button
    EXPECT_EQ(exit_code(), 0);
    EXPECT_NE(log().find("GAME STATE: 5 -> 2\n"), log().npos);
    EXPECT_FALSE(std::filesystem::exists("config"));
}

} // namespace
