// hud: draws hearts, flames, embers, key and time over the game, sign texts, and the results of a finished level.
#pragma once

#include "level.h"

void hud_draw(const Level *level);
// Replaces {left} and so on by the action's binding: on the controller if one is connected, else on the keyboard.
void hud_sign_text(const char *text, char *out, size_t size);
struct HudTime {
    char text[16]; // "1:23.45"
};
HudTime hud_time(double seconds);
