#include "lumarind/engine/drawing_space.h"

#include "engine/engine_record.h"
#include "lumarind/config/config.h"
#include "lumarind/core/error.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/ui_scale.h"
#include "replay/replay_feed.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_mouse.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

bool engine_in_logical_space() { return engine && engine->logical_width > 0 && !engine->ui_space; }

bool engine_apply_space(bool ui) {
    engine->ui_space = ui;
    SDL_Renderer *renderer = engine->renderer;
    bool ok = false;
    float scale = 1.0f;
    if (engine_in_logical_space()) {
        ok = SDL_SetRenderLogicalPresentation(
            renderer, engine->logical_width, engine->logical_height, SDL_LOGICAL_PRESENTATION_INTEGER_SCALE);
    } else {
        ok = SDL_SetRenderLogicalPresentation(renderer, 0, 0, SDL_LOGICAL_PRESENTATION_DISABLED);
        scale = static_cast<float>(engine->ui_scale);
    }
    if (ok && SDL_SetRenderScale(renderer, scale, scale)) return true;
    return engine_error("[ENGINE] SDL3: Switching drawing space failed, error: %s", SDL_GetError());
}

void engine_use_ui_space() { engine_apply_space(true); }

bool engine_set_logical_size(int width, int height) {
    engine->logical_width = width;
    engine->logical_height = height;
    return engine_apply_space(false);
}

void engine_view_size(float *width, float *height) {
    float view_width = 0, view_height = 0;
    if (engine_in_logical_space()) {
        view_width = static_cast<float>(engine->logical_width);
        view_height = static_cast<float>(engine->logical_height);
    } else if (engine) {
        int output_width = 0, output_height = 0;
        if (const ReplayDevices *recorded = replay_devices()) {
            output_width = recorded->output_width;
            output_height = recorded->output_height;
        } else {
            SDL_GetRenderOutputSize(engine->renderer, &output_width, &output_height);
        }
        view_width = static_cast<float>(output_width) / static_cast<float>(engine->ui_scale);
        view_height = static_cast<float>(output_height) / static_cast<float>(engine->ui_scale);
    }
    if (width) *width = view_width;
    if (height) *height = view_height;
}

void engine_mouse_position(float *x, float *y) {
    float window_x = 0, window_y = 0, at_x = 0, at_y = 0;
    if (const ReplayDevices *recorded = replay_devices()) {
        window_x = recorded->mouse_x;
        window_y = recorded->mouse_y;
    } else {
        SDL_GetMouseState(&window_x, &window_y);
    }
    if (engine) SDL_RenderCoordinatesFromWindow(engine->renderer, window_x, window_y, &at_x, &at_y);
    if (x) *x = at_x;
    if (y) *y = at_y;
}

int engine_ui_scale() { return engine ? engine->ui_scale : 0; }

bool engine_set_ui_scale(int scale) {
    const int old = engine->ui_scale;
    const int picked = ui_scale_pick(SDL_GetWindowDisplayScale(engine->window), scale, 0);
    if (picked != old && !fonts_rescale(static_cast<float>(picked) / static_cast<float>(old))) return false;
    engine->ui_scale = picked;
    cfg_set_ui_scale(scale);
    return engine_apply_space(engine->ui_space);
}
