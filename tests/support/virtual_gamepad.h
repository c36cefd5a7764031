// A virtual controller, connected during its lifetime: all buttons and axes of a gamepad, and rumble.
#pragma once

#include <SDL3/SDL_gamepad.h>

#include <vector>

struct VirtualRumble {
    Uint16 low, high;
};

class VirtualGamepad {
public:
    // With `shape_labels` the face buttons have shapes (cross, circle, ...) instead of letters.
    explicit VirtualGamepad(const char *name, bool shape_labels = false, bool with_rumble = true);
    ~VirtualGamepad() { unplug(); }
    VirtualGamepad(const VirtualGamepad &) = delete;
    VirtualGamepad &operator=(const VirtualGamepad &) = delete;

    SDL_JoystickID id = 0;
    std::vector<VirtualRumble> rumbles; // in order of arrival

    void unplug();
    void set(SDL_GamepadButton button, bool down) const; // pushed to SDL's event queue at once, as below
    void set(SDL_GamepadAxis axis, float value) const;   // -1 to 1; triggers 0 to 1

private:
    SDL_Joystick *joystick_ = nullptr;
};
