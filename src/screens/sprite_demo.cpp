// Advances an animation in the fixed update and draws it in the tick; the screen selects its clip.

#include "screens/sprite_demo.h"

#include "lumarind/core/error.h"
#include "lumarind/core/state_hash.h"
#include "lumarind/engine/callbacks.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/primitives.h"
#include "lumarind/toolkit/sprite_sheet.h"
#include "player/fireknight.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

static constexpr Uint32 BACKGROUND = rgba(20, 22, 28, 255);
static constexpr Uint32 TEXT_COLOR = rgba(167, 202, 230, 255);
static constexpr SDL_Color OUTLINE_COLOR = {120, 216, 254, 255};
static constexpr SDL_Color SHEET_COLOR = {248, 154, 60, 255};

static constexpr double CYCLE_SECONDS = 3; // per clip, until the user selects one

// Layout, in units of the view.
static constexpr float MARGIN = 20;
static constexpr float TEXT_HEIGHT = 36, LINE_PITCH = 12;
static constexpr float SHEET_SHARE = 0.4f; // fraction of the view's height

struct SpriteDemo {
    SpriteSheet *sheet; // owned
    Animation anim;
    double cycle_time; // s since this clip was selected
    bool auto_cycle, flip, outline, show_sheet;
};
static SpriteDemo *sprite_demo;

struct SpriteDemoLayout {
    float scale; // integer, at least 1
    SDL_FPoint sprite_pos;
    float text_y;
    SDL_FPoint sheet_pos;
    float sheet_scale;
};

static SpriteDemoLayout sprite_demo_layout(float vw, float vh) {
    const AnimationSet *set = &fireknight_animations;
    const float frame_w = static_cast<float>(set->frame_w), frame_h = static_cast<float>(set->frame_h);
    const float sheet_h = SHEET_SHARE * vh;
    const float sheet_scale = sheet_h / (frame_h * static_cast<float>(set->rows));
    const float sheet_w = frame_w * static_cast<float>(set->columns) * sheet_scale;
    const float sprite_room = vh - MARGIN - TEXT_HEIGHT - MARGIN - sheet_h - MARGIN;
    const float fit = SDL_min((vw - 2 * MARGIN) / frame_w, sprite_room / frame_h);
    const float scale = fit < 1 ? 1 : SDL_floorf(fit);
    return {
        .scale = scale,
        .sprite_pos = {SDL_roundf((vw - frame_w * scale) * 0.5f), MARGIN},
        .text_y = SDL_roundf(vh - sheet_h - MARGIN - MARGIN - TEXT_HEIGHT),
        .sheet_pos = {SDL_roundf((vw - sheet_w) * 0.5f), SDL_roundf(vh - sheet_h - MARGIN)},
        .sheet_scale = sheet_scale,
    };
}

// --- selecting clips and frames ---

static void sprite_demo_select(int clip) {
    const int count = fireknight_animations.clip_count;
    animation_select_clip(&sprite_demo->anim, (clip % count + count) % count);
    sprite_demo->cycle_time = 0;
}

static void _sprite_demo_choose(int delta) {
    sprite_demo->auto_cycle = false;
    sprite_demo_select(sprite_demo->anim.clip + delta);
}

static void sprite_demo_step(bool forward) {
    animation_pause(&sprite_demo->anim);
    if (forward) {
        animation_next_frame(&sprite_demo->anim);
    } else {
        animation_prev_frame(&sprite_demo->anim);
    }
}

static void _sprite_demo_toggle_playing() {
    Animation *anim = &sprite_demo->anim;
    if (anim->playing) {
        animation_pause(anim);
        return;
    }
    if (anim->finished) animation_restart(anim);
    animation_play(anim);
}

static void _sprite_demo_resume_cycle() {
    sprite_demo->auto_cycle = true;
    sprite_demo->cycle_time = 0;
    animation_restart(&sprite_demo->anim);
    animation_play(&sprite_demo->anim);
}

static bool sprite_demo_key_down(SDL_Event *event) { // auto-repeat counts too
    switch (event->key.key) {
    case SDLK_RIGHT:
        _sprite_demo_choose(1);
        break;
    case SDLK_LEFT:
        _sprite_demo_choose(-1);
        break;
    case SDLK_SPACE:
        _sprite_demo_toggle_playing();
        break;
    case SDLK_COMMA:
        sprite_demo_step(false);
        break;
    case SDLK_PERIOD:
        sprite_demo_step(true);
        break;
    case SDLK_F:
        sprite_demo->flip = !sprite_demo->flip;
        break;
    case SDLK_R:
        _sprite_demo_resume_cycle();
        break;
    case SDLK_1:
        sprite_demo->outline = !sprite_demo->outline;
        break;
    case SDLK_2:
        sprite_demo->show_sheet = !sprite_demo->show_sheet;
        break;
    default:
        break;
    }
    return true;
}

// --- lifetime ---

bool sprite_demo_setup() {
    if (sprite_demo) return true;
    sprite_demo = static_cast<SpriteDemo *>(SDL_calloc(1, sizeof *sprite_demo));
    if (!sprite_demo) return engine_error("[SPRITE_DEMO] Memory allocation failed, error: %s", SDL_GetError());
    sprite_demo->sheet = sprite_sheet_new(engine_renderer(), &fireknight_animations);
    if (!sprite_demo->sheet) return false;
    if (!animation_init(&sprite_demo->anim, &fireknight_animations, FIREKNIGHT_IDLE)) return false;
    sprite_demo->auto_cycle = sprite_demo->outline = sprite_demo->show_sheet = true;
    return engine_add_callback(SDL_EVENT_KEY_DOWN, sprite_demo_key_down);
}

void sprite_demo_cleanup() {
    if (!sprite_demo) return;
    engine_remove_callback(SDL_EVENT_KEY_DOWN, sprite_demo_key_down);
    sprite_sheet_cleanup(&sprite_demo->sheet);
    SDL_free(sprite_demo);
    sprite_demo = nullptr;
}

// --- frame ---

void sprite_demo_fixed_update(double dt) {
    animation_advance(&sprite_demo->anim, dt);
    if (!sprite_demo->auto_cycle) return;
    sprite_demo->cycle_time += dt;
    if (sprite_demo->cycle_time < CYCLE_SECONDS) return;
    sprite_demo_select(sprite_demo->anim.clip + 1);
    animation_play(&sprite_demo->anim);
}

Uint64 sprite_demo_state_hash() {
    const SpriteDemo *demo = sprite_demo;
    const Animation *anim = &demo->anim;
    return state_hash_of(
        STATE_HASH_START, anim->clip, anim->frame, anim->elapsed_ms, anim->playing, anim->finished, demo->cycle_time,
        demo->auto_cycle, demo->flip, demo->outline, demo->show_sheet);
}

static void _sprite_demo_draw_status(SDL_Renderer *renderer, float y) {
    const Animation *anim = &sprite_demo->anim;
    const AnimationClip *clip = animation_clip(anim);
    draw_text(
        renderer, MARGIN, y, TEXT_COLOR, "clip %d/%d  %-8s   frame %d/%d   %d ms   sheet frame %d", anim->clip + 1,
        anim->set->clip_count, clip->name, anim->frame + 1, clip->frame_count, clip->frame_ms[anim->frame],
        animation_sheet_frame(anim));
    const char *kind = anim->finished ? "finished" : clip->loop ? "looping" : "one-shot";
    draw_text(
        renderer, MARGIN, y + LINE_PITCH, TEXT_COLOR, "%s   %s   %s   auto-cycle %s",
        anim->playing ? "playing" : "paused", kind, sprite_demo->flip ? "flipped" : "facing right",
        sprite_demo->auto_cycle ? "on" : "off");
    draw_text(
        renderer, MARGIN, y + 2 * LINE_PITCH, TEXT_COLOR,
        "left/right clip   space play   , . step   f flip   r resume cycle   1 outline   2 sheet");
}

void sprite_demo_tick() {
    SDL_Renderer *renderer = engine_renderer();
    set_color(renderer, BACKGROUND);
    SDL_RenderClear(renderer);
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    const SpriteDemoLayout layout = sprite_demo_layout(width, height);
    const SpriteSheet *sheet = sprite_demo->sheet;
    const SDL_FlipMode flip = sprite_demo->flip ? SDL_FLIP_HORIZONTAL : SDL_FLIP_NONE;
    sprite_sheet_draw(renderer, sheet, &sprite_demo->anim, layout.sprite_pos, layout.scale, flip);
    if (sprite_demo->outline) {
        sprite_sheet_draw_frame_outline(renderer, sheet, layout.sprite_pos, layout.scale, OUTLINE_COLOR);
    }
    _sprite_demo_draw_status(renderer, layout.text_y);
    if (sprite_demo->show_sheet) {
        sprite_sheet_draw_debug_sheet(
            renderer, sheet, &sprite_demo->anim, layout.sheet_pos, layout.sheet_scale, SHEET_COLOR, OUTLINE_COLOR);
    }
}
