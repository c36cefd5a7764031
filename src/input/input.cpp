#include "lumarind/input/input.h"

#include "input/input_recording.h"
#include "lumarind/config/config.h"
#include "lumarind/core/error.h"
#include "lumarind/engine/game.h"
#include "lumarind/input/gamepad.h"
#include "replay/replay_feed.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_keyboard.h>
#include <SDL3/SDL_log.h>

#include <initializer_list>

static constexpr size_t PIECE_MAX = 63; // characters in one name
static constexpr char PAD_PREFIX[] = "pad:";
static constexpr int PAD_PREFIX_LENGTH = sizeof PAD_PREFIX - 1;

struct InputActionState {
    InputBinding entries[INPUT_MAX_BINDINGS];
    Sint32 entry_count;
    bool pressed_frame, pressed_step;
};

struct InputState {
    InputActionState actions[GAME_MAX_ACTIONS];
    bool axis_past[SDL_GAMEPAD_AXIS_COUNT][2]; // beyond the threshold at the last event: [0] negative, [1] positive
    bool in_fixed_step;
};
static InputState *input;

// --- binding texts ---

static bool _input_is_trigger(SDL_GamepadAxis axis) {
    return axis == SDL_GAMEPAD_AXIS_LEFT_TRIGGER || axis == SDL_GAMEPAD_AXIS_RIGHT_TRIGGER;
}

// Parses a stick axis name whose last character is the sign; `name` is modified.
static bool _input_parse_stick(char *name, InputBinding *binding) {
    char *sign = name + SDL_strlen(name) - 1;
    const int direction = *sign == '+' ? 1 : -1;
    *sign = '\0';
    const SDL_GamepadAxis axis = SDL_GetGamepadAxisFromString(name);
    if (axis == SDL_GAMEPAD_AXIS_INVALID || _input_is_trigger(axis)) return false;
    *binding = {.kind = INPUT_BINDING_AXIS, .code = axis, .direction = direction};
    return true;
}

static bool _input_parse_pad(char *name, InputBinding *binding) {
    const size_t length = SDL_strlen(name);
    if (length > 0 && (name[length - 1] == '+' || name[length - 1] == '-')) return _input_parse_stick(name, binding);
    const SDL_GamepadButton button = SDL_GetGamepadButtonFromString(name);
    if (button != SDL_GAMEPAD_BUTTON_INVALID) {
        *binding = {.kind = INPUT_BINDING_BUTTON, .code = button, .direction = 0};
        return true;
    }
    const SDL_GamepadAxis axis = SDL_GetGamepadAxisFromString(name);
    if (axis == SDL_GAMEPAD_AXIS_INVALID || !_input_is_trigger(axis)) return false;
    *binding = {.kind = INPUT_BINDING_AXIS, .code = axis, .direction = 1};
    return true;
}

// Parses one trimmed entry of `length` characters.
static bool _input_parse_entry(const char *piece, size_t length, InputBinding *binding) {
    if (length > PIECE_MAX) return false;
    char name[PIECE_MAX + 1];
    SDL_strlcpy(name, piece, length + 1);
    if (SDL_strncasecmp(name, PAD_PREFIX, PAD_PREFIX_LENGTH) == 0) {
        return _input_parse_pad(name + PAD_PREFIX_LENGTH, binding);
    }
    const SDL_Scancode scancode = SDL_GetScancodeFromName(name);
    if (scancode == SDL_SCANCODE_UNKNOWN) return false;
    *binding = {.kind = INPUT_BINDING_KEY, .code = scancode, .direction = 0};
    return true;
}

static bool _input_is_space(char c) { return SDL_isspace(static_cast<unsigned char>(c)) != 0; }

struct Piece {
    const char *start;
    size_t length;
};

// Returns the trimmed text up to the next comma. Moves *rest past the comma, or to null at the end.
static Piece _input_next_piece(const char **rest) {
    const char *start = *rest;
    const char *comma = SDL_strchr(start, ',');
    const char *end = comma ? comma : start + SDL_strlen(start);
    *rest = comma ? comma + 1 : nullptr;
    while (start < end && _input_is_space(*start)) start++;
    while (end > start && _input_is_space(end[-1])) end--;
    return {start, static_cast<size_t>(end - start)};
}

// Returns the number of bindings stored; *skipped receives the number of entries skipped.
static int _input_parse(const char *text, InputBinding *bindings, int capacity, int *skipped) {
    int count = 0;
    *skipped = 0;
    while (text) {
        const Piece piece = _input_next_piece(&text);
        if (piece.length == 0) continue;
        const int shown = static_cast<int>(SDL_min(piece.length, PIECE_MAX));
        InputBinding binding = {};
        if (!_input_parse_entry(piece.start, piece.length, &binding)) {
            SDL_LogWarn(SDL_LOG_CATEGORY_INPUT, "[INPUT] Unknown binding \"%.*s\", skipped", shown, piece.start);
            ++*skipped;
        } else if (count == capacity) {
            SDL_LogWarn(
                SDL_LOG_CATEGORY_INPUT, "[INPUT] More than %d bindings, \"%.*s\" skipped", capacity, shown,
                piece.start);
            ++*skipped;
        } else {
            bindings[count++] = binding;
        }
    }
    return count;
}

int input_parse_bindings(const char *text, InputBinding *bindings, int capacity) {
    int skipped = 0;
    return _input_parse(text, bindings, capacity, &skipped);
}

static bool _input_apply(int action, const char *text) {
    InputActionState *state = &input->actions[action];
    int skipped = 0;
    state->entry_count = _input_parse(text, state->entries, INPUT_MAX_BINDINGS, &skipped);
    return skipped == 0;
}

bool input_bind(int action, const char *text) {
    if (!input || !_input_action_valid(action)) return false;
    const bool whole = _input_apply(action, text);
    cfg_set_input_bindings(action, text);
    return whole;
}

const char *input_bindings_text(int action) {
    return input && _input_action_valid(action) ? cfg_get_input_bindings(action) : "";
}

// --- lifetime ---

bool input_setup() {
    if (input) return true;
    input = static_cast<InputState *>(SDL_calloc(1, sizeof *input));
    if (!input) return engine_error("[INPUT] Memory allocation failed, error: %s", SDL_GetError());
    for (int action = 0; action < input_action_count(); action++) {
        if (_input_apply(action, cfg_get_input_bindings(action))) continue;
        SDL_LogWarn(
            SDL_LOG_CATEGORY_INPUT, "[INPUT] Some bindings for \"%s\" were not recognised", input_action_name(action));
    }
    return true;
}

void input_cleanup() {
    SDL_free(input);
    input = nullptr;
}

// --- events ---

static void _input_press_matching(InputBindingKind kind, int code, int direction) {
    for (InputActionState &state : input->actions) {
        for (int i = 0; i < state.entry_count; i++) {
            const InputBinding *entry = &state.entries[i];
            if (entry->kind != kind || entry->code != code || entry->direction != direction) continue;
            state.pressed_frame = state.pressed_step = true;
        }
    }
}

static float _input_axis_value(SDL_GamepadAxis axis, Sint16 raw) {
    if (_input_is_trigger(axis)) return gamepad_trigger_normalise(raw);
    return gamepad_axis_deadzone(gamepad_axis_normalise(raw), gamepad_deadzone());
}

static bool _input_axis_past_threshold(SDL_GamepadAxis axis, Sint16 raw, int direction) {
    return _input_axis_value(axis, raw) * static_cast<float>(direction) > INPUT_AXIS_THRESHOLD;
}

static void _input_handle_axis(int axis, Sint16 raw) {
    if (axis < 0 || axis >= SDL_GAMEPAD_AXIS_COUNT) return;
    for (const int direction : {-1, 1}) {
        const bool beyond = _input_axis_past_threshold(static_cast<SDL_GamepadAxis>(axis), raw, direction);
        bool *past = &input->axis_past[axis][direction > 0 ? 1 : 0];
        if (beyond && !*past) _input_press_matching(INPUT_BINDING_AXIS, axis, direction);
        *past = beyond;
    }
}

void input_handle_event(const SDL_Event *event) {
    if (!input) return;
    switch (event->type) {
    case SDL_EVENT_KEY_DOWN:
        if (!event->key.repeat) _input_press_matching(INPUT_BINDING_KEY, event->key.scancode, 0);
        break;
    case SDL_EVENT_GAMEPAD_BUTTON_DOWN:
        _input_press_matching(INPUT_BINDING_BUTTON, event->gbutton.button, 0);
        break;
    case SDL_EVENT_GAMEPAD_AXIS_MOTION:
        _input_handle_axis(event->gaxis.axis, event->gaxis.value);
        break;
    case SDL_EVENT_GAMEPAD_REMOVED:
        SDL_zeroa(input->axis_past);
        break;
    default:
        break;
    }
}

// --- frames and steps ---

void input_frame_start() {
    if (!input) return;
    for (InputActionState &state : input->actions) state.pressed_frame = false;
}

void input_fixed_step_begin() {
    if (input) input->in_fixed_step = true;
}

void input_fixed_step_end() {
    if (!input) return;
    input->in_fixed_step = false;
    for (InputActionState &state : input->actions) state.pressed_step = false;
}

void input_clear_presses() {
    if (!input) return;
    for (InputActionState &state : input->actions) state.pressed_frame = state.pressed_step = false;
}

// --- recordings ---

Uint32 _input_axes_past() {
    Uint32 bits = 0;
    for (int i = 0; input && i < 2 * SDL_GAMEPAD_AXIS_COUNT; i++) {
        if (input->axis_past[i / 2][i % 2]) bits |= 1u << i;
    }
    return bits;
}

void _input_set_axes_past(Uint32 bits) {
    for (int i = 0; input && i < 2 * SDL_GAMEPAD_AXIS_COUNT; i++) input->axis_past[i / 2][i % 2] = bits >> i & 1;
}

// --- queries ---

bool input_key_held(SDL_Scancode key) {
    const ReplayDevices *recorded = replay_devices();
    return recorded ? recorded->keys[key] : SDL_GetKeyboardState(nullptr)[key];
}

static bool _input_entry_active(const InputBinding *entry) {
    switch (entry->kind) {
    case INPUT_BINDING_KEY:
        return input_key_held(static_cast<SDL_Scancode>(entry->code));
    case INPUT_BINDING_BUTTON:
        return gamepad_button(static_cast<SDL_GamepadButton>(entry->code));
    case INPUT_BINDING_AXIS: {
        const auto axis = static_cast<SDL_GamepadAxis>(entry->code);
        return _input_axis_past_threshold(axis, gamepad_axis_raw(axis), entry->direction);
    }
    }
    return false;
}

bool input_held(int action) {
    if (!input || !_input_action_valid(action)) return false;
    const InputActionState *state = &input->actions[action];
    for (int i = 0; i < state->entry_count; i++) {
        if (_input_entry_active(&state->entries[i])) return true;
    }
    return false;
}

bool input_pressed(int action) {
    if (!input || !_input_action_valid(action)) return false;
    return input->in_fixed_step ? input->actions[action].pressed_step : input->actions[action].pressed_frame;
}
