// Soak test: runs the whole program for a long time with random input from a printed seed and the sanitizers. Checks
// that every log line is known and that memory in use does not grow: the first half of the frames is many short runs,
// with memory measured between runs, the second half one long run, with memory measured in its menu.
//   LUMARIND_SOAK_FRAMES  number of frames (default 20000)
//   LUMARIND_SOAK_SEED    seed (default 1)
// Each run is recorded in soak.lmr beside the executable, also up to a crash.

#include "app/screen_registry.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/transition.h"
#include "lumarind/replay/replay.h"
#include "screens/screen_states.h"
#include "support/engine_fixture.h"
#include "support/log_kinds.h"
#include "support/virtual_gamepad.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_video.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <sstream>

// The sanitizer's interface; g++ has no header for it.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
extern "C" void __sanitizer_set_death_callback(void (*callback)());
// The text engine keeps a record per address that a font ever had. The sanitizer's quarantine of freed memory would
// make these records grow without limit, which does not happen without it.
extern "C" const char *__asan_default_options();
extern "C" const char *__asan_default_options() {
    return "quarantine_size_mb=4:detect_stack_use_after_return=1:strict_string_checks=1";
}

namespace {

constexpr Uint64 FRAMES_DEFAULT = 20'000, SEED_DEFAULT = 1;
constexpr Uint64 SAMPLES = 100; // of the long run
constexpr size_t GROWTH_STOPPED_MAX = 64 << 10;
constexpr size_t GROWTH_RUNNING_MAX = 1 << 20; // the mixer's tracks keep the sounds they played last
constexpr size_t GROWTH_PER_GAMEPAD = 256;     // SDL keeps some data for each controller ever connected
constexpr int GAMEPADS_MAX = 3;

Uint64 frames_done, seed; // for the report after a crash

size_t memory_in_use() {
#ifdef __SANITIZE_ADDRESS__
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 memory = mallinfo2();
    return memory.uordblks + memory.hblkhd; // heap and mapped blocks
#endif
}

// Compares the minimum of the first quarter of the samples with that of the last: sounds that fade out during a sample
// increase it.
void expect_no_growth(const char *what, const std::vector<size_t> &samples, size_t allowed) {
    const auto quarter = static_cast<std::ptrdiff_t>(samples.size() / 4);
    ASSERT_GE(quarter, 1) << what << ": too few samples";
    const size_t before = *std::min_element(samples.begin(), samples.begin() + quarter);
    const size_t after = *std::min_element(samples.end() - quarter, samples.end());
    std::printf("soak: %s: %zu samples, first %zu bytes, last %zu\n", what, samples.size(), before, after);
    EXPECT_LE(after, before + allowed) << what << ": memory grew";
}

// All keys used by a screen or the engine, as named in scripts.
constexpr const char *KEYS[] = {"Left",   "Right", "Up", "Down", "A", "D",          "W", "S",  "Space",
                                "Return", "Z",     "X",  "J",    "K", "L",          "U", "I",  "H",
                                "P",      "R",     "F",  ",",    ".", "Left_Shift", "Q", "Tab"};

constexpr Uint32 RARE_EVENTS[] = {SDL_EVENT_RENDER_TARGETS_RESET, SDL_EVENT_RENDER_DEVICE_RESET,
                                  SDL_EVENT_DISPLAY_ORIENTATION,  SDL_EVENT_LOCALE_CHANGED,
                                  SDL_EVENT_LOW_MEMORY,           SDL_EVENT_KEYMAP_CHANGED,
                                  SDL_EVENT_CLIPBOARD_UPDATE,     SDL_EVENT_FINGER_MOTION,
                                  SDL_EVENT_GAMEPAD_REMOVED,      SDL_EVENT_GAMEPAD_ADDED,
                                  SDL_EVENT_AUDIO_DEVICE_ADDED,   SDL_EVENT_USER,
                                  SDL_EVENT_WINDOW_FOCUS_LOST,    SDL_EVENT_WINDOW_FOCUS_GAINED,
                                  SDL_EVENT_WINDOW_MINIMIZED,     SDL_EVENT_WINDOW_RESTORED,
                                  SDL_EVENT_WINDOW_EXPOSED,       SDL_EVENT_WINDOW_MOUSE_LEAVE,
                                  SDL_EVENT_WINDOW_OCCLUDED,      SDL_EVENT_WINDOW_DISPLAY_CHANGED};

class Soak : public EngineTest {
protected:
    Uint64 random = 0, frames = 0, next_sample = 0;
    std::vector<std::unique_ptr<VirtualGamepad>> gamepads;
    std::vector<size_t> stopped, running; // memory in use between runs, and in the menu of the long run
    int unknown_lines = 0, gamepads_plugged = 0;
    bool long_run = false; // in the long run, which the user does not quit
    const std::string recording = SDL_GetBasePath() + std::string("soak.lmr"); // since the last jump to a screen

    int below(int limit) { return SDL_rand_r(&random, limit); }
    bool one_in(int odds) { return below(odds) == 0; }
    template <typename T, size_t N> T any_of(const T (&items)[N]) { return items[below(static_cast<int>(N))]; }

    // --- actions ---

    // The menu receives this frame's events, or will receive an Escape.
    static bool in_menu() {
        return engine_get_state() == GAME_STATE_MAIN_MENU || engine_get_prev_state() == GAME_STATE_MAIN_MENU;
    }
    bool must_stay_in_menu() { return long_run && in_menu(); }

    void press_key() {
        const std::string key = any_of(KEYS);
        if (key == "Return" && must_stay_in_menu()) return;
        play(one_in(8) ? "~" + key : one_in(2) ? "+" + key : key);
    }
    void release_keys() {
        play(std::string("-") + any_of({"Left", "Right", "A", "D", "S", "Left_Shift"}));
        hold({});
    }
    void press_function_key() { play(any_of({"F3", "F3", "F3", "F4", "F4", "F5", "F12"})); }
    void press_escape() { // rarely in the menu, where it quits: otherwise runs would be too short
        if (!in_menu() || (!long_run && one_in(20))) play("Escape");
    }
    void use_mouse() {
        int width = 0, height = 0;
        SDL_GetWindowSize(engine->window, &width, &height);
        const std::string at = std::to_string(below(width + 40) - 20) + "," + std::to_string(below(height + 40) - 20);
        play("move:" + at);
        if (one_in(4) && !must_stay_in_menu()) play((one_in(3) ? "rclick:" : "click:") + at);
        if (one_in(10)) push_event(SDL_EVENT_MOUSE_WHEEL);
        if (one_in(10)) play("drop:" + at);
    }
    void plug_or_unplug() {
        constexpr const char *NAMES[] = {"Soak Pad", "", "A controller with a name that is longer than its box"};
        if (one_in(2) && gamepads.size() < GAMEPADS_MAX) {
            gamepads_plugged++;
            gamepads.push_back(std::make_unique<VirtualGamepad>(any_of(NAMES), one_in(2), one_in(2)));
        } else if (!gamepads.empty()) {
            gamepads.erase(gamepads.begin() + below(static_cast<int>(gamepads.size())));
        }
    }
    void use_gamepad() {
        if (gamepads.empty()) return;
        const VirtualGamepad &pad = *gamepads[static_cast<size_t>(below(static_cast<int>(gamepads.size())))];
        const auto button = static_cast<SDL_GamepadButton>(below(SDL_GAMEPAD_BUTTON_COUNT));
        const bool confirms = button == SDL_GAMEPAD_BUTTON_EAST || button == SDL_GAMEPAD_BUTTON_SOUTH;
        if (!confirms || !must_stay_in_menu()) pad.set(button, one_in(2));
        const auto axis = static_cast<SDL_GamepadAxis>(below(SDL_GAMEPAD_AXIS_COUNT));
        const bool trigger = axis >= SDL_GAMEPAD_AXIS_LEFT_TRIGGER;
        pad.set(axis, trigger ? SDL_randf_r(&random) : 2 * SDL_randf_r(&random) - 1);
    }
    void resize_window() {
        const bool odd = one_in(20); // otherwise a small size, to keep the soak fast
        const int width = odd ? 1 + below(2000) : 320 + below(500), height = odd ? 1 + below(1200) : 200 + below(300);
        SDL_SetWindowSize(engine->window, width, height);
    }
    void send_rare_event() {
        push_event(any_of(RARE_EVENTS));
        hold({}); // SDL releases all keys when focus is lost
    }
    GameState any_screen() { return GAME_STATE_MAIN_MENU + below(GAME_STATE_PHYSICS_DEMO - GAME_STATE_MAIN_MENU + 1); }
    void jump_to(GameState state) { // not possible for a user: starts a new recording
        replay_record(recording.c_str());
        engine_set_state(state);
    }
    void fade_to_screen() {
        replay_record(recording.c_str());
        transition_fade_to(any_screen(), 0.02 + SDL_randf_r(&random) * 0.5);
    }
    void quit() {
        if (!long_run) one_in(2) ? play("ctrl:Q") : push_event(SDL_EVENT_QUIT);
    }

    void do_random_action() {
        static constexpr struct {
            int weight; // per mille
            void (Soak::*act)();
        } ACTIONS[] = {{381, &Soak::press_key},
                       {150, &Soak::release_keys},
                       {150, &Soak::use_mouse},
                       {200, &Soak::use_gamepad},
                       {20, &Soak::plug_or_unplug},
                       {30, &Soak::press_function_key},
                       {12, &Soak::press_escape},
                       {25, &Soak::resize_window},
                       {30, &Soak::send_rare_event},
                       {1, &Soak::fade_to_screen},
                       {1, &Soak::quit}};
        int at = below(1000);
        for (const auto &action : ACTIONS) {
            at -= action.weight;
            if (at < 0) return (this->*action.act)();
        }
    }

    double any_frame_time() {
        if (one_in(500)) return 2 * SDL_randf_r(&random); // a stall
        return one_in(3) ? 0 : SDL_randf_r(&random) / 30;
    }

    // --- a run of the program ---

    std::string any_config() {
        const auto flag = [&] { return one_in(2) ? "true" : "false"; };
        std::ostringstream text;
        text << "[graphics]\nvsync_enable = false\nui_scale = " << (one_in(10) ? 1 + below(8) : any_of({1, 1, 1, 2, 3}))
             << "\nshow_fps = " << flag() << "\nshow_frame_time_graph = " << flag()
             << "\n[simulation]\nfixed_step_hz = " << any_of({60, 60, 30, 120, 240, 7})
             << "\n[capture]\nformat = " << any_of({"png", "jpg"}) << "\ninclude_fps = " << flag()
             << "\n[gamepad]\ndeadzone = " << SDL_randf_r(&random) << "\n[window]\nwidth = 640\nheight = 360\n";
        return text.str();
    }

    bool begin() {
        config = any_config();
        std::vector<std::string> arguments;
        if (one_in(4)) arguments.insert(arguments.end(), {"--screen", "platformer-demo"});
        if (one_in(4)) arguments.emplace_back("--no-config-save");
        return replay_record(recording.c_str()) && start(arguments);
    }

    void end() {
        hold({});
        if (one_in(2)) gamepads.clear(); // otherwise SDL removes them when it quits
        stop();
        gamepads.clear();
        std::filesystem::remove_all("captures");
        check_log();
        if (one_in(4)) replay_run();
        stopped.push_back(memory_in_use());
    }

    void replay_run() {
        set_environment("LUMARIND_REPLAY", recording.c_str());
        set_environment("LUMARIND_REPLAY_SPEED", "max");
        EXPECT_TRUE(start());
        while (frame()) continue;
        stop();
        EXPECT_FALSE(replay_failed()) << "run " << stopped.size() << " of seed " << seed;
        set_environment("LUMARIND_REPLAY", nullptr);
        check_log();
    }

    void check_log() {
        for (const LogLine &line : log.lines) {
            const std::string unknown = line.priority >= SDL_LOG_PRIORITY_ERROR ? line.text : unknown_line(line);
            if (unknown.empty() || ++unknown_lines > 10) continue;
            ADD_FAILURE() << "frame " << frames_done << " of seed " << seed << " logs " << unknown;
        }
        log.lines.clear();
    }

    bool visit(GameState state) {
        jump_to(state);
        return frame() && frame();
    }

    // Measures memory in the menu, at a fixed window size, without controllers and panel.
    bool sample_in_menu() {
        gamepads.clear();
        hold({});
        SDL_SetWindowSize(engine->window, 640, 360);
        engine_set_show_frame_time_graph(false);
        transition_screen_changed(GAME_STATE_NONE);
        if (!visit(GAME_STATE_TEXTURE_DEMO) || !visit(GAME_STATE_MAIN_MENU)) return false;
        check_log();
        running.push_back(memory_in_use());
        return true;
    }

    bool run_frame() {
        if (one_in(500)) jump_to(any_screen()); // first: Escape depends on the current screen
        for (int i = below(4); i > 0; i--) do_random_action();
        const bool continues = frame(any_frame_time());
        frames_done++;
        check_log();
        if (!long_run || frames_done < next_sample) return continues;
        next_sample = frames_done + frames / 2 / SAMPLES;
        return sample_in_menu();
    }
};

TEST_F(Soak, SurvivesRandomInput) {
    frames = number_from_environment("LUMARIND_SOAK_FRAMES", FRAMES_DEFAULT);
    random = seed = number_from_environment("LUMARIND_SOAK_SEED", SEED_DEFAULT);
    std::printf("soak: %" PRIu64 " frames from seed %" PRIu64 "\n", frames, seed);
    std::fflush(stdout);
#ifdef __SANITIZE_ADDRESS__
    __sanitizer_set_death_callback([] {
        std::fprintf(stderr, "soak: stopped in frame %" PRIu64 " of seed %" PRIu64 "\n", frames_done, seed);
        replay_stop(); // writes the last second
    });
#endif
    while (frames_done < frames / 2) {
        ASSERT_TRUE(begin());
        while (frames_done < frames / 2 && run_frame()) continue;
        end();
    }
    std::printf("soak: %zu short runs\n", stopped.size());
    expect_no_growth("between two runs", stopped, GROWTH_STOPPED_MAX);

    ASSERT_TRUE(begin());
    for (GameState state = GAME_STATE_MAIN_MENU; state <= GAME_STATE_PHYSICS_DEMO; state++) {
        ASSERT_TRUE(visit(state)); // fills caches that are never freed
    }
    long_run = true;
    gamepads_plugged = 0;
    while (frames_done < frames && run_frame()) continue;
    EXPECT_EQ(frames_done, frames) << "the long run ended by itself";
    end();
    std::printf("soak: one long run, %d controllers plugged\n", gamepads_plugged);
    expect_no_growth(
        "in the long run's menu", running,
        GROWTH_RUNNING_MAX + GROWTH_PER_GAMEPAD * static_cast<size_t>(gamepads_plugged));
}

} // namespace
