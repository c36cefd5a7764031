#include "engine/transition_internal.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/timestep.h"

#include <SDL3/SDL_render.h>

enum TransitionState {
    TRANSITION_IDLE,
    TRANSITION_FADE_OUT, // covers the old screen; the state change is pending
    TRANSITION_FADE_IN,  // uncovers the new screen
};

// Tolerance: steps of dt / duration do not add up to exactly 1 or 0.
static constexpr double COVER_FULL = 0.999999999;
static constexpr double COVER_NONE = 1e-9;

struct Transition {
    Sint32 state;
    Sint32 target;     // GameState
    double duration;   // s, for one direction
    double cover;      // after the last fixed step
    double prev_cover; // after the step before that
};
static Transition transition;

bool transition_fade_to(GameState target, double duration) {
    if (transition.state == TRANSITION_FADE_OUT) return false;
    transition.state = TRANSITION_FADE_OUT;
    transition.target = target;
    transition.duration = duration;
    transition.prev_cover = transition.cover;
    return true;
}

void transition_fixed_update(double dt) {
    transition.prev_cover = transition.cover;
    if (transition.state == TRANSITION_FADE_OUT) {
        transition.cover += dt / transition.duration;
        if (transition.cover > COVER_FULL) transition.cover = 1.0;
    } else if (transition.state == TRANSITION_FADE_IN) {
        transition.cover -= dt / transition.duration;
        if (transition.cover < COVER_NONE) {
            transition.cover = 0.0;
            transition.state = TRANSITION_IDLE;
        }
    }
}

double transition_cover(double alpha) {
    // Fully black until the state changes: interpolation must not show the old screen again.
    if (transition.state == TRANSITION_FADE_OUT && transition.cover >= 1.0) return 1.0;
    return timestep_lerp(transition.prev_cover, transition.cover, alpha);
}

static void _transition_draw(float opacity) {
    SDL_Renderer *renderer = engine_renderer();
    SDL_BlendMode blend = SDL_BLENDMODE_NONE;
    SDL_FColor color = {};
    SDL_GetRenderDrawBlendMode(renderer, &blend);
    SDL_GetRenderDrawColorFloat(renderer, &color.r, &color.g, &color.b, &color.a);
    engine_use_ui_space(); // engine_tick restores the screen's space
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColorFloat(renderer, 0, 0, 0, opacity);
    SDL_RenderFillRect(renderer, nullptr);
    SDL_SetRenderDrawBlendMode(renderer, blend);
    SDL_SetRenderDrawColorFloat(renderer, color.r, color.g, color.b, color.a);
}

void transition_tick() {
    if (transition.state == TRANSITION_IDLE) return;
    _transition_draw(static_cast<float>(transition_cover(engine_fixed_alpha())));
    if (transition.state != TRANSITION_FADE_OUT || transition.cover < 1.0) return;
    if (engine_get_state() == transition.target) {
        transition.state = TRANSITION_FADE_IN; // the target is already the current state
    } else {
        engine_set_state(transition.target);
    }
}

double _transition_seconds_to(GameState state) {
    return transition.state == TRANSITION_FADE_OUT && transition.target == state ? transition.duration : 0;
}

void _transition_start_fade_in(double seconds) {
    transition = {
        .state = TRANSITION_FADE_IN, .target = GAME_STATE_NONE, .duration = seconds, .cover = 1, .prev_cover = 1};
}

void transition_screen_changed(GameState state) {
    if (transition.state == TRANSITION_FADE_OUT && transition.target == state) {
        transition.state = TRANSITION_FADE_IN;
        transition.prev_cover = transition.cover;
    } else {
        transition = {};
    }
}
