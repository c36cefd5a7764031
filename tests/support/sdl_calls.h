// Records calls of library functions that have no visible effect with the headless drivers, and can make them fail.
#pragma once

#include <string>

// The calls since the string was last cleared, each with its arguments and followed by "; ". See sdl_calls.cpp.
extern std::string sdl_calls;

// Texts are recorded instead of drawn: the pixels then do not depend on the version of the font rasteriser.
extern bool texts_are_recorded;

extern std::string failing_sdl_call; // recorded name of the calls that fail; "" for none
