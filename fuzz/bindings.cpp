// Binding texts: loaded from the configuration, pressed and held, and saved again. The input has one action per line.
#include "config/config_internal.h"
#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "lumarind/input/input.h"

#include <SDL3/SDL_gamepad.h>
#include <SDL3/SDL_keyboard.h>

#include <string>
#include <vector>

static std::vector<std::string> split_lines(const uint8_t *data, size_t size) {
    std::vector<std::string> lines(1);
    for (size_t i = 0; i < size; i++) {
        const auto c = static_cast<char>(data[i]);
        if (c != '\n') lines.back() += c;
        if (c == '\n') lines.emplace_back();
    }
    return lines;
}

static bool in_range(const InputBinding &binding) {
    switch (binding.kind) {
    case INPUT_BINDING_KEY:
        return binding.code > SDL_SCANCODE_UNKNOWN && binding.code < SDL_SCANCODE_COUNT && binding.direction == 0;
    case INPUT_BINDING_BUTTON:
        return binding.code >= 0 && binding.code < SDL_GAMEPAD_BUTTON_COUNT && binding.direction == 0;
    case INPUT_BINDING_AXIS:
        return binding.code >= 0 && binding.code < SDL_GAMEPAD_AXIS_COUNT &&
               (binding.direction == 1 || binding.direction == -1);
    }
    return false;
}

static SDL_Event event_of(const InputBinding &binding) {
    SDL_Event event = {};
    if (binding.kind == INPUT_BINDING_KEY) {
        event.type = SDL_EVENT_KEY_DOWN;
        event.key.scancode = static_cast<SDL_Scancode>(binding.code);
    } else if (binding.kind == INPUT_BINDING_BUTTON) {
        event.type = SDL_EVENT_GAMEPAD_BUTTON_DOWN;
        event.gbutton.button = static_cast<Uint8>(binding.code);
    } else {
        event.type = SDL_EVENT_GAMEPAD_AXIS_MOTION;
        event.gaxis.axis = static_cast<Uint8>(binding.code);
        event.gaxis.value = static_cast<Sint16>(binding.direction * 32767);
    }
    return event;
}

static void press(int action, const InputBinding &binding) {
    SDL_Event event = event_of(binding);
    input_frame_start();
    input_handle_event(&event);
    fuzz_check(input_pressed(action), "pressing a bound control presses its action");
    input_frame_start();
    fuzz_check(!input_pressed(action), "a press lasts one frame");
    event.type = SDL_EVENT_GAMEPAD_REMOVED; // resets the axis thresholds
    input_handle_event(&event);
    if (binding.kind != INPUT_BINDING_KEY) return;
    auto *keys = const_cast<bool *>(SDL_GetKeyboardState(nullptr)); // not changed by synthetic events
    fuzz_check(!input_held(action), "an action without input is not held");
    keys[binding.code] = true;
    fuzz_check(input_held(action), "a held key holds its action");
    keys[binding.code] = false;
}

static std::vector<InputBinding> parse(const char *text) {
    std::vector<InputBinding> bindings(INPUT_MAX_BINDINGS);
    const int count = input_parse_bindings(text, bindings.data(), INPUT_MAX_BINDINGS);
    fuzz_check(count >= 0 && count <= INPUT_MAX_BINDINGS, "the number of bindings is within the limit");
    bindings.resize(static_cast<size_t>(count));
    return bindings;
}

static bool same(const std::vector<InputBinding> &a, const std::vector<InputBinding> &b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); i++) {
        if (a[i].kind != b[i].kind || a[i].code != b[i].code || a[i].direction != b[i].direction) return false;
    }
    return true;
}

static void check_action(int action) {
    fuzz_note_text(input_bindings_text(action));
    for (const InputBinding &binding : parse(input_bindings_text(action))) {
        fuzz_check(in_range(binding), "a binding names a control that exists");
        fuzz_note(binding.kind, binding.code, binding.direction);
        press(action, binding);
    }
}

// Bindings changed at run time must survive saving and loading.
static void check_round_trip() {
    std::vector<InputBinding> before[INPUT_ACTION_COUNT];
    for (int action = 0; action < INPUT_ACTION_COUNT; action++) before[action] = parse(input_bindings_text(action));
    fuzz_check(cfg_save() && cfg_load(), "the configuration is saved and loaded");
    for (int action = 0; action < INPUT_ACTION_COUNT; action++) {
        fuzz_check(
            same(before[action], parse(input_bindings_text(action))), "bindings survive a round trip through the file");
    }
}

int fuzz_bindings(const uint8_t *data, size_t size) {
    fuzz_start();
    const std::vector<std::string> lines = split_lines(data, size);
    fuzz_check(cfg_setup(), "the configuration is set up");
    cfg_set_defaults();
    for (size_t i = 0; i < lines.size() && i < INPUT_ACTION_COUNT; i++) {
        cfg_set_input_bindings(static_cast<int>(i), lines[i].c_str());
    }
    fuzz_check(input_setup(), "input setup succeeds with any binding texts");
    for (int action = 0; action < INPUT_ACTION_COUNT; action++) check_action(action);
    input_bind(INPUT_ACTION_JUMP, lines.back().c_str()); // may be longer than can be stored
    check_round_trip();
    input_cleanup();
    cfg_cleanup();
    return 0;
}
