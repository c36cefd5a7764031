#include "lumarind/input/gamepad.h"

#include "input/input_recording.h"
#include "lumarind/config/config.h"
#include "lumarind/core/error.h"
#include "lumarind/core/files.h"
#include "replay/replay_feed.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_log.h>

static constexpr const char *MAPPINGS_PATH = "config/gamecontrollerdb.txt";
static constexpr float RAW_MAX = 32767.0f;

struct GamepadState {
    SDL_Gamepad *handle; // owned; null: no controller is active
    SDL_JoystickID id;   // of the active controller, or 0
    float deadzone;
};
static GamepadState *gamepad;

static bool _is_real() { return gamepad && gamepad->handle; } // false also while a replay supplies the controller

// --- lifetime ---

static void _gamepad_add_mappings() {
    const FilePath path = files_user(MAPPINGS_PATH);
    if (!SDL_GetPathInfo(path.text, nullptr)) return;
    const int count = SDL_AddGamepadMappingsFromFile(path.text);
    if (count > 0) {
        SDL_Log("[GAMEPAD] Controller mappings added: %d from %s", count, path.text);
    } else if (count == 0) {
        SDL_LogWarn(SDL_LOG_CATEGORY_INPUT, "[GAMEPAD] No controller mapping for this platform in: %s", path.text);
    } else {
        SDL_LogWarn(
            SDL_LOG_CATEGORY_INPUT, "[GAMEPAD] Could not read controller mappings: %s, error: %s", path.text,
            SDL_GetError());
    }
}

static void _gamepad_open_all() {
    int count = 0;
    SDL_JoystickID *ids = SDL_GetGamepads(&count);
    for (int i = 0; ids && i < count; i++) gamepad_open(ids[i]);
    SDL_free(ids);
}

bool gamepad_setup() {
    if (gamepad) return true;
    gamepad = static_cast<GamepadState *>(SDL_calloc(1, sizeof *gamepad));
    if (!gamepad) return engine_error("[GAMEPAD] Memory allocation failed, error: %s", SDL_GetError());
    const float deadzone = cfg_get_gamepad_deadzone();
    gamepad->deadzone = deadzone > 0 ? SDL_min(deadzone, GAMEPAD_DEADZONE_MAX) : 0; // maps NaN to 0
    _gamepad_add_mappings();
    _gamepad_open_all();
    if (!gamepad->handle) SDL_Log("[GAMEPAD] No controller connected");
    return true;
}

void gamepad_cleanup() {
    if (!gamepad) return;
    if (gamepad->handle) SDL_CloseGamepad(gamepad->handle);
    SDL_free(gamepad);
    gamepad = nullptr;
}

// --- hot-plug ---

void gamepad_open(SDL_JoystickID id) {
    if (gamepad->handle) {
        if (id == gamepad->id) return;
        SDL_Log("[GAMEPAD] Ignoring additional controller %u, %s is already active", id, gamepad_name());
        return;
    }
    gamepad->handle = SDL_OpenGamepad(id);
    if (!gamepad->handle) {
        SDL_LogWarn(SDL_LOG_CATEGORY_INPUT, "[GAMEPAD] Could not open controller %u, error: %s", id, SDL_GetError());
        return;
    }
    gamepad->id = id;
    SDL_Log("[GAMEPAD] Connected: %s (%s)", gamepad_name(), gamepad_type_name());
}

void gamepad_handle_added(SDL_JoystickID id) {
    if (gamepad) gamepad_open(id);
}

void gamepad_handle_removed(SDL_JoystickID id) {
    if (!_is_real() || id != gamepad->id) return;
    SDL_Log("[GAMEPAD] Disconnected: %s", gamepad_name());
    SDL_CloseGamepad(gamepad->handle);
    gamepad->handle = nullptr;
    gamepad->id = 0;
    _gamepad_open_all();
}

// --- the active controller: the device, or during a replay the recorded one ---

static const ReplayPad *_gamepad_recorded() {
    const ReplayDevices *recorded = replay_devices();
    return recorded ? &recorded->pad : nullptr;
}

template <typename T> static bool _has_bit(Uint32 bits, T index) {
    return index >= 0 && index < 32 && (bits >> index & 1) != 0;
}

bool gamepad_connected() {
    const ReplayPad *pad = _gamepad_recorded();
    return pad ? pad->connected : _is_real();
}

const char *gamepad_name() {
    if (!gamepad_connected()) return "No controller";
    const ReplayPad *pad = _gamepad_recorded();
    const char *name = pad ? pad->name : SDL_GetGamepadName(gamepad->handle);
    return name ? name : "Unnamed controller";
}

const char *gamepad_type_name() {
    if (!gamepad_connected()) return "none";
    const ReplayPad *pad = _gamepad_recorded();
    const char *name = pad ? pad->type : SDL_GetGamepadStringForType(SDL_GetGamepadType(gamepad->handle));
    return name ? name : "unknown";
}

bool gamepad_has_button(SDL_GamepadButton button) {
    if (const ReplayPad *pad = _gamepad_recorded()) return _has_bit(pad->has_buttons, button);
    return _is_real() && SDL_GamepadHasButton(gamepad->handle, button);
}

bool gamepad_button(SDL_GamepadButton button) {
    if (const ReplayPad *pad = _gamepad_recorded()) return _has_bit(pad->buttons, button);
    return _is_real() && SDL_GetGamepadButton(gamepad->handle, button);
}

SDL_GamepadButtonLabel gamepad_button_label(SDL_GamepadButton button) {
    const ReplayPad *pad = _gamepad_recorded();
    if (pad && button >= 0 && button < SDL_GAMEPAD_BUTTON_COUNT &&
        pad->labels[button] <= SDL_GAMEPAD_BUTTON_LABEL_TRIANGLE) // a recording may hold any number
        return static_cast<SDL_GamepadButtonLabel>(pad->labels[button]);
    return !pad && _is_real() ? SDL_GetGamepadButtonLabel(gamepad->handle, button) : SDL_GAMEPAD_BUTTON_LABEL_UNKNOWN;
}

bool gamepad_has_axis(SDL_GamepadAxis axis) {
    if (const ReplayPad *pad = _gamepad_recorded()) return _has_bit(pad->has_axes, axis);
    return _is_real() && SDL_GamepadHasAxis(gamepad->handle, axis);
}

Sint16 gamepad_axis_raw(SDL_GamepadAxis axis) {
    const ReplayPad *pad = _gamepad_recorded();
    if (pad) return axis >= 0 && axis < SDL_GAMEPAD_AXIS_COUNT ? pad->axes[axis] : Sint16{0};
    return _is_real() ? SDL_GetGamepadAxis(gamepad->handle, axis) : Sint16{0};
}

void _gamepad_record(ReplayPad *pad) {
    *pad = {};
    pad->connected = _is_real();
    if (!pad->connected) return;
    SDL_strlcpy(pad->name, gamepad_name(), sizeof pad->name);
    SDL_strlcpy(pad->type, gamepad_type_name(), sizeof pad->type);
    for (int i = 0; i < SDL_GAMEPAD_BUTTON_COUNT; i++) {
        const auto button = static_cast<SDL_GamepadButton>(i);
        pad->has_buttons |= Uint32{gamepad_has_button(button)} << i;
        pad->buttons |= Uint32{gamepad_button(button)} << i;
        pad->labels[i] = static_cast<Uint8>(gamepad_button_label(button));
    }
    for (int i = 0; i < SDL_GAMEPAD_AXIS_COUNT; i++) {
        pad->has_axes |= Uint32{gamepad_has_axis(static_cast<SDL_GamepadAxis>(i))} << i;
        pad->axes[i] = gamepad_axis_raw(static_cast<SDL_GamepadAxis>(i));
    }
}

float gamepad_axis(SDL_GamepadAxis axis) {
    const Sint16 raw = gamepad_axis_raw(axis);
    const bool trigger = axis == SDL_GAMEPAD_AXIS_LEFT_TRIGGER || axis == SDL_GAMEPAD_AXIS_RIGHT_TRIGGER;
    return trigger ? gamepad_trigger_normalise(raw)
                   : gamepad_axis_deadzone(gamepad_axis_normalise(raw), gamepad_deadzone());
}

float gamepad_deadzone() { return gamepad ? gamepad->deadzone : 0; }

void gamepad_stick(SDL_GamepadAxis x_axis, SDL_GamepadAxis y_axis, float *x, float *y) {
    gamepad_stick_deadzone(
        gamepad_axis_normalise(gamepad_axis_raw(x_axis)), gamepad_axis_normalise(gamepad_axis_raw(y_axis)),
        gamepad_deadzone(), x, y);
}

void gamepad_left_stick(float *x, float *y) { gamepad_stick(SDL_GAMEPAD_AXIS_LEFTX, SDL_GAMEPAD_AXIS_LEFTY, x, y); }
void gamepad_right_stick(float *x, float *y) { gamepad_stick(SDL_GAMEPAD_AXIS_RIGHTX, SDL_GAMEPAD_AXIS_RIGHTY, x, y); }

bool gamepad_rumble(Uint16 low_frequency, Uint16 high_frequency, Uint32 duration_ms) {
    return _is_real() && SDL_RumbleGamepad(gamepad->handle, low_frequency, high_frequency, duration_ms);
}

// --- pure calculations ---

float gamepad_axis_normalise(Sint16 raw) { return SDL_max(static_cast<float>(raw) / RAW_MAX, -1.0f); }

float gamepad_trigger_normalise(Sint16 raw) { return raw < 1 ? 0 : static_cast<float>(raw) / RAW_MAX; }

float gamepad_axis_deadzone(float value, float deadzone) {
    const float length = SDL_fabsf(value);
    if (deadzone >= 1 || deadzone >= length) return 0;
    const float reach = (length - deadzone) / (1 - deadzone);
    return value < 0 ? -reach : reach;
}

void gamepad_stick_deadzone(float x, float y, float deadzone, float *out_x, float *out_y) {
    float length = SDL_sqrtf(x * x + y * y);
    if (length > 1) {
        x /= length;
        y /= length;
        length = 1;
    }
    const bool inside = deadzone >= length || deadzone >= 1;
    const float stretch = inside ? 0 : (length - deadzone) / (1 - deadzone) / length;
    if (out_x) *out_x = inside ? 0 : x * stretch;
    if (out_y) *out_y = inside ? 0 : y * stretch;
}
