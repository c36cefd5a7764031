// Records the calls of some SDL functions that the headless drivers show nothing of, and lets them fail.
#pragma once

#include <string>

// The calls since the string was last cleared, each with its arguments and a "; " behind it. See sdl_calls.cpp.
extern std::string sdl_calls;

extern std::string failing_sdl_call; // the name of a function above that fails from now on; "" for none
