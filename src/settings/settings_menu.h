// settings_menu: a complete settings menu, drawn over a game's screen, such as its title: the values, then one line of
// bindings per action. Needs menu_setup and settings_setup. Main thread only.
#pragma once

#include "lumarind/settings/menu.h"

void settings_menu_open();
// Draws the menu and handles input; call once per frame. Returns false when the player leaves the menu; the
// configuration has then been saved. `result` receives the input, for sounds; may be null.
bool settings_menu_tick(MenuAnswer *result = nullptr);
