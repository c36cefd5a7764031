#include "support/virtual_gamepad.h"

#include <SDL3/SDL_init.h>
#include <gtest/gtest.h>

static bool SDLCALL note_rumble(void *userdata, Uint16 low, Uint16 high) {
    static_cast<VirtualGamepad *>(userdata)->rumbles.push_back({low, high});
    return true;
}

VirtualGamepad::VirtualGamepad(const char *name, bool shape_labels, bool with_rumble) {
    SDL_VirtualJoystickDesc desc = {};
    SDL_INIT_INTERFACE(&desc);
    desc.type = SDL_JOYSTICK_TYPE_GAMEPAD;
    desc.naxes = SDL_GAMEPAD_AXIS_COUNT;
    desc.nbuttons = SDL_GAMEPAD_BUTTON_COUNT;
    desc.vendor_id = shape_labels ? 0x054c : 0; // SDL derives the labels from vendor and product id
    desc.product_id = shape_labels ? 0x09cc : 0;
    desc.name = name;
    desc.userdata = this;
    desc.Rumble = with_rumble ? note_rumble : nullptr;
    id = SDL_AttachVirtualJoystick(&desc);
    EXPECT_NE(id, 0u) << SDL_GetError();
    joystick_ = SDL_OpenJoystick(id);
    SDL_UpdateJoysticks();
}

void VirtualGamepad::unplug() {
    if (id == 0 || !SDL_WasInit(SDL_INIT_JOYSTICK)) return;
    SDL_CloseJoystick(joystick_);
    SDL_DetachVirtualJoystick(id);
    SDL_UpdateJoysticks();
    id = 0;
}

void VirtualGamepad::set(SDL_GamepadButton button, bool down) const {
    ASSERT_TRUE(SDL_SetJoystickVirtualButton(joystick_, button, down)) << SDL_GetError();
    SDL_UpdateJoysticks();
}

void VirtualGamepad::set(SDL_GamepadAxis axis, float value) const {
    const bool trigger = axis == SDL_GAMEPAD_AXIS_LEFT_TRIGGER || axis == SDL_GAMEPAD_AXIS_RIGHT_TRIGGER;
    const float raw = (trigger ? 2 * value - 1 : value) * SDL_JOYSTICK_AXIS_MAX; // at rest a trigger is at the minimum
    ASSERT_TRUE(SDL_SetJoystickVirtualAxis(joystick_, axis, static_cast<Sint16>(SDL_roundf(raw)))) << SDL_GetError();
    SDL_UpdateJoysticks();
}
