#include "support/engine_fixture.h"

#include "app/demo_game.h"
#include "app/main_loop.h"
#include "app/screen_registry.h"
#include "core/log.h"
#include "engine/game_internal.h"
#include "lumarind/core/random.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/text_draw.h"
#include "lumarind/engine/transition.h"
#include "support/call_faults.h"
#include "support/sdl_calls.h"

#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_keyboard.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <format>
#include <iterator>
#include <sstream>
#include <zlib.h>

// --- the program ---

// Tests that set up modules without the engine need the game's record too.
static const bool g_game_is_set = (_engine_set_game(&demo_game), true);

void EngineTest::SetUp() {
    choose_driver(SDL_HINT_VIDEO_DRIVER, "dummy");
    choose_driver(SDL_HINT_AUDIO_DRIVER, "dummy");
    choose_driver(SDL_HINT_RENDER_DRIVER, "software");
    choose_driver(SDL_HINT_AUDIO_DEVICE_SAMPLE_FRAMES, "128"); // closing a device waits for two buffers
    choose_driver(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    SDL_srand(1);
    directory.link_assets();
}

void EngineTest::TearDown() {
    if (HasFailure()) {
        for (const LogLine &line : log.lines) std::fprintf(stderr, "log: %s\n", line.text.c_str());
    }
    hold({});
    pad_.reset();
    if (running_) stop();
    _engine_set_game(&demo_game);
    log_cleanup();
}

Uint64 number_from_environment(const char *name, Uint64 fallback) {
    const char *text = std::getenv(name);
    return text && *text ? std::strtoull(text, nullptr, 10) : fallback;
}

bool EngineTest::start(const std::vector<std::string> &arguments) {
    if (running_) stop();
    held_.clear();
    hold({});
    // At every start, because SDL forgets hints when it quits; with priority, to override the environment.
    for (const auto &[hint, driver] : drivers_) {
        SDL_SetHintWithPriority(hint.c_str(), driver.c_str(), SDL_HINT_OVERRIDE);
    }
    if (!config.empty()) write_file("config/lumarind-engine.ini", config);
    static std::vector<std::string> words; // static: args borrows the strings
    words = arguments;
    words.insert(words.begin(), "LumarindEngine");
    std::vector<char *> argv;
    for (std::string &word : words) argv.push_back(word.data());
    running_ = main_loop_start(tested_game, static_cast<int>(argv.size()), argv.data()) == MAIN_START_RUN;
    return running_;
}

bool EngineTest::start_screen(const std::string &screen, const std::string &size) {
    return start({"--screen", screen, "--window-size", size}) && frame();
}

void EngineTest::stop() {
    running_ = false;
    main_loop_stop();
    transition_screen_changed(GAME_STATE_NONE); // ends a running fade before the next start
}

bool EngineTest::frame(double seconds) {
    // Deterministic frame time on any machine; rounded up, so that a whole number of steps fits.
    engine->next_frame_ns = static_cast<Sint64>(std::ceil(seconds * 1e9));
    engine->fps_delta = seconds;
    return main_loop_frame();
}

void EngineTest::frames(int count, double seconds) {
    for (int i = 0; i < count; i++) frame(seconds);
}

Picture EngineTest::picture() const {
    engine_apply_space(true); // in logical space only that part of the window would be read
    Picture read(SDL_RenderReadPixels(engine->renderer, nullptr));
    EXPECT_NE(read, nullptr) << SDL_GetError();
    engine_apply_space(false);
    return read;
}

Picture EngineTest::shown(double seconds) {
    EXPECT_TRUE(frame(seconds));
    return picture();
}

void EngineTest::resize(int width, int height) const {
    SDL_SetWindowSize(engine->window, width, height);
    SDL_SyncWindow(engine->window);
}

std::string EngineTest::screens_with_failing_calls(int count) {
    std::string text;
    screen_cleanup();
    for (GameState state = GAME_STATE_FIRST_SCREEN; state < GAME_STATE_FIRST_SCREEN + count; state++) {
        const auto setup = [&] {
            const bool ok = screen_setup(state);
            screen_cleanup();
            return ok;
        };
        text += std::string(screen_name(state)) + "\n" + with_failing_calls(&log, setup);
        EXPECT_TRUE(screen_setup(state));
        const auto tick = [&] {
            text_draw_forget(nullptr);
            screen_tick(state);
            return true;
        };
        text += "tick\n" + with_failing_calls(&log, tick);
        screen_cleanup();
    }
    return text;
}

std::string EngineTest::random_play(int screens, int steps) {
    std::istringstream words(
        "Up Down Left Right Return Space A D E F G H I J K L O P R S W X Z . key:, key:1 key:2 Left_Shift ~Down "
        "+Right -Right +Left -Left +Up +Down -Up -Down +D -D pad:a pad:b pad:start pad:dpdown "
        "pad:dpup pad:leftx=.6 pad:leftx=-1 pad:lefty=.9 pad:leftx=0 pad:rightx=.3 pad:righttrigger=.7 pad:a=1 "
        "wheel:0,1");
    const std::vector<std::string> inputs(std::istream_iterator<std::string>(words), {});
    Random random = random_make(1);
    const auto below = [&](int limit) { return random_below(&random, limit); };
    const std::array sizes = {"640x400", "800x200", "330x300", "400x1300"};
    texts_are_recorded = true;
    std::string text;
    for (int screen = 0; screen < screens; screen++) {
        const char *name = tested_game->screens[screen].name;
        config = std::string("[graphics]\nvsync_enable = false\nshow_fps = false\nui_scale = ") +
                 (screen % 4 != 1 ? "1\n" : "2\n");
        const std::vector<std::string> arguments = {"--screen", name, "--window-size", "640x400"};
        const auto begin = [&] {
            EXPECT_TRUE(start(arguments)) << name;
            play("pad:plug");
        };
        begin();
        uLong hash = 0;
        for (int i = 1; i <= steps; i++) {
            sdl_calls.clear();
            log.lines.clear();
            const int kind = below(8), x = below(640), y = below(400);
            if (kind == 0) play(std::format("{}:{},{}", std::array{"move", "drop", "click", "rdrop"}[below(4)], x, y));
            if (kind == 1 && below(4) == 0) play(std::string("size:") + sizes[below(4)]);
            if (kind == 1 && below(4) == 0) engine_set_ui_scale(1 + below(2));
            if (i == steps - 20) play("Escape");
            if (kind > 1) play(inputs[static_cast<size_t>(below(static_cast<int>(inputs.size())))]);
            const double seconds = std::array{0.0, 1 / 60.0, 1 / 60.0, 1 / 144.0, 0.04, 0.3}[i > 1 ? below(6) : 0];
            if (!frame(seconds)) { // the game has quit
                begin();
                continue;
            }
            const Picture shown = picture();
            hash = crc32_z(hash, row_of(shown, 0), static_cast<size_t>(shown->pitch * shown->h));
            for (const LogLine &line : log.lines) sdl_calls += line.text;
            hash = crc32_z(hash, reinterpret_cast<const Bytef *>(sdl_calls.data()), sdl_calls.size());
            if (i % 30 == 0) text += std::format("{} {} {:08x}\n", name, i, hash);
        }
    }
    texts_are_recorded = false;
    return text;
}

// --- scripts ---

static void _push(SDL_Event event) {
    event.window.windowID = SDL_GetWindowID(engine->window); // at the same offset in all events that have it
    ASSERT_TRUE(SDL_PushEvent(&event));
}

void EngineTest::push_event(Uint32 type) {
    SDL_Event event = {};
    event.type = type;
    _push(event);
}

// Pushed key events do not change SDL's keyboard state, so the test writes it directly.
void EngineTest::hold(const std::set<SDL_Scancode> &keys) {
    auto *state = const_cast<bool *>(SDL_GetKeyboardState(nullptr));
    for (int i = 0; i < SDL_SCANCODE_COUNT; i++) state[i] = keys.contains(static_cast<SDL_Scancode>(i));
}

void EngineTest::play(const std::string &script) {
    std::istringstream words(script);
    for (std::string word; words >> word;) play_word(word);
}

static void _play_mouse(const std::string &action, float x, float y) {
    SDL_Event event = {};
    if (action == "move") {
        event.type = SDL_EVENT_MOUSE_MOTION;
        event.motion.x = x;
        event.motion.y = y;
    } else if (action == "wheel") {
        event.type = SDL_EVENT_MOUSE_WHEEL;
        event.wheel.y = y;
    } else {
        event.type = action.ends_with("drop") ? SDL_EVENT_MOUSE_BUTTON_DOWN : SDL_EVENT_MOUSE_BUTTON_UP;
        event.button.button = action[0] == 'r' ? SDL_BUTTON_RIGHT : SDL_BUTTON_LEFT;
        event.button.x = x;
        event.button.y = y;
    }
    _push(event);
}

void EngineTest::play_word(const std::string &word) {
    SCOPED_TRACE("script word " + word);
    int x = 0, y = 0;
    double time = 0;
    char action[8] = "";
    if (std::sscanf(word.c_str(), "%7[a-z]:%d%*[,x]%d", action, &x, &y) == 3) {
        const bool size = std::string(action) == "size";
        size ? resize(x, y) : _play_mouse(action, static_cast<float>(x), static_cast<float>(y));
    } else if (word.starts_with("pad:")) {
        play_pad(word.substr(4));
    } else if (std::sscanf(word.c_str(), "%lf", &time) == 1 && word.back() == 's') {
        for (time += 1e-6; time > 2e-6; time -= 0.25) frame(std::min(time, 0.25)); // a bit more, so that all steps fit
    } else if (std::sscanf(word.c_str(), "%lf", &time) == 1) {
        frames(static_cast<int>(time), 1.0 / 60);
        if (time != std::floor(time)) frame((time - std::floor(time)) / 60);
    } else {
        play_key(word);
    }
}

void EngineTest::play_key(std::string word) {
    const char sign = word[0];
    const bool repeat = sign == '~', ctrl = word.starts_with("ctrl:"), holds = sign == '+', releases = sign == '-';
    word.erase(0, repeat || holds || releases ? 1 : ctrl || word.starts_with("key:") ? word.find(':') + 1 : 0);
    std::replace(word.begin(), word.end(), '_', ' ');
    const SDL_Keycode key = SDL_GetKeyFromName(word.c_str());
    ASSERT_NE(key, SDLK_UNKNOWN);
    const SDL_Scancode scancode = SDL_GetScancodeFromKey(key, nullptr);
    if (holds) held_.insert(scancode);
    if (releases) held_.erase(scancode);
    if (holds || releases) hold(held_);
    SDL_Event event = {};
    event.type = releases ? SDL_EVENT_KEY_UP : SDL_EVENT_KEY_DOWN;
    event.key.key = key;
    event.key.scancode = scancode;
    event.key.mod = ctrl ? SDL_KMOD_LCTRL : SDL_KMOD_NONE;
    event.key.down = !releases;
    event.key.repeat = repeat;
    _push(event);
}

void EngineTest::play_pad(const std::string &control) {
    const size_t sign = control.find('=');
    const std::string name = control.substr(0, sign);
    const SDL_GamepadButton button = SDL_GetGamepadButtonFromString(name.c_str());
    if (control == "plug") {
        pad_ = std::make_unique<VirtualGamepad>("Script Pad");
    } else if (control == "unplug") {
        pad_.reset();
    } else if (sign == control.npos) {
        SDL_Event event = {};
        event.type = SDL_EVENT_GAMEPAD_BUTTON_DOWN;
        event.gbutton.button = static_cast<Uint8>(button);
        event.gbutton.down = true;
        _push(event);
    } else if (button != SDL_GAMEPAD_BUTTON_INVALID) {
        pad_->set(button, control[sign + 1] == '1');
    } else {
        pad_->set(SDL_GetGamepadAxisFromString(name.c_str()), std::stof(control.substr(sign + 1)));
    }
}
