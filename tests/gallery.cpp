// Takes the pictures of docs/gallery from scripted input, always the same: one of each screen at a moment worth a look,
// and the frames of a short animation of the castle being played. ./dev gallery runs it.
//   LUMARIND_GALLERY  the folder the pictures go to, as BMP

#include "support/castle_routes.h"
#include "support/engine_fixture.h"
#include "support/virtual_gamepad.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr double STEP = 1.0001 / 60; // of a frame that runs exactly one fixed step
constexpr int STEPS_PER_PICTURE = 3; // of the animation: 20 pictures a second

// For the animation, and unlike the routes not in a hurry. Digits attack, u is the special attack.
constexpr const char *SHOW = "..rrrrrrrrRrrrrrrrrrrr.ll1......rr.3...................l.u................";

class Gallery : public EngineTest {
protected:
    void SetUp() override {
        const char *wanted = std::getenv("LUMARIND_GALLERY");
        if (!wanted) GTEST_SKIP() << "LUMARIND_GALLERY names no folder";
        folder_ = std::filesystem::absolute(wanted);
        EngineTest::SetUp();
    }
    void save(const std::string &name) const {
        const std::string path = (folder_ / (name + ".bmp")).string();
        ASSERT_TRUE(SDL_SaveBMP(picture().get(), path.c_str())) << path << ": " << SDL_GetError();
        std::printf("%s\n", path.c_str());
    }
    // Most of the time nobody looks: six steps to a frame.
    void play(double seconds) {
        int steps = static_cast<int>(std::lround(seconds * 60));
        for (; steps >= 6; steps -= 6) frame(6 * STEP);
        for (; steps > 0; steps--) frame(STEP);
    }
    // A letter of a route, or of SHOW, in the platformer.
    void press(char letter) const {
        const PlayerIntent intent = route_intent(letter);
        if (intent.move_x > 0) {
            hold({SDL_SCANCODE_RIGHT});
        } else if (intent.move_x < 0) {
            hold({SDL_SCANCODE_LEFT});
        } else {
            hold({});
        }
        if (intent.jump) key_down(SDLK_SPACE);
        if (intent.roll) key_down(SDLK_X);
        constexpr char MORE[] = "123u";
        constexpr SDL_Keycode KEYS[] = {SDLK_J, SDLK_K, SDLK_L, SDLK_U};
        const char *found = std::strchr(MORE, letter);
        if (found) key_down(KEYS[found - MORE]);
    }
    void play_route(const char *letters) {
        for (; *letters; letters++) {
            press(*letters);
            play(0.1); // a press acts in the first of its steps, as it should
        }
        hold({});
    }
    void screen(const char *name) { ASSERT_TRUE(start_screen(name, "1280x720")); }

private:
    std::filesystem::path folder_;
};

TEST_F(Gallery, ScreensThatRunByThemselves) {
    struct Moment {
        const char *name;
        double seconds;
    };
    for (const Moment &moment :
         {Moment{"main-menu", 0.5},
          {"text-demo", 0.5},
          {"texture-demo", 1.4},
          {"tilemap-demo", 6.6},
          {"logical-demo", 9.6},
          {"audio-demo", 0.5}}) {
        screen(moment.name);
        play(moment.seconds);
        save(moment.name);
    }
}

TEST_F(Gallery, TheKnight) {
    screen("sprite-demo");
    for (int i = 0; i < 10; i++) key_down(SDLK_RIGHT);
    frame(STEP);
    for (int i = 0; i < 9; i++) key_down(SDLK_PERIOD);
    frame(STEP);
    save("sprite-demo");
}

TEST_F(Gallery, Controls) {
    screen("input-demo");
    for (int i = 0; i < 5; i++) {
        key_down(SDLK_SPACE);
        play(0.2);
    }
    key_down(SDLK_D);
    hold({SDL_SCANCODE_D});
    frame(STEP);
    save("input-demo");
    hold({});

    screen("gamepad-demo");
    {
        const VirtualGamepad pad("Virtual Gamepad");
        play(0.2);
        pad.set(SDL_GAMEPAD_BUTTON_SOUTH, true);
        pad.set(SDL_GAMEPAD_BUTTON_LEFT_SHOULDER, true);
        pad.set(SDL_GAMEPAD_AXIS_LEFTX, 0.8f);
        pad.set(SDL_GAMEPAD_AXIS_LEFTY, -0.5f);
        pad.set(SDL_GAMEPAD_AXIS_RIGHT_TRIGGER, 0.7f);
        play(0.2);
        save("gamepad-demo");
    }
}

TEST_F(Gallery, TheWallInFlight) {
    screen("physics-demo");
    hold({SDL_SCANCODE_RIGHT});
    play(0.6);
    for (int i = 0; i < 5; i++) {
        key_down(SDLK_SPACE);
        play(0.15);
    }
    save("physics-demo");
}

TEST_F(Gallery, TheCastle) {
    screen("platformer-demo");
    const std::string tower(ROUTE_BY_THE_TOWER, std::strlen(ROUTE_BY_THE_TOWER) - 93);
    play_route(tower.c_str());
    press('1');
    play(0.15);
    save("platformer-tower");

    screen("platformer-demo");
    play_route(ROUTE_BY_THE_TOWER);
    play_route("....u........");
    save("platformer-demo");
}

TEST_F(Gallery, TheAnimation) {
    ASSERT_TRUE(start_screen("platformer-demo", "800x450"));
    int steps = 0, pictures = 0;
    for (const char *letter = SHOW; *letter; letter++) {
        press(*letter);
        for (int i = 0; i < ROUTE_STEPS_PER_LETTER; i++, steps++) {
            frame(STEP);
            if (steps % STEPS_PER_PICTURE != 0) continue;
            char name[32];
            std::snprintf(name, sizeof(name), "play-%03d", pictures++);
            save(name);
        }
    }
}

} // namespace
