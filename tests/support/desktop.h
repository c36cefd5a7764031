// The user at the X server the tests run under: xdotool's keys and mouse.
#pragma once

#include <chrono>
#include <functional>
#include <string>

bool wait_until(const std::function<bool()> &reached, std::chrono::milliseconds patience = std::chrono::seconds(20));

std::string output_of(const std::string &command); // of a shell command, its standard output
void xdotool(const std::string &words);
std::string find_window(const std::string &name); // waits for it; its id, or "" after a while
