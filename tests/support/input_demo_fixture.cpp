#include "support/input_demo_fixture.h"

#include <SDL3/SDL_render.h>

bool InputDemoFixture::start_demo(int fixed_step_hz) {
    config = "[graphics]\nvsync_enable = false\nshow_fps = false\nui_scale = 1\n[simulation]\nfixed_step_hz = " +
             std::to_string(fixed_step_hz) + "\n";
    return start({"--screen", "input-demo", "--window-size", "640x400"}) && frame();
}

// The text is drawn over the picture once more, on the screen's background, and has to change no pixel.
bool InputDemoFixture::shows(float x, float y, SDL_Color color, const char *text) {
    SDL_Renderer *renderer = engine->renderer;
    const SDL_Rect area = {static_cast<int>(x), static_cast<int>(y), static_cast<int>(8 * SDL_strlen(text)) + 8, 8};
    const SDL_FRect background = {x, y, static_cast<float>(area.w), 8};
    const Picture before(SDL_RenderReadPixels(renderer, &area));
    SDL_SetRenderDrawColor(renderer, 20, 24, 30, 255);
    SDL_RenderFillRect(renderer, &background);
    SDL_SetRenderDrawColor(renderer, color.r, color.g, color.b, 255);
    SDL_RenderDebugText(renderer, x, y, text);
    const Picture after(SDL_RenderReadPixels(renderer, &area));
    for (int i = 0; i < area.w * area.h; i++) {
        if (pixel_at(before, i % area.w, i / area.w).r != pixel_at(after, i % area.w, i / area.w).r) return false;
    }
    return true;
}

bool InputDemoFixture::counters_show(int action, const char *number) {
    const float y = 90 + 12 * static_cast<float>(action);
    return shows(144, y, TEXT, number) && shows(200, y, TEXT, number);
}

PictureBounds InputDemoFixture::marker(SDL_Color color) const {
    const Picture window = picture();
    const SDL_Rect inside = {0, 203, window->w, window->h - 244}; // the arena: the table has the same colours
    Picture arena(SDL_CreateSurface(inside.w, inside.h, SDL_PIXELFORMAT_RGBA32));
    SDL_BlitSurface(window.get(), &inside, arena.get(), nullptr);
    return bounds_of(arena, color);
}
