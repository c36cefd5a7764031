// input_actions: the actions of the game, their names and default bindings: those of its record, or these eight.
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
const char *input_action_name(int action);           // also its key in the configuration; "" for no action
const char *input_default_bindings_text(int action); // "" for no action
int input_action_from_name(const char *text);        // in any letter case; -1: no action's name
