// Pixel comparison with the pictures stored in the repository. A picture that differs is written to the build folder,
// with a picture of the differences; ./dev accept stores it.
#pragma once

#include "support/picture.h"

#include <gtest/gtest.h>

#include <string>

// Anti-aliased pixels (between a lighter and a darker neighbour) may differ slightly, because font rasterisers differ.
testing::AssertionResult matches_stored(const Picture &picture, const std::string &name);
