// The player's state machine: transitions, their order of precedence, times and positions under scripted input.

#include "player/player.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr float FLOOR_Y = 416, LEDGE_X = 500; // a floor that ends at the ledge

class PlayerStatesTest : public ::testing::Test {
protected:
    PlayerStatesTest() {
        const SDL_FRect floor = {-2000, FLOOR_Y, LEDGE_X + 2000, 40}, ceiling = {200, FLOOR_Y - 61, 60, 20};
        const Tri slope = {{-100, FLOOR_Y - 100}, {-100, FLOOR_Y}, {0, FLOOR_Y}};
        EXPECT_TRUE(colliders_rects_add(&rects, &floor) && colliders_rects_add(&rects, &ceiling));
        EXPECT_TRUE(colliders_tris_add(&tris, &slope));
    }
    ~PlayerStatesTest() override {
        colliders_rects_cleanup(&rects);
        colliders_tris_cleanup(&tris);
    }
    void put(float y = FLOOR_Y) { player_init(&player, {100, y}, &rects, &tris); }
    // Keys as letters: r, l, q (left at half speed) and d (defend) are held; pressed in the first step are j (jump),
    // o (roll), 1 to 3 and 9 (invalid) and s (special) for attacks; h is a hit.
    void step(const std::string &keys, bool first = true) {
        const auto held = [&](char key) { return keys.find(key) != keys.npos; };
        const auto pressed = [&](char key) { return first && held(key); };
        const PlayerIntent intent = {
            .move_x = static_cast<float>(held('r') - held('l')) - 0.5f * static_cast<float>(held('q')),
            .jump = pressed('j'),
            .roll = pressed('o'),
            .attack = pressed('1') + 2 * pressed('2') + 3 * pressed('3') + 4 * pressed('9') - pressed('-'),
            .special = pressed('s'),
            .defend = held('d'),
            .hurt = pressed('h')};
        player_fixed_update(&player, &intent, &rects, &tris, 1 / rate);
    }
    std::string play(const std::string &script);

    ColliderRects rects = {};
    ColliderTris tris = {};
    Player player = {};
    double rate = 60; // steps per second
    LogCapture log;
};

// --- transitions ---

// A case is a situation, ":" and keys, "=" and the next state, or "-" to stay. A situation is G on the ground or A in
// the air; J with a jump ready; F with the clip finished; U rising; R or L after a step in that direction; t25 after
// 0.25 s in the state; n1 with a health of 1. Several keys at once test the order of precedence.
const std::pair<const char *, const char *> MOVES[] = {
    {"IDLE RUN", "AJ:ro2sd=JUMP GJ:ro2sd=JUMP A:ro2sd=FALL G:ro2sd=SPATK G:ro1d=ATK1 G:ro2d=ATK2 G:ro3d=ATK3 "
                 "G:ro9d=DEFND G:ro=ROLL"},
    {"IDLE", "G:r=RUN G:9=- G:-=- Gn2:h=HURT"},
    {"RUN", "G:r=- G:=IDLE"},
    // in the first step of a jump the ground is still close
    {"JUMP", "AJ:ro2sd=AIRAT GU:2=ATK2 AU:-=AIRAT AUJ:rod=- A:d=FALL G:r=FALL"},
    {"FALL", "AJ:ro2sd=JUMP GJ:=JUMP A:9=AIRAT A:s=AIRAT A:rod=- G:ro2sd=SPATK G:rd=DEFND G:ro=RUN G:=IDLE"},
    {"ROLL", "AJFt70:ro2sd=- AJt80:ro2sd=FALL GJt80:ro2sd=RUN Gt80:=IDLE"},
    {"ATK1 ATK2 SPATK ATK3", "GJt20:ro2sd=- Gt40:r=RUN GLt40:r=RUN GRt40:r=- GRt40:=- Gt40:1sd=- At40:=- AFt40:=FALL"},
    {"ATK1 ATK2 SPATK", "GJt25:ro2sd=JUMP Gt25:ro2sd=ROLL"},
    {"ATK3", "GJt30:ro2sd=- GJt35:ro2sd=JUMP"},
    {"ATK1 HURT", "GFt10:=IDLE GFt10:ro2sd=RUN"},
    {"AIRAT", "GJF:ro2sd=RUN G:=IDLE AJ:ro2sd=- AF:ro2sd=FALL"},
    {"DEFND", "AJ:ro2sd=FALL GJ:ro2sd=- G:=IDLE G:lo=RUN"},
    {"HURT", "GJ:ro2sd=- AF:ro2sd=FALL GJ:ro2sdh=-"},
    {"DEATH", "AJFt99:ro2sdh=-"},
    {"IDLE RUN JUMP FALL ROLL ATK1 ATK2 ATK3 SPATK AIRAT DEFND", "GJ:ro2sdh=HURT Gn1:ro2sdh=DEATH"},
};

TEST_F(PlayerStatesTest, TransitionsFollowOrderOfPrecedence) {
    for (const auto &[states, moves] : MOVES) {
        std::istringstream froms(states);
        for (std::string from, move; froms >> from;) {
            int state = 1;
            while (from != player_state_name(static_cast<PlayerState>(state))) ASSERT_LT(state++, PLAYER_STATE_COUNT);
            for (std::istringstream words(moves); words >> move;) {
                const size_t keys = move.find(':'), end = move.find('=');
                const auto has = [&](char letter) { return move.find(letter) < keys; };
                const auto number = [&](char letter) { return std::stoi(move.substr(move.find(letter) + 1)); };
                put(has('G') ? FLOOR_Y : FLOOR_Y - 200);
                player_set_state(&player, static_cast<PlayerState>(state));
                player.body.vel.y = has('U') ? -200 : 0;
                player.state_time = has('t') ? number('t') / 100.0 : 0;
                player.anim.finished = has('F');
                player.anim.playing = !has('F');
                const int health = player.health = has('n') ? number('n') : 3, entered = player.history_count;
                player.last_move_x = static_cast<float>(has('R') - has('L'));
                player.coyote = player.jump_buffer = has('J');
                step(move.substr(keys + 1, end - keys - 1));
                const std::string next = move.substr(end + 1);
                EXPECT_EQ(player_state_name(player.state), next == "-" ? from : next) << from << " " << move;
                EXPECT_EQ(player.history_count, entered + (next != "-")) << from << " " << move;
                EXPECT_EQ(player.health, health - (next == "HURT" || next == "DEATH")) << from << " " << move;
            }
        }
    }
}

TEST_F(PlayerStatesTest, StatesHaveNamesAndClips) {
    std::ostringstream states;
    put();
    for (int i = 1; i < PLAYER_STATE_COUNT; i++) {
        player_set_state(&player, static_cast<PlayerState>(i));
        states << player_state_name(player.state) << " " << animation_clip(&player.anim)->name << ", ";
    }
    EXPECT_EQ(
        states.str(), "IDLE idle, RUN run, JUMP j_up, FALL j_down, ROLL roll, ATK1 1_atk, ATK2 2_atk, ATK3 3_atk, "
                      "SPATK sp_atk, AIRAT air_atk, DEFND defend, HURT take_hit, DEATH death, ");
    for (const int wrong : {0, 14, -1, 1000}) {
        EXPECT_STREQ(player_state_name(static_cast<PlayerState>(wrong)), "NONE");
        player_set_state(&player, static_cast<PlayerState>(wrong));
        EXPECT_EQ(player.state, PLAYER_STATE_DEATH);
    }
    EXPECT_EQ(log.errors().size(), 3u) << "0 is not an error";
}

// --- times and positions ---

// Plays words of keys, ":" and 1/30 s. Returns the states in the order entered, each with its step, and the final
// state: previous and current x, y, velocity, facing, health, and the clip's frame.
std::string PlayerStatesTest::play(const std::string &script) {
    std::istringstream words(script);
    std::ostringstream trace;
    std::vector<Sint32> entered = {PLAYER_STATE_IDLE};
    int steps = 0;
    for (std::string word; words >> word;) {
        const size_t colon = word.find(':');
        const int end = steps + std::stoi(word.substr(colon + 1)) * static_cast<int>(rate) / 30;
        for (bool first = true; steps < end; first = false, steps++) {
            step(word.substr(0, colon), first);
            if (player.state == entered.back()) continue;
            trace << player_state_name(player.state) << ":" << steps << " ";
            entered.push_back(player.state);
        }
    }
    EXPECT_EQ(player.history_count, static_cast<Sint32>(entered.size())) << script;
    for (size_t i = entered.size() - std::min<size_t>(entered.size(), 8); i < entered.size(); i++) {
        EXPECT_EQ(player.history[i % 8], entered[i]) << script;
    }
    const PlayerBody &body = player.body;
    trace << "| " << body.prev_pos.x << ">" << body.pos.x << " " << body.pos.y << " v " << body.vel.x << " "
          << body.vel.y << " " << body.facing << " h" << player.health << " #" << player.anim.frame;
    return trace.str();
}

TEST_F(PlayerStatesTest, ScriptedInputGivesExpectedStatesTimesAndPositions) {
    const struct {
        double rate;
        const char *script, *trace;
    } rows[] = {
        // moves last as long as their clips, the roll 0.8 s; the third hit kills
        {30, "1:40 2:60 3:90 s:60 o:30 .:14",
         "ATK1:0 IDLE:33 ATK2:40 IDLE:97 ATK3:100 IDLE:184 SPATK:190 IDLE:244 ROLL:250 IDLE:275 | 360>360 416 v 0 0 1 "
         "h3 #6"},
        {240, "1:40 2:60 3:90 s:60 o:30 .:14",
         "ATK1:0 IDLE:264 ATK2:320 IDLE:776 ATK3:800 IDLE:1472 SPATK:1520 IDLE:1952 ROLL:2000 IDLE:2193 | 342>343 416 "
         "v 0 0 1 h3 #6"},
        {60, "h:10 h:8 .:10 h:30 hr:90 rjo:10",
         "HURT:0 IDLE:36 HURT:56 IDLE:92 DEATH:116 | 100>100 416 v 0 6.66667 1 h0 #12"},
        // a jump's height, and a jump under a ceiling so low that the buffered press is still valid on landing
        {60, "q:5 r:2 rj:60 .:9", "RUN:0 JUMP:14 FALL:56 RUN:96 FALL:114 | 596>596 512 v 0 273.333 1 h3 #0"},
        {60, "r:13 j:50", "RUN:0 JUMP:26 FALL:27 IDLE:30 | 208>208 416 v 0 6.66667 1 h3 #0"},
        // jump buffering for 0.12 s, coyote time for 0.1 s
        {60, "j:38 j:9", "JUMP:0 FALL:42 JUMP:82 | 100>100 370 v 0 -195 1 h3 #2"},
        {60, "j:37 j:9", "JUMP:0 FALL:42 IDLE:82 | 100>100 416 v 0 6.66667 1 h3 #1"},
        {120, "r:52 rj:9", "RUN:0 FALL:197 JUMP:208 | 606>608 356 v 250 -155 1 h3 #2"},
        {120, "r:53 rj:9", "RUN:0 FALL:197 | 615>617 460 v 250 186.667 1 h3 #1"},
        // cancelling an attack: by turning, by a roll, and not by the direction held before
        {60, "1:8 lo:30 .:2 2:7 r:3 .:1 s:8 lj:3",
         "ATK1:0 ROLL:16 FALL:64 AIRAT:80 RUN:98 IDLE:100 SPATK:102 JUMP:118 | -187>-191 391 v -250 -235 -1 h3 #1"},
        {60, "r:3 r3:12 ro:3 r:40 l3:10 r:3",
         "RUN:0 ATK3:6 ROLL:30 RUN:78 FALL:113 AIRAT:116 | 531>535 471 v 250 206.667 1 h3 #4"},
        // an air attack and a long fall
        {60, "r:52 rs:30 r:60", "RUN:0 FALL:99 AIRAT:104 FALL:152 | 1279>1283 1851 v 250 600 1 h3 #1"},
        {60, "j:5 l1:50", "JUMP:0 AIRAT:10 RUN:54 FALL:59 RUN:100 | -312>-317 416 v -250 0 -1 h3 #1"},
        // defending, and walking up and down a slope
        {60, "d:9 ld:9 l:40 .:5", "DEFND:0 RUN:36 FALL:86 | -229>-229 411 v 0 273.333 -1 h3 #0"},
        {60, "l:30 r:20", "RUN:0 FALL:49 RUN:72 | 13>17 416 v 250 0 1 h3 #4"},
    };
    for (const auto &row : rows) {
        put();
        rate = row.rate;
        EXPECT_EQ(play(row.script), row.trace) << row.script << " at " << rate;
    }
}

} // namespace
