// Pixel comparison with the pictures stored in the repository. On a mismatch the actual picture and a picture of the
// differences are written to the build folder; ./dev accept stores the former.
#pragma once

#include "support/picture.h"

#include <gtest/gtest.h>

#include <string>

// Anti-aliased pixels (between a lighter and a darker neighbour) may differ slightly, because font rasterisers differ.
testing::AssertionResult matches_stored(const Picture &picture, const std::string &name);
