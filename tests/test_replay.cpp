// Recordings: replays are bit-identical, invalid recordings are rejected.

#include "lumarind/engine/engine.h"
#include "lumarind/engine/transition.h"
#include "lumarind/replay/replay.h"
#include "replay/replay_event.h"
#include "screens/platformer_demo.h"
#include "screens/screen_states.h"
#include "support/castle_routes.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_stdinc.h>

#include <chrono>
#include <random>
#include <sstream>

namespace fs = std::filesystem;

namespace {

class ReplayTest : public EngineTest {
protected:
    void TearDown() override {
        EngineTest::TearDown();
        replay_stop();
        set_environment("LUMARIND_RECORD", nullptr);
        set_environment("LUMARIND_REPLAY", nullptr);
        set_environment("LUMARIND_REPLAY_SPEED", nullptr);
    }
    std::string record(const std::string &screen, const std::string &script) {
        set_environment("LUMARIND_REPLAY", nullptr);
        set_environment("LUMARIND_RECORD", "run.lmr");
        EXPECT_TRUE(start({"--screen", screen, "--window-size", "320x180"}));
        play(script);
        stop();
        set_environment("LUMARIND_RECORD", nullptr);
        return read_file("run.lmr");
    }
    std::string last_message() const {
        for (auto line = log.lines.rbegin(); line != log.lines.rend(); ++line) {
            if (line->text.starts_with("[REPLAY]")) return line->text;
        }
        return "";
    }
    std::string replay(const char *speed = "max") { // returns its last message
        set_environment("LUMARIND_REPLAY", "run.lmr");
        set_environment("LUMARIND_REPLAY_SPEED", speed);
        log.lines.clear();
        if (start()) {
            while (frame()) EXPECT_EQ(engine->sink != nullptr, std::string(speed ? speed : "") == "max");
            stop();
        }
        return last_message();
    }
};

// --- recordings ---

std::string keys_of(const char *route) {
    std::string script;
    for (; *route; route++) script += route_keys(*route) + "0.1s ";
    return script;
}

std::string random_keys(unsigned seed, int count) {
    constexpr const char *WORDS[] = {"+Right", "+Right", "-Right", "+Left", "-Left", "-Left", "+S", "-S",
                                     "-S",     "Space",  "Space",  "Space", "X",     "J",     "K",  "L",
                                     "U",      "I",      "I",      "1",     "5.5",   "10"};
    std::mt19937 random(seed);
    std::ostringstream script;
    for (int i = 0; i < count; i++) {
        script << (i % 40 == 39 ? "H" : WORDS[random() % std::size(WORDS)]) << " 0.1s " << (i % 9 == 8 ? "1s " : "");
    }
    return script.str();
}

const std::string MOVES = // each state alone, cancelled, and chained
    "J 0.6s K 1.2s L 1.6s U 1s X 1s J 0.2s +Left X 0.1s -Left K 0.4s +Right 0.1s -Right U 0.5s +Left Space 1.4s -Left "
    "+Right 0.1s L 0.3s X 0.1s 1s +Left L 0.3s -Left +S 0.3s +Left 0.3s -S 0.4s -Left Space 0.2s J 0.4s +Right U 1s "
    "-Right Space 38 Space 0.3s 37 Space 1s H 0.4s H 0.3s H 2s ";

struct Row {
    const char *name; // of its stored recording
    int step_hz;
    const char *screen;
    std::string script;
};
const Row ROWS[] = {
    {"platformer", 60, "platformer-demo", "+Right 40.5 Space 30 J 20 -Right +A 7s L 1s 13 H 60 -A U 2s"},
    {"physics", 60, "physics-demo",
     "2 Space 10 drop:150,20 2 drop:210,30 size:500x400 +Left 30 drop:100,60 Space 3s R 1s"},
    {"input", 60, "input-demo",
     "pad:plug 2 pad:leftx=-.8 9 pad:a=1 30 pad:leftx=.7 30 pad:x=1 9 pad:leftx=-.4 20 pad:a=0 pad:x=0 9 pad:unplug "
     "P 20 P +D 20 size:400x300 1s -D +W 2s -W +A 2s -A +S 2s size:400x200 1s"},
    {"menu", 60, "main-menu", "Down Down 1 Return 40 3s Escape 40 move:100,100 1 Down Return 40 2s Escape 60"},
    {"sprite", 60, "sprite-demo", "4s Right F 10 Space . . 1s"},
    {"texture", 60, "texture-demo", "2s 5.5"},
    {"logical", 60, "logical-demo", "30 P 30 P 1s Escape 60"},
    {"tilemap", 60, "tilemap-demo", "30 P 30 P 4s"},
    // --- from here on only as stored recordings ---
    {"tower", 60, "platformer-demo", keys_of(ROUTE_BY_THE_TOWER)},
    {"crypts", 60, "platformer-demo", keys_of(ROUTE_BY_THE_CRYPTS)},
    {"moves", 60, "platformer-demo", MOVES},
    {"moves_30hz", 30, "platformer-demo", MOVES},
    {"moves_240hz", 240, "platformer-demo", MOVES},
    {"chance", 60, "platformer-demo", random_keys(3, 400)},
    {"wreck", 60, "physics-demo", "2s Space 9s +Right 2s -Right +A 2s -A drop:250,30 drop:255,30 1s drop:260,30 4s"},
};
constexpr int RECORDED_ROWS = 8; // also recorded and replayed by each test run

TEST_F(ReplayTest, EveryScreenReplaysWithEqualHashesAtAnySpeed) {
    for (int i = 0; i < RECORDED_ROWS; i++) {
        SCOPED_TRACE(ROWS[i].screen);
        EXPECT_LT(record(ROWS[i].screen, ROWS[i].script).size(), 6000u);
        const std::string recorded = last_message(); // "[REPLAY] Recorded: run.lmr, 835 steps"
        const std::string expected =
            "[REPLAY] Replayed " + recorded.substr(recorded.find(", ") + 2) + ", all hashes equal";
        EXPECT_EQ(replay(), expected);
        const std::string own = config;
        config += "[input]\nright = Q\nrun = Q\n[gamepad]\ndeadzone = 0.9\n"; // those of the recording are used
        EXPECT_EQ(replay(i < 2 ? "100" : "max"), expected) << "a second replay, drawn at 100 times the speed";
        config = own;
        EXPECT_FALSE(replay_failed());
    }
}

TEST_F(ReplayTest, FinalStateDependsOnInputPerStepNotOnFrameRate) {
    const std::string route = std::string(ROUTE_BY_THE_CRYPTS).substr(0, 80);
    std::set<Uint64> ends;
    for (const int rate : {30, 60, 144}) {
        ASSERT_TRUE(start({"--screen", "platformer-demo", "--window-size", "320x180"}));
        size_t steps = 0;
        for (size_t number = 1; steps < ROUTE_STEPS_PER_LETTER * route.size(); number++) {
            const size_t then = number * 60 / static_cast<size_t>(rate);
            if (then > steps && steps % ROUTE_STEPS_PER_LETTER == 0)
                play(route_keys(route[steps / ROUTE_STEPS_PER_LETTER]));
            frame(1.0 / rate);
            steps = then;
        }
        ends.insert(platformer_demo_state_hash());
    }
    EXPECT_EQ(ends.size(), 1u);
}

// `./dev accept` stores the new recordings of an intended change.
TEST_F(ReplayTest, StoredRecordingsReplayBitForBit) {
    const std::string common = config;
    for (const Row &row : ROWS) {
        config = common + "[simulation]\nfixed_step_hz = " + std::to_string(row.step_hz) + "\n";
        write_file("run.lmr", read_file(std::string(RECORDINGS_STORED "/") + row.name + ".lmr"));
        const std::string end = replay();
        if (end.ends_with("all hashes equal")) continue;
        ADD_FAILURE() << row.name << ": " << end;
        write_file(std::string(RECORDINGS_WRITTEN "/") + row.name + ".lmr", record(row.screen, row.script));
    }
}

TEST_F(ReplayTest, ReplayRunsInRealTimeByDefault) {
    record("texture-demo", "60");
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_EQ(replay(nullptr), "[REPLAY] Replayed 60 steps, all hashes equal");
    EXPECT_GE(std::chrono::steady_clock::now() - begun, std::chrono::milliseconds(999));
}

TEST_F(ReplayTest, RecordingStartedAtScreenChangeIncludesHeldInputAndFade) {
    ASSERT_TRUE(start());
    play("pad:plug 1 pad:leftx=1 +D 1");
    ASSERT_TRUE(transition_fade_to(GAME_STATE_INPUT_DEMO, 3) && replay_record("run.lmr"));
    play("181 30 pad:leftx=.9 76 Escape 60"); // ends before the second hash, so the position must match too
    EXPECT_EQ(engine_get_state(), GAME_STATE_MAIN_MENU);
    replay_stop();
    EXPECT_EQ(last_message(), "[REPLAY] Recorded: run.lmr, 165 steps");
    EXPECT_EQ(replay(), "[REPLAY] Replayed 165 steps, all hashes equal");
    for (const bool closed : {false, true}) { // of the keys, only Ctrl+Q has an effect during a replay
        ASSERT_TRUE(start());
        play("Q Escape 2");
        closed ? push_event(SDL_EVENT_QUIT) : play("ctrl:Q");
        EXPECT_FALSE(frame());
        stop();
        EXPECT_EQ(last_message(), "[REPLAY] Replayed 2 steps, all hashes equal");
    }
}

// --- events ---

struct EventField {
    Uint32 first, last; // event types
    size_t offset, size;
    Uint32 max; // 0: any bytes, as in a float
};
#define FIELD(first, last, member, max)                                                                                \
    EventField { SDL_EVENT_##first, SDL_EVENT_##last, offsetof(SDL_Event, member), sizeof(SDL_Event::member), max }
const EventField FIELDS[] = {
    FIELD(KEY_DOWN, KEY_UP, key.scancode, SDL_SCANCODE_COUNT - 1),
    FIELD(KEY_DOWN, KEY_UP, key.key, 0),
    FIELD(KEY_DOWN, KEY_UP, key.mod, 0),
    FIELD(KEY_DOWN, KEY_UP, key.down, 1),
    FIELD(KEY_DOWN, KEY_UP, key.repeat, 1),
    FIELD(MOUSE_MOTION, MOUSE_MOTION, motion.state, 0),
    FIELD(MOUSE_MOTION, MOUSE_MOTION, motion.x, 0),
    FIELD(MOUSE_MOTION, MOUSE_MOTION, motion.y, 0),
    FIELD(MOUSE_MOTION, MOUSE_MOTION, motion.xrel, 0),
    FIELD(MOUSE_MOTION, MOUSE_MOTION, motion.yrel, 0),
    FIELD(MOUSE_BUTTON_DOWN, MOUSE_BUTTON_UP, button.button, 0),
    FIELD(MOUSE_BUTTON_DOWN, MOUSE_BUTTON_UP, button.down, 1),
    FIELD(MOUSE_BUTTON_DOWN, MOUSE_BUTTON_UP, button.clicks, 0),
    FIELD(MOUSE_BUTTON_DOWN, MOUSE_BUTTON_UP, button.x, 0),
    FIELD(MOUSE_BUTTON_DOWN, MOUSE_BUTTON_UP, button.y, 0),
    FIELD(MOUSE_WHEEL, MOUSE_WHEEL, wheel.direction, 1),
    FIELD(MOUSE_WHEEL, MOUSE_WHEEL, wheel.x, 0),
    FIELD(MOUSE_WHEEL, MOUSE_WHEEL, wheel.y, 0),
    FIELD(MOUSE_WHEEL, MOUSE_WHEEL, wheel.mouse_x, 0),
    FIELD(MOUSE_WHEEL, MOUSE_WHEEL, wheel.mouse_y, 0),
    FIELD(GAMEPAD_AXIS_MOTION, GAMEPAD_AXIS_MOTION, gaxis.axis, SDL_GAMEPAD_AXIS_COUNT - 1),
    FIELD(GAMEPAD_AXIS_MOTION, GAMEPAD_AXIS_MOTION, gaxis.value, 0),
    FIELD(GAMEPAD_BUTTON_DOWN, GAMEPAD_BUTTON_UP, gbutton.button, SDL_GAMEPAD_BUTTON_COUNT - 1),
    FIELD(GAMEPAD_BUTTON_DOWN, GAMEPAD_BUTTON_UP, gbutton.down, 1),
    FIELD(WINDOW_FIRST, WINDOW_LAST, window.data1, 0),
    FIELD(WINDOW_FIRST, WINDOW_LAST, window.data2, 0),
    FIELD(FINGER_DOWN, FINGER_CANCELED, tfinger.fingerID, 0),
    FIELD(FINGER_DOWN, FINGER_CANCELED, tfinger.x, 0),
    FIELD(FINGER_DOWN, FINGER_CANCELED, tfinger.y, 0),
    FIELD(FINGER_DOWN, FINGER_CANCELED, tfinger.dx, 0),
    FIELD(FINGER_DOWN, FINGER_CANCELED, tfinger.dy, 0),
    FIELD(FINGER_DOWN, FINGER_CANCELED, tfinger.pressure, 0),
    FIELD(DROP_FILE, DROP_POSITION, drop.x, 0),
    FIELD(DROP_FILE, DROP_POSITION, drop.y, 0),
    FIELD(QUIT, QUIT, type, SDL_EVENT_QUIT),
    FIELD(TEXT_INPUT, TEXT_INPUT, type, SDL_EVENT_TEXT_INPUT),
    FIELD(GAMEPAD_ADDED, GAMEPAD_REMAPPED, gdevice.type, SDL_EVENT_GAMEPAD_ADDED),
};

TEST(ReplayEvent, EveryFieldOfEveryEventRoundTrips) {
    std::mt19937 random(17);
    for (Uint32 type = 0; type < SDL_EVENT_USER; type++) {
        SDL_Event event = {}, back = {};
        event.type = type;
        const bool typed = type == SDL_EVENT_TEXT_INPUT,
                   dropped = type >= SDL_EVENT_DROP_FILE && type <= SDL_EVENT_DROP_POSITION;
        int fields = 0;
        for (int round = 0; round < 20; round++) {
            for (const EventField &field : FIELDS) {
                if (type < field.first || type > field.last || field.offset == 0) continue;
                Uint32 value[2] = {
                    static_cast<Uint32>(random()), static_cast<Uint32>(random())}; // or a whole-number float
                const float whole = static_cast<float>(static_cast<int>(random() % 2000) - 1000);
                if (field.max == 0 && round % 2) SDL_memcpy(value, &whole, sizeof whole);
                if (field.max != 0) value[0] %= field.max + 1;
                SDL_memcpy(reinterpret_cast<char *>(&event) + field.offset, value, field.size);
            }
            const std::string long_text(502 + static_cast<size_t>(round), 'z'); // from 512 bytes on cut to 511
            if (typed) event.text.text = long_text.c_str();
            if (dropped) event.drop.data = round % 2 ? nullptr : "a/b.png";
            if (!replay_event_is_recorded(&event)) break;
            Codec out = {};
            char text[REPLAY_EVENT_TEXT_SIZE] = "";
            replay_event_code(&out, &event, text);
            Codec in = codec_reader(out.bytes, out.size);
            replay_event_code(&in, &back, text);
            EXPECT_TRUE(!in.bad && in.at == in.size && back.type == type) << type;
            for (const EventField &field : FIELDS) {
                if (type < field.first || type > field.last) continue;
                const auto at = [&](SDL_Event &of) { return reinterpret_cast<char *>(&of) + field.offset; };
                EXPECT_EQ(SDL_memcmp(at(event), at(back), field.size), 0) << type << ", byte " << field.offset;
                fields++;
            }
            EXPECT_TRUE(!typed || back.text.text == long_text.substr(0, REPLAY_EVENT_TEXT_SIZE - 1));
            EXPECT_TRUE(!dropped || SDL_strcmp(back.drop.data, round % 2 ? "" : "a/b.png") == 0);
            codec_cleanup(&out);
        }
        EXPECT_EQ(replay_event_is_recorded(&event), fields > 0) << type << " is recorded and has fields";
    }
}

// --- invalid recordings ---

TEST_F(ReplayTest, RejectsInvalidRecordingsWithReason) {
    const std::string whole = record("input-demo", "+D 3s");
    const auto changed = [&](size_t at, char byte) { return whole.substr(0, at) + byte + whole.substr(at + 1); };
    const std::pair<std::string, const char *> cases[] = {
        {"", "it is not a recording"},
        {changed(0, 'X'), "it is not a recording"},
        {changed(4, 2), "its format version is not supported"},
        {changed(20, 'X'), "it is corrupt"},
        {whole.substr(0, 40), "it is corrupt"},
    };
    for (const auto &[bytes, why] : cases) {
        write_file("run.lmr", bytes);
        EXPECT_EQ(replay(), std::string("[REPLAY] run.lmr cannot be replayed: ") + why);
        EXPECT_TRUE(replay_failed());
    }
    write_file("run.lmr", changed(whole.size() - 3, 'X')); // in the second block
    EXPECT_EQ(replay(), "[REPLAY] After step 120: the recording is corrupt");
    set_environment("LUMARIND_REPLAY", nullptr);
    EXPECT_TRUE(start() && frame()) << "the next run";
    write_file("run.lmr", whole);
    config += "[simulation]\nfixed_step_hz = 50\n";
    EXPECT_EQ(replay(), "[REPLAY] The recording has 60 fixed steps per second, the configuration 50");
    fs::remove("run.lmr");
    EXPECT_TRUE(replay().starts_with("[REPLAY] run.lmr cannot be replayed: "));
    for (const std::string speed : {"fast", "0"})
        EXPECT_EQ(replay(speed.c_str()), "[REPLAY] LUMARIND_REPLAY_SPEED expects a number above 0 or max: " + speed);
}

} // namespace
