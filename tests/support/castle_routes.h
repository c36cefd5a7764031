// Scripted input for the two routes to the throne. A letter is a tenth of a second at 60 fixed steps per second: l and
// r walk left and right, L and R also jump, J jumps on the spot, < and > roll, o rolls ahead, . waits.
#pragma once

#include "player/player.h"

#include <string>

inline constexpr const char *ROUTE_BY_THE_TOWER =
    "rrrrrrrRrrrrrlLrrrrrrrJ.llllrrrrrrrrrrrRllrrrrrrRrlllllllrrrRlllllllLlllLlrrrrrrrrrrrrrrrRrrrrrrllllllLlllllrr"
    "ro.......JrrrrrrrrRrrl.rl..rL.l........rLllllllllrrJrrrrrrrrr.llllllllllllrr.rl.rr";
inline constexpr const char *ROUTE_BY_THE_CRYPTS =
    "rrrrrrrRrrrrrlLrrrrrrrJ.lll.rrrrrrrrrrRrrrr.rllll<.......Llllllrll>.......Jrrrrrrrrro.......RrrrrrrrrrrrrrRrll"
    "r.lllrLlllllllllllLllrr.llrrLllllrrrRrrl.rl..rL.l........rLllllllllrrJrrrrrrrrr.llllllllllllrr.rl.rr";

inline constexpr int ROUTE_STEPS_PER_LETTER = 6;

// Returns the intent of a letter's first step; in its other steps nothing is pressed.
inline PlayerIntent route_intent(char letter) {
    PlayerIntent intent = {};
    intent.move_x = SDL_strchr("rR>", letter) ? 1.0f : SDL_strchr("lL<", letter) ? -1.0f : 0.0f;
    intent.jump = SDL_strchr("RLJ", letter) != nullptr;
    intent.roll = SDL_strchr("<>o", letter) != nullptr;
    return intent;
}

// Returns a letter's keys as a script; direction keys stay held.
inline std::string route_keys(char letter) {
    const PlayerIntent intent = route_intent(letter);
    return std::string(
               intent.move_x > 0   ? "-Left +Right "
               : intent.move_x < 0 ? "-Right +Left "
                                   : "-Left -Right ") +
           (intent.jump ? "Space " : "") + (intent.roll ? "X " : "");
}
