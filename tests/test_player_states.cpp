// The player's states: which follows which, how long they last, and what is kept of them.

#include "player/player.h"
#include "support/log_capture.h"
#include "toolkit/fireknight.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <string>
#include <vector>

namespace {

constexpr PlayerState NONE = PLAYER_STATE_NONE, IDLE = PLAYER_STATE_IDLE, RUN = PLAYER_STATE_RUN,
                      JUMP = PLAYER_STATE_JUMP, FALL = PLAYER_STATE_FALL, ROLL = PLAYER_STATE_ROLL,
                      ATK1 = PLAYER_STATE_ATK1, ATK2 = PLAYER_STATE_ATK2, ATK3 = PLAYER_STATE_ATK3,
                      SPATK = PLAYER_STATE_SPATK, AIRAT = PLAYER_STATE_AIRAT, DEFND = PLAYER_STATE_DEFND,
                      HURT = PLAYER_STATE_HURT, DEATH = PLAYER_STATE_DEATH;
constexpr float FLOOR_Y = 416, LEDGE_X = 500; // a floor from 0 to the ledge

// Asking for everything at once: what a state leaves out shows the order in which it looks.
constexpr PlayerIntent ALL = {1, false, true, 2, true, true, false};
constexpr PlayerIntent NOTHING = {};

class PlayerStatesTest : public ::testing::Test {
protected:
    PlayerStatesTest() {
        const SDL_FRect floor = {-2000, FLOOR_Y, LEDGE_X + 2000, 40};
        EXPECT_TRUE(colliders_rects_add(&rects, &floor));
        put();
    }
    ~PlayerStatesTest() override { colliders_rects_cleanup(&rects); }

    void put(float x = 100, float y = FLOOR_Y) { player_init(&player, {x, y}, &rects, &tris); }
    PlayerState step(const PlayerIntent &intent = NOTHING) {
        player_fixed_update(&player, &intent, &rects, &tris, dt);
        return player.state;
    }
    // Steps until the state is left; the seconds spent in it.
    double time_in_state(const PlayerIntent &intent = NOTHING) {
        const PlayerState state = player.state;
        int count = 0;
        while (player.state == state && count < 10 / dt) step(intent), count++;
        return count * dt;
    }
    void wait(double seconds, const PlayerIntent &intent = NOTHING) {
        for (long left = std::lround(seconds / dt); left > 0; left--) step(intent);
    }

    ColliderRects rects = {};
    ColliderTris tris = {};
    Player player = {};
    double dt = 1.0 / 60;
    LogCapture log;
};

// --- which follows which ---

struct Situation {
    bool grounded;
    bool jump_ready = false;
    double state_time = 0; // before the step
    bool clip_over = false;
    float vel_y = 0;
    float last_move_x = 0;
    Sint32 health = 3;
};

struct Row {
    std::vector<PlayerState> from;
    Situation at;
    PlayerIntent intent;
    PlayerState next; // NONE: it stays
};

constexpr Situation GROUND = {true}, AIR = {false};
constexpr Situation JUMP_ON_GROUND = {true, true}, JUMP_IN_AIR = {false, true};
constexpr PlayerIntent RIGHT = {.move_x = 1}, ROLL_PRESS = {.roll = true}, DEFEND = {.defend = true},
                       SPECIAL = {.special = true}, HIT = {.hurt = true};
constexpr PlayerIntent attack(Sint32 number) { return {.attack = number}; }
constexpr PlayerIntent all_but_special(Sint32 number) { return {1, false, true, number, false, true, false}; }
constexpr PlayerIntent ALL_AND_A_HIT = {1, false, true, 2, true, true, true};
Situation after(double state_time, bool jump_ready = false, float last_move_x = 0) {
    return {.grounded = true, .jump_ready = jump_ready, .state_time = state_time, .last_move_x = last_move_x};
}

const std::vector<PlayerState> LIGHT = {ATK1, ATK2, SPATK}, ATTACKING = {ATK1, ATK2, ATK3, SPATK},
                               VULNERABLE = {IDLE, RUN, JUMP, FALL, ROLL, ATK1, ATK2, ATK3, SPATK, AIRAT, DEFND};
const std::vector<Row> ROWS = {
    // standing and running, by falling precedence
    {{IDLE, RUN}, JUMP_IN_AIR, ALL, JUMP},
    {{IDLE, RUN}, JUMP_ON_GROUND, ALL, JUMP},
    {{IDLE, RUN}, AIR, ALL, FALL},
    {{IDLE, RUN}, GROUND, ALL, SPATK},
    {{IDLE, RUN}, GROUND, all_but_special(1), ATK1},
    {{IDLE, RUN}, GROUND, all_but_special(2), ATK2},
    {{IDLE, RUN}, GROUND, all_but_special(3), ATK3},
    {{IDLE, RUN}, GROUND, all_but_special(4), DEFND},
    {{IDLE, RUN}, GROUND, {.move_x = 1, .roll = true}, ROLL},
    {{IDLE}, GROUND, RIGHT, RUN},
    {{IDLE}, GROUND, attack(4), NONE},
    {{IDLE}, GROUND, attack(-1), NONE},
    {{RUN}, GROUND, RIGHT, NONE},
    {{RUN}, GROUND, NOTHING, IDLE},
    // rising; the ground is still near in the first step
    {{JUMP}, {.grounded = false, .jump_ready = true, .vel_y = 0}, ALL, AIRAT},
    {{JUMP}, {.grounded = true, .vel_y = -200}, attack(2), ATK2},
    {{JUMP}, {.grounded = false, .vel_y = -200}, attack(-7), AIRAT},
    {{JUMP}, {.grounded = false, .jump_ready = true, .vel_y = -200}, {.move_x = 1, .roll = true, .defend = true}, NONE},
    {{JUMP}, {.grounded = false, .vel_y = 0}, DEFEND, FALL},
    {{JUMP}, {.grounded = true, .vel_y = 0}, RIGHT, FALL},
    // falling
    {{FALL}, JUMP_IN_AIR, ALL, JUMP},
    {{FALL}, JUMP_ON_GROUND, NOTHING, JUMP},
    {{FALL}, AIR, attack(4), AIRAT},
    {{FALL}, AIR, SPECIAL, AIRAT},
    {{FALL}, AIR, {.move_x = 1, .roll = true, .defend = true}, NONE},
    {{FALL}, GROUND, ALL, SPATK},
    {{FALL}, GROUND, {.move_x = 1, .defend = true}, DEFND},
    {{FALL}, GROUND, {.move_x = 1, .roll = true}, RUN},
    {{FALL}, GROUND, NOTHING, IDLE},
    // rolling
    {{ROLL}, {.grounded = false, .jump_ready = true, .state_time = 0.7, .clip_over = true}, ALL, NONE},
    {{ROLL}, {.grounded = false, .jump_ready = true, .state_time = 0.8}, ALL, FALL},
    {{ROLL}, after(0.8, true), ALL, RUN},
    {{ROLL}, after(0.8), NOTHING, IDLE},
    // attacks on the ground: early, late, over
    {ATTACKING, after(0.2, true), ALL, NONE},
    {{ATK3}, after(0.3, true), ALL, NONE},
    {LIGHT, after(0.25, true), ALL, JUMP},
    {LIGHT, after(0.25), ALL, ROLL},
    {{ATK3}, after(0.35, true), ALL, JUMP},
    {ATTACKING, after(0.4), RIGHT, RUN},
    {ATTACKING, after(0.4, false, -1), RIGHT, RUN},
    {ATTACKING, after(0.4, false, 1), RIGHT, NONE},
    {ATTACKING, after(0.4, false, 1), NOTHING, NONE},
    {ATTACKING, after(0.4), {.attack = 1, .special = true, .defend = true}, NONE},
    {ATTACKING, {.grounded = false, .state_time = 0.4}, NOTHING, NONE},
    {ATTACKING, {.grounded = false, .state_time = 0.4, .clip_over = true}, NOTHING, FALL},
    {{ATK1, HURT}, {.grounded = true, .state_time = 0.1, .clip_over = true}, NOTHING, IDLE},
    {{ATK1, HURT}, {.grounded = true, .state_time = 0.1, .clip_over = true}, ALL, RUN},
    // in the air
    {{AIRAT}, {.grounded = true, .jump_ready = true, .clip_over = true}, ALL, RUN},
    {{AIRAT}, GROUND, NOTHING, IDLE},
    {{AIRAT}, {.grounded = false, .jump_ready = true}, ALL, NONE},
    {{AIRAT}, {.grounded = false, .clip_over = true}, ALL, FALL},
    // defending
    {{DEFND}, JUMP_IN_AIR, ALL, FALL},
    {{DEFND}, JUMP_ON_GROUND, ALL, NONE},
    {{DEFND}, GROUND, NOTHING, IDLE},
    {{DEFND}, GROUND, {.move_x = -1, .roll = true}, RUN},
    // hurt and dead
    {{HURT}, JUMP_ON_GROUND, ALL, NONE},
    {{HURT}, {.grounded = false, .clip_over = true}, ALL, FALL},
    {{DEATH}, {.grounded = false, .jump_ready = true, .state_time = 9, .clip_over = true}, ALL_AND_A_HIT, NONE},
    {{HURT}, JUMP_ON_GROUND, ALL_AND_A_HIT, NONE},
    {VULNERABLE, JUMP_ON_GROUND, ALL_AND_A_HIT, HURT},
    {VULNERABLE, {.grounded = true, .health = 1}, ALL_AND_A_HIT, DEATH},
    {{IDLE}, {.grounded = true, .health = 2}, HIT, HURT},
};

TEST_F(PlayerStatesTest, EachStateLooksForItsNextInOrder) {
    for (const Row &row : ROWS) {
        for (const PlayerState from : row.from) {
            put(100, row.at.grounded ? FLOOR_Y : FLOOR_Y - 200);
            player_set_state(&player, from);
            player.body.vel.y = row.at.vel_y;
            player.state_time = row.at.state_time;
            player.anim.finished = row.at.clip_over;
            player.anim.playing = !row.at.clip_over;
            player.health = row.at.health;
            player.last_move_x = row.at.last_move_x;
            player.coyote = player.jump_buffer = row.at.jump_ready ? 1 : 0;
            const int entered = player.history_count;
            const PlayerState next = step(row.intent);
            const auto at = std::string(player_state_name(from)) + ", row " + std::to_string(&row - ROWS.data());
            EXPECT_STREQ(player_state_name(next), player_state_name(row.next == NONE ? from : row.next)) << at;
            EXPECT_EQ(player.history_count, entered + (row.next != NONE)) << at;
            const bool hit = row.next == HURT || row.next == DEATH;
            EXPECT_EQ(player.health, row.at.health - hit) << at;
        }
    }
}

TEST_F(PlayerStatesTest, StatesHaveTheirNamesAndClips) {
    const std::pair<const char *, int> rows[] = {
        {"IDLE", FIREKNIGHT_IDLE},     {"RUN", FIREKNIGHT_RUN},      {"JUMP", FIREKNIGHT_J_UP},
        {"FALL", FIREKNIGHT_J_DOWN},   {"ROLL", FIREKNIGHT_ROLL},    {"ATK1", FIREKNIGHT_1_ATK},
        {"ATK2", FIREKNIGHT_2_ATK},    {"ATK3", FIREKNIGHT_3_ATK},   {"SPATK", FIREKNIGHT_SP_ATK},
        {"AIRAT", FIREKNIGHT_AIR_ATK}, {"DEFND", FIREKNIGHT_DEFEND}, {"HURT", FIREKNIGHT_TAKE_HIT},
        {"DEATH", FIREKNIGHT_DEATH},
    };
    for (int i = 1; i <= 13; i++) {
        const auto &[name, clip] = rows[i - 1];
        player_set_state(&player, static_cast<PlayerState>(i));
        EXPECT_STREQ(player_state_name(player.state), name);
        EXPECT_EQ(player.anim.clip, clip) << name;
    }
    for (const int wrong : {0, 14, -1, 1000}) {
        EXPECT_STREQ(player_state_name(static_cast<PlayerState>(wrong)), "NONE");
        player_set_state(&player, static_cast<PlayerState>(wrong));
        EXPECT_EQ(player.state, DEATH);
    }
    EXPECT_EQ(log.errors().size(), 3u) << "0 is no mistake";
}

// --- what each does to the body ---

TEST_F(PlayerStatesTest, BeginsIdleOnTheGroundWithThreeHealth) {
    EXPECT_TRUE(player.state == IDLE && player.prev_state == NONE && player.body.grounded && player.health == 3);
    EXPECT_TRUE(player.history_count == 1 && player.history[0] == IDLE && player.body.w == 20 && player.body.h == 40);
    EXPECT_TRUE(player.anim.playing && player.anim.set == &fireknight_animations);
}

TEST_F(PlayerStatesTest, SpeedsAreAsTheAbilitySays) {
    for (const float move : {1.0f, -1.0f, 0.5f}) {
        put();
        step({.move_x = move});
        EXPECT_EQ(player.body.vel.x, 250 * move);
        EXPECT_EQ(player.body.facing, move > 0 ? 1 : -1);
        EXPECT_EQ(player.last_move_x, move);
    }
    step(RIGHT);
    EXPECT_TRUE(player.body.prev_pos.x == 102 && player.body.pos.x == 106) << player.body.pos.x;
    step({.move_x = -1});
    step({.roll = true}); // standing still turns nobody round
    wait(0.5, RIGHT);
    EXPECT_TRUE(player.state == ROLL && player.body.vel.x == -300 && player.body.facing == -1);
    for (const PlayerState rooted : {ATK1, ATK2, ATK3, SPATK, DEFND, HURT, DEATH}) {
        put(100, 300);
        player.body.vel.x = 250;
        player_set_state(&player, rooted);
        EXPECT_EQ(player.body.vel.x, 0);
    }
    put(1000, 0);
    float fastest = 0;
    for (int i = 0; i < 300; i++) step(), fastest = std::max(fastest, player.body.vel.y);
    EXPECT_EQ(fastest, 600) << "at the end of a long fall";
}

TEST_F(PlayerStatesTest, AJumpIsPerformedAtOnceAndOnlyOnce) {
    step({.jump = true});
    EXPECT_EQ(player.state, JUMP);
    EXPECT_FLOAT_EQ(player.body.vel.y, static_cast<float>(-275 + 400 * dt));
    EXPECT_TRUE(player.coyote == 0 && player.jump_buffer == 0);
    time_in_state();
    EXPECT_EQ(player.state, FALL);
    EXPECT_NEAR(FLOOR_Y - player.body.pos.y, 275.0 * 275 / 2 / 400, 3) << "its height";
    time_in_state();
    EXPECT_EQ(player.state, IDLE);
}

TEST_F(PlayerStatesTest, CancellingAnAttackWalksAtOnce) {
    for (const bool roll : {false, true}) {
        put();
        step(attack(1));
        wait(0.3);
        EXPECT_EQ(step({.move_x = -1, .roll = roll}), roll ? ROLL : RUN);
        EXPECT_EQ(player.body.vel.x, roll ? -300 : -250) << "the roll goes where the walk has turned";
        EXPECT_EQ(player.body.facing, -1);
    }
}

TEST_F(PlayerStatesTest, ThreeHitsAreTheEnd) {
    for (const PlayerState expected : {HURT, HURT, DEATH}) {
        EXPECT_EQ(step(HIT), expected);
        const int health = player.health;
        wait(0.5, HIT);
        EXPECT_EQ(player.health, health) << "no hit counts while it is hurt";
        wait(0.5);
    }
    wait(5, ALL);
    EXPECT_TRUE(player.state == DEATH && player.health == 0 && player.anim.finished);
}

// --- timings, at any step length ---

class PlayerTimingTest : public PlayerStatesTest, public ::testing::WithParamInterface<double> {
protected:
    PlayerTimingTest() { dt = 1 / GetParam(); }
};
INSTANTIATE_TEST_SUITE_P(AtRates, PlayerTimingTest, ::testing::Values(30, 60, 120, 240));

TEST_P(PlayerTimingTest, MovesLastAsLongAsTheyShould) {
    const struct {
        PlayerIntent start;
        PlayerState state;
        double seconds;
    } cases[] = {
        {attack(1), ATK1, 1.1}, {attack(2), ATK2, 1.9}, {attack(3), ATK3, 2.8},
        {SPECIAL, SPATK, 1.8},  {HIT, HURT, 0.6},       {ROLL_PRESS, ROLL, 0.8},
    };
    for (const auto &c : cases) {
        put(-1000);
        ASSERT_EQ(step(c.start), c.state);
        EXPECT_NEAR(time_in_state(), c.seconds, 1.01 * dt) << player_state_name(c.state);
        EXPECT_EQ(player.state, IDLE);
    }
    put(1000, 0);
    step();
    ASSERT_EQ(step(SPECIAL), AIRAT);
    EXPECT_NEAR(time_in_state(RIGHT), 0.8, 1.01 * dt);
    EXPECT_EQ(player.state, FALL);
    put(0);
    step(ROLL_PRESS);
    time_in_state();
    EXPECT_NEAR(player.body.pos.x, 300 * 0.8, 300 * 2.01 * dt + 1)
        << "it moves in the step it begins and the one it ends in";
}

TEST_P(PlayerTimingTest, AJumpPressIsRememberedUntilLanding) {
    for (const double early : {0.05, 0.15}) {
        put(100, FLOOR_Y - 150);
        step();
        Player ahead = player; // the same fall, to learn when it ends
        int steps = 0;
        while (!ahead.body.grounded) player_fixed_update(&ahead, &NOTHING, &rects, &tris, dt), steps++;
        wait(steps * dt - early);
        EXPECT_EQ(step({.jump = true}), FALL);
        while (!player.body.grounded) step();
        EXPECT_EQ(step(), early < 0.12 ? JUMP : IDLE) << early;
    }
}

TEST_P(PlayerTimingTest, TheLedgeIsStillThereForAMoment) {
    for (const double late : {0.05, 0.15}) {
        put(LEDGE_X - 20);
        while (player.body.grounded) step(RIGHT);
        wait(late, RIGHT);
        EXPECT_EQ(player.state, FALL);
        EXPECT_EQ(step({.move_x = 1, .jump = true}), late < 0.1 ? JUMP : FALL) << late;
        for (int i = 0; i < 5; i++) EXPECT_NE(step({.move_x = 1, .jump = true}), IDLE);
        EXPECT_EQ(std::count(player.history, player.history + 8, JUMP), late < 0.1) << "one jump from the air at most";
    }
}

// --- the history ---

TEST_F(PlayerStatesTest, TheHistoryKeepsTheLastEight) {
    const PlayerState entered[] = {RUN, JUMP, FALL, ROLL, ATK1, ATK2, ATK3, SPATK, AIRAT, DEFND};
    for (const PlayerState state : entered) {
        player_set_state(&player, state);
        player_set_state(&player, state);
        player_set_state(&player, NONE);
    }
    ASSERT_EQ(player.history_count, 11);
    for (int i = 0; i < 8; i++) EXPECT_EQ(player.history[(player.history_count - 8 + i) % 8], entered[2 + i]);
}

TEST_F(PlayerStatesTest, OnlyANewStateStartsItsClip) {
    wait(0.45);
    const double time = player.state_time;
    const int frame = player.anim.frame;
    player_set_state(&player, IDLE);
    EXPECT_TRUE(player.state_time == time && player.anim.frame == frame && frame > 0);
    animation_pause(&player.anim);
    player_set_state(&player, RUN);
    EXPECT_TRUE(player.state_time == 0 && player.anim.frame == 0 && player.anim.playing && player.prev_state == IDLE);
}

} // namespace
