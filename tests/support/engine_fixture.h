// Fixture: runs the real engine frame by frame on SDL's dummy video and audio drivers and the software renderer, in a
// temporary working directory. Input is real SDL events, output is pixels.
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

Uint64 number_from_environment(const char *name, Uint64 fallback); // the fallback also for an empty value

class EngineTest : public ::testing::Test {
protected:
    // Configuration, changed by tests before start(). Without vsync frames do not wait.
    std::string config = "[graphics]\nvsync_enable = false\nshow_fps = false\nui_scale = 1\n";

    const Game *tested_game = &demo_game; // the game run by start()

    void SetUp() override;
    void TearDown() override; // stops the program if it runs

    // Call before start(); the dummy drivers are the default.
    void choose_driver(const std::string &hint, const std::string &driver) { drivers_[hint] = driver; }
    bool start(const std::vector<std::string> &arguments = {}); // restarts; false: it failed, or printed its help
    bool start_screen(const std::string &screen, const std::string &size = "800x450"); // and runs one frame
    void stop();
    bool frame(double seconds = 0); // runs a frame this long after the last one; false: the loop has ended
    void frames(int count, double seconds = 0);
    Picture picture() const;           // the last frame presented
    Picture shown(double seconds = 0); // runs a frame and returns it
    void resize(int width, int height) const;

    // See call_faults.h: of the set-up, and of a tick, of each of the running game's first screens.
    std::string screens_with_failing_calls(int count);

    // Plays random input on each of the tested game's first screens. Returns a text with the hash of what they draw,
    // play and log, for every 30 steps. Without the panel and captures, which show times.
    std::string random_play(int screens, int steps);

    // Plays a script of words separated by spaces. Events are pushed to SDL's queue, for the next frame.
    //   30 2.5            frames of 1/60 s; a fraction adds a shorter frame
    //   7s 0.1s           seconds, in frames of up to 0.25 s: the same fixed steps with less drawing
    //   Down Left_Shift   key presses by SDL's key names, with "_" for spaces; key:1 if the name is a number
    //   ~Down ctrl:Q      an auto-repeat; a press with Ctrl
    //   +Right -Right     holds a key, releases it
    //   pad:a             a button event without a controller
    //   pad:plug pad:a=1 pad:leftx=.5 pad:unplug  a virtual controller
    //   move:3,4 click:3,4 rclick:3,4 drop:3,4    the mouse in window coordinates; drop presses without releasing
    //   wheel:0,1         turns the mouse wheel by a line
    //   size:640x360      resizes the window
    void play(const std::string &script);
    static void hold(const std::set<SDL_Scancode> &keys); // exactly these keys, until the end of the test
    static void push_event(Uint32 type);                  // an event without data

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
