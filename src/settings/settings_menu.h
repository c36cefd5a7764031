// settings_menu: the settings as a menu that a game opens over a screen of its own, such as its title and its pause:
// the values first, then a line of slots for each action. Needs menu_setup and settings_setup. Main thread only.
#pragma once

#include "lumarind/settings/menu.h"

void settings_menu_open();
// Draws it and acts on input, once per frame. Returns false once it is left: the configuration has then been saved.
// `heard`, if not null, gets what was done, for a game's sounds.
bool settings_menu_tick(MenuAnswer *heard = nullptr);
