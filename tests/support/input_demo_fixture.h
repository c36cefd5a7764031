// The input demo, read from its pictures: the counters of its table and the marker in its arena.
#pragma once

#include "support/engine_fixture.h"

class InputDemoFixture : public EngineTest {
protected:
    static constexpr SDL_Color ACTIVE = {120, 216, 254, 255}, FLASH = {255, 193, 7, 255}, TEXT = {208, 220, 230, 255};

    bool start_demo(int fixed_step_hz = 60);                                // in a window of 640 × 400, at UI scale 1
    static bool shows(float x, float y, SDL_Color color, const char *text); // debug text in the last picture
    static bool counters_show(int action, const char *number);              // both of them
    PictureBounds marker(SDL_Color color = ACTIVE) const;                   // horizontally, in the window
};
