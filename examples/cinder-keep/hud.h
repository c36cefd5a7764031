// hud: draws hearts, flames, embers, key and time over the game, sign texts, and the results of a finished level.
#pragma once

#include "level.h"
#include "lumarind/engine/text_draw.h"

void hud_draw(const Level *level);
const Sign *hud_sign(const Level *level); // the one shown now, or null
// Replaces {left} and so on by the action's binding: on the controller if one is connected, else on the keyboard.
void hud_sign_text(const char *text, char *out, size_t size);
struct HudTime {
    char text[16]; // "1:23.45"
};
HudTime hud_time(double seconds);
HudTime hud_best_time(int level);                                                              // "-" if there is none
void hud_text(int font, const char *text, float x, float y, SDL_Color color, TextAlign align); // with a shadow
