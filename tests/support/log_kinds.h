// The log lines expected in normal operation and with a corrupt asset.
#pragma once

#include "support/log_capture.h"

// Returns "" if a known pattern and its priority match, else the line with its priority.
std::string unknown_line(const LogLine &line);

bool matches(const std::string &text, const char *pattern); // * matches any text, ? one character
