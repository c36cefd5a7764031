// capture_format: the file formats of captured frames and the words for them. No state.
#pragma once

enum CaptureFormat {
    CAPTURE_FORMAT_PNG = 0,
    CAPTURE_FORMAT_JPEG = 1,
};

CaptureFormat capture_format_from_string(const char *text); // "jpg" or "jpeg" in any case; PNG otherwise and for null
const char *capture_format_to_string(int format);           // "jpg" or "png", also the file's extension
