// Gamepad module: deadzone calculations; hot-plug, mappings and queries in the running program.

#include "lumarind/input/gamepad.h"
#include "support/engine_fixture.h"
#include "support/stored.h"
#include "support/virtual_gamepad.h"

#include <cmath>

namespace {

class GamepadTest : public EngineTest {};

// --- pure calculations ---

TEST(GamepadMath, DeadzoneRescalesRangeBeyondIt) {
    EXPECT_EQ(gamepad_axis_normalise(-32768), -1.0f);
    EXPECT_EQ(gamepad_axis_normalise(32767), 1.0f);
    for (const int raw : {-32768, -1, 0}) EXPECT_EQ(gamepad_trigger_normalise(static_cast<Sint16>(raw)), 0.0f);
    EXPECT_EQ(gamepad_trigger_normalise(32767), 1.0f);
    const struct {
        float x, y, deadzone, out_x, out_y;
    } cases[] = {
        {0.15f, 0, 0.15f, 0, 0},
        {0.575f, 0, 0.15f, 0.5f, 0},
        {-1, 0, 0.15f, -1, 0},
        {1, 0, 1, 0, 0},
        {1.5f, 0, 1, 0, 0},
        {0, 0, 0, 0, 0},
        {0.3f, 0, 0, 0.3f, 0},
        {0.1f, 0.1f, 0.15f, 0, 0},
        {0.6f, 0.8f, 0.15f, 0.6f, 0.8f},
        {1, 1, 0.15f, 0.70710678f, 0.70710678f},
        {-0.575f, 0, 0.15f, -0.5f, 0}};
    for (const auto &c : cases) {
        float x = 9, y = 9;
        gamepad_stick_deadzone(c.x, c.y, c.deadzone, &x, &y);
        EXPECT_NEAR(x, c.out_x, 1e-6) << c.x << ", " << c.y;
        EXPECT_NEAR(y, c.out_y, 1e-6) << c.x << ", " << c.y;
        gamepad_stick_deadzone(c.x, c.y, c.deadzone, nullptr, nullptr);
        EXPECT_TRUE(c.y != 0 || std::abs(gamepad_axis_deadzone(c.x, c.deadzone) - c.out_x) < 1e-6f) << c.x;
    }
}

// --- hot-plug ---

TEST_F(GamepadTest, SecondControllerIsIgnoredUntilFirstIsRemoved) {
    ASSERT_TRUE(start_screen("gamepad-demo"));
    EXPECT_TRUE(log.has("[GAMEPAD] No controller connected"));
    EXPECT_STREQ(gamepad_name(), "No controller");
    EXPECT_STREQ(gamepad_type_name(), "none");
    EXPECT_FALSE(gamepad_connected() || gamepad_button(SDL_GAMEPAD_BUTTON_SOUTH) || gamepad_rumble(1, 1, 1));
    EXPECT_EQ(gamepad_axis(SDL_GAMEPAD_AXIS_LEFTX), 0);
    EXPECT_EQ(gamepad_button_label(SDL_GAMEPAD_BUTTON_SOUTH), SDL_GAMEPAD_BUTTON_LABEL_UNKNOWN);

    VirtualGamepad first("First Pad");
    frame();
    VirtualGamepad second("Second Pad");
    frame();
    EXPECT_TRUE(log.has("[GAMEPAD] Connected: First Pad (standard)"));
    EXPECT_TRUE(log.has(
        "[GAMEPAD] Ignoring additional controller " + std::to_string(second.id) + ", First Pad is already active"));
    gamepad_open(first.id);
    EXPECT_EQ(log.count("Ignoring"), 1) << "the active controller is not additional";
    log.lines.clear();
    first.unplug();
    frame();
    EXPECT_TRUE(log.has("[GAMEPAD] Disconnected: First Pad") && log.has("[GAMEPAD] Connected: Second Pad (standard)"));
    VirtualGamepad third("Third Pad");
    frame();
    log.lines.clear();
    third.unplug();
    frame();
    EXPECT_TRUE(log.lines.empty()) << "removing an ignored controller logs nothing";
    second.unplug();
    frame();
    EXPECT_FALSE(gamepad_connected());
    gamepad_open(4711);
    EXPECT_TRUE(log.has("[GAMEPAD] Could not open controller 4711, error: "));
}

TEST_F(GamepadTest, DeadzoneIsClampedAndMappingFileIsLoaded) {
    const char *path = "config/gamecontrollerdb.txt";
    const std::string mapping = "03000000abcd0000cdef000000000000,Odd Pad,a:b3,b:b1,platform:Linux,\n";
    const struct {
        const char *deadzone;
        float clamped;
        std::string mappings, line;
    } cases[] = {
        {"-0.5", 0, "# a comment\n" + mapping,
         "[GAMEPAD] Controller mappings added: 1 from config/gamecontrollerdb.txt"},
        {"0.95", 0.9f, "no mapping\n",
         "[GAMEPAD] No controller mapping for this platform in: config/gamecontrollerdb.t"},
        {"nan", 0, std::string(5000, '\xEE'), "[GAMEPAD] No controller mapping for this platform in: config/"},
        {"0.2", 0.2f, "", "[GAMEPAD] No controller mapping for this platform in: config/gamecontrollerdb.txt"}};
    for (const auto &c : cases) {
        config += std::string("[gamepad]\ndeadzone = ") + c.deadzone + "\n";
        write_file(path, c.mappings);
        log.lines.clear();
        ASSERT_TRUE(start_screen("gamepad-demo"));
        EXPECT_EQ(gamepad_deadzone(), c.clamped) << c.deadzone;
        EXPECT_TRUE(log.has(c.line)) << c.line;
    }
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    ASSERT_TRUE(start_screen("gamepad-demo"));
    EXPECT_TRUE(log.has("[GAMEPAD] Could not read controller mappings: config/gamecontrollerdb.txt, error: "));
}

// --- queries ---

TEST_F(GamepadTest, SticksRumbleAndLabelsComeFromController) {
    ASSERT_TRUE(start_screen("gamepad-demo"));
    VirtualGamepad pad("Pad", true);
    frame();
    pad.set(SDL_GAMEPAD_AXIS_RIGHTX, 0.5f);
    pad.set(SDL_GAMEPAD_AXIS_RIGHTY, 0.1f); // inside an axis's deadzone, outside the stick's
    pad.set(SDL_GAMEPAD_AXIS_RIGHT_TRIGGER, 0.1f);
    frame();
    float x = 0, y = 0;
    gamepad_right_stick(&x, nullptr);
    gamepad_right_stick(nullptr, &y);
    const float length = std::hypot(0.5f, 0.1f), stretch = (length - 0.15f) / 0.85f / length;
    EXPECT_NEAR(x, 0.5f * stretch, 1e-3);
    EXPECT_NEAR(y, 0.1f * stretch, 1e-3);
    EXPECT_EQ(gamepad_axis(SDL_GAMEPAD_AXIS_RIGHTY), 0);
    EXPECT_NEAR(gamepad_axis(SDL_GAMEPAD_AXIS_RIGHT_TRIGGER), 0.1f, 1e-3) << "triggers have no deadzone";
    ASSERT_TRUE(gamepad_rumble(100, 20000, 50));
    EXPECT_TRUE(pad.rumbles.at(0).low == 100 && pad.rumbles.at(0).high == 20000);
    pad.rumbles.clear();
    play("~R 1");
    EXPECT_TRUE(pad.rumbles.empty()) << "auto-repeat is ignored";
    play("R 1");
    EXPECT_TRUE(pad.rumbles.at(0).low == 49152 && pad.rumbles.at(0).high == 49152);
    EXPECT_TRUE(matches_stored(shown(0.41), "gamepad_shapes")) << "without \"(sent)\"";
}

} // namespace
