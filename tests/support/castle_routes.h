// Scripted input for the two routes to the throne. A letter is a tenth of a second at 60 fixed steps per second: l and
// r walk left and right, L and R also jump, J jumps on the spot, < and > roll, o rolls ahead, . waits.
#pragma once

#include <SDL3/SDL_stdinc.h>

#include <string>

inline constexpr const char *ROUTE_BY_THE_TOWER =
    "rrrrrrrRrrrrrlLrrrrrrrJ.llllrrrrrrrrrrrRllrrrrrrRrlllllllrrrRlllllllLlllLlrrrrrrrrrrrrrrrRrrrrrrllllllLlllllrr"
    "ro.......JrrrrrrrrRrrl.rl..rL.l........rLllllllllrrJrrrrrrrrr.llllllllllllrr.rl.rr";
inline constexpr const char *ROUTE_BY_THE_CRYPTS =
    "rrrrrrrRrrrrrlLrrrrrrrJ.lll.rrrrrrrrrrRrrrr.rllll<.......Llllllrll>.......Jrrrrrrrrro.......RrrrrrrrrrrrrrRrll"
    "r.lllrLlllllllllllLllrr.llrrLllllrrrRrrl.rl..rL.l........rLllllllllrrJrrrrrrrrr.llllllllllllrr.rl.rr";

inline constexpr int ROUTE_STEPS_PER_LETTER = 6;

// Returns a letter's keys as a script; direction keys stay held.
inline std::string route_keys(char letter) {
    const auto is_one_of = [letter](const char *letters) { return SDL_strchr(letters, letter) != nullptr; };
    return std::string(
               is_one_of("rR>")   ? "-Left +Right "
               : is_one_of("lL<") ? "-Right +Left "
                                  : "-Left -Right ") +
           (is_one_of("RLJ") ? "Space " : "") + (is_one_of("<>o") ? "X " : "");
}
