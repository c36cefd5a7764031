// capture: saves frames as pictures: the one asked for, the one the command line names, and every n-th of them.
// Main thread only; the picture is encoded and written within the frame. Files go to the configured directory.
#pragma once

void capture_request(); // the next capture_tick takes the frame

// Once in a frame, in UI space and before it is presented: takes the picture when the frame is due.
// False: it could not be saved, reported; it is not tried again.
bool capture_tick();
