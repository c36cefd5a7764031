// settings: what players set in a game's own menu: bindings, by pressing what they want, and volumes, full screen,
// vsync and the UI scale, which take effect at once. All of it is kept in the configuration, and saved on exit with the
// rest, or by cfg_save. settings_menu.h is a menu of it; this module is for one of a game's own. Main thread only.
#pragma once

#include "lumarind/input/input.h"

// An action that players may bind, and what it is called before them. Borrowed: a constant table.
struct SettingsAction {
    int action = 0;
    const char *label = "";
};

// --- lifetime ---
// The actions among which no binding may occur twice; those of menus stay out of it, as they share keys with the game.
// Idempotent. Returns false and reports the error.
bool settings_setup(const SettingsAction *actions, int count);
void settings_cleanup(); // safe to call twice

// --- bindings: an action has INPUT_MAX_BINDINGS slots, the used ones first ---
inline constexpr int SETTINGS_TEXT_SIZE = 64; // bytes, enough for every text here
struct SettingsText {
    char text[SETTINGS_TEXT_SIZE];
};

// As the player knows it: "Left Shift", "D-pad left"; a button by what is written on the active controller's.
SettingsText settings_binding_text(const InputBinding &binding);
SettingsText settings_slot_text(int action, int slot);   // "" where the slot is empty
SettingsText settings_action_text(int action, bool pad); // its first binding to a key, or to the controller
bool settings_clear(int action, int slot);               // false: the action's only binding stays, or there is none
void settings_restore_bindings();                        // the defaults of the game's record

// --- a new binding: the next key, button, or stick or trigger moved past INPUT_AXIS_THRESHOLD ---
// Menus should not act on input while a capture waits. Escape ends it, but for actions bound to Escape by default.
inline constexpr double SETTINGS_CAPTURE_SECONDS = 6; // then it ends by itself: for players with a controller alone

enum SettingsCapture {
    SETTINGS_CAPTURE_NONE,
    SETTINGS_CAPTURE_WAITING,
    SETTINGS_CAPTURE_CONFLICT, // what was pressed belongs to another action: settings_capture_answer
};

bool settings_capture_begin(int action, int slot); // an empty slot counts as the first empty one. False: no such
void settings_capture_advance(double seconds);     // once per frame
SettingsCapture settings_capture();
double settings_capture_left();                    // s, while it waits
int settings_capture_action();                     // -1 without a capture
int settings_capture_conflict(SettingsText *what); // the action that has it; -1: none. `what` may be null
// Swap: the other action gets what stood in the slot, or loses the binding where it was empty. Else all stays.
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
    SETTINGS_UI_SCALE, // "automatic", then 1 to 8, as far as the view stays SETTINGS_VIEW_MIN_W × _H
    SETTINGS_VALUE_COUNT,
};

const char *settings_value_name(int value);    // "Music volume"; "" for no value
SettingsText settings_value_text(int value);   // "80 %"; "" for no value
bool settings_value_step(int value, int step); // -1 or 1; switches turn over. False: it stays (at an end, or reported)
