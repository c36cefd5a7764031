// capture: frame capture to image files: on request, at a frame given on the command line, and every n-th frame.
// Main thread only; encoding and writing block the frame. Files go to the configured directory.
#pragma once

void capture_request(); // the next capture_tick captures the frame

// Called once per frame, in UI space and before present: captures the frame if it is due.
// Reports an error if saving failed, and does not retry.
bool capture_tick();
