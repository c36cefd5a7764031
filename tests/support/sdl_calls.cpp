#include "support/sdl_calls.h"

#include "support/call_faults.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_messagebox.h>
#include <SDL3/SDL_mouse.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>
#include <SDL3_mixer/SDL_mixer.h>
#include <SDL3_ttf/SDL_ttf.h>

std::string sdl_calls, failing_sdl_call;
bool texts_are_recorded;

// Records a call. Returns false if it is to fail.
template <typename... Values> static bool _record(const char *name, const Values &...values) {
    sdl_calls += name;
    ((sdl_calls += ' ' + std::to_string(values)), ...);
    sdl_calls += "; ";
    return (failing_sdl_call != name && !call_fails(name, name)) || SDL_SetError("%s was made to fail", name);
}

// Records a property with name and value, if it is set.
static void _record_property(const char *name, SDL_PropertiesID id, const char *key) {
    if (!SDL_HasProperty(id, key)) return;
    const bool flag = SDL_GetPropertyType(id, key) == SDL_PROPERTY_TYPE_BOOLEAN;
    const Sint64 number = flag ? SDL_GetBooleanProperty(id, key, false) : SDL_GetNumberProperty(id, key, -1);
    sdl_calls += std::string(name) + "=" + std::to_string(number) + " ";
}

// The linker redirects the project's calls of these functions here (--wrap).
#define WRAPPED(Result, name, parameters, recorded, ...)                                                               \
    Result __real_##name parameters;                                                                                   \
    Result __wrap_##name parameters {                                                                                  \
        if (!_record recorded) return {};                                                                              \
        return __real_##name(__VA_ARGS__);                                                                             \
    }

extern "C" {
WRAPPED(bool, SDL_MaximizeWindow, (SDL_Window * window), ("maximize"), window)
WRAPPED(bool, SDL_SetWindowFullscreen, (SDL_Window * window, bool on), ("fullscreen", on), window, on)
WRAPPED(bool, SDL_SetWindowPosition, (SDL_Window * window, int x, int y), ("place", x, y), window, x, y)
WRAPPED(bool, SDL_SetRenderVSync, (SDL_Renderer * renderer, int interval), ("vsync", interval), renderer, interval)
WRAPPED(SDL_Cursor *, SDL_CreateSystemCursor, (SDL_SystemCursor type), ("cursor", static_cast<int>(type)), type)

SDL_Window *__real_SDL_CreateWindowWithProperties(SDL_PropertiesID props);
SDL_Window *__wrap_SDL_CreateWindowWithProperties(SDL_PropertiesID props) {
    _record_property("x", props, SDL_PROP_WINDOW_CREATE_X_NUMBER);
    _record_property("y", props, SDL_PROP_WINDOW_CREATE_Y_NUMBER);
    _record_property("width", props, SDL_PROP_WINDOW_CREATE_WIDTH_NUMBER);
    _record_property("height", props, SDL_PROP_WINDOW_CREATE_HEIGHT_NUMBER);
    _record_property("resizable", props, SDL_PROP_WINDOW_CREATE_RESIZABLE_BOOLEAN);
    _record_property("borderless", props, SDL_PROP_WINDOW_CREATE_BORDERLESS_BOOLEAN);
    _record_property("density", props, SDL_PROP_WINDOW_CREATE_HIGH_PIXEL_DENSITY_BOOLEAN);
    return _record("create") ? __real_SDL_CreateWindowWithProperties(props) : nullptr;
}

bool __real_MIX_PlayTrack(MIX_Track *track, SDL_PropertiesID options);
bool __wrap_MIX_PlayTrack(MIX_Track *track, SDL_PropertiesID options) {
    _record_property("loops", options, MIX_PROP_PLAY_LOOPS_NUMBER);
    _record_property("fade", options, MIX_PROP_PLAY_FADE_IN_MILLISECONDS_NUMBER);
    const Sint64 frames = MIX_GetAudioDuration(MIX_GetTrackAudio(track));
    return _record("play", frames, MIX_GetTrackGain(track)) && __real_MIX_PlayTrack(track, options);
}

bool __real_TTF_DrawRendererText(TTF_Text *text, float x, float y);
bool __wrap_TTF_DrawRendererText(TTF_Text *text, float x, float y) {
    if (call_fails("TTF_DrawRendererText", "TTF_DrawRendererText")) return false;
    if (!texts_are_recorded) return __real_TTF_DrawRendererText(text, x, y);
    SDL_FColor color = {};
    TTF_GetTextColorFloat(text, &color.r, &color.g, &color.b, &color.a);
    sdl_calls += text->text;
    return _record("text", x, y, color.r, color.g, color.b, color.a);
}

bool __wrap_SDL_ShowSimpleMessageBox(SDL_MessageBoxFlags flags, const char *title, const char *message, SDL_Window *) {
    sdl_calls += std::string(title) + ": " + message + " ";
    return _record("box", flags);
}
}
