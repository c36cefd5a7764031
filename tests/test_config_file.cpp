// The configuration file: reading what people write, writing it back whole, and losing nothing when that fails.

#include "app/args.h"
#include "config/config_internal.h"
#include "core/log.h"
#include "support/allocation_faults.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cctype>
#include <csignal>
#include <sstream>
#include <string>
#include <sys/resource.h>

namespace fs = std::filesystem;

namespace {

constexpr const char *DEFAULT_FILE = R"([graphics]
show_fps = true
fps_limit = 0
show_frame_time_graph = false
vsync_enable = true
ui_scale = 0

[window]
x = 200
y = 400
width = 800
height = 450
resizable = true
maximized = false
fullscreen = false
borderless = false

[simulation]
fixed_step_hz = 60

[capture]
directory = captures
format = png
jpeg_quality = 90
include_fps = false

[gamepad]
deadzone = 0.15

[input]
left = Left, A, pad:dpleft, pad:leftx-
right = Right, D, pad:dpright, pad:leftx+
up = Up, W, pad:dpup, pad:lefty-
down = Down, S, pad:dpdown, pad:lefty+
jump = Space, Z, pad:a
run = Left Shift, X, pad:x
attack = J, C, pad:b
pause = P, pad:start

[audio]
master_volume = 0.80
music_volume = 0.60
sfx_volume = 0.80

)";

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
    EXPECT_EQ(
        log.at_least(SDL_LOG_PRIORITY_INFO), (std::vector<std::string>{
                                                 "[CONFIG] Config file not found: config/lumarind-engine.ini",
                                                 "[CONFIG] Creating new config file: config/lumarind-engine.ini",
                                                 "[CONFIG] Config file saved: config/lumarind-engine.ini"}));
}

TEST_F(ConfigTest, WithoutSavingNothingIsMade) {
    parse_args({"--no-config-save"});
    ASSERT_TRUE(load());
    EXPECT_TRUE(cfg_save());
    EXPECT_FALSE(fs::exists("config"));
    EXPECT_EQ(log.count("[CONFIG] --no-config-save given, not writing: config/lumarind-engine.ini"), 2);
    EXPECT_FALSE(log.has("Creating"));
}

// --- reading ---

TEST_F(ConfigTest, EveryKeyIsReadAndWrittenBack) {
    std::istringstream lines(DEFAULT_FILE);
    std::string changed;
    int number = 0;
    for (std::string line; std::getline(lines, line); changed += line + "\n") {
        const size_t at = line.find(" = ") + 3;
        if (at == line.npos + 3) continue;
        const std::string was = line.substr(at);
        const bool is_text = !std::isdigit(static_cast<unsigned char>(was[0]));
        std::string is = std::to_string(--number); // every key its own, out of range for most
        if (is_text) is = "nonsense pad:" + is;
        if (!is_text && was.find('.') != was.npos) is += ".25";
        if (was == "true" || was == "false") is = was == "true" ? "false" : "true";
        if (was == "png") is = "jpg";
        if (line.starts_with("y = ")) is = "2147483647";
        line = line.substr(0, at) + is;
    }
    ASSERT_TRUE(load(changed));
    fs::remove(CFG_PATH);
    ASSERT_TRUE(cfg_save());
    EXPECT_EQ(read_file(CFG_PATH), changed);
}

TEST_F(ConfigTest, ReadsWhatPeopleWrite) {
    ASSERT_TRUE(load(
        "\xEF\xBB\xBF; a comment\r\nunknown = 1\n"
        "[graphics]\r\nshow_fps = TRUE ; capitals are not true\r\nvsync_enable:yes\nfps_limit = 60fps\n"
        "ui_scale =\nwidth = 99\n"
        "[window]\nx = 12\nx = 13\ny = 99999999999\nheight = 0x10\na line of no meaning\n"
        "[capture]\nformat = JpEg\n[gamepad]\ndeadzone = 0,3\n[input]\nJUMP = Space\njumps = K\n"
        "[audio]\nMaster_volume = 0\nsfx_volume = 0.5"));
    EXPECT_FALSE(cfg_get_show_fps() || cfg_get_vsync_enabled());
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
    ASSERT_TRUE(load(
        "[input]\njump = " + std::string(150, 'b') + "\n[capture]\ndirectory = " + std::string(10'000, 'd') +
        "\n[window]\ny = 6\n"));
    EXPECT_EQ(cfg_get_window_props().y, 6) << "reading goes on behind an overlong line";
    EXPECT_EQ(std::string(cfg_get_input_bindings(INPUT_ACTION_JUMP)), std::string(127, 'b'));
    EXPECT_LT(std::string(cfg_get_capture_directory()).size(), 255u);
    cfg_set_input_bindings(INPUT_ACTION_LEFT, std::string(500, 'x').c_str());
    EXPECT_EQ(std::string(cfg_get_input_bindings(INPUT_ACTION_LEFT)).size(), 127u);
    EXPECT_STREQ(cfg_get_input_bindings(INPUT_ACTION_RIGHT), input_default_bindings_text(INPUT_ACTION_RIGHT));
    EXPECT_EQ(cfg_load_handler(config, "capture", "directory", std::string(500, 'y').c_str()), 1);
    EXPECT_EQ(std::string(cfg_get_capture_directory()).size(), 255u);
}

TEST_F(ConfigTest, WhatCannotBeOpenedAndReadFailsTheStartAndIsNotOverwritten) {
    fs::create_directory("config");
    for (const bool opens : {false, true}) {
        opens ? (void)fs::create_directory(CFG_PATH) : fs::create_symlink("lumarind-engine.ini", CFG_PATH);
        EXPECT_FALSE(load());
        EXPECT_TRUE(log.only_error_starts("[CONFIG] Error loading/parsing config file: config/lumarind-engine.ini"));
        fs::remove(CFG_PATH);
        EXPECT_FALSE(cfg_save() || fs::exists(CFG_PATH)) << "not even when it could be";
        cfg_cleanup();
        log.lines.clear();
    }
}

// --- writing ---

class ConfigSaveTest : public ConfigTest {
protected:
    static constexpr const char *CANNOT_WRITE = "[CONFIG] Error writing config file: config/lumarind-engine.ini";

    void expect_save_fails(const std::string &message) {
        log.lines.clear();
        EXPECT_FALSE(cfg_save());
        EXPECT_TRUE(log.only_error_starts(message));
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
    expect_save_fails(CANNOT_WRITE);
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
    expect_save_fails(CANNOT_WRITE);
    EXPECT_EQ(files_in("config"), 1);
    fs::remove_all("config");
    write_file("config", "a file");
    expect_save_fails("[CONFIG] Unable to create directory: config, error: ");
    EXPECT_EQ(read_file("config"), "a file");
    fs::remove("config");
    fs::create_directory("config");
    fs::create_symlink("/dev/null", CFG_PATH); // a device is not replaced by a file
    expect_save_fails(CANNOT_WRITE);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
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

TEST_F(ConfigSaveTest, AFolderThatTakesNoOtherFileStillHasItsOwnWritten) {
    ASSERT_TRUE(load());
    cfg_set_fps_limit(77);
    fs::create_directory("config/lumarind-engine.ini.new"); // as a read-only folder refuses it
    EXPECT_TRUE(cfg_save());
    EXPECT_NE(read_file(CFG_PATH).find("fps_limit = 77"), std::string::npos);
    EXPECT_TRUE(fs::is_directory("config/lumarind-engine.ini.new"));
}

TEST_F(ConfigSaveTest, AReadOnlyFileIsNotReplaced) {
    if (geteuid() == 0) GTEST_SKIP() << "root may write everything";
    ASSERT_TRUE(load());
    fs::permissions(CFG_PATH, fs::perms::owner_read);
    expect_save_fails(CANNOT_WRITE);
    EXPECT_EQ(read_file(CFG_PATH), DEFAULT_FILE);
}

TEST_F(ConfigTest, SurvivesEachAllocationFailing) {
    cfg_set_show_frame_time_graph(true); // without a record: nothing
    EXPECT_TRUE(!cfg_save() && log.lines.empty());
    expect_allocation_faults_survived(&log, [&] { return load(); }, cfg_cleanup);
}

} // namespace
