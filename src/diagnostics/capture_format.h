// capture_format: the image formats of captured frames and their names. No state.
#pragma once

enum CaptureFormat {
    CAPTURE_FORMAT_PNG = 0,
    CAPTURE_FORMAT_JPEG = 1,
};

// JPEG for "jpg" or "jpeg" in any case; otherwise PNG, also for null.
CaptureFormat capture_format_from_string(const char *text);
const char *capture_format_to_string(int format); // "jpg" or "png", also the file's extension
