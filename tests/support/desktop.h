// Simulates a user on the tests' X server: xdotool's keys and mouse.
#pragma once

#include <chrono>
#include <functional>
#include <string>

bool wait_until(const std::function<bool()> &condition, std::chrono::milliseconds timeout = std::chrono::seconds(20));

std::string output_of(const std::string &command); // standard output of a shell command
void xdotool(const std::string &arguments);
std::string find_window(const std::string &name); // waits for it and returns its id, or "" after a timeout
