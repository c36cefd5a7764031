// capture_internal: the steps of a capture, for the capture module and its tests.
#pragma once

#include "lumarind/diagnostics/capture_format.h"

#include <SDL3/SDL_stdinc.h>
#include <SDL3/SDL_time.h>

constexpr int CAPTURE_PATH_MAX = 512; // bytes, with the terminating NUL

// "<directory>/capture-YYYYMMDD-HHMMSS-<frame>.<png or jpg>", the frame number with at least six digits.
// Returns false if an argument is missing or the path does not fit.
bool capture_build_path(
    char *buffer, size_t size, const char *directory, const SDL_DateTime *time, Uint64 frame, CaptureFormat format);

bool capture_save(Uint64 frame); // reports errors
