#include "lumarind/diagnostics/capture.h"

#include "app/args.h"
#include "core/write_error.h"
#include "diagnostics/capture_internal.h"
#include "lumarind/config/config.h"
#include "lumarind/core/error.h"
#include "lumarind/core/files.h"
#include "lumarind/engine/engine.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_iostream.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_properties.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_surface.h>
#include <SDL3_image/SDL_image.h>

struct CaptureState {
    bool requested; // by capture_request, and not handled yet
};
static CaptureState capture;

bool capture_build_path(
    char *buffer, size_t size, const char *directory, const SDL_DateTime *time, Uint64 frame, CaptureFormat format) {
    if (!buffer || size == 0 || !directory || !time) return false;
    const int length = SDL_snprintf(
        buffer, size, "%s/capture-%04d%02d%02d-%02d%02d%02d-%06" SDL_PRIu64 ".%s", directory, time->year, time->month,
        time->day, time->hour, time->minute, time->second, frame, capture_format_to_string(format));
    return length >= 1 && static_cast<size_t>(length) < size;
}

// Drops the alpha channel: the window is opaque regardless of it, and encoding the PNG takes a quarter less time.
static SDL_Surface *_capture_read_opaque() {
    SDL_Surface *read = SDL_RenderReadPixels(engine_renderer(), nullptr);
    if (!read) return nullptr;
    SDL_Surface *opaque = SDL_ConvertSurface(read, SDL_PIXELFORMAT_RGB24);
    SDL_DestroySurface(read);
    return opaque;
}

static bool _capture_local_time(SDL_DateTime *time) {
    SDL_Time now = 0;
    return SDL_GetCurrentTime(&now) && SDL_TimeToDateTime(now, time, true);
}

static bool _capture_write_file(const char *path, const void *bytes, size_t size) {
    SDL_IOStream *file = SDL_IOFromFile(path, "wb");
    if (!file) return false;
    const bool written = SDL_WriteIO(file, bytes, size) == size;
    return SDL_CloseIO(file) && written;
}

// Encodes in memory first, because the JPEG writer ignores write errors: on a full disk a truncated file would count as
// saved. (SDL_SaveFile can miss errors as well.)
static bool _capture_save_jpeg(SDL_Surface *surface, const char *path, int quality) {
    SDL_IOStream *memory = SDL_IOFromDynamicMem();
    if (!memory) return false;
    bool saved = IMG_SaveJPG_IO(surface, memory, false, quality) && SDL_GetIOStatus(memory) == SDL_IO_STATUS_READY;
    if (saved) {
        const SDL_PropertiesID properties = SDL_GetIOProperties(memory);
        const void *bytes = SDL_GetPointerProperty(properties, SDL_PROP_IOSTREAM_DYNAMIC_MEMORY_POINTER, nullptr);
        saved = _capture_write_file(path, bytes, static_cast<size_t>(SDL_GetIOSize(memory)));
    }
    SDL_CloseIO(memory);
    return saved;
}

static bool _capture_write(SDL_Surface *surface, Uint64 frame) {
    const FilePath user = files_user(cfg_get_capture_directory());
    const char *directory = user.text;
    if (!SDL_CreateDirectory(directory)) {
        return engine_error("[CAPTURE] Unable to create directory: %s, error: %s", directory, SDL_GetError());
    }
    SDL_DateTime time = {};
    if (!_capture_local_time(&time)) {
        return engine_error("[CAPTURE] Unable to read the current time, error: %s", SDL_GetError());
    }
    const CaptureFormat format = cfg_get_capture_format();
    char path[CAPTURE_PATH_MAX];
    if (!capture_build_path(path, sizeof path, directory, &time, frame, format)) {
        return engine_error("[CAPTURE] Path too long for directory: %s", directory);
    }
    SDL_ClearError(); // a short write sets no error
    const bool saved = format == CAPTURE_FORMAT_JPEG ? _capture_save_jpeg(surface, path, cfg_get_capture_jpeg_quality())
                                                     : IMG_SavePNG(surface, path);
    if (!saved) return engine_error("[CAPTURE] Saving failed: %s, error: %s", path, write_error());
    SDL_Log("[CAPTURE] Saved: %s", path);
    return true;
}

bool capture_save(Uint64 frame) {
    SDL_Surface *surface = _capture_read_opaque();
    if (!surface) return engine_error("[CAPTURE] Reading the render output failed, error: %s", SDL_GetError());
    const bool saved = _capture_write(surface, frame);
    SDL_DestroySurface(surface);
    return saved;
}

void capture_request() { capture.requested = true; }

static bool _capture_is_due(Uint64 frame) {
    const Uint64 at = static_cast<Uint64>(args_capture_at()), every = static_cast<Uint64>(args_capture_every());
    return capture.requested || (at > 0 && frame == at) || (every > 0 && frame % every == 0);
}

bool capture_tick() {
    const Uint64 frame = engine_frame_number();
    if (!_capture_is_due(frame)) return true;
    capture.requested = false; // before saving: a failed capture is not retried
    return capture_save(frame);
}
