#include "lumarind/settings/settings.h"

#include "lumarind/audio/audio.h"
#include "lumarind/config/config.h"
#include "lumarind/core/error.h"
#include "lumarind/engine/callbacks.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/ui_scale.h"
#include "lumarind/input/gamepad.h"
#include "settings/settings_internal.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_keyboard.h>

#include <iterator>

static constexpr size_t BINDINGS_TEXT_SIZE = 128; // per action in the configuration, with the NUL

struct Settings {
    const SettingsAction *actions; // borrowed
    int action_count;
    SettingsCapture capture;
    int action, slot;    // of the capture
    double seconds_left; // s
    InputBinding captured;
    int other_action, other_slot;               // of the conflict
    bool axis_armed[SDL_GAMEPAD_AXIS_COUNT][2]; // was below the threshold since the capture began
};
static Settings *settings;

static constexpr Uint32 SETTINGS_EVENTS[] = {
    SDL_EVENT_KEY_DOWN, SDL_EVENT_GAMEPAD_BUTTON_DOWN, SDL_EVENT_GAMEPAD_AXIS_MOTION};

// --- binding texts ---

static bool _settings_same(const InputBinding &a, const InputBinding &b) {
    return a.kind == b.kind && a.code == b.code && a.direction == b.direction;
}

// Formats a binding as configuration text. Returns false if it has none: keys without a name, and the comma.
static bool _settings_write(const InputBinding &binding, char *text, size_t size) {
    const char *name = nullptr, *sign = "", *prefix = "pad:";
    switch (binding.kind) {
    case INPUT_BINDING_KEY:
        name = SDL_GetScancodeName(static_cast<SDL_Scancode>(binding.code));
        prefix = "";
        break;
    case INPUT_BINDING_BUTTON:
        name = SDL_GetGamepadStringForButton(static_cast<SDL_GamepadButton>(binding.code));
        break;
    case INPUT_BINDING_AXIS:
        name = SDL_GetGamepadStringForAxis(static_cast<SDL_GamepadAxis>(binding.code));
        if (binding.code < SDL_GAMEPAD_AXIS_LEFT_TRIGGER) sign = binding.direction < 0 ? "-" : "+";
        break;
    }
    if (!name || !*name || SDL_strchr(name, ',')) return false;
    const int length = SDL_snprintf(text, size, "%s%s%s", prefix, name, sign);
    return length > 0 && static_cast<size_t>(length) < size;
}

static int _settings_read(int action, InputBinding *bindings) {
    return input_parse_bindings(input_bindings_text(action), bindings, INPUT_MAX_BINDINGS);
}

// Reports an error and changes nothing if the text is too long for the configuration.
static bool _settings_bind(int action, const InputBinding *bindings, int count) {
    char text[2 * BINDINGS_TEXT_SIZE] = {};
    size_t used = 0;
    for (int i = 0; i < count; i++) {
        char name[SETTINGS_TEXT_SIZE] = {};
        if (!_settings_write(bindings[i], name, sizeof name)) continue;
        used += static_cast<size_t>(SDL_snprintf(text + used, sizeof text - used, "%s%s", used ? ", " : "", name));
        if (used >= BINDINGS_TEXT_SIZE) return engine_error("[SETTINGS] Bindings too long to store: %s", text);
    }
    return input_bind(action, text);
}

struct ButtonName {
    SDL_GamepadButton button;
    const char *name;
};
static constexpr ButtonName BUTTON_NAMES[] = {
    {SDL_GAMEPAD_BUTTON_SOUTH, "South"},
    {SDL_GAMEPAD_BUTTON_EAST, "East"},
    {SDL_GAMEPAD_BUTTON_WEST, "West"},
    {SDL_GAMEPAD_BUTTON_NORTH, "North"},
    {SDL_GAMEPAD_BUTTON_BACK, "Back"},
    {SDL_GAMEPAD_BUTTON_GUIDE, "Guide"},
    {SDL_GAMEPAD_BUTTON_START, "Start"},
    {SDL_GAMEPAD_BUTTON_LEFT_STICK, "Left stick"},
    {SDL_GAMEPAD_BUTTON_RIGHT_STICK, "Right stick"},
    {SDL_GAMEPAD_BUTTON_LEFT_SHOULDER, "Left shoulder"},
    {SDL_GAMEPAD_BUTTON_RIGHT_SHOULDER, "Right shoulder"},
    {SDL_GAMEPAD_BUTTON_DPAD_UP, "D-pad up"},
    {SDL_GAMEPAD_BUTTON_DPAD_DOWN, "D-pad down"},
    {SDL_GAMEPAD_BUTTON_DPAD_LEFT, "D-pad left"},
    {SDL_GAMEPAD_BUTTON_DPAD_RIGHT, "D-pad right"},
};
static constexpr const char *LABEL_NAMES[] = {"", "A", "B", "X", "Y", "Cross", "Circle", "Square", "Triangle"};
static_assert(std::size(LABEL_NAMES) == SDL_GAMEPAD_BUTTON_LABEL_TRIANGLE + 1, "one name per label");
static constexpr const char *AXIS_NAMES[][2] = {
    {"Stick left", "Stick right"},  {"Stick up", "Stick down"},       {"R-stick left", "R-stick right"},
    {"R-stick up", "R-stick down"}, {"Left trigger", "Left trigger"}, {"Right trigger", "Right trigger"},
};
static_assert(std::size(AXIS_NAMES) == SDL_GAMEPAD_AXIS_COUNT, "two names per axis");

static const char *_settings_button_name(SDL_GamepadButton button) {
    const SDL_GamepadButtonLabel label = gamepad_button_label(button);
    if (label > SDL_GAMEPAD_BUTTON_LABEL_UNKNOWN && label <= SDL_GAMEPAD_BUTTON_LABEL_TRIANGLE)
        return LABEL_NAMES[label];
    for (const ButtonName &row : BUTTON_NAMES) {
        if (row.button == button) return row.name;
    }
    const char *name = SDL_GetGamepadStringForButton(button);
    return name ? name : "";
}

static const char *_settings_key_name(SDL_Scancode scancode) { // in the player's keyboard layout
    const char *name = SDL_GetKeyName(SDL_GetKeyFromScancode(scancode, SDL_KMOD_NONE, false));
    return *name ? name : SDL_GetScancodeName(scancode);
}

SettingsText settings_binding_text(const InputBinding &binding) {
    SettingsText text = {};
    const char *name = "";
    switch (binding.kind) {
    case INPUT_BINDING_KEY:
        name = _settings_key_name(static_cast<SDL_Scancode>(binding.code));
        break;
    case INPUT_BINDING_BUTTON:
        name = _settings_button_name(static_cast<SDL_GamepadButton>(binding.code));
        break;
    case INPUT_BINDING_AXIS:
        if (binding.code >= 0 && binding.code < SDL_GAMEPAD_AXIS_COUNT)
            name = AXIS_NAMES[binding.code][binding.direction > 0];
        break;
    }
    SDL_strlcpy(text.text, name, sizeof text.text);
    return text;
}

SettingsText settings_slot_text(int action, int slot) {
    InputBinding bindings[INPUT_MAX_BINDINGS] = {};
    const int count = _settings_read(action, bindings);
    return slot >= 0 && slot < count ? settings_binding_text(bindings[slot]) : SettingsText{};
}

SettingsText settings_action_text(int action, bool pad) {
    InputBinding bindings[INPUT_MAX_BINDINGS] = {};
    const int count = _settings_read(action, bindings);
    for (int i = 0; i < count; i++) {
        if ((bindings[i].kind != INPUT_BINDING_KEY) == pad) return settings_binding_text(bindings[i]);
    }
    return {};
}

bool settings_clear(int action, int slot) {
    InputBinding bindings[INPUT_MAX_BINDINGS] = {};
    const int count = _settings_read(action, bindings);
    if (slot < 0 || slot >= count || count == 1) return false;
    for (int i = slot; i + 1 < count; i++) bindings[i] = bindings[i + 1];
    return _settings_bind(action, bindings, count - 1);
}

void settings_restore_bindings() {
    for (int action = 0; action < input_action_count(); action++) {
        input_bind(action, input_default_bindings_text(action));
    }
}

// --- capture ---

// Stores the binding in the slot, or appends it, and removes duplicates.
static bool _settings_put(int action, int slot, const InputBinding &binding) {
    InputBinding bindings[INPUT_MAX_BINDINGS + 1] = {}, unique[INPUT_MAX_BINDINGS + 1] = {};
    int count = _settings_read(action, bindings), unique_count = 0;
    slot = SDL_min(slot, count);
    if (slot == count) count++;
    bindings[slot] = binding;
    for (int i = 0; i < count; i++) {
        if (i == slot || !_settings_same(bindings[i], binding)) unique[unique_count++] = bindings[i];
    }
    return _settings_bind(action, unique, SDL_min(unique_count, INPUT_MAX_BINDINGS));
}

static bool _settings_find(const InputBinding &binding) {
    for (int i = 0; i < settings->action_count; i++) {
        InputBinding bindings[INPUT_MAX_BINDINGS] = {};
        const int action = settings->actions[i].action, count = _settings_read(action, bindings);
        for (int slot = 0; slot < count && action != settings->action; slot++) {
            if (!_settings_same(bindings[slot], binding)) continue;
            settings->other_action = action;
            settings->other_slot = slot;
            return true;
        }
    }
    return false;
}

static bool _settings_has_by_default(int action, const InputBinding &binding) {
    InputBinding bindings[INPUT_MAX_BINDINGS] = {};
    const int count = input_parse_bindings(input_default_bindings_text(action), bindings, INPUT_MAX_BINDINGS);
    for (int i = 0; i < count; i++) {
        if (_settings_same(bindings[i], binding)) return true;
    }
    return false;
}

static void _settings_captured(const InputBinding &binding) {
    char text[SETTINGS_TEXT_SIZE] = {};
    const bool escape = binding.kind == INPUT_BINDING_KEY && binding.code == SDL_SCANCODE_ESCAPE;
    if (escape && !_settings_has_by_default(settings->action, binding)) {
        settings_capture_cancel();
    } else if (_settings_write(binding, text, sizeof text)) { // otherwise the capture continues
        settings->captured = binding;
        settings->capture = SETTINGS_CAPTURE_NONE;
        if (_settings_find(binding)) {
            settings->capture = SETTINGS_CAPTURE_CONFLICT;
        } else {
            _settings_put(settings->action, settings->slot, binding);
        }
    }
    input_clear_presses(); // the capture has consumed the press
}

static void _settings_handle_axis(int axis, Sint16 raw) {
    if (axis < 0 || axis >= SDL_GAMEPAD_AXIS_COUNT) return;
    const bool trigger = axis >= SDL_GAMEPAD_AXIS_LEFT_TRIGGER;
    const float value = trigger ? gamepad_trigger_normalise(raw) : gamepad_axis_normalise(raw);
    for (const int direction : {-1, 1}) {
        bool *armed = &settings->axis_armed[axis][direction > 0];
        const bool past = value * static_cast<float>(direction) > INPUT_AXIS_THRESHOLD;
        if (past && *armed) {
            _settings_captured({INPUT_BINDING_AXIS, axis, direction});
            return;
        }
        *armed = !past;
    }
}

static bool _settings_handle_event(SDL_Event *event, void *) {
    if (settings->capture != SETTINGS_CAPTURE_WAITING) return true;
    if (event->type == SDL_EVENT_KEY_DOWN) {
        if (!event->key.repeat) _settings_captured({INPUT_BINDING_KEY, event->key.scancode, 0});
    } else if (event->type == SDL_EVENT_GAMEPAD_BUTTON_DOWN) {
        _settings_captured({INPUT_BINDING_BUTTON, event->gbutton.button, 0});
    } else {
        _settings_handle_axis(event->gaxis.axis, event->gaxis.value);
    }
    return true;
}

bool settings_capture_begin(int action, int slot) {
    if (!settings || !_input_action_valid(action) || slot < 0 || slot >= INPUT_MAX_BINDINGS) return false;
    settings->capture = SETTINGS_CAPTURE_WAITING;
    settings->action = action;
    settings->slot = slot;
    settings->seconds_left = SETTINGS_CAPTURE_SECONDS;
    for (int axis = 0; axis < SDL_GAMEPAD_AXIS_COUNT; axis++) {
        const Sint16 raw = gamepad_axis_raw(static_cast<SDL_GamepadAxis>(axis));
        const float value = gamepad_axis_normalise(raw);
        settings->axis_armed[axis][0] = value >= -INPUT_AXIS_THRESHOLD;
        settings->axis_armed[axis][1] = value <= INPUT_AXIS_THRESHOLD;
    }
    return true;
}

void settings_capture_advance(double seconds) {
    if (settings_capture() != SETTINGS_CAPTURE_WAITING) return;
    settings->seconds_left -= seconds;
    if (settings->seconds_left <= 0) settings_capture_cancel();
}

SettingsCapture settings_capture() { return settings ? settings->capture : SETTINGS_CAPTURE_NONE; }

double settings_capture_left() { return settings_capture() == SETTINGS_CAPTURE_WAITING ? settings->seconds_left : 0; }

int settings_capture_action() { return settings_capture() == SETTINGS_CAPTURE_NONE ? -1 : settings->action; }

int settings_capture_conflict(SettingsText *binding) {
    if (settings_capture() != SETTINGS_CAPTURE_CONFLICT) return -1;
    if (binding) *binding = settings_binding_text(settings->captured);
    return settings->other_action;
}

void settings_capture_answer(bool swap) {
    if (settings_capture() != SETTINGS_CAPTURE_CONFLICT) return;
    settings->capture = SETTINGS_CAPTURE_NONE;
    if (!swap) return;
    if (!_settings_find(settings->captured)) { // the bindings have changed since the capture
        _settings_put(settings->action, settings->slot, settings->captured);
        return;
    }
    InputBinding mine[INPUT_MAX_BINDINGS] = {}, others[INPUT_MAX_BINDINGS] = {};
    const int count = _settings_read(settings->action, mine);
    int other_count = _settings_read(settings->other_action, others);
    if (settings->slot < count) {
        others[settings->other_slot] = mine[settings->slot];
    } else {
        other_count--;
        for (int i = settings->other_slot; i < other_count; i++) others[i] = others[i + 1];
    }
    if (_settings_put(settings->action, settings->slot, settings->captured)) {
        _settings_bind(settings->other_action, others, other_count);
    }
}

void settings_capture_cancel() {
    if (settings) settings->capture = SETTINGS_CAPTURE_NONE;
}

// --- values ---

static constexpr const char *VALUE_NAMES[] = {"Volume",      "Music volume",  "Effects volume",
                                              "Full screen", "Vertical sync", "Interface size"};
static_assert(std::size(VALUE_NAMES) == SETTINGS_VALUE_COUNT, "one name per value");

static bool _settings_is_volume(int value) { return value >= SETTINGS_MASTER_VOLUME && value <= SETTINGS_SFX_VOLUME; }

static int _settings_tenths(int value) {
    return static_cast<int>(SDL_roundf(audio_volume(static_cast<AudioBus>(value)) * 10));
}

const char *settings_value_name(int value) {
    return value >= 0 && value < SETTINGS_VALUE_COUNT ? VALUE_NAMES[value] : "";
}

SettingsText settings_value_text(int value) {
    SettingsText text = {};
    const int scale = cfg_get_ui_scale();
    if (_settings_is_volume(value)) {
        SDL_snprintf(text.text, sizeof text.text, "%d %%", _settings_tenths(value) * 10);
    } else if (value == SETTINGS_FULLSCREEN || value == SETTINGS_VSYNC) {
        const bool on = value == SETTINGS_VSYNC ? cfg_get_vsync_enabled() : engine_is_fullscreen();
        SDL_strlcpy(text.text, on ? "on" : "off", sizeof text.text);
    } else if (value == SETTINGS_UI_SCALE) {
        SDL_snprintf(text.text, sizeof text.text, scale > 0 ? "%d" : "automatic", scale);
    }
    return text;
}

// The largest scale at which a menu fits the window: with a larger one a player could not change it back.
static int _settings_largest_scale() {
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    const float fits = SDL_min(width / SETTINGS_VIEW_MIN_W, height / SETTINGS_VIEW_MIN_H);
    return SDL_clamp(static_cast<int>(fits * static_cast<float>(engine_ui_scale())), UI_SCALE_MIN, UI_SCALE_MAX);
}

bool settings_value_step(int value, int step) {
    if (_settings_is_volume(value)) {
        const int tenths = _settings_tenths(value), next = SDL_clamp(tenths + step, 0, 10);
        audio_set_volume(static_cast<AudioBus>(value), static_cast<float>(next) / 10);
        return next != tenths;
    }
    if (value == SETTINGS_FULLSCREEN) return engine_set_fullscreen(!engine_is_fullscreen());
    if (value == SETTINGS_VSYNC) return engine_set_vsync(!cfg_get_vsync_enabled());
    if (value != SETTINGS_UI_SCALE) return false;
    const int scale = SDL_clamp(cfg_get_ui_scale(), 0, UI_SCALE_MAX);
    const int next = SDL_clamp(scale + step, 0, _settings_largest_scale());
    return next != scale && engine_set_ui_scale(next);
}

// --- lifetime ---

bool settings_setup(const SettingsAction *actions, int count) {
    if (settings) return true;
    settings = static_cast<Settings *>(SDL_calloc(1, sizeof *settings));
    if (!settings) return engine_error("[SETTINGS] Memory allocation failed, error: %s", SDL_GetError());
    settings->actions = actions;
    settings->action_count = count;
    for (const Uint32 type : SETTINGS_EVENTS) {
        if (engine_add_callback(type, _settings_handle_event, settings)) continue;
        settings_cleanup();
        return false;
    }
    return true;
}

int _settings_actions(const SettingsAction **actions) {
    *actions = settings ? settings->actions : nullptr;
    return settings ? settings->action_count : 0;
}

const char *_settings_label(int action) {
    for (int i = 0; settings && i < settings->action_count; i++) {
        if (settings->actions[i].action == action) return settings->actions[i].label;
    }
    return "";
}

void settings_cleanup() {
    if (!settings) return;
    for (const Uint32 type : SETTINGS_EVENTS) engine_remove_callback(type, _settings_handle_event, settings);
    SDL_free(settings);
    settings = nullptr;
}
