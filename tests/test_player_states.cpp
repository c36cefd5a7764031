// The player's state machine: transitions and their order of precedence. Stored recordings cover times and positions.

#include "player/player.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

constexpr float FLOOR_Y = 416;

class PlayerStatesTest : public ::testing::Test {
protected:
    PlayerStatesTest() {
        const SDL_FRect floor = {0, FLOOR_Y, 200, 40};
        EXPECT_TRUE(colliders_rects_add(&rects, &floor));
    }
    ~PlayerStatesTest() override { colliders_rects_cleanup(&rects); }
    void put(float y = FLOOR_Y) { player_init(&player, {100, y}, &rects, nullptr); }
    // Keys as letters: r and l run, d defends, o rolls, 1 to 3, 9 (invalid) and s (special) attack; h is a hit.
    void step(const std::string &keys) {
        const auto has = [&](char key) { return keys.find(key) != keys.npos; };
        const PlayerIntent intent = {
            .move_x = static_cast<float>(has('r') - has('l')),
            .roll = has('o'),
            .attack = has('1') + 2 * has('2') + 3 * has('3') + 4 * has('9') - has('-'),
            .special = has('s'),
            .defend = has('d'),
            .hurt = has('h')};
        player_fixed_update(&player, &intent, &rects, nullptr, 1.0 / 60);
    }

    ColliderRects rects = {};
    Player player = {};
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

} // namespace
