#include "art.h"

#include "lumarind/core/error.h"
#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/animation_set.h"

#include <SDL3/SDL_render.h>

static constexpr float CELL = 48;                      // px, a frame of sprites.json
static constexpr float KNIGHT_W = 288, KNIGHT_H = 128; // px, an untrimmed frame
static constexpr float KNIGHT_FEET_X = 146;            // px, facing right

static constexpr const char *THING_NAMES[] = {
    "ember",         "heart",      "key",        "door",    "platform",       "brazier",
    "brazier_lit",   "exit",       "fireball",   "walker",  "walker_hit",     "hopper_sit",
    "hopper_crouch", "hopper_air", "hopper_hit", "watcher", "watcher_charge", "watcher_hit"};
static_assert(SDL_arraysize(THING_NAMES) == CLIP_COUNT, "one name per clip");
static constexpr const char *KNIGHT_NAMES[] = {"idle", "run",   "j_up",   "j_down",   "air_atk",
                                               "roll", "1_atk", "sp_atk", "take_hit", "death"};
static_assert(SDL_arraysize(KNIGHT_NAMES) == KNIGHT_COUNT, "one name per clip");

// Checks that the clips of a loaded file match its enum.
static bool clip_names_match(const AnimationSet *set, const char *const *names, int count) {
    for (int i = 0; i < count; i++) {
        if (i >= set->clip_count || SDL_strcmp(set->clips[i].name, names[i]) != 0)
            return engine_error("[ART] %s: clip %d should be \"%s\"", set->path, i, names[i]);
    }
    return true;
}

bool art_load(Art *art) {
    art->things = animation_set_load("assets/sprites.json");
    art->knight = animation_set_load("assets/knight.json");
    if (!art->things || !art->knight || !clip_names_match(art->things, THING_NAMES, CLIP_COUNT)) return false;
    if (!clip_names_match(art->knight, KNIGHT_NAMES, KNIGHT_COUNT)) return false;
    art->things_sheet = sprite_sheet_new(engine_renderer(), art->things);
    art->knight_sheet = sprite_sheet_new(engine_renderer(), art->knight);
    for (int clip = 0; clip < CLIP_COUNT; clip++) art->clips[clip] = art_thing(art, clip);
    return art->things_sheet && art->knight_sheet;
}

void art_cleanup(Art *art) {
    sprite_sheet_cleanup(&art->things_sheet);
    sprite_sheet_cleanup(&art->knight_sheet);
    animation_set_cleanup(&art->things);
    animation_set_cleanup(&art->knight);
}

void art_advance(Art *art, double dt) {
    for (Animation &anim : art->clips) animation_advance(&anim, dt);
}

Animation art_knight(const Art *art, int clip) {
    Animation anim = {};
    animation_init(&anim, art->knight, clip);
    return anim;
}

Animation art_thing(const Art *art, int clip) {
    Animation anim = {};
    animation_init(&anim, art->things, clip);
    return anim;
}

static SDL_FlipMode flip_of(int facing) { return facing < 0 ? SDL_FLIP_HORIZONTAL : SDL_FLIP_NONE; }

void art_draw_thing(const Art *art, const Animation *anim, SDL_FPoint feet, float zoom, int facing) {
    const SDL_FPoint corner = {SDL_roundf(feet.x - zoom * CELL / 2), SDL_roundf(feet.y - zoom * CELL)};
    sprite_sheet_draw(engine_renderer(), art->things_sheet, anim, corner, zoom, flip_of(facing));
}

void art_draw_knight(const Art *art, const Animation *anim, SDL_FPoint feet, float zoom, int facing, bool ghost) {
    const float at = facing < 0 ? KNIGHT_W - KNIGHT_FEET_X : KNIGHT_FEET_X;
    const SDL_FPoint corner = {SDL_roundf(feet.x - zoom * at), SDL_roundf(feet.y - zoom * KNIGHT_H)};
    SDL_Texture *texture = art->knight_sheet->texture;
    if (ghost) SDL_SetTextureColorMod(texture, 150, 205, 255);
    if (ghost) SDL_SetTextureAlphaMod(texture, 150);
    sprite_sheet_draw(engine_renderer(), art->knight_sheet, anim, corner, zoom, flip_of(facing));
    SDL_SetTextureColorMod(texture, 255, 255, 255);
    SDL_SetTextureAlphaMod(texture, 255);
}
