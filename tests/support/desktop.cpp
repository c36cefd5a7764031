#include "support/desktop.h"

#include <X11/Xlib.h>
#include <cstdio>
#include <thread>

bool wait_until(const std::function<bool()> &reached, std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!reached()) {
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

void xdotool(const std::string &words) { output_of("xdotool " + words + " 2>&1"); }

std::string find_window(const std::string &name) {
    std::string id;
    wait_until([&] {
        id = output_of("xdotool search --onlyvisible --name '^" + name + "$' 2>/dev/null | head -n 1");
        return !id.empty();
    });
    while (!id.empty() && id.back() == '\n') id.pop_back();
    return id;
}

bool close_window(const std::string &id) {
    Display *display = XOpenDisplay(nullptr);
    if (!display) return false;
    const Window window = std::stoul(id);
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    const bool sent = XSendEvent(display, window, False, NoEventMask, &event) != 0;
    XCloseDisplay(display);
    return sent;
}
