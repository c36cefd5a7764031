// main_menu: the start screen, a list of the demonstration screens.
#pragma once

bool main_menu_setup();
void main_menu_tick();
void main_menu_cleanup();
