// Cinder Keep from title to credits: menus, checkpoints, ghost, and saves, also damaged ones.

#include "game.h"
#include "hud.h"
#include "keep/keep_fixture.h"
#include "lumarind/engine/engine.h"
#include "progress.h"
#include "support/stored.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class KeepGame : public KeepTest {
protected:
    const std::string save = user_file("saves/progress.txt");

    void step(int count) { frames(count, 1.0 / 60); }
    // Plays the script and returns the state after the fade.
    GameState state_after(const std::string &script) {
        play(script);
        step(80);
        return engine_get_state();
    }
    bool start_title() { return start({"--screen", "title", "--window-size", "64x36"}) && frame(); }
    static Level *level() { return const_cast<Level *>(play_level()); }
    void move_hero(SDL_FPoint feet) { // teleports the hero, who then touches what is there
        hero_place(&level()->hero, &level()->art, feet);
        step(3);
    }
    static SDL_FPoint position_of(ThingKind kind, int number) {
        return level()->things.items[things_find(&level()->things, kind, number)].feet;
    }
    void win_level() {
        move_hero(position_of(THING_EXIT, 0));
        EXPECT_EQ(level()->phase, LEVEL_WON);
    }
};

TEST_F(KeepGame, ScreensFollowFromTitleThroughBothLevelsToCreditsAndBack) {
    ASSERT_TRUE(start_title());
    EXPECT_EQ(state_after("Return"), state_of(SCREEN_LEVEL_1)) << "a new game";
    win_level();
    EXPECT_EQ(state_after("60 60 Space"), state_of(SCREEN_LEVEL_2));
    EXPECT_EQ(progress.reached, 2);
    EXPECT_GT(progress.levels[0].best_ms, 0);
    win_level();
    EXPECT_EQ(state_after("60 60 pad:a"), state_of(SCREEN_CREDITS)); // by a controller button
    EXPECT_TRUE(progress.finished);
    EXPECT_EQ(state_after("60 60 Escape"), state_of(SCREEN_TITLE));
    EXPECT_EQ(log.errors(), std::vector<std::string>());
}

TEST_F(KeepGame, IsPlayableWithControllerOnly) {
    ASSERT_TRUE(start_title());
    play("pad:plug 2 pad:dpdown=1 2 pad:dpdown=0 2 pad:dpup=1 2 pad:dpup=0 2"); // to the settings and back
    ASSERT_EQ(state_after("pad:a=1 2 pad:a=0"), state_of(SCREEN_LEVEL_1));
    char text[64];
    hud_sign_text("{jump}, {left}", text, sizeof text);
    EXPECT_STREQ(text, "A, D-pad left") << "the controller's label";
    const float x = level()->hero.body.pos.x;
    play("pad:leftx=1 60 pad:leftx=0 10");
    EXPECT_GT(level()->hero.body.pos.x, x + 100);
    play("pad:a=1 3");
    EXPECT_LT(level()->hero.body.vel.y, -100);
    play("pad:a=0 60 pad:x=1 2 pad:x=0");
    EXPECT_EQ(level()->hero.state, HERO_STRIKE);
    play("60 pad:b=1 2 pad:b=0");
    EXPECT_EQ(level()->hero.state, HERO_ROLL);
    play("60 pad:start=1 1 pad:start=0 2");
    EXPECT_TRUE(engine_is_paused());
    play("pad:b=1 1 pad:b=0 2");
    EXPECT_FALSE(engine_is_paused());
    EXPECT_NE(level()->hero.state, HERO_ROLL) << "the menu has handled the press";
}

TEST_F(KeepGame, MenusAreUsableWithMouseOnly) {
    ASSERT_TRUE(start({"--screen", "title", "--window-size", "800x450"}) && frame());
    EXPECT_EQ(state_after("move:150,180 2 drop:150,180"), state_of(SCREEN_LEVEL_1)); // the second line
    play("Escape 3");
    EXPECT_EQ(state_after("move:400,270 2 drop:400,270"), state_of(SCREEN_TITLE)); // the last one
}

TEST_F(KeepGame, PauseStopsLevelAndReturnsToTitle) {
    ASSERT_TRUE(start_level(1));
    step(30);
    const double before = level()->time;
    play("Escape");
    step(30);
    EXPECT_TRUE(engine_is_paused());
    EXPECT_NEAR(level()->time, before, 0.05);
    play("Escape 5");
    EXPECT_FALSE(engine_is_paused());
    play("pad:start");
    step(2);
    EXPECT_TRUE(engine_is_paused());
    EXPECT_EQ(state_after("Up 2 Return"), state_of(SCREEN_TITLE)); // the last line
}

TEST_F(KeepGame, SavedRunContinuesAtCheckpointWithItsItems) {
    ASSERT_TRUE(start_title());
    ASSERT_EQ(state_after("Return"), state_of(SCREEN_LEVEL_1));
    move_hero(position_of(THING_EMBER, 3));
    const SDL_FPoint beside_door = {position_of(THING_DOOR, 0).x + 32, position_of(THING_DOOR, 0).y};
    move_hero(beside_door);
    const Sign *sign = hud_sign(level());
    EXPECT_STREQ(sign ? sign->text : "", "Locked. The key hangs above");
    move_hero(position_of(THING_KEY, 0));
    move_hero(beside_door);
    EXPECT_EQ(hud_sign(level()), nullptr) << "the key has been taken";
    move_hero(position_of(THING_CHECKPOINT, 1));
    EXPECT_EQ(level()->embers, 1);
    const double time = level()->time;
    stop();
    progress = {}; // as after a restart of the program
    ASSERT_TRUE(start_title());
    ASSERT_EQ(progress_load_again(), PROGRESS_READ);
    engine_restart_state();
    step(2);
    EXPECT_EQ(state_after("Return"), state_of(SCREEN_LEVEL_1)) << "Continue is selected";
    EXPECT_EQ(level()->embers, 1);
    EXPECT_TRUE(level()->hero.has_key);
    EXPECT_FALSE(level()->whole_run);
    EXPECT_EQ(level()->checkpoint, things_find(&level()->things, THING_CHECKPOINT, 1));
    EXPECT_NEAR(level()->time, time, 2);
    move_hero(position_of(THING_DOOR, 0));
    EXPECT_FALSE(level()->hero.has_key);
    win_level();
    EXPECT_STREQ(hud_best_time(0).text, "-") << "a continued run sets no best time";
}

TEST_F(KeepGame, LosingAllHeartsRespawnsAtCheckpoint) {
    ASSERT_TRUE(start_level(1));
    move_hero(position_of(THING_CHECKPOINT, 0));
    for (int i = 0; i < HERO_HEARTS; i++) {
        level()->hero.invulnerable = 0;
        level_hurt_hero(level(), 0);
        step(30);
    }
    EXPECT_EQ(level()->phase, LEVEL_DEAD);
    step(120);
    EXPECT_EQ(level()->phase, LEVEL_PLAYING);
    EXPECT_EQ(level()->hero.hearts, HERO_HEARTS);
    EXPECT_EQ(level()->deaths, 1);
    EXPECT_NEAR(level()->hero.body.pos.x, position_of(THING_CHECKPOINT, 0).x, 1);
}

TEST_F(KeepGame, GhostReplaysBestRunAndDamagedGhostIsIgnored) {
    ASSERT_TRUE(start_level(1));
    hold({SDL_SCANCODE_RIGHT});
    step(60);
    const float ran = level()->hero.body.pos.x;
    hold({});
    const double then = level()->time;
    step(10);
    win_level();
    ASSERT_TRUE(start_level(1));
    GhostSample sample = {};
    ASSERT_TRUE(ghost_at(&level()->best, then, &sample));
    EXPECT_NEAR(sample.x, ran, 12);
    EXPECT_FALSE(ghost_at(&level()->best, 600, &sample));
    stop();
    std::string bytes = read_file(user_file("saves/ghost-1.bin"));
    bytes[bytes.size() / 2] ^= 4;
    write_file(user_file("saves/ghost-1.bin"), bytes);
    ASSERT_TRUE(start_level(1));
    EXPECT_EQ(level()->best.count, 0);
    EXPECT_EQ(log.errors(), std::vector<std::string>{"[GHOST] Damaged, not shown: saves/ghost-1.bin"});
}

TEST_F(KeepGame, ReadsSavesOfBothVersionsAndBacksUpDamagedOnes) {
    ASSERT_TRUE(start_title());
    progress = {.reached = 2, .finished = true, .levels = {{61230, 40, 3}, {0, 5, 9}}, .run = {}};
    progress.run.level = 1;
    progress.run.embers[1] = 0x8000000000000001u;
    ASSERT_TRUE(progress_save());
    const std::string intact = read_file(save);
    const Progress saved = progress;
    EXPECT_EQ(progress_load_again(), PROGRESS_READ);
    EXPECT_EQ(SDL_memcmp(&saved, &progress, sizeof saved), 0);
    write_file(save, "cinder-keep 1\nreached 2\nbest 83 0\n");
    EXPECT_EQ(progress_load_again(), PROGRESS_READ);
    EXPECT_EQ(progress.levels[0].best_ms, 83000);
    EXPECT_EQ(progress.reached, 2);

    int backed_up = 0; // every damage is detected, except for the letter case of the checksum
    for (size_t cut = 1; cut < intact.size() - 1; cut += 7) {
        std::string scratched = intact;
        scratched[cut] ^= 1;
        for (const std::string &damaged : {intact.substr(0, cut), scratched}) {
            write_file(save, damaged);
            progress_load_again();
            const bool new_game = progress.reached == 1 && progress.run.level == -1;
            EXPECT_TRUE(new_game) << damaged;
            backed_up += new_game && read_file(user_file("saves/progress.damaged.txt")) == damaged;
        }
    }
    EXPECT_GT(backed_up, 50);
    write_file(save, "cinder-keep 3\n");
    EXPECT_EQ(progress_load_again(), PROGRESS_DAMAGED) << "saved by a later version";
}

TEST_F(KeepGame, SaveIsAtomicIfProgramIsKilled) {
    ASSERT_TRUE(start_title());
    progress.levels[0].best_ms = 1;
    ASSERT_TRUE(progress_save());
    Sint64 max_saved = 1;
    for (int i = 0; i < 40; i++) {
        const pid_t child = fork();
        if (child == 0) {
            for (;; progress.levels[0].best_ms++) progress_save();
        }
        ASSERT_GT(child, 0);
        usleep(static_cast<useconds_t>(2000 + 700 * i));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        ASSERT_EQ(progress_load_again(), PROGRESS_READ) << "kill " << i;
        max_saved = SDL_max(max_saved, progress.levels[0].best_ms);
    }
    EXPECT_GT(max_saved, 40) << "hardly anything was saved before the kills";
}

TEST_F(KeepGame, BackgroundIsDrawnOnlyWhereCastleIsNotOpaque) {
    ASSERT_TRUE(start_level(1));
    const struct {
        const char *what;
        SDL_FRect tiles;
        bool open;
    } cases[] = {
        {"rock", {40, 28, 20, 2}, false},
        {"a wall with a ledge in front", {56, 34, 4, 3}, false},
        {"a window", {48, 33, 3, 5}, true},
        {"the sky", {4, 32, 2, 2}, true},
        {"outside the map", {-4, 2, 3, 3}, true}};
    for (const auto &c : cases) {
        const SDL_FRect area = {c.tiles.x * 16, c.tiles.y * 16, c.tiles.w * 16, c.tiles.h * 16};
        EXPECT_EQ(tile_world_find_open(level()->world, level()->layer_castle, area), c.open) << c.what;
    }
    EXPECT_TRUE(tile_world_find_open(level()->world, -1, {100, 100, 10, 10})) << "no such layer";
}

TEST_F(KeepGame, FailingCallsGiveStoredReports) {
    ASSERT_TRUE(start_title());
    expect_stored("failing-calls-keep.txt", screens_with_failing_calls(2));
}

TEST_F(KeepGame, RandomPlayMatchesStoredHashes) { expect_stored("random-play-keep.txt", random_play(2, 120)); }

} // namespace
