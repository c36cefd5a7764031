#include "lumarind/input/input_actions.h"

#include "lumarind/engine/game.h"

#include <SDL3/SDL_stdinc.h>

#include <iterator>

static constexpr GameAction input_actions[] = {
    {"left", "Left, A, pad:dpleft, pad:leftx-"},
    {"right", "Right, D, pad:dpright, pad:leftx+"},
    {"up", "Up, W, pad:dpup, pad:lefty-"},
    {"down", "Down, S, pad:dpdown, pad:lefty+"},
    {"jump", "Space, Z, pad:a"},
    {"run", "Left Shift, X, pad:x"},
    {"attack", "J, C, pad:b"},
    {"pause", "P, pad:start"},
};
static_assert(std::size(input_actions) == INPUT_ACTION_COUNT, "one row per action, in the order of the enum");

static const GameAction *_input_actions() {
    const Game *game = engine_game();
    return game->actions ? game->actions : input_actions;
}

int input_action_count() {
    const Game *game = engine_game();
    return game->actions ? game->action_count : INPUT_ACTION_COUNT;
}

bool _input_action_valid(int action) { return action >= 0 && action < input_action_count(); }

const char *input_action_name(int action) { return _input_action_valid(action) ? _input_actions()[action].name : ""; }

const char *input_default_bindings_text(int action) {
    return _input_action_valid(action) ? _input_actions()[action].bindings : "";
}

int input_action_from_name(const char *text) {
    for (int action = 0; action < input_action_count(); action++) {
        if (SDL_strcasecmp(_input_actions()[action].name, text) == 0) return action;
    }
    return -1;
}
