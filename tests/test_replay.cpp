// Recordings: what is played is played again to the bit, and what is no whole recording is refused or ends cleanly.

#include "lumarind/replay/replay.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_stdinc.h>

#include <random>

namespace fs = std::filesystem;

namespace {

class ReplayTest : public EngineTest {
protected:
    void TearDown() override {
        EngineTest::TearDown();
        replay_stop();
        set("RECORD", nullptr);
        set("REPLAY", nullptr);
        set("REPLAY_SPEED", nullptr);
    }
    static void set(const std::string &name, const char *value) { // in SDL's copy and in what it is made from
        const std::string variable = "LUMARIND_" + name;
        value ? setenv(variable.c_str(), value, 1) : unsetenv(variable.c_str());
        if (value) {
            SDL_SetEnvironmentVariable(SDL_GetEnvironment(), variable.c_str(), value, true);
        } else {
            SDL_UnsetEnvironmentVariable(SDL_GetEnvironment(), variable.c_str());
        }
    }
    std::string record(const std::string &screen, const std::string &script) {
        set("REPLAY", nullptr);
        set("RECORD", "run.lmr");
        EXPECT_TRUE(start({"--screen", screen, "--window-size", "640x360"}));
        play(script);
        stop();
        set("RECORD", nullptr);
        return read_file("run.lmr");
    }
    std::string last_word() const {
        for (auto line = log.lines.rbegin(); line != log.lines.rend(); ++line) {
            if (line->text.starts_with("[REPLAY]")) return line->text;
        }
        return "";
    }
    std::string replay(const char *speed = "max") { // its last word
        set("REPLAY", "run.lmr");
        set("REPLAY_SPEED", speed);
        log.lines.clear();
        if (start()) {
            while (frame()) {
            }
            stop();
        }
        return last_word();
    }
};

TEST_F(ReplayTest, EveryScreenDoesTheSameAgain) {
    const struct {
        const char *screen, *script;
    } rows[] = {
        {"platformer-demo", "+Right 40.5 Space 30 J 20 -Right +A 7s L 1s 13 H 60 -A U 2s"},
        {"physics-demo", "2 Space 10 drop:300,40 2 drop:420,60 size:500x400 +Left 30 drop:100,60 Space 3s R 1s"},
        {"input-demo",
         "pad:plug 2 pad:a=1 30 pad:leftx=.7 30 pad:leftx=-.4 20 pad:a=0 pad:unplug P 20 P +D 20 size:400x300 1s"},
        {"main-menu", "Down Down 1 Return 40 3s Escape 40 move:100,100 1 Down Return 40 2s Escape 60"},
        {"sprite-demo", "4s Right F 10 Space . . 1s"},
        {"texture-demo", "2s 5.5"},
        {"logical-demo", "30 P 30 P 1s Escape 60"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.screen);
        EXPECT_LT(record(row.screen, row.script).size(), 6000u);
        const std::string recorded = last_word(); // "[REPLAY] Recorded: run.lmr, 835 steps"
        const std::string done = "[REPLAY] Replayed " + recorded.substr(recorded.find(", ") + 2) + ", all hashes equal";
        EXPECT_EQ(replay(), done);
        EXPECT_EQ(replay("100"), done) << "shown, at a hundred times its speed";
        EXPECT_FALSE(replay_failed());
    }
}

TEST_F(ReplayTest, WhatIsNotARecordingOfThisGameIsRefusedByName) {
    const std::string whole = record("input-demo", "+D 3s");
    const auto changed = [&](size_t at, char byte) { return whole.substr(0, at) + byte + whole.substr(at + 1); };
    const std::pair<std::string, const char *> cases[] = {
        {"", "it is no recording"},
        {changed(0, 'X'), "it is no recording"},
        {changed(4, 2), "it is of another version of the format"},
        {changed(20, 'X'), "it is damaged"},
        {whole.substr(0, 40), "it is damaged"},
    };
    for (const auto &[bytes, why] : cases) {
        write_file("run.lmr", bytes);
        EXPECT_EQ(replay(), std::string("[REPLAY] run.lmr cannot be replayed: ") + why);
        EXPECT_TRUE(replay_failed());
    }
    write_file("run.lmr", whole);
    config += "[simulation]\nfixed_step_hz = 50\n";
    EXPECT_EQ(replay(), "[REPLAY] The recording has 60 fixed steps a second, the configuration 50");
    fs::remove("run.lmr");
    EXPECT_TRUE(replay().starts_with("[REPLAY] run.lmr cannot be replayed: "));
    EXPECT_EQ(replay("fast"), "[REPLAY] LUMARIND_REPLAY_SPEED expects a number above 0 or max: fast");
}

TEST_F(ReplayTest, CutAndDamagedRecordingsEndCleanly) {
    const std::string whole = record("input-demo", "pad:plug +D 2s pad:leftx=.5 1s");
    std::mt19937 random(7);
    for (int i = 0; i < 24; i++) {
        std::string bytes = whole;
        const size_t at = random() % whole.size();
        if (i % 2) {
            bytes.resize(at);
        } else {
            bytes[at] = static_cast<char>(random());
        }
        write_file("run.lmr", bytes);
        const std::string end = replay();
        EXPECT_TRUE(
            end.find("cannot be replayed") != end.npos || end.find("damaged") != end.npos ||
            end.find("all hashes equal") != end.npos)
            << end;
    }
}

} // namespace
