// A playable level built from the toolkit: a baked map, colliders from a file, the player, and a camera with a dead
// zone. World coordinates are in the map's pixels, drawn three times as large. Presses arrive as events between fixed
// steps and are latched for the next step.

#include "screens/platformer_demo.h"

#include "lumarind/core/error.h"
#include "lumarind/core/state_hash.h"
#include "lumarind/engine/callbacks.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/timestep.h"
#include "lumarind/input/input.h"
#include "lumarind/toolkit/camera.h"
#include "lumarind/toolkit/colliders.h"
#include "lumarind/toolkit/primitives.h"
#include "lumarind/toolkit/reload.h"
#include "lumarind/toolkit/render_grid.h"
#include "lumarind/toolkit/sprite_sheet.h"
#include "player/fireknight.h"
#include "player/player.h"
#include "screens/castle.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_keyboard.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_render.h>

#include <utility>

static constexpr const char *COLLISIONS_PATH = "assets/fireknight/tilemaps/castle-tilemap-collisions.csv";
static constexpr float COLLISIONS_SCALE = 1; // the file is in world pixels
static constexpr float WORLD_SCALE = 3;      // UI units per world pixel

// World pixels.
static constexpr SDL_FPoint SPAWN = {100, 416}; // the feet
static constexpr float WORLD_WIDTH = 1920, WORLD_HEIGHT = 544;
static constexpr float FALL_OUT_Y = 544;

// The camera's dead zone, as fractions of the view.
static constexpr float DEAD_ZONE_LEFT = 0.35f, DEAD_ZONE_RIGHT = 0.65f;
static constexpr float DEAD_ZONE_TOP = 0.4f, DEAD_ZONE_BOTTOM = 0.6f;

// Position of the feet in a frame of the sheet, facing right.
static constexpr float ANCHOR_X = 146, ANCHOR_Y = 128;

static constexpr Uint32 COLOR_SOLID = rgba(64, 200, 255, 255);
static constexpr Uint32 COLOR_SLOPE = rgba(255, 80, 80, 255);
static constexpr Uint32 COLOR_BODY = rgba(80, 255, 112, 255);
static constexpr Uint32 COLOR_TEXT = rgba(255, 255, 255, 255);
static constexpr float PANEL_LEFT = 10, PANEL_TOP = 10, PANEL_PITCH = 12;
static constexpr size_t HISTORY_TEXT_SIZE = 160; // bytes

struct PlatformerDemo {
    Castle castle;
    ColliderRects *rects; // owned, as are the slopes and the sheet
    ColliderTris *tris;
    SpriteSheet *sheet;
    Player player;
    PlayerIntent intent; // of the last fixed step, for the panel
    // Latched presses: set by events, consumed by the next fixed step.
    bool jump_pressed, roll_pressed, special_pressed, air_attack_pressed, hurt_pressed;
    Sint32 attack_pressed; // 1 to 3; 0: none
    SDL_FPoint camera;     // the view's top-left corner, world pixels
    bool camera_ready;     // false until the first frame after a spawn has centred it
};
static PlatformerDemo *platformer_demo;

// --- events ---

static bool platformer_demo_key_down(SDL_Event *event) {
    if (event->key.repeat) return true;
    switch (event->key.scancode) {
    case SDL_SCANCODE_SPACE:
    case SDL_SCANCODE_Z:
        platformer_demo->jump_pressed = true;
        break;
    case SDL_SCANCODE_LSHIFT:
    case SDL_SCANCODE_X:
        platformer_demo->roll_pressed = true;
        break;
    case SDL_SCANCODE_J:
        platformer_demo->attack_pressed = 1;
        break;
    case SDL_SCANCODE_K:
        platformer_demo->attack_pressed = 2;
        break;
    case SDL_SCANCODE_L:
        platformer_demo->attack_pressed = 3;
        break;
    case SDL_SCANCODE_U:
        platformer_demo->special_pressed = true;
        break;
    case SDL_SCANCODE_I:
        platformer_demo->air_attack_pressed = true;
        break;
    case SDL_SCANCODE_H:
        platformer_demo->hurt_pressed = true;
        break;
    default:
        break;
    }
    return true;
}

// --- lifetime ---

static void platformer_demo_respawn() {
    player_init(&platformer_demo->player, SPAWN, platformer_demo->rects, platformer_demo->tris);
    platformer_demo->camera_ready = false;
}

// Hot reload: if the file cannot be read, the old colliders are kept.
static void _platformer_demo_reload_colliders(void *, const char *path) {
    ColliderRects rects = {};
    ColliderTris tris = {};
    if (colliders_load_csv(&rects, &tris, nullptr, nullptr, path, COLLISIONS_SCALE)) {
        std::swap(*platformer_demo->rects, rects);
        std::swap(*platformer_demo->tris, tris);
        SDL_Log("[PLATFORMER_DEMO] Reloaded: %s", path);
    }
    colliders_rects_cleanup(&rects);
    colliders_tris_cleanup(&tris);
}

static bool _platformer_demo_load_colliders() {
    const FileStamp stamp = reload_stamp(COLLISIONS_PATH, true);
    platformer_demo->rects = colliders_new_rects();
    if (!platformer_demo->rects) return false;
    platformer_demo->tris = colliders_new_tris();
    if (!platformer_demo->tris) return false;
    if (!colliders_load_csv(
            platformer_demo->rects, platformer_demo->tris, nullptr, nullptr, COLLISIONS_PATH, COLLISIONS_SCALE)) {
        return false;
    }
    reload_follow(platformer_demo, _platformer_demo_reload_colliders, COLLISIONS_PATH, true, stamp);
    SDL_Log(
        "[PLATFORMER_DEMO] Loaded %d rect colliders and %d slopes from %s", platformer_demo->rects->count,
        platformer_demo->tris->count, COLLISIONS_PATH);
    return true;
}

static bool _platformer_demo_spawn() {
    platformer_demo_respawn();
    const SDL_FRect box = player_body_rect(&platformer_demo->player.body);
    if (colliders_rect_inside_rect(&box, platformer_demo->rects) == -1) return true;
    return engine_error(
        "[PLATFORMER_DEMO] Spawn at (%.0f, %.0f) is inside a collider", static_cast<double>(SPAWN.x),
        static_cast<double>(SPAWN.y));
}

bool platformer_demo_setup() {
    if (platformer_demo) return true;
    platformer_demo = static_cast<PlatformerDemo *>(SDL_calloc(1, sizeof *platformer_demo));
    if (!platformer_demo) return engine_error("[PLATFORMER_DEMO] Memory allocation failed, error: %s", SDL_GetError());
    if (!castle_load(&platformer_demo->castle, WORLD_SCALE) || !_platformer_demo_load_colliders()) return false;
    platformer_demo->sheet = sprite_sheet_new(engine_renderer(), &fireknight_animations);
    if (!platformer_demo->sheet || !_platformer_demo_spawn()) return false;
    return engine_add_callback(SDL_EVENT_KEY_DOWN, platformer_demo_key_down);
}

void platformer_demo_cleanup() {
    if (!platformer_demo) return;
    reload_forget(platformer_demo);
    engine_remove_callback(SDL_EVENT_KEY_DOWN, platformer_demo_key_down);
    sprite_sheet_cleanup(&platformer_demo->sheet);
    if (platformer_demo->rects) colliders_rects_cleanup(platformer_demo->rects);
    SDL_free(platformer_demo->rects);
    if (platformer_demo->tris) colliders_tris_cleanup(platformer_demo->tris);
    SDL_free(platformer_demo->tris);
    castle_cleanup(&platformer_demo->castle);
    SDL_free(platformer_demo);
    platformer_demo = nullptr;
}

// --- simulation ---

static PlayerIntent _platformer_demo_read_intent() {
    const bool left = input_key_held(SDL_SCANCODE_LEFT) || input_key_held(SDL_SCANCODE_A);
    const bool right = input_key_held(SDL_SCANCODE_RIGHT) || input_key_held(SDL_SCANCODE_D);
    const bool air_attack = platformer_demo->air_attack_pressed && !platformer_demo->player.body.grounded;
    return {
        .move_x = static_cast<float>(right) - static_cast<float>(left),
        .jump = platformer_demo->jump_pressed,
        .roll = platformer_demo->roll_pressed,
        .attack = air_attack ? 1 : platformer_demo->attack_pressed,
        .special = platformer_demo->special_pressed,
        .defend = input_key_held(SDL_SCANCODE_S),
        .hurt = platformer_demo->hurt_pressed,
    };
}

static void _platformer_demo_clear_presses() {
    platformer_demo->jump_pressed = platformer_demo->roll_pressed = platformer_demo->special_pressed = false;
    platformer_demo->air_attack_pressed = platformer_demo->hurt_pressed = false;
    platformer_demo->attack_pressed = 0;
}

void platformer_demo_fixed_update(double dt) {
    Player *player = &platformer_demo->player;
    platformer_demo->intent = _platformer_demo_read_intent();
    _platformer_demo_clear_presses();
    player_fixed_update(player, &platformer_demo->intent, platformer_demo->rects, platformer_demo->tris, dt);
    const bool died = player->state == PLAYER_STATE_DEATH && player->anim.finished;
    if (player->body.pos.y > FALL_OUT_Y || died) platformer_demo_respawn();
}

Uint64 platformer_demo_state_hash() {
    const Player *player = &platformer_demo->player;
    const PlayerBody *body = &player->body;
    const Animation *anim = &player->anim;
    Uint64 hash = state_hash_of(
        STATE_HASH_START, body->pos.x, body->pos.y, body->prev_pos.x, body->prev_pos.y, body->vel.x, body->vel.y,
        body->remainder_x, body->remainder_y, body->grounded, body->facing);
    hash = state_hash_of(hash, anim->clip, anim->frame, anim->elapsed_ms, anim->playing, anim->finished);
    return state_hash_of(
        hash, player->state, player->prev_state, player->state_time, player->health, player->coyote,
        player->jump_buffer, player->last_move_x, player->history_count);
}

// --- camera ---

static float platformer_demo_camera_axis(float camera, float target, float view, float low, float high, float world) {
    return SDL_clamp(camera_follow_axis(camera, target, view, low, high), 0, SDL_max(world - view, 0));
}

static SDL_FPoint platformer_demo_camera(SDL_FPoint camera, SDL_FPoint target, float view_w, float view_h) {
    return {
        platformer_demo_camera_axis(camera.x, target.x, view_w, DEAD_ZONE_LEFT, DEAD_ZONE_RIGHT, WORLD_WIDTH),
        platformer_demo_camera_axis(camera.y, target.y, view_h, DEAD_ZONE_TOP, DEAD_ZONE_BOTTOM, WORLD_HEIGHT)};
}

static void _platformer_demo_move_camera(SDL_FPoint target, float view_w, float view_h) {
    if (!platformer_demo->camera_ready) {
        platformer_demo->camera = {target.x - view_w / 2, target.y - view_h / 2};
        platformer_demo->camera_ready = true;
    }
    platformer_demo->camera = platformer_demo_camera(platformer_demo->camera, target, view_w, view_h);
}

// --- drawing: a world point w is drawn at origin + WORLD_SCALE × w ---

static SDL_FPoint _to_view(SDL_FPoint origin, SDL_FPoint world) {
    return {origin.x + WORLD_SCALE * world.x, origin.y + WORLD_SCALE * world.y};
}

static SDL_FRect _rect_to_view(SDL_FPoint origin, const SDL_FRect *world) {
    return {
        origin.x + WORLD_SCALE * world->x, origin.y + WORLD_SCALE * world->y, WORLD_SCALE * world->w,
        WORLD_SCALE * world->h};
}

static void platformer_demo_draw_player(SDL_Renderer *renderer, SDL_FPoint feet) {
    const bool right = platformer_demo->player.body.facing > 0;
    const float anchor_x = right ? ANCHOR_X : static_cast<float>(fireknight_animations.frame_w) - ANCHOR_X;
    const SDL_FPoint corner = {
        SDL_roundf(feet.x - WORLD_SCALE * anchor_x), SDL_roundf(feet.y - WORLD_SCALE * ANCHOR_Y)};
    sprite_sheet_draw(
        renderer, platformer_demo->sheet, &platformer_demo->player.anim, corner, WORLD_SCALE,
        right ? SDL_FLIP_NONE : SDL_FLIP_HORIZONTAL);
}

static void platformer_demo_draw_colliders(SDL_Renderer *renderer, SDL_FPoint origin) {
    set_color(renderer, COLOR_SOLID);
    for (int i = 0; i < platformer_demo->rects->count; i++) {
        const SDL_FRect rect = _rect_to_view(origin, &platformer_demo->rects->items[i]);
        SDL_RenderRect(renderer, &rect);
    }
    set_color(renderer, COLOR_SLOPE);
    for (int i = 0; i < platformer_demo->tris->count; i++) {
        const Tri *tri = &platformer_demo->tris->items[i];
        const SDL_FPoint a = _to_view(origin, tri->a), b = _to_view(origin, tri->b), c = _to_view(origin, tri->c);
        SDL_RenderLine(renderer, a.x, a.y, b.x, b.y);
        SDL_RenderLine(renderer, b.x, b.y, c.x, c.y);
        SDL_RenderLine(renderer, c.x, c.y, a.x, a.y);
    }
}

static void platformer_demo_draw_body(SDL_Renderer *renderer, SDL_FPoint feet, SDL_FPoint origin) {
    const PlayerBody *body = &platformer_demo->player.body;
    const SDL_FRect world = {feet.x - body->w / 2, feet.y - body->h, body->w, body->h};
    const SDL_FRect box = _rect_to_view(origin, &world);
    outline_rect(renderer, &box, COLOR_BODY);
    SDL_RenderLine(renderer, box.x, box.y + box.h, box.x + box.w, box.y + box.h);
}

// Lists the last states entered, oldest first, as many as fit.
static void platformer_demo_history_text(char *buffer, size_t size) {
    const Player *player = &platformer_demo->player;
    const int capacity = static_cast<int>(SDL_arraysize(player->history));
    const int shown = SDL_min(player->history_count, capacity);
    size_t used = 0;
    buffer[0] = '\0';
    for (int i = player->history_count - shown; i < player->history_count; i++) {
        const char *separator = used > 0 ? " > " : "";
        const int length = SDL_snprintf(
            buffer + used, size - used, "%s%s", separator,
            player_state_name(static_cast<PlayerState>(player->history[i % capacity])));
        if (length < 0 || static_cast<size_t>(length) >= size - used) return;
        used += static_cast<size_t>(length);
    }
}

static void platformer_demo_draw_panel(SDL_Renderer *renderer) {
    const Player *player = &platformer_demo->player;
    const PlayerBody *body = &player->body;
    const PlayerIntent *intent = &platformer_demo->intent;
    const auto press = [](bool pressed) { return pressed ? "PRESS" : "-"; };
    char history[HISTORY_TEXT_SIZE];
    platformer_demo_history_text(history, sizeof history);
    float y = PANEL_TOP;
    const auto line = [&](const char *fmt, auto... values) {
        set_color(renderer, COLOR_TEXT);
        SDL_RenderDebugTextFormat(renderer, PANEL_LEFT, y, fmt, values...);
        y += PANEL_PITCH;
    };
    line(
        "STATE  %-5s  %.2fs   from %s", player_state_name(player->state), player->state_time,
        player_state_name(player->prev_state));
    line(
        "POS    %7.1f %7.1f   VEL %7.1f %7.1f", static_cast<double>(body->pos.x), static_cast<double>(body->pos.y),
        static_cast<double>(body->vel.x), static_cast<double>(body->vel.y));
    line("GROUND %-3s    FACING %s", body->grounded ? "yes" : "no", body->facing > 0 ? "right" : "left");
    line("COYOTE %.3f  BUFFER %.3f", player->coyote, player->jump_buffer);
    line(
        "INTENT move %+.0f  jump %s  roll %s  atk %d  sp %s  def %s", static_cast<double>(intent->move_x),
        press(intent->jump), press(intent->roll), intent->attack, press(intent->special),
        intent->defend ? "HELD" : "-");
    line("HEALTH %d", player->health);
    line("HIST   %s", history);
    line("%s", "KEYS   arrows/AD move  space/Z jump  shift/X roll");
    line("%s", "JKL attack  U special  I air atk  S defend  H hurt");
    line("%s", "DRAWN  blue solid   green body   red slopes");
}

void platformer_demo_tick() {
    SDL_Renderer *renderer = engine_renderer();
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
    castle_refresh(&platformer_demo->castle);

    float view_w = 0, view_h = 0;
    engine_view_size(&view_w, &view_h);
    const PlayerBody *body = &platformer_demo->player.body;
    const SDL_FPoint feet = timestep_lerp_point(body->prev_pos, body->pos, engine_fixed_alpha());
    _platformer_demo_move_camera(feet, view_w / WORLD_SCALE, view_h / WORLD_SCALE);
    const SDL_FPoint origin = {
        SDL_roundf(-platformer_demo->camera.x * WORLD_SCALE), SDL_roundf(-platformer_demo->camera.y * WORLD_SCALE)};

    const RenderGrid *grid = platformer_demo->castle.grid;
    const TileRange rows = render_grid_visible_rows(grid, 0, view_h, origin, WORLD_SCALE);
    const TileRange cols = render_grid_visible_cols(grid, 0, view_w, origin, WORLD_SCALE);
    render_grid_draw_range(renderer, grid, rows, cols, origin, WORLD_SCALE);
    platformer_demo_draw_player(renderer, _to_view(origin, feet));
    platformer_demo_draw_colliders(renderer, origin);
    platformer_demo_draw_body(renderer, feet, origin);
    platformer_demo_draw_panel(renderer);
}
