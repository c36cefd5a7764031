// Soak test of Cinder Keep: random keys, mouse, controllers, resizes and stalls, from a printed seed. Fails on
// sanitizer findings and on logged errors.
//   LUMARIND_SOAK_FRAMES  number of frames (default 4000)
//   LUMARIND_SOAK_SEED    seed (default 1)

#include "game.h"
#include "keep/keep_fixture.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/transition.h"

#include <SDL3/SDL_video.h>

#include <cinttypes>

namespace {

class KeepSoak : public KeepTest {
protected:
    Uint64 random = 0, seed = 0, done = 0;
    std::unique_ptr<VirtualGamepad> pad;
    std::set<SDL_Scancode> held;

    int below(int limit) { return SDL_rand_r(&random, limit); }
    bool one_in(int odds) { return below(odds) == 0; }

    void apply_random_input() {
        constexpr const char *KEYS[] = {"Left", "Right",  "Up",     "Down",      "Space",  "J", "K",  "Left_Shift",
                                        "P",    "Return", "Escape", "Backspace", "Delete", "W", "F3", "F12"};
        constexpr SDL_Scancode HELD[] = {SDL_SCANCODE_LEFT, SDL_SCANCODE_RIGHT, SDL_SCANCODE_RIGHT, SDL_SCANCODE_SPACE};
        const int what = below(100);
        if (what < 45) {
            const int key = below(static_cast<int>(std::size(KEYS)));
            if (key < 8 || one_in(12)) play(KEYS[key]);
        } else if (what < 75) {
            const SDL_Scancode key = HELD[below(4)];
            one_in(3) ? (void)held.erase(key) : (void)held.insert(key);
            hold(held);
        } else if (what < 82) {
            const std::string at = std::to_string(below(700)) + "," + std::to_string(below(400));
            play("move:" + at);
            if (one_in(6)) play("drop:" + at);
        } else if (what < 96 && pad) {
            pad->set(static_cast<SDL_GamepadButton>(below(SDL_GAMEPAD_BUTTON_COUNT)), one_in(2));
            pad->set(SDL_GAMEPAD_AXIS_LEFTX, 2 * SDL_randf_r(&random) - 1);
        } else if (one_in(3)) {
            pad = pad ? nullptr : std::make_unique<VirtualGamepad>("Soak Pad", one_in(2), one_in(2));
        } else if (one_in(4)) {
            SDL_SetWindowSize(engine->window, 320 + below(400), 180 + below(240));
        } else if (one_in(10)) {
            push_event(one_in(2) ? SDL_EVENT_RENDER_TARGETS_RESET : SDL_EVENT_WINDOW_FOCUS_LOST);
        } else if (one_in(40)) {
            engine_set_state(state_of(below(SCREEN_COUNT)));
        }
    }

    // Teleports the hero now and then: random input alone would not leave the first rooms.
    void teleport_hero() {
        auto *level = const_cast<Level *>(play_level());
        if (!level || !one_in(600)) return;
        const Thing &thing = level->things.items[below(level->things.count)];
        hero_place(&level->hero, &level->art, thing.feet);
    }

    void check_log() {
        EXPECT_EQ(log.errors(), std::vector<std::string>()) << "frame " << done << " of seed " << seed;
        log.lines.clear();
    }
};

TEST_F(KeepSoak, SurvivesRandomInput) {
    const Uint64 frames = number_from_environment("LUMARIND_SOAK_FRAMES", 4000);
    random = seed = number_from_environment("LUMARIND_SOAK_SEED", 1);
    std::printf("soak: Cinder Keep, %" PRIu64 " frames from seed %" PRIu64 "\n", frames, seed);
    int runs = 0;
    for (; done < frames && !HasFailure(); runs++) {
        ASSERT_TRUE(start({"--window-size", "480x270", "--screen", runs % 2 ? "level-2" : "level-1"}));
        for (bool running = true; running && done < frames && !HasFailure(); done++) {
            for (int i = below(3); i > 0; i--) apply_random_input();
            teleport_hero();
            running = frame(one_in(300) ? SDL_randf_r(&random) : one_in(3) ? 0 : SDL_randf_r(&random) / 30);
            check_log();
        }
        hold({});
        pad = nullptr;
        stop();
        std::filesystem::remove_all(user_file("captures"));
        check_log();
    }
    std::printf("soak: %d runs\n", runs);
}

} // namespace
