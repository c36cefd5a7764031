#include "support/engine_fixture.h"

#include "app/main_loop.h"
#include "core/log.h"
#include "engine/drawing_space.h"
#include "engine/transition.h"

#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_keyboard.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

#include <cstdio>

// --- pictures ---

SDL_Color pixel_at(const Picture &picture, int x, int y) {
    SDL_Color color = {};
    EXPECT_TRUE(SDL_ReadSurfacePixel(picture.get(), x, y, &color.r, &color.g, &color.b, &color.a)) << x << ", " << y;
    return color;
}

bool same_color(SDL_Color a, SDL_Color b) { return a.r == b.r && a.g == b.g && a.b == b.b; }

void PrintTo(const PictureBounds &bounds, std::ostream *out) {
    *out << bounds.left << ", " << bounds.top << " to " << bounds.right << ", " << bounds.bottom;
}

static Picture as_rgb(const Picture &picture) {
    return Picture(SDL_ConvertSurface(picture.get(), SDL_PIXELFORMAT_RGB24));
}

static const Uint8 *row_of(const Picture &rgb, int y) {
    return static_cast<const Uint8 *>(rgb->pixels) + static_cast<size_t>(y) * static_cast<size_t>(rgb->pitch);
}

template <typename Visit> static void each_pixel_of(const Picture &picture, SDL_Color color, Visit visit) {
    const Picture rgb = as_rgb(picture);
    for (int y = 0; y < rgb->h; y++) {
        const Uint8 *found = row_of(rgb, y);
        for (int x = 0; x < rgb->w; x++, found += 3) {
            if (found[0] == color.r && found[1] == color.g && found[2] == color.b) visit(x, y);
        }
    }
}

PictureBounds bounds_of(const Picture &picture, SDL_Color color) {
    PictureBounds bounds = {picture->w, picture->h, -1, -1};
    each_pixel_of(picture, color, [&](int x, int y) {
        bounds.left = SDL_min(bounds.left, x);
        bounds.right = SDL_max(bounds.right, x);
        bounds.top = SDL_min(bounds.top, y);
        bounds.bottom = SDL_max(bounds.bottom, y);
    });
    return bounds;
}

int count_pixels(const Picture &picture, SDL_Color color) {
    return count_pixels(picture, color, {0, 0, picture->w, picture->h});
}

int count_pixels(const Picture &picture, SDL_Color color, SDL_Rect area) {
    int count = 0;
    each_pixel_of(picture, color, [&](int x, int y) {
        const SDL_Point pixel = {x, y};
        count += SDL_PointInRect(&pixel, &area) ? 1 : 0;
    });
    return count;
}

bool same_pixels(const Picture &a, const Picture &b) {
    const Picture x = as_rgb(a), y = as_rgb(b);
    if (x->w != y->w || x->h != y->h) return false;
    for (int row = 0; row < x->h; row++) {
        if (SDL_memcmp(row_of(x, row), row_of(y, row), static_cast<size_t>(x->w) * 3) != 0) return false;
    }
    return true;
}

// --- the program ---

void EngineTest::SetUp() {
    choose_driver(SDL_HINT_VIDEO_DRIVER, "dummy");
    choose_driver(SDL_HINT_AUDIO_DRIVER, "dummy");
    choose_driver(SDL_HINT_RENDER_DRIVER, "software");
    directory.link_assets();
}

void EngineTest::TearDown() {
    if (HasFailure()) {
        for (const LogLine &line : log.lines) std::fprintf(stderr, "log: %s\n", line.text.c_str());
    }
    hold({});
    if (running_) stop();
    log_cleanup();
}

bool EngineTest::start(const std::vector<std::string> &arguments) {
    if (running_) stop();
    // At every start, for SDL forgets its hints when it quits; with priority, for the environment would win otherwise.
    for (const auto &[hint, driver] : drivers_) {
        SDL_SetHintWithPriority(hint.c_str(), driver.c_str(), SDL_HINT_OVERRIDE);
    }
    if (!config.empty()) write_file("config/lumarind-engine.ini", config);
    std::vector<std::string> words = arguments;
    words.insert(words.begin(), "LumarindEngine");
    std::vector<char *> argv;
    for (std::string &word : words) argv.push_back(word.data());
    static std::vector<std::string> kept; // the parsed arguments borrow from it
    running_ = main_loop_start(static_cast<int>(argv.size()), argv.data()) == MAIN_START_RUN;
    kept = std::move(words);
    return running_;
}

bool EngineTest::start_screen(const std::string &screen, const std::string &size) {
    return start({"--screen", screen, "--window-size", size}) && frame();
}

void EngineTest::stop() {
    running_ = false;
    main_loop_stop();
    transition_screen_changed(GAME_STATE_NONE); // a fade cut short here must not reach the next start
}

bool EngineTest::frame(double seconds) {
    // Without a frame before it the clock adds nothing: the simulation gets exactly the test's time, on any machine.
    engine->last_frame_ticks = 0;
    timestep_advance(&engine->timestep, seconds);
    return main_loop_frame();
}

void EngineTest::frames(int count, double seconds) {
    for (int i = 0; i < count; i++) frame(seconds);
}

Picture EngineTest::picture() const {
    engine_apply_space(true); // a logical space would show its own part only
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

// The text is drawn over the picture once more, on the background it should have, and has to change no pixel.
bool EngineTest::shows(float x, float y, SDL_Color color, const std::string &text, SDL_Color background) {
    SDL_Renderer *renderer = engine->renderer;
    const SDL_Rect area = {static_cast<int>(x), static_cast<int>(y), static_cast<int>(8 * text.size()), 8};
    const SDL_FRect around = {x, y, static_cast<float>(area.w), 8};
    const Picture before(SDL_RenderReadPixels(renderer, &area));
    SDL_SetRenderDrawColor(renderer, background.r, background.g, background.b, 255);
    SDL_RenderFillRect(renderer, &around);
    SDL_SetRenderDrawColor(renderer, color.r, color.g, color.b, 255);
    SDL_RenderDebugText(renderer, x, y, text.c_str());
    const Picture after(SDL_RenderReadPixels(renderer, &area));
    return same_pixels(before, after);
}

// --- events ---

void EngineTest::key_down(SDL_Keycode key, SDL_Keymod mod, bool repeat) const {
    SDL_Event event = {};
    event.key.type = SDL_EVENT_KEY_DOWN;
    event.key.windowID = SDL_GetWindowID(engine->window);
    event.key.key = key;
    event.key.scancode = SDL_GetScancodeFromKey(key, nullptr);
    event.key.mod = mod;
    event.key.down = true;
    event.key.repeat = repeat;
    ASSERT_TRUE(SDL_PushEvent(&event));
}

// Pushed key events do not reach SDL's keyboard state, so the test writes it.
void EngineTest::hold(std::initializer_list<SDL_Scancode> keys) {
    auto *state = const_cast<bool *>(SDL_GetKeyboardState(nullptr));
    for (int i = 0; i < SDL_SCANCODE_COUNT; i++) state[i] = false;
    for (const SDL_Scancode key : keys) state[key] = true;
}

void EngineTest::mouse_move(int x, int y) const {
    SDL_Event event = {};
    event.motion.type = SDL_EVENT_MOUSE_MOTION;
    event.motion.windowID = SDL_GetWindowID(engine->window);
    event.motion.x = static_cast<float>(x);
    event.motion.y = static_cast<float>(y);
    ASSERT_TRUE(SDL_PushEvent(&event));
}

void EngineTest::mouse_button(SDL_EventType type, int x, int y, Uint8 button) const {
    SDL_Event event = {};
    event.button.type = type;
    event.button.windowID = SDL_GetWindowID(engine->window);
    event.button.button = button;
    event.button.x = static_cast<float>(x);
    event.button.y = static_cast<float>(y);
    ASSERT_TRUE(SDL_PushEvent(&event));
}

void EngineTest::mouse_down(int x, int y, Uint8 button) const {
    mouse_button(SDL_EVENT_MOUSE_BUTTON_DOWN, x, y, button);
}

void EngineTest::mouse_up(int x, int y, Uint8 button) const { mouse_button(SDL_EVENT_MOUSE_BUTTON_UP, x, y, button); }

void EngineTest::gamepad_down(SDL_GamepadButton button) const {
    SDL_Event event = {};
    event.gbutton.type = SDL_EVENT_GAMEPAD_BUTTON_DOWN;
    event.gbutton.button = static_cast<Uint8>(button);
    event.gbutton.down = true;
    ASSERT_TRUE(SDL_PushEvent(&event));
}
