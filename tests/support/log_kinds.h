// The log lines expected in normal operation and with a corrupt asset.
#pragma once

#include "support/log_capture.h"

// Returns "" if the line's kind and priority are known, else the line with its priority.
std::string unknown_line(const LogLine &line);

bool matches(const std::string &text, const char *pattern); // * matches any text, also none
