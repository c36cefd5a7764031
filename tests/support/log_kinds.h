// The lines the program may write while it runs well, and while an asset is damaged.
#pragma once

#include "support/log_capture.h"

// "" when the line is of a known kind and priority; else the line itself with its priority.
std::string unknown_line(const LogLine &line);

bool matches(const std::string &text, const char *pattern); // * stands for any text, also none
