#include "support/desktop.h"

#include <cstdio>
#include <thread>

bool wait_until(const std::function<bool()> &condition, std::chrono::milliseconds timeout) {
    const auto end = std::chrono::steady_clock::now() + timeout;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

std::string output_of(const std::string &command) {
    std::string output;
    FILE *pipe = popen(command.c_str(), "r");
    char chunk[256];
    while (pipe && fgets(chunk, sizeof chunk, pipe)) output += chunk;
    if (pipe) pclose(pipe);
    return output;
}

void xdotool(const std::string &arguments) { output_of("xdotool " + arguments + " 2>&1"); }

std::string find_window(const std::string &name) {
    std::string id;
    wait_until([&] {
        id = output_of("xdotool search --onlyvisible --name '^" + name + "$' 2>/dev/null | head -n 1 | tr -d '\\n'");
        return !id.empty();
    });
    return id;
}
