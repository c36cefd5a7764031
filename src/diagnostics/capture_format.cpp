#include "lumarind/diagnostics/capture_format.h"

#include <SDL3/SDL_stdinc.h>

CaptureFormat capture_format_from_string(const char *text) {
    const bool jpeg = text && (SDL_strcasecmp(text, "jpg") == 0 || SDL_strcasecmp(text, "jpeg") == 0);
    return jpeg ? CAPTURE_FORMAT_JPEG : CAPTURE_FORMAT_PNG;
}

const char *capture_format_to_string(int format) { return format == CAPTURE_FORMAT_JPEG ? "jpg" : "png"; }
