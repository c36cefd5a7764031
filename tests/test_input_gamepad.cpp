// Controllers plugged into SDL and out again, through the running program.

#include "input/gamepad.h"
#include "input/input.h"
#include "support/allocation_faults.h"
#include "support/engine_fixture.h"
#include "support/virtual_gamepad.h"

#include <SDL3/SDL_hints.h>

namespace {

constexpr SDL_Color BACKGROUND = {20, 24, 30, 255}, IDLE = {42, 49, 60, 255}, ACTIVE = {120, 216, 254, 255},
                    TEXT = {208, 220, 230, 255}, DIM = {112, 124, 136, 255};

class GamepadTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        choose_driver(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    }
    bool start_demo() { return start_screen("gamepad-demo"); }
    static int lit(const Picture &picture, int x, int y, int width, int height) { // pixels of a rectangle
        return count_pixels(picture, ACTIVE, {x, y, width, height});
    }
};

// --- pure calculations ---

TEST(GamepadMath, DeadzonesStretchWhatLiesBeyond) {
    EXPECT_EQ(gamepad_axis_normalise(-32768), -1.0f);
    EXPECT_EQ(gamepad_axis_normalise(32767), 1.0f);
    for (const int raw : {-32768, -1, 0}) EXPECT_EQ(gamepad_trigger_normalise(static_cast<Sint16>(raw)), 0.0f);
    EXPECT_EQ(gamepad_trigger_normalise(32767), 1.0f);
    const struct {
        float value, deadzone, expected;
    } axis[] = {{0.15f, 0.15f, 0}, {0.575f, 0.15f, 0.5f}, {-1, 0.15f, -1}, {1, 1, 0}, {0, 0, 0}, {0.3f, 0, 0.3f}};
    for (const auto &c : axis) EXPECT_NEAR(gamepad_axis_deadzone(c.value, c.deadzone), c.expected, 1e-6) << c.value;
    const struct {
        float x, y, deadzone, out_x, out_y;
    } stick[] = {{0.6f, 0.8f, 0.15f, 0.6f, 0.8f}, {1, 1, 0.15f, 0.70710678f, 0.70710678f},
                 {0.1f, 0.1f, 0.15f, 0, 0},       {0, 0, 0, 0, 0},
                 {-0.575f, 0, 0.15f, -0.5f, 0},   {1, 0, 1, 0, 0}};
    for (const auto &c : stick) {
        float x = 9, y = 9;
        gamepad_stick_deadzone(c.x, c.y, c.deadzone, &x, &y);
        EXPECT_NEAR(x, c.out_x, 1e-6) << c.x << ", " << c.y;
        EXPECT_NEAR(y, c.out_y, 1e-6) << c.x << ", " << c.y;
        gamepad_stick_deadzone(c.x, c.y, c.deadzone, nullptr, nullptr);
    }
}

// --- plugging ---

TEST_F(GamepadTest, WithoutOneEverythingIsZero) {
    ASSERT_TRUE(start_demo());
    EXPECT_TRUE(log.has("[GAMEPAD] No controller connected"));
    EXPECT_STREQ(gamepad_name(), "No controller");
    EXPECT_STREQ(gamepad_type_name(), "none");
    EXPECT_FALSE(gamepad_connected() || gamepad_button(SDL_GAMEPAD_BUTTON_SOUTH) || gamepad_rumble(1, 1, 1));
    EXPECT_EQ(gamepad_axis(SDL_GAMEPAD_AXIS_LEFTX), 0);
    EXPECT_EQ(gamepad_button_label(SDL_GAMEPAD_BUTTON_SOUTH), SDL_GAMEPAD_BUTTON_LABEL_UNKNOWN);
    key_down(SDLK_R);
    frame();
    EXPECT_TRUE(shows(16, 54, DIM, "NO CONTROLLER   No controller   [none]", BACKGROUND));
    EXPECT_TRUE(shows(480, 84, DIM, "AXIS            RAW     VALUE", BACKGROUND));
    EXPECT_TRUE(shows(480, 156, DIM, "R TRIGGER         -        -", BACKGROUND));
    EXPECT_TRUE(shows(480, 180, DIM, "AFTER DEADZONE 0.15", BACKGROUND));
    EXPECT_TRUE(shows(480, 204, TEXT, "RIGHT  +0.000 +0.000  mag 0.000", BACKGROUND));
    EXPECT_TRUE(shows(480, 240, DIM, "none", BACKGROUND));
    EXPECT_TRUE(shows(16, 426, DIM, "R  rumble test        ESC  back to menu", BACKGROUND)) << "nothing was sent";
}

TEST_F(GamepadTest, TheSecondIsIgnoredUntilTheFirstGoes) {
    ASSERT_TRUE(start_demo());
    VirtualGamepad first("First Pad");
    frame();
    VirtualGamepad second("Second Pad");
    frame();
    EXPECT_TRUE(log.has("[GAMEPAD] Connected: First Pad (standard)"));
    EXPECT_TRUE(log.has(
        "[GAMEPAD] Ignoring additional controller " + std::to_string(second.id) + ", First Pad is already active"));
    log.lines.clear();
    first.unplug();
    frame();
    EXPECT_TRUE(log.has("[GAMEPAD] Disconnected: First Pad") && log.has("[GAMEPAD] Connected: Second Pad (standard)"));
    VirtualGamepad third("Third Pad");
    frame();
    log.lines.clear();
    third.unplug();
    frame();
    EXPECT_TRUE(log.lines.empty()) << "one that was never opened goes silently";
    second.unplug();
    frame();
    EXPECT_FALSE(gamepad_connected());
    gamepad_open(4711);
    EXPECT_TRUE(log.has("[GAMEPAD] Could not open controller 4711, error: "));
}

TEST_F(GamepadTest, ALeavingControllerLeavesNothingHeld) {
    ASSERT_TRUE(start_screen("input-demo"));
    VirtualGamepad pad("Pad");
    frame();
    pad.set(SDL_GAMEPAD_AXIS_LEFTX, 1.0f);
    pad.set(SDL_GAMEPAD_BUTTON_SOUTH, true);
    frame();
    EXPECT_TRUE(input_held(INPUT_ACTION_RIGHT) && input_held(INPUT_ACTION_JUMP));
    EXPECT_TRUE(input_pressed(INPUT_ACTION_RIGHT) && input_pressed(INPUT_ACTION_JUMP));
    pad.unplug();
    frame();
    for (int action = 0; action < INPUT_ACTION_COUNT; action++) {
        EXPECT_FALSE(input_held(action) || input_pressed(action)) << action;
    }
}

TEST_F(GamepadTest, TheDeadzoneIsClampedOnce) {
    const std::pair<const char *, float> cases[] = {
        {"-0.5", 0}, {"0.95", 0.9f}, {"0.9", 0.9f}, {"nan", 0}, {"0.2", 0.2f}};
    for (const auto &[text, expected] : cases) {
        config += std::string("[gamepad]\ndeadzone = ") + text + "\n";
        ASSERT_TRUE(start_demo());
        EXPECT_EQ(gamepad_deadzone(), expected) << text;
    }
}

TEST_F(GamepadTest, MappingsBesideTheConfigurationAreUsedAndBrokenOnesReported) {
    const char *path = "config/gamecontrollerdb.txt";
    write_file(path, "# a comment\n03000000abcd0000cdef000000000000,Odd Pad,a:b3,b:b1,platform:Linux,\n");
    ASSERT_TRUE(start_demo());
    EXPECT_TRUE(log.has("[GAMEPAD] Controller mappings added: 1 from config/gamecontrollerdb.txt"));
    for (const std::string &noise : {std::string("no mapping at all\n"), std::string(5000, '\xEE'), std::string()}) {
        write_file(path, noise);
        ASSERT_TRUE(start_demo());
        EXPECT_TRUE(log.has("[GAMEPAD] No controller mapping for this platform in: config/gamecontrollerdb.txt"));
        log.lines.clear();
    }
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    ASSERT_TRUE(start_demo());
    EXPECT_TRUE(log.has("[GAMEPAD] Could not read controller mappings: config/gamecontrollerdb.txt, error: "));
}

// --- the gamepad screen ---

TEST_F(GamepadTest, TheDiagramLightsUp) {
    ASSERT_TRUE(start_demo());
    VirtualGamepad pad("Pad");
    frame();
    frame();
    const Picture rest = picture();
    EXPECT_EQ(lit(rest, 36, 84, 74, 18), 0) << "LB";
    EXPECT_GT(lit(rest, 16, 54, 100, 8), 0) << "CONNECTED";
    EXPECT_GT(lit(rest, 161, 275, 10, 10), 30) << "the left stick's dot at its centre";

    pad.set(SDL_GAMEPAD_BUTTON_LEFT_SHOULDER, true);
    pad.set(SDL_GAMEPAD_BUTTON_SOUTH, true);
    pad.set(SDL_GAMEPAD_AXIS_RIGHT_TRIGGER, 0.5f);
    pad.set(SDL_GAMEPAD_AXIS_LEFTX, 0.5f);
    frame();
    const Picture used = picture();
    EXPECT_GT(lit(used, 36, 84, 74, 18), 900);
    EXPECT_GT(lit(used, 356, 210, 32, 32), 500) << "A";
    const int half_trigger = lit(used, 362, 111, 74, 12);
    EXPECT_NEAR(half_trigger, 37 * 12, 60) << "half of RT, but for its label";
    EXPECT_EQ(lit(used, 161, 275, 10, 10), 0);
    EXPECT_GT(lit(used, 181, 275, 10, 10), 30) << "20 units to the right";
    EXPECT_NEAR(gamepad_axis(SDL_GAMEPAD_AXIS_LEFTX), 0.412f, 0.001f);
    EXPECT_TRUE(shows(480, 96, TEXT, "LEFT X        16384   +0.412", BACKGROUND));
    EXPECT_TRUE(shows(480, 192, TEXT, "LEFT   +0.412 +0.000  mag 0.412", BACKGROUND));
    EXPECT_TRUE(shows(480, 240, ACTIVE, "a leftshoulder", BACKGROUND));
    pad.unplug();
    VirtualGamepad shapes("Shapes", true);
    frame();
    frame();
    EXPECT_TRUE(shows(360, 222, TEXT, "CRS", IDLE) && shows(392, 190, TEXT, "CIR", IDLE)) << "its own labels";
    EXPECT_TRUE(shows(328, 190, TEXT, "SQR", IDLE) && shows(360, 158, TEXT, "TRI", IDLE));
}

TEST_F(GamepadTest, RRumblesOnceAndSaysSoForItsTime) {
    ASSERT_TRUE(start_demo());
    VirtualGamepad pad("Pad");
    frame();
    key_down(SDLK_R, SDL_KMOD_NONE, true);
    frame();
    EXPECT_TRUE(pad.rumbles.empty()) << "a repeat is no press";
    key_down(SDLK_R);
    frame();
    frame();
    ASSERT_FALSE(pad.rumbles.empty());
    EXPECT_TRUE(pad.rumbles[0].low == 49152 && pad.rumbles[0].high == 49152);
    EXPECT_TRUE(shows(16, 426, ACTIVE, "R  rumble test  (sent)        ESC  back to menu", BACKGROUND));
    engine->fps_delta = 0.41;
    frame();
    EXPECT_EQ(lit(picture(), 16, 422, 400, 12), 0);
}

TEST_F(GamepadTest, SetUpSurvivesEachAllocationFailing) {
    ASSERT_TRUE(start());
    gamepad_cleanup();
    expect_allocation_faults_survived(&log, gamepad_setup, gamepad_cleanup);
}

} // namespace
