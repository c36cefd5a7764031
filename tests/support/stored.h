// Comparison with pictures and texts stored in the repository. On a mismatch the actual one is written to the build
// folder, with a picture of the differences; after an intended change ./dev accept stores it.
#pragma once

#include "support/picture.h"

#include <gtest/gtest.h>

#include <string>

// Anti-aliased pixels (between a lighter and a darker neighbour) may differ slightly, because font rasterisers differ.
testing::AssertionResult matches_stored(const Picture &picture, const std::string &name);

// Compares with a text in tests/digests. A log is written beside the actual text.
void expect_stored(const std::string &name, const std::string &text, const std::string &log = "");
