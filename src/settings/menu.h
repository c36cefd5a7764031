// menu: a list of lines that keyboard, controller and mouse choose from, drawn with the shared font and asked once per
// frame, over whatever the screen has drawn. Main thread only.
#pragma once

#include <SDL3/SDL_pixels.h>
#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

// The game's actions that move in menus: best ones of their own, which players cannot bind away. -1: there is none.
struct MenuControls {
    int up = -1, down = -1, left = -1, right = -1, take = -1, back = -1, clear = -1;
};

struct MenuLook {
    SDL_Color plain = {200, 190, 190, 255}, bright = {255, 226, 150, 255}, dim = {132, 124, 146, 255};
    SDL_Color bar = {119, 32, 63, 150}, mark = {239, 124, 51, 255}; // behind the selected line, and at its left end
};

// --- lifetime ---
bool menu_setup(const MenuControls &controls, const MenuLook &look = {}); // idempotent. False: reported
void menu_cleanup();                                                      // safe to call twice

// --- a menu: {} at first, kept by its owner ---
struct Menu {
    int selected;
    float scroll; // lines above the first one seen
};

struct MenuLine {
    const char *label = "";
    const char *value = nullptr; // at the right end; null: the label stands in the middle
    bool off = false;            // cannot be chosen
};

struct MenuAnswer {
    int taken = -1; // the line that was taken, or -1
    int step = 0;   // -1 or 1: left or right on the selected line, or its left or right half clicked
    bool moved = false, back = false, clear = false;
};

// `area` in drawing units; lines beyond its lower edge are scrolled to. Without `listens` it is only drawn.
MenuAnswer menu_tick(Menu *menu, const MenuLine *lines, int count, const SDL_FRect &area, bool listens = true);
float menu_line_height();
void menu_darken(Uint8 alpha); // the whole view, behind a menu
MenuLook menu_look();          // of the setup
