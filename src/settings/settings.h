// settings: key rebinding and player settings (volumes, full screen, vsync, UI scale), for a game's own menu or that of
// settings_menu.h. Changes take effect at once and are stored in the configuration, which is saved on exit or by
// cfg_save. Main thread only.
#pragma once

#include "lumarind/input/input.h"

// An action that players may rebind, and its display name. The table is borrowed.
struct SettingsAction {
    int action = 0;
    const char *label = "";
};

// --- lifetime ---
// A binding may occur only once among `actions`; leave out menu actions, which share keys with the game. Safe to call
// twice. Reports errors.
bool settings_setup(const SettingsAction *actions, int count);
void settings_cleanup(); // safe to call twice

// --- bindings: an action has INPUT_MAX_BINDINGS slots, the used ones first ---
inline constexpr int SETTINGS_TEXT_SIZE = 64; // bytes, with the terminating NUL
struct SettingsText {
    char text[SETTINGS_TEXT_SIZE];
};

// Display names, such as "Left Shift": keys in the player's layout, buttons by their labels on the active controller.
SettingsText settings_binding_text(const InputBinding &binding);
SettingsText settings_slot_text(int action, int slot);   // "" if the slot is empty
SettingsText settings_action_text(int action, bool pad); // its first key binding, or controller binding
bool settings_clear(int action, int slot);               // false: the slot is empty or holds the only binding
void settings_restore_bindings();                        // restores the defaults of the game's record

// --- capturing a binding: the next key, button, or stick or trigger moved past INPUT_AXIS_THRESHOLD ---
// Menus should ignore input during a capture. Escape cancels it, except for actions bound to Escape by default.
inline constexpr double SETTINGS_CAPTURE_SECONDS = 6; // timeout, for players without a keyboard

enum SettingsCapture {
    SETTINGS_CAPTURE_NONE,
    SETTINGS_CAPTURE_WAITING,
    SETTINGS_CAPTURE_CONFLICT, // another action has this binding: call settings_capture_answer
};

bool settings_capture_begin(int action, int slot); // false: invalid action or slot. Empty slots are filled in order
void settings_capture_advance(double seconds);     // once per frame
SettingsCapture settings_capture();
double settings_capture_left();                       // s until the timeout; 0 unless waiting
int settings_capture_action();                        // -1 without a capture
int settings_capture_conflict(SettingsText *binding); // the other action, or -1; `binding` (output) may be null
// Resolves a conflict. With `swap` the other action gets the slot's old binding, or none if the slot was empty;
// otherwise nothing changes.
void settings_capture_answer(bool swap);
void settings_capture_cancel();

// --- values ---
inline constexpr int SETTINGS_VIEW_MIN_W = 320, SETTINGS_VIEW_MIN_H = 180; // UI units

enum SettingsValue {
    SETTINGS_MASTER_VOLUME, // in steps of a tenth
    SETTINGS_MUSIC_VOLUME,
    SETTINGS_SFX_VOLUME,
    SETTINGS_FULLSCREEN,
    SETTINGS_VSYNC,
    SETTINGS_UI_SCALE, // "automatic", then 1 to 8, limited to keep the view at least SETTINGS_VIEW_MIN_W × _H
    SETTINGS_VALUE_COUNT,
};

const char *settings_value_name(int value);    // "Music volume"; "" for an invalid value
SettingsText settings_value_text(int value);   // "80 %"; "" for an invalid value
bool settings_value_step(int value, int step); // -1 or 1; on/off values toggle. False: unchanged (limit, or an error)
