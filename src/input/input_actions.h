// input_actions: names and default bindings of the input actions: Game::actions or, if null, these eight.
#pragma once

enum InputAction {
    INPUT_ACTION_LEFT,
    INPUT_ACTION_RIGHT,
    INPUT_ACTION_UP,
    INPUT_ACTION_DOWN,
    INPUT_ACTION_JUMP,
    INPUT_ACTION_RUN,
    INPUT_ACTION_ATTACK,
    INPUT_ACTION_PAUSE,
    INPUT_ACTION_COUNT,
};

int input_action_count();
bool _input_action_valid(int action);
const char *input_action_name(int action);           // also its configuration key; "" for an invalid action
const char *input_default_bindings_text(int action); // "" for an invalid action
int input_action_from_name(const char *text);        // case-insensitive; returns -1 if no action has this name
