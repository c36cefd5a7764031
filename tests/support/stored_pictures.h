// Comparison of rendered pictures with those stored in the repository, pixel by pixel. A picture that differs is
// written to the build folder, with a picture of the differences beside it; ./dev accept stores it instead.
#pragma once

#include "support/picture.h"

#include <gtest/gtest.h>

#include <string>

// Anti-aliased pixels, those between a lighter and a darker neighbour, may differ by a small step: font rasterisers do.
testing::AssertionResult matches_stored(const Picture &picture, const std::string &name);
