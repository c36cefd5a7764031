// menus: the library's menu and settings menu as this game has them: its actions, and a sound for what is done.
#pragma once

#include "lumarind/settings/settings_menu.h"

bool menus_setup(); // for each screen with a menu; false: reported
void menus_cleanup();
MenuAnswer menus_tick(Menu *menu, const MenuLine *lines, int count, const SDL_FRect &area, bool listens = true);
bool menus_settings_tick(); // false: they are left
