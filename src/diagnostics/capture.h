// capture: saves frames as pictures. Not saving yet; the frame's end already asks.
#pragma once

void capture_request(); // the next capture_tick takes the frame
bool capture_tick();    // false: a capture failed, reported
