// hud: hearts, flames, embers, key and time over the game, the signs' texts, and what is said when a level is won.
#pragma once

#include "level.h"

void hud_draw(const Level *level);
// "Left, A, D-pad left": what {left} stands for in the texts of signs, for the device used last.
void hud_sign_text(const char *text, char *out, size_t size);
struct HudTime {
    char text[16]; // "1:23.45"
};
HudTime hud_time(double seconds);
