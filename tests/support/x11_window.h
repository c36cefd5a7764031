// Asks a window to close, as the button of a window manager does. (xdotool can only destroy it.)
#pragma once

bool x11_close_window(unsigned long id);
