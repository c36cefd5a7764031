// Player settings: key rebinding, values, list menus and the settings menu.

#include "lumarind/audio/audio.h"
#include "lumarind/config/config.h"
#include "lumarind/core/state_hash.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/text_draw.h"
#include "lumarind/settings/settings.h"
#include "lumarind/settings/settings_menu.h"
#include "support/engine_fixture.h"
#include "support/sdl_calls.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

#include <array>
#include <format>
#include <iterator>
#include <random>
#include <sstream>

namespace {

constexpr SettingsAction ACTIONS[] = {{INPUT_ACTION_LEFT, "Left"},     {INPUT_ACTION_RIGHT, "Right"},
                                      {INPUT_ACTION_JUMP, "Jump"},     {INPUT_ACTION_RUN, "Run"},
                                      {INPUT_ACTION_ATTACK, "Strike"}, {INPUT_ACTION_PAUSE, "Pause"}};
constexpr MenuControls CONTROLS = {
    .up = INPUT_ACTION_UP,
    .down = INPUT_ACTION_DOWN,
    .left = INPUT_ACTION_LEFT,
    .right = INPUT_ACTION_RIGHT,
    .take = INPUT_ACTION_JUMP,
    .back = INPUT_ACTION_PAUSE};

class SettingsTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(start_screen("text-demo", "800x600"));
        for (int i = 0; i < 2; i++) // the second does nothing
            ASSERT_TRUE(settings_setup(ACTIONS, static_cast<int>(std::size(ACTIONS))) && menu_setup(CONTROLS));
    }
    void TearDown() override {
        menu_cleanup();
        settings_cleanup();
        EngineTest::TearDown();
    }
    SettingsCapture capture(int action, int slot, const std::string &script) {
        EXPECT_TRUE(settings_capture_begin(action, slot));
        play(script);
        frame();
        return settings_capture();
    }
    static std::string text(int action) { return input_bindings_text(action); }
};

// --- bindings ---

TEST_F(SettingsTest, CaptureStoresBindingInSlot) {
    play("pad:plug 1");
    const struct {
        int slot;
        const char *script, *text, *shown;
    } cases[] = {
        {0, "F8", "F8, Z, pad:a", "F8"},
        {1, "Right_Ctrl", "F8, Right Ctrl, pad:a", "Right Ctrl"},
        {3, "pad:rightshoulder=1", "F8, Right Ctrl, pad:a, pad:rightshoulder", "Right shoulder"},
        {2, "pad:rightx=-.9", "F8, Right Ctrl, pad:rightx-, pad:rightshoulder", "R-stick left"},
        {0, "pad:rightx=0 1 pad:lefttrigger=.8", "pad:lefttrigger, Right Ctrl, pad:rightx-, pad:rightshoulder",
         "Left trigger"},
        {0, "Right_Ctrl", "Right Ctrl, pad:rightx-, pad:rightshoulder", "Right Ctrl"}, // duplicate removed
        {3, "Q", "Right Ctrl, pad:rightx-, pad:rightshoulder, Q", "Q"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.script);
        EXPECT_EQ(capture(INPUT_ACTION_JUMP, c.slot, c.script), SETTINGS_CAPTURE_NONE);
        EXPECT_EQ(text(INPUT_ACTION_JUMP), c.text);
        EXPECT_STREQ(settings_slot_text(INPUT_ACTION_JUMP, c.slot).text, c.shown);
        EXPECT_FALSE(input_pressed(INPUT_ACTION_JUMP)) << "the capture has consumed the press";
    }
    EXPECT_STREQ(settings_action_text(INPUT_ACTION_JUMP, true).text, "R-stick left");
    EXPECT_STREQ(settings_action_text(INPUT_ACTION_JUMP, false).text, "Right Ctrl");
    EXPECT_TRUE(settings_clear(INPUT_ACTION_JUMP, 1));
    EXPECT_EQ(text(INPUT_ACTION_JUMP), "Right Ctrl, pad:rightshoulder, Q");
    settings_restore_bindings();
    EXPECT_EQ(text(INPUT_ACTION_JUMP), input_default_bindings_text(INPUT_ACTION_JUMP));
}

TEST_F(SettingsTest, CaptureIgnoresInvalidInputCancelsAndTimesOut) {
    play("pad:plug 1 pad:leftx=1 1");
    const std::string before = text(INPUT_ACTION_JUMP);
    // Held since before the capture, auto-repeat, a key that binding texts cannot name, a stick below the threshold.
    EXPECT_EQ(capture(INPUT_ACTION_JUMP, 0, "pad:leftx=.9 ~F8 , pad:lefty=.4"), SETTINGS_CAPTURE_WAITING);
    EXPECT_EQ(settings_capture_action(), INPUT_ACTION_JUMP);
    play("Escape");
    EXPECT_EQ(settings_capture(), SETTINGS_CAPTURE_WAITING);
    frame();
    EXPECT_EQ(settings_capture(), SETTINGS_CAPTURE_NONE);
    EXPECT_TRUE(settings_capture_begin(INPUT_ACTION_JUMP, 0));
    settings_capture_advance(SETTINGS_CAPTURE_SECONDS - 0.1);
    EXPECT_NEAR(settings_capture_left(), 0.1, 1e-6);
    settings_capture_advance(0.2);
    EXPECT_EQ(settings_capture(), SETTINGS_CAPTURE_NONE);
    EXPECT_EQ(text(INPUT_ACTION_JUMP), before);
    EXPECT_FALSE(settings_capture_begin(-1, 0));
    EXPECT_FALSE(settings_capture_begin(INPUT_ACTION_JUMP, INPUT_MAX_BINDINGS));
}

// --- values ---

TEST_F(SettingsTest, ValuesTakeEffectAtOnceAndAreStored) {
    for (int value = SETTINGS_MASTER_VOLUME; value <= SETTINGS_SFX_VOLUME; value++) {
        for (int i = 0; i < 12; i++) settings_value_step(value, -1);
        EXPECT_FALSE(settings_value_step(value, -1));
        EXPECT_TRUE(settings_value_step(value, 1));
        EXPECT_STREQ(settings_value_text(value).text, "10 %");
        EXPECT_FLOAT_EQ(audio_volume(static_cast<AudioBus>(value)), 0.1f);
    }
    sdl_calls.clear();
    EXPECT_TRUE(settings_value_step(SETTINGS_FULLSCREEN, 1));
    EXPECT_TRUE(settings_value_step(SETTINGS_VSYNC, 1));
    EXPECT_NE(sdl_calls.find("fullscreen 1"), sdl_calls.npos) << sdl_calls;
    EXPECT_TRUE(cfg_get_window_props().fullscreen && cfg_get_vsync_enabled());
    EXPECT_STREQ(settings_value_text(SETTINGS_FULLSCREEN).text, "on");
    EXPECT_TRUE(engine_set_fullscreen(true)) << "it is";
    EXPECT_EQ(engine->target_fps, 0u) << "vsync paces the frames";
    cfg_set_fps_limit(77);
    EXPECT_TRUE(settings_value_step(SETTINGS_VSYNC, 1) && engine->target_fps == 77);
    EXPECT_TRUE(settings_value_step(SETTINGS_VSYNC, 1));
    stop(); // saves the geometry from before full screen
    EXPECT_NE(read_file("config/lumarind-engine.ini").find("fullscreen = true"), std::string::npos);
    config = "";
    ASSERT_TRUE(start());
    EXPECT_TRUE(engine_is_fullscreen());
    failing_sdl_call = "fullscreen";
    EXPECT_FALSE(settings_value_step(SETTINGS_FULLSCREEN, 1));
    failing_sdl_call = "";
    EXPECT_TRUE(engine_is_fullscreen());
    EXPECT_TRUE(settings_value_step(SETTINGS_FULLSCREEN, 1));
    EXPECT_FALSE(engine_is_fullscreen() || cfg_get_window_props().maximized);
}

TEST_F(SettingsTest, UiScaleAppliesToExistingTexts) {
    TTF_Font *font = engine_get_font_by_index(SHARED_FONT_UI);
    TTF_Text *prepared = engine_prepare_text(font, "Cinder", 0, {255, 255, 255, 255});
    float width = 0, view = 0, measured = 0;
    const auto draw_white = [&] {
        SDL_SetRenderDrawColor(engine->renderer, 0, 0, 0, 255);
        SDL_RenderClear(engine->renderer);
        engine_draw_text(font, "Cinder", 10, 10, {255, 255, 255, 255});
        int lit = 0;
        const Picture seen = picture();
        for (int y = 0; y < seen->h; y++) {
            for (int x = 0; x < seen->w; x++) lit += pixel_at(seen, x, y).r > 128;
        }
        return lit;
    };
    const int lit = draw_white();
    EXPECT_TRUE(settings_value_step(SETTINGS_UI_SCALE, 1));
    EXPECT_FALSE(settings_value_step(SETTINGS_UI_SCALE, 1)) << "the view would be too small for a menu";
    EXPECT_EQ(engine_ui_scale(), 2);
    EXPECT_EQ(cfg_get_ui_scale(), 2);
    engine_view_size(&view, nullptr);
    EXPECT_EQ(view, 400);
    engine_text_size(prepared, &width, nullptr);
    engine_measure_text(font, "Cinder", &measured, nullptr);
    EXPECT_NEAR(width, measured, 1);
    EXPECT_NEAR(draw_white(), 4 * lit, lit / 2);
    EXPECT_EQ(log.errors(), std::vector<std::string>());
    engine_cleanup_text(&prepared);
}

// --- the menu ---

// Random keys, clicks and pad input in a list and in the settings menu; what both answer and show goes into the hash.
TEST_F(SettingsTest, RandomInputMatchesRecordedHashAndKeepsBindingsUnique) {
    std::istringstream words(
        "Up Down Down Down Left Left Left Right Space Space Space Space Space P Delete X K ~Down pad:plug pad:a "
        "pad:dpdown "
        "pad:leftx=-1 pad:leftx=0 pad:lefttrigger=1 pad:lefttrigger=0 pad:righty=1 pad:righty=0");
    const std::vector<std::string> inputs(std::istream_iterator<std::string>(words), {});
    const MenuLine lines[] = {{"One"}, {"Off", nullptr, true}, {"Three", "value"}, {"Four"}};
    Menu menu = {};
    Uint64 hash = STATE_HASH_START;
    const auto note_text = [&](const char *text) { hash = state_hash_bytes(hash, text, SDL_strlen(text) + 1); };
    const auto note_answer = [&](const MenuAnswer &a) {
        hash = state_hash_of(hash, a.taken, a.step, a.moved, a.back, a.clear);
    };
    std::mt19937 random(5);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    failing_sdl_call = "vsync"; // frames must not wait
    play("pad:plug 1");
    settings_menu_open();
    for (int i = 0; i < 2000; i++) {
        if (i % 100 == 0) settings_restore_bindings();
        if (i % 100 == 0) resize(i % 300 ? 661 : 260, std::array{150, 400, 401}[i / 100 % 3]);
        const int action = ACTIONS[below(6)].action, slot = below(5) - 1;
        if (below(6) == 0) settings_capture_begin(action, slot);
        if (below(9) == 0) settings_clear(action, slot);
        if (below(9) == 0) play(std::format("wheel:0,{}", below(5) - 2));
        const float height = menu_line_height();
        if (below(3) == 0) { // on and beside the edges of lines
            const int off = below(4), x = 8 + off + below(below(2) ? 3 : 7) * 60, line = below(i % 3 ? 5 : 18);
            const int y = (i % 3 ? 6 : 64) + static_cast<int>(static_cast<float>(line) * height) - below(2);
            play(std::format("{}:{},{}", std::array{"move", "drop", "rdrop"}[below(3)], x, y));
        } else {
            play(inputs[random() % inputs.size()]);
        }
        frame();
        engine->fps_delta = below(20) == 0 ? 3 : 0.01; // s
        if (i % 2) note_answer(menu_tick(&menu, lines, i % 20 < 12 ? 4 : 1 + i % 4 / 2, {10, 6, 120, 2.5f * height}));
        MenuAnswer answer = {};
        if (!settings_menu_tick(&answer)) settings_menu_open();
        note_answer(answer);
        hash = state_hash_of(
            hash, menu.selected, menu.scroll, settings_capture(), settings_capture_action(), settings_capture_left());
        for (int value = 0; value < SETTINGS_VALUE_COUNT; value++) note_text(settings_value_text(value).text);
        for (const SettingsAction &row : ACTIONS) note_text(text(row.action).c_str());
        for (const bool pad : {false, true}) note_text(settings_action_text(ACTIONS[i % 6].action, pad).text);
        std::set<std::pair<int, int>> seen;
        for (const SettingsAction &row : ACTIONS) {
            InputBinding bindings[INPUT_MAX_BINDINGS];
            const int count = input_parse_bindings(input_bindings_text(row.action), bindings, INPUT_MAX_BINDINGS);
            for (int n = 0; n < count; n++) {
                const int code = bindings[n].code * 4 + bindings[n].direction + 1;
                EXPECT_TRUE(seen.insert({bindings[n].kind, code}).second) << i << ": " << text(row.action);
            }
        }
    }
    failing_sdl_call = "";
    EXPECT_EQ(hash, 0xa706e67267137a08) << std::hex << "0x" << hash;
    std::vector<std::string> before, after;
    for (const SettingsAction &row : ACTIONS) before.push_back(text(row.action));
    ASSERT_TRUE(cfg_save() && cfg_load());
    for (const SettingsAction &row : ACTIONS) after.push_back(text(row.action));
    EXPECT_EQ(before, after);
}

TEST_F(SettingsTest, SettingsMenuRebindsSwapsAndSavesOnExit) {
    settings_menu_open();
    const auto tick = [&](const std::string &script) {
        play(script);
        frame();
        return settings_menu_tick();
    };
    EXPECT_TRUE(tick("Down")); // the menu ignores the press that opened it
    EXPECT_TRUE(tick("Space"));
    EXPECT_STREQ(settings_value_text(SETTINGS_MASTER_VOLUME).text, "90 %") << "one step up";
    for (int i = 0; i < SETTINGS_VALUE_COUNT + 5; i++) EXPECT_TRUE(tick("Down")); // to "Pause"
    EXPECT_TRUE(tick("Left") && tick("Left")); // by way of the empty slot to the second of two
    EXPECT_TRUE(tick("Space"));
    ASSERT_EQ(settings_capture(), SETTINGS_CAPTURE_WAITING);
    EXPECT_TRUE(tick("X"));
    ASSERT_EQ(settings_capture(), SETTINGS_CAPTURE_CONFLICT);
    SettingsText what = {};
    EXPECT_EQ(settings_capture_conflict(&what), INPUT_ACTION_RUN);
    EXPECT_STREQ(what.text, "X");
    EXPECT_TRUE(tick(""));
    EXPECT_TRUE(tick("Space")); // swap
    EXPECT_EQ(text(INPUT_ACTION_PAUSE), "P, X");
    EXPECT_EQ(text(INPUT_ACTION_RUN), "Left Shift, pad:start, pad:x");
    EXPECT_TRUE(tick(""));
    EXPECT_FALSE(tick("P"));
    EXPECT_NE(read_file("config/lumarind-engine.ini").find("pause = P, X"), std::string::npos);
}

} // namespace
