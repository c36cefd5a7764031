#include "support/x11_window.h"

#include <X11/Xlib.h>

bool x11_close_window(unsigned long id) {
    Display *display = XOpenDisplay(nullptr);
    if (!display) return false;
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = id;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    const bool sent = XSendEvent(display, id, False, NoEventMask, &event) != 0;
    XCloseDisplay(display);
    return sent;
}
