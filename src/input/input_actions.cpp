#include "input/input_actions.h"

#include <SDL3/SDL_stdinc.h>

#include <iterator>

struct InputActionRow {
    InputAction action = INPUT_ACTION_COUNT;
    const char *name = "";
    const char *bindings = "";
};
static constexpr InputActionRow input_actions[] = {
    {.action = INPUT_ACTION_LEFT, .name = "left", .bindings = "Left, A, pad:dpleft, pad:leftx-"},
    {.action = INPUT_ACTION_RIGHT, .name = "right", .bindings = "Right, D, pad:dpright, pad:leftx+"},
    {.action = INPUT_ACTION_UP, .name = "up", .bindings = "Up, W, pad:dpup, pad:lefty-"},
    {.action = INPUT_ACTION_DOWN, .name = "down", .bindings = "Down, S, pad:dpdown, pad:lefty+"},
    {.action = INPUT_ACTION_JUMP, .name = "jump", .bindings = "Space, Z, pad:a"},
    {.action = INPUT_ACTION_RUN, .name = "run", .bindings = "Left Shift, X, pad:x"},
    {.action = INPUT_ACTION_ATTACK, .name = "attack", .bindings = "J, C, pad:b"},
    {.action = INPUT_ACTION_PAUSE, .name = "pause", .bindings = "P, pad:start"},
};
static_assert(std::size(input_actions) == INPUT_ACTION_COUNT, "one row per action");

static constexpr bool _input_rows_in_enum_order() {
    int index = 0;
    for (const InputActionRow &row : input_actions) {
        if (row.action != index++) return false;
    }
    return true;
}
static_assert(_input_rows_in_enum_order(), "a row is found by its index");

bool _input_action_valid(int action) { return action >= 0 && action < INPUT_ACTION_COUNT; }

const char *input_action_name(int action) { return _input_action_valid(action) ? input_actions[action].name : ""; }

const char *input_default_bindings_text(int action) {
    return _input_action_valid(action) ? input_actions[action].bindings : "";
}

int input_action_from_name(const char *text) {
    for (const InputActionRow &row : input_actions) {
        if (SDL_strcasecmp(row.name, text) == 0) return row.action;
    }
    return -1;
}
