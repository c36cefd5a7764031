// menus: the library's menu and settings menu with this game's actions and sounds.
#pragma once

#include "lumarind/settings/settings_menu.h"

bool menus_setup(); // for each screen with a menu; reports errors
void menus_cleanup();
MenuAnswer menus_tick(Menu *menu, const MenuLine *lines, int count, const SDL_FRect &area, bool listens = true);
bool menus_settings_tick(); // false: the settings menu was closed
