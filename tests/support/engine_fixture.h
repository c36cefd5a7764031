// The real engine on SDL's dummy video driver, the software renderer and dummy audio, in a working directory of its
// own, a frame at a time. Real SDL events go in, pixels come out.
#pragma once

#include "engine/engine_record.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_scancode.h>
#include <SDL3/SDL_surface.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct SurfaceDeleter {
    void operator()(SDL_Surface *surface) const { SDL_DestroySurface(surface); }
};
using Picture = std::unique_ptr<SDL_Surface, SurfaceDeleter>;

struct PictureBounds {
    int left, top, right, bottom; // inclusive; right below left: nothing there
    bool operator==(const PictureBounds &) const = default;
};
void PrintTo(const PictureBounds &bounds, std::ostream *out);

// Colours are compared without what stands for alpha.
SDL_Color pixel_at(const Picture &picture, int x, int y);
bool same_color(SDL_Color a, SDL_Color b);
PictureBounds bounds_of(const Picture &picture, SDL_Color color); // of the pixels of exactly this colour
int count_pixels(const Picture &picture, SDL_Color color);
int count_pixels(const Picture &picture, SDL_Color color, SDL_Rect area);
bool same_pixels(const Picture &a, const Picture &b); // in size and colour

class EngineTest : public ::testing::Test {
protected:
    // What a test changes before start(). Without vsync, frames do not wait.
    std::string config = "[graphics]\nvsync_enable = false\nshow_fps = false\nui_scale = 1\n";

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
    // Debug text in the last picture, at UI scale 1. A space at its end has to be there, too.
    static bool shows(float x, float y, SDL_Color color, const std::string &text, SDL_Color background);

    // Puts an event into SDL's queue, for the next frame.
    void key_down(SDL_Keycode key, SDL_Keymod mod = SDL_KMOD_NONE, bool repeat = false) const;
    static void hold(std::initializer_list<SDL_Scancode> keys); // these and no others, until the end of the test
    void mouse_move(int x, int y) const;                        // window coordinates, as below
    void mouse_down(int x, int y, Uint8 button = SDL_BUTTON_LEFT) const;
    void mouse_up(int x, int y, Uint8 button = SDL_BUTTON_LEFT) const;
    void gamepad_down(SDL_GamepadButton button) const;

    TemporaryDirectory directory;
    LogCapture log;

private:
    void mouse_button(SDL_EventType type, int x, int y, Uint8 button) const;

    bool running_ = false;
    std::map<std::string, std::string> drivers_;
};
