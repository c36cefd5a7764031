// menu: an immediate-mode list menu for keyboard, controller and mouse, drawn with the shared UI font over the screen.
// Call menu_tick once per frame. Main thread only.
#pragma once

#include <SDL3/SDL_pixels.h>
#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

// The game's actions that navigate menus, or -1 for none; preferably dedicated actions that players cannot rebind.
struct MenuControls {
    int up = -1, down = -1, left = -1, right = -1, take = -1, back = -1, clear = -1;
};

struct MenuLook {
    SDL_Color plain = {200, 190, 190, 255}, bright = {255, 226, 150, 255}, dim = {132, 124, 146, 255};
    SDL_Color bar = {119, 32, 63, 150}, mark = {239, 124, 51, 255}; // selection: background and left marker
};

// --- lifetime ---
bool menu_setup(const MenuControls &controls, const MenuLook &look = {}); // safe to call twice; reports errors
void menu_cleanup();                                                      // safe to call twice

// --- a menu: the caller owns the record, zero-initialised ---
struct Menu {
    int selected;
    float scroll; // lines scrolled off the top
};

struct MenuLine {
    const char *label = "";
    const char *value = nullptr; // right-aligned; null: the label is centred
    bool off = false;            // disabled
};

struct MenuAnswer {
    int taken = -1; // the line that was activated, or -1
    int step = 0;   // -1 or 1: left or right was pressed, or the left or right half of line `taken` clicked
    bool moved = false, back = false, clear = false;
};

// Draws the menu and handles input. `area` is in drawing units; a longer list scrolls. If `accepts_input` is false,
// input is ignored.
MenuAnswer menu_tick(Menu *menu, const MenuLine *lines, int count, const SDL_FRect &area, bool accepts_input = true);
float menu_line_height();
void menu_darken(Uint8 alpha); // darkens the whole view, behind a menu
MenuLook menu_look();          // as passed to menu_setup
