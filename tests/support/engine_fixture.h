// The real engine on SDL's dummy video driver, the software renderer and dummy audio, in a working directory of its
// own, a frame at a time. Real SDL events go in, pixels come out.
#pragma once

#include "app/demo_game.h"
#include "engine/engine_record.h"
#include "support/log_capture.h"
#include "support/picture.h"
#include "support/temporary_directory.h"
#include "support/virtual_gamepad.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_scancode.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

// For SDL's copy of the environment, and for the copies it makes later. Null: unset.
void set_environment(const char *name, const char *value);

class EngineTest : public ::testing::Test {
protected:
    // What a test changes before start(). Without vsync, frames do not wait.
    std::string config = "[graphics]\nvsync_enable = false\nshow_fps = false\nui_scale = 1\n";

    const Game *played = &demo_game; // by start()

    void SetUp() override;
    void TearDown() override; // stops the program when it runs

    // Before start(); the dummy ones are chosen already.
    void choose_driver(const std::string &hint, const std::string &driver) { drivers_[hint] = driver; }
    bool start(const std::vector<std::string> &arguments = {}); // anew; false: it failed, or showed its help
    bool start_screen(const std::string &screen, const std::string &size = "800x450"); // and draws a frame of it
    void stop();
    bool frame(double seconds = 0); // after so much time since the last one; false: the loop is over
    void frames(int count, double seconds = 0);
    Picture picture() const;           // what was presented last
    Picture shown(double seconds = 0); // after one more frame
    void resize(int width, int height) const;

    // Plays a user by script, words separated by blanks. Events reach SDL's queue, for the next frame.
    //   30 2.5            frames of a sixtieth of a second; a last, shorter one for the fraction
    //   7s 0.1s           seconds, in frames of up to a quarter second: the same steps, and little to draw
    //   Down Left_Shift   key presses, as SDL names keys, with "_" for blanks; key:1 where the name is a number
    //   ~Down ctrl:Q      an automatic repeat; a press with Ctrl
    //   +Right -Right     a key held from now on, and released
    //   pad:a             a button of no particular controller
    //   pad:plug pad:a=1 pad:leftx=.5 pad:unplug  a controller of the script's own
    //   move:3,4 click:3,4 rclick:3,4 drop:3,4    the mouse in window coordinates; drop is a button down alone
    //   size:640x360      resizes the window
    void play(const std::string &script);
    static void hold(const std::set<SDL_Scancode> &keys); // these and no others, until the end of the test
    static void push_event(Uint32 type);                  // one that carries nothing

    TemporaryDirectory directory;
    LogCapture log;

private:
    void play_word(const std::string &word);
    void play_key(std::string word);
    void play_pad(const std::string &control);

    std::set<SDL_Scancode> held_;
    std::unique_ptr<VirtualGamepad> pad_;
    bool running_ = false;
    std::map<std::string, std::string> drivers_;
};
