// The configuration file: round trips, and failures that must not lose settings. What hand-written files mean is
// covered by the digests of the fuzz seeds.

#include "app/args.h"
#include "config/config_internal.h"
#include "core/log.h"
#include "lumarind/input/input_actions.h"
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

constexpr const char *CFG_PATH = "config/lumarind-engine.ini";

class ConfigTest : public ::testing::Test {
protected:
    static constexpr const char *CANNOT_WRITE = "[CONFIG] Error writing config file: config/lumarind-engine.ini";

    void SetUp() override {
        parse_args({});
        log_setup(); // enables warnings
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
    void expect_save_fails(const std::string &message) {
        log.lines.clear();
        EXPECT_FALSE(cfg_save());
        EXPECT_TRUE(log.only_error_starts(message));
    }
    static int files_in(const fs::path &folder) {
        return static_cast<int>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    TemporaryDirectory directory;
    LogCapture log;
    const std::string defaults = read_file(FUZZ_SEEDS "/config/defaults.ini");
};

// --- first start ---

TEST_F(ConfigTest, FirstStartWritesDefaultsUnlessSavingIsDisabled) {
    cfg_set_show_frame_time_graph(true); // ignored without a record
    EXPECT_TRUE(!cfg_save() && log.lines.empty());
    parse_args({"--no-config-save"});
    ASSERT_TRUE(load());
    EXPECT_TRUE(cfg_save());
    EXPECT_FALSE(fs::exists("config"));
    EXPECT_EQ(log.count("[CONFIG] --no-config-save given, not writing: config/lumarind-engine.ini"), 2);
    EXPECT_FALSE(log.has("Creating"));
    parse_args({});
    log.lines.clear();
    ASSERT_TRUE(load());
    EXPECT_EQ(read_file(CFG_PATH), defaults);
    for (const char *what : {"Config file not found", "Creating new config file", "Config file saved"}) {
        EXPECT_EQ(log.count(std::string("[CONFIG] ") + what + ": config/lumarind-engine.ini"), 1) << what;
    }
}

// --- reading ---

TEST_F(ConfigTest, EveryKeyRoundTrips) {
    std::istringstream lines(defaults);
    std::string changed;
    int number = 0;
    for (std::string line; std::getline(lines, line); changed += line + "\n") {
        const size_t at = line.find(" = ") + 3;
        if (at == line.npos + 3) continue;
        const std::string was = line.substr(at);
        const bool is_text = !std::isdigit(static_cast<unsigned char>(was[0]));
        std::string is = std::to_string(--number); // a different value per key, mostly out of range
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

    cfg_set_defaults();
    cfg_set_vsync_enabled(false);
    cfg_set_show_fps(false);
    cfg_set_input_bindings(INPUT_ACTION_RUN, std::string(500, 'x').c_str());
    EXPECT_FALSE(cfg_get_vsync_enabled() || cfg_get_show_fps() || cfg_get_graphics_props().vsync_enable);
    EXPECT_EQ(cfg_get_input_bindings(INPUT_ACTION_RUN), std::string(127, 'x'));
}

TEST_F(ConfigTest, ReportsReadErrorWithoutOverwritingSettings) {
    fs::create_directory("config");
    for (const bool opens : {false, true}) {
        opens ? (void)fs::create_directory(CFG_PATH) : fs::create_symlink("lumarind-engine.ini", CFG_PATH);
        EXPECT_FALSE(load());
        EXPECT_TRUE(log.only_error_starts("[CONFIG] Error loading/parsing config file: config/lumarind-engine.ini"));
        fs::remove(CFG_PATH);
        EXPECT_FALSE(cfg_save() || fs::exists(CFG_PATH)) << "even if writing would be possible";
        cfg_cleanup();
        log.lines.clear();
    }
}

// --- writing ---

TEST_F(ConfigTest, FullDiskLeavesOldSettingsIntact) {
    ASSERT_TRUE(load());
    cfg_set_fps_limit(77);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit old = {};
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit small = {100, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    expect_save_fails(CANNOT_WRITE);
    setrlimit(RLIMIT_FSIZE, &old);
    EXPECT_EQ(read_file(CFG_PATH), defaults) << "the old settings are intact";
    EXPECT_EQ(files_in("config"), 1) << "no temporary file is left";
    fs::create_directory("config/lumarind-engine.ini.new"); // blocks the temporary file
    EXPECT_TRUE(cfg_save());
    EXPECT_NE(read_file(CFG_PATH).find("fps_limit = 77"), std::string::npos);
    EXPECT_TRUE(fs::is_directory("config/lumarind-engine.ini.new"));
    if (geteuid() == 0) return; // root ignores write protection
    fs::permissions(CFG_PATH, fs::perms::owner_read);
    expect_save_fails(CANNOT_WRITE);
}

TEST_F(ConfigTest, ReportsUnwritableTargetWithoutReplacingIt) {
    ASSERT_TRUE(load());
    fs::remove(CFG_PATH);
    fs::create_directory(CFG_PATH);
    expect_save_fails(CANNOT_WRITE);
    EXPECT_EQ(files_in("config"), 1);
    fs::remove(CFG_PATH);
    fs::create_symlink("/dev/null", CFG_PATH); // a device must not be replaced by a file
    expect_save_fails(CANNOT_WRITE);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    fs::remove_all("config");
    write_file("config", "a file");
    expect_save_fails("[CONFIG] Unable to create directory: config, error: ");
    EXPECT_EQ(read_file("config"), "a file");
}

TEST_F(ConfigTest, SymbolicLinkIsPreserved) {
    constexpr fs::perms PERMISSIONS = fs::perms::owner_read | fs::perms::owner_write;
    write_file("elsewhere/real.ini", "[window]\nx = 5\n");
    fs::create_directory("config");
    fs::create_symlink("../elsewhere/link.ini", CFG_PATH);
    fs::create_symlink("real.ini", "elsewhere/link.ini");
    fs::permissions("elsewhere/real.ini", PERMISSIONS);
    ASSERT_TRUE(load());
    ASSERT_TRUE(cfg_save());
    EXPECT_TRUE(fs::is_symlink(CFG_PATH) && fs::is_symlink("elsewhere/link.ini"));
    EXPECT_NE(read_file("elsewhere/real.ini").find("x = 5\n"), std::string::npos);
    EXPECT_EQ(fs::status("elsewhere/real.ini").permissions(), PERMISSIONS);
    EXPECT_EQ(files_in("elsewhere"), 2);

    fs::remove("elsewhere/real.ini"); // writing through a dangling link creates the file
    ASSERT_TRUE(cfg_save());
    EXPECT_TRUE(fs::is_symlink(CFG_PATH) && fs::is_regular_file("elsewhere/real.ini"));
}

} // namespace
