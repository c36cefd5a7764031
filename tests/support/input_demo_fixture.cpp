#include "support/input_demo_fixture.h"

bool InputDemoFixture::start_demo(int fixed_step_hz) {
    config = "[graphics]\nvsync_enable = false\nshow_fps = false\nui_scale = 1\n[simulation]\nfixed_step_hz = " +
             std::to_string(fixed_step_hz) + "\n";
    return start({"--screen", "input-demo", "--window-size", "640x400"}) && frame();
}

bool InputDemoFixture::shows(float x, float y, SDL_Color color, const char *text) {
    return EngineTest::shows(x, y, color, std::string(text) + " ", {20, 24, 30, 255});
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
