// The configuration file: reading what people write, writing it back whole, and losing nothing when that fails.

#include "app/args.h"
#include "config/config_internal.h"
#include "core/log.h"
#include "support/allocation_faults.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <random>
#include <string>
#include <sys/resource.h>

namespace fs = std::filesystem;

namespace {

constexpr const char *DEFAULT_FILE = "[graphics]\n"
                                     "show_fps = true\n"
                                     "fps_limit = 0\n"
                                     "show_frame_time_graph = false\n"
                                     "vsync_enable = true\n"
                                     "ui_scale = 0\n"
                                     "\n"
                                     "[window]\n"
                                     "x = 200\n"
                                     "y = 400\n"
                                     "width = 800\n"
                                     "height = 450\n"
                                     "resizable = true\n"
                                     "maximized = false\n"
                                     "fullscreen = false\n"
                                     "borderless = false\n"
                                     "\n"
                                     "[simulation]\n"
                                     "fixed_step_hz = 60\n"
                                     "\n"
                                     "[capture]\n"
                                     "directory = captures\n"
                                     "format = png\n"
                                     "jpeg_quality = 90\n"
                                     "include_fps = false\n"
                                     "\n"
                                     "[gamepad]\n"
                                     "deadzone = 0.15\n"
                                     "\n"
                                     "[input]\n"
                                     "left = Left, A, pad:dpleft, pad:leftx-\n"
                                     "right = Right, D, pad:dpright, pad:leftx+\n"
                                     "up = Up, W, pad:dpup, pad:lefty-\n"
                                     "down = Down, S, pad:dpdown, pad:lefty+\n"
                                     "jump = Space, Z, pad:a\n"
                                     "run = Left Shift, X, pad:x\n"
                                     "attack = J, C, pad:b\n"
                                     "pause = P, pad:start\n"
                                     "\n"
                                     "[audio]\n"
                                     "master_volume = 0.80\n"
                                     "music_volume = 0.60\n"
                                     "sfx_volume = 0.80\n"
                                     "\n";

class ConfigTest : public ::testing::Test {
protected:
    void SetUp() override {
        parse_args({});
        log_setup(); // lets warnings through
    }
    ~ConfigTest() override {
        cfg_cleanup();
        log_cleanup();
    }

    static void parse_args(std::vector<const char *> words) {
        words.insert(words.begin(), "LumarindEngine");
        args_parse(static_cast<int>(words.size()), const_cast<char **>(words.data()));
    }

    bool load() { return cfg_setup() && cfg_load(); }
    bool load(const std::string &content) {
        write_file(CFG_PATH, content);
        return load();
    }

    TemporaryDirectory directory;
    LogCapture log;
};

// --- first start ---

TEST_F(ConfigTest, AFirstStartWritesTheDefaults) {
    ASSERT_TRUE(load());
    EXPECT_EQ(read_file(CFG_PATH), DEFAULT_FILE);
    ASSERT_EQ(log.lines.size(), 3u);
    EXPECT_EQ(log.lines[0].text, "[CONFIG] Config file not found: config/lumarind-engine.ini");
    EXPECT_EQ(log.lines[1].text, "[CONFIG] Creating new config file: config/lumarind-engine.ini");
    EXPECT_EQ(log.lines[2].text, "[CONFIG] Config file saved: config/lumarind-engine.ini");
}

TEST_F(ConfigTest, WithoutSavingNothingIsMade) {
    parse_args({"--no-config-save"});
    ASSERT_TRUE(load());
    EXPECT_TRUE(cfg_save());
    EXPECT_FALSE(fs::exists("config"));
    EXPECT_EQ(log.count("[CONFIG] --no-config-save given, not writing: config/lumarind-engine.ini"), 2);
    EXPECT_FALSE(log.has("Creating"));
}

TEST_F(ConfigTest, WithoutARecordSettersAndSavingAreQuiet) {
    cfg_set_show_frame_time_graph(true);
    EXPECT_FALSE(cfg_save());
    cfg_cleanup();
    EXPECT_TRUE(log.lines.empty());
}

// --- reading ---

TEST_F(ConfigTest, EveryKeyIsReadAndWrittenBack) {
    std::string changed = DEFAULT_FILE;
    const std::pair<const char *, const char *> changes[] = {
        {"show_fps = true", "show_fps = false"},
        {"fps_limit = 0", "fps_limit = 144"},
        {"graph = false", "graph = true"},
        {"vsync_enable = true", "vsync_enable = false"},
        {"ui_scale = 0", "ui_scale = -3"},
        {"x = 200", "x = -17"},
        {"y = 400", "y = 2147483647"},
        {"width = 800", "width = 1280"},
        {"height = 450", "height = 720"},
        {"resizable = true", "resizable = false"},
        {"maximized = false", "maximized = true"},
        {"fullscreen = false", "fullscreen = true"},
        {"borderless = false", "borderless = true"},
        {"step_hz = 60", "step_hz = 120"},
        {"directory = captures", "directory = some where/else"},
        {"format = png", "format = jpg"},
        {"quality = 90", "quality = 5"},
        {"include_fps = false", "include_fps = true"},
        {"deadzone = 0.15", "deadzone = 2.00"},
        {"pad:leftx-", "nonsense pad:"},
        {"P, pad:start", ""},
        {"master_volume = 0.80", "master_volume = 1.50"},
        {"music_volume = 0.60", "music_volume = -0.25"},
        {"sfx_volume = 0.80", "sfx_volume = 0.00"},
    };
    for (const auto &[from, to] : changes) {
        ASSERT_NE(changed.find(from), changed.npos) << from;
        changed.replace(changed.find(from), std::string(from).size(), to);
    }
    ASSERT_TRUE(load(changed));
    fs::remove(CFG_PATH);
    ASSERT_TRUE(cfg_save());
    EXPECT_EQ(read_file(CFG_PATH), changed);
}

TEST_F(ConfigTest, ReadsWhatPeopleWrite) {
    ASSERT_TRUE(load(
        "\xEF\xBB\xBF; a comment\r\n"
        "unknown = 1\n"
        "[graphics]\r\n"
        "show_fps = TRUE ; capitals are not true\r\n"
        "vsync_enable:yes\n"
        "fps_limit = 60fps\n"
        "ui_scale =\n"
        "width = 99\n"
        "[window]\n"
        "x = 12\n"
        "x = 13\n"
        "y = 99999999999\n"
        "height = 0x10\n"
        "a line of no meaning\n"
        "[capture]\n"
        "format = JpEg\n"
        "[gamepad]\n"
        "deadzone = 0,3\n"
        "[input]\n"
        "JUMP = Space\n"
        "jumps = K\n"
        "[audio]\n"
        "Master_volume = 0\n"
        "sfx_volume = 0.5"));
    EXPECT_FALSE(cfg_get_show_fps());
    EXPECT_FALSE(cfg_get_vsync_enabled());
    EXPECT_EQ(cfg_get_fps_limit(), 0);
    EXPECT_EQ(cfg_get_ui_scale(), 0);
    const CfgWindowProps window = cfg_get_window_props();
    EXPECT_EQ(window.x, 13) << "the later of two lines";
    EXPECT_EQ(window.y, 2147483647) << "saturated";
    EXPECT_EQ(window.width, 800) << "a key in another section is not this one";
    EXPECT_EQ(window.height, 0);
    EXPECT_EQ(cfg_get_capture_format(), CAPTURE_FORMAT_JPEG);
    EXPECT_EQ(cfg_get_gamepad_deadzone(), 0.0f);
    EXPECT_STREQ(cfg_get_input_bindings(INPUT_ACTION_JUMP), "Space");
    EXPECT_EQ(cfg_get_audio_volume(AUDIO_BUS_MASTER), 0.8f);
    EXPECT_EQ(cfg_get_audio_volume(AUDIO_BUS_SFX), 0.5f) << "a last line without an end counts";
    EXPECT_EQ(
        log.at_least(SDL_LOG_PRIORITY_WARN),
        (std::vector<std::string>{
            "[CONFIG] String to long conversion: Non-numeric characters after the number: fps",
            "[CONFIG] String to long conversion: No digits were found in the string.",
            "[CONFIG] String to long conversion: Non-numeric characters after the number: x10",
            "[CONFIG] String to float conversion: Non-numeric characters after the number: ,3"}));
}

TEST_F(ConfigTest, LongTextsAreCutAndStayTerminated) {
    ASSERT_TRUE(load("[input]\njump = " + std::string(150, 'b') + "\n[capture]\ndirectory = " + std::string(400, 'd')));
    EXPECT_EQ(std::string(cfg_get_input_bindings(INPUT_ACTION_JUMP)), std::string(127, 'b'));
    EXPECT_LT(std::string(cfg_get_capture_directory()).size(), 255u);
    cfg_set_input_bindings(INPUT_ACTION_LEFT, std::string(500, 'x').c_str());
    EXPECT_EQ(std::string(cfg_get_input_bindings(INPUT_ACTION_LEFT)).size(), 127u);
    EXPECT_STREQ(cfg_get_input_bindings(INPUT_ACTION_RIGHT), input_default_bindings_text(INPUT_ACTION_RIGHT));
    EXPECT_EQ(cfg_load_handler(config, "capture", "directory", std::string(500, 'y').c_str()), 1);
    EXPECT_EQ(std::string(cfg_get_capture_directory()).size(), 255u);
}

TEST_F(ConfigTest, NoiseLoadsOrIsIgnoredButNeverCrashes) {
    std::mt19937 random(20);
    std::string noise(1 << 20, '\0');
    for (char &c : noise) c = static_cast<char>(random());
    EXPECT_TRUE(load(noise));
    cfg_cleanup();
    EXPECT_TRUE(load("[window]\nx = 5\n" + std::string(10'000, 'k') + " = 1\ny = 6\n"));
    EXPECT_EQ(cfg_get_window_props().x, 5);
    EXPECT_EQ(cfg_get_window_props().y, 6) << "reading goes on behind an overlong line";
    for (int round = 0; round < 300; round++) { // mutated real files
        std::string text = DEFAULT_FILE;
        for (int i = 0; i < 8; i++) text[random() % text.size()] = static_cast<char>(random());
        cfg_cleanup();
        EXPECT_TRUE(load(text));
        EXPECT_TRUE(cfg_save());
    }
}

TEST_F(ConfigTest, AFileThatCannotBeOpenedFailsAndIsKept) {
    fs::create_directory("config");
    fs::create_symlink("lumarind-engine.ini", CFG_PATH); // a link to itself exists and cannot be opened
    ASSERT_TRUE(load()) << "to SDL a ring of links is not there";
    cfg_cleanup();
    fs::remove(CFG_PATH);
    if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
    write_file(CFG_PATH, "[window]\nx = 5\n");
    fs::permissions(CFG_PATH, fs::perms::none);
    EXPECT_FALSE(load());
    EXPECT_TRUE(log.has("[CONFIG] Error loading/parsing config file: config/lumarind-engine.ini"));
    EXPECT_FALSE(cfg_save());
    fs::permissions(CFG_PATH, fs::perms::owner_all);
    EXPECT_EQ(read_file(CFG_PATH), "[window]\nx = 5\n");
}

// --- writing ---

class ConfigSaveTest : public ConfigTest {
protected:
    void expect_save_fails(const std::string &message) {
        log.lines.clear();
        EXPECT_FALSE(cfg_save());
        ASSERT_EQ(log.errors().size(), 1u);
        EXPECT_EQ(log.errors()[0].find(message), 0u) << log.errors()[0];
    }
    static int files_in(const fs::path &folder) {
        return static_cast<int>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }
};

TEST_F(ConfigSaveTest, AFullDiskCostsNothing) {
    ASSERT_TRUE(load());
    cfg_set_fps_limit(77);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit old = {};
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit small = {100, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    expect_save_fails("[CONFIG] Error writing config file: config/lumarind-engine.ini");
    setrlimit(RLIMIT_FSIZE, &old);
    EXPECT_EQ(read_file(CFG_PATH), DEFAULT_FILE) << "the old settings are still there";
    EXPECT_EQ(files_in("config"), 1) << "and nothing beside them";
    EXPECT_TRUE(cfg_save());
    EXPECT_NE(read_file(CFG_PATH).find("fps_limit = 77"), std::string::npos);
}

TEST_F(ConfigSaveTest, WhatStandsInTheWayIsReported) {
    ASSERT_TRUE(load());
    fs::remove(CFG_PATH);
    fs::create_directory(CFG_PATH);
    expect_save_fails("[CONFIG] Error writing config file: config/lumarind-engine.ini");
    EXPECT_EQ(files_in("config"), 1);
    fs::remove_all("config");
    write_file("config", "a file");
    expect_save_fails("[CONFIG] Unable to create directory: config, error: ");
    EXPECT_EQ(read_file("config"), "a file");
}

TEST_F(ConfigSaveTest, ASymbolicLinkStaysOne) {
    write_file("elsewhere/real.ini", "[window]\nx = 5\n");
    fs::create_directory("config");
    fs::create_symlink("../elsewhere/link.ini", CFG_PATH);
    fs::create_symlink("real.ini", "elsewhere/link.ini");
    fs::permissions("elsewhere/real.ini", fs::perms::owner_read | fs::perms::owner_write);
    ASSERT_TRUE(load());
    ASSERT_TRUE(cfg_save());
    EXPECT_TRUE(fs::is_symlink(CFG_PATH));
    EXPECT_TRUE(fs::is_symlink("elsewhere/link.ini"));
    EXPECT_NE(read_file("elsewhere/real.ini").find("x = 5\n"), std::string::npos);
    EXPECT_EQ(fs::status("elsewhere/real.ini").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(files_in("elsewhere"), 2);

    fs::remove("elsewhere/real.ini"); // a link to a file that is not there makes the file
    ASSERT_TRUE(cfg_save());
    EXPECT_TRUE(fs::is_symlink(CFG_PATH));
    EXPECT_TRUE(fs::is_regular_file("elsewhere/real.ini"));
}

TEST_F(ConfigSaveTest, ALinkToADeviceDoesNotReplaceTheDevice) {
    fs::create_directory("config");
    fs::create_symlink("/dev/null", CFG_PATH);
    ASSERT_TRUE(load());
    expect_save_fails("[CONFIG] Error writing config file: config/lumarind-engine.ini");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(ConfigSaveTest, AReadOnlyFileIsNotReplaced) {
    if (geteuid() == 0) GTEST_SKIP() << "root may write everything";
    ASSERT_TRUE(load());
    fs::permissions(CFG_PATH, fs::perms::owner_read);
    expect_save_fails("[CONFIG] Error writing config file: config/lumarind-engine.ini");
    EXPECT_EQ(read_file(CFG_PATH), DEFAULT_FILE);
}

TEST_F(ConfigTest, SurvivesEachAllocationFailing) {
    expect_allocation_faults_survived(&log, [&] { return load(); }, cfg_cleanup);
}

} // namespace
