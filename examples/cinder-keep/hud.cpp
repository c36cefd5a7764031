#include "hud.h"

#include "game.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/input/gamepad.h"
#include "lumarind/settings/settings.h"
#include "lumarind/toolkit/primitives.h"
#include "progress.h"

#include <SDL3/SDL_render.h>

static constexpr float EDGE = 10;
static constexpr float HEART_STEP = 28, FLAME_STEP = 22, LABEL_X = EDGE + 80;
static constexpr SDL_Color SHADOW = {12, 8, 20, 255};

void hud_text(int font, const char *text, float x, float y, SDL_Color color, TextAlign align) {
    TTF_Font *with = engine_get_font_by_index(font);
    engine_draw_text(with, text, x + 1, y + 1, SHADOW, align);
    engine_draw_text(with, text, x, y, color, align);
}

HudTime hud_time(double seconds) {
    HudTime time = {};
    const int hundredths = static_cast<int>(seconds * 100);
    SDL_snprintf(
        time.text, sizeof time.text, "%d:%02d.%02d", hundredths / 6000, hundredths / 100 % 60, hundredths % 100);
    return time;
}

HudTime hud_best_time(int level) {
    const Sint64 ms = progress.levels[level].best_ms;
    return ms > 0 ? hud_time(static_cast<double>(ms) / 1000) : HudTime{"-"};
}

// --- signs: {name} is replaced by the binding of an action ---

static constexpr const char *SIGN_PLACEHOLDERS[] = {"{left}", "{right}", "{jump}", "{roll}", "{attack}", "{special}"};
static_assert(SDL_arraysize(SIGN_PLACEHOLDERS) == ACTION_PAUSE, "in the order of the actions");

void hud_sign_text(const char *text, char *out, size_t size) {
    size_t used = 0;
    while (*text && used + 1 < size) {
        int action = -1;
        for (int i = 0; i < ACTION_PAUSE; i++) {
            if (SDL_strncmp(text, SIGN_PLACEHOLDERS[i], SDL_strlen(SIGN_PLACEHOLDERS[i])) == 0) action = i;
        }
        if (action < 0) {
            out[used++] = *text++;
            continue;
        }
        text += SDL_strlen(SIGN_PLACEHOLDERS[action]);
        SettingsText name = settings_action_text(action, gamepad_connected());
        if (!name.text[0]) name = settings_action_text(action, !gamepad_connected());
        used += SDL_strlcpy(out + used, name.text, size - used);
        used = SDL_min(used, size - 1);
    }
    out[used] = '\0';
}

const Sign *hud_sign(const Level *level) {
    const int key = things_find(&level->things, THING_KEY, 0);
    const bool taken = key >= 0 && level->things.items[key].done;
    for (int i = 0; i < level->sign_count; i++) {
        const Sign *sign = &level->signs[i];
        if (point_in_rect(&level->hero.body.pos, &sign->area) && !(sign->until_key && taken)) return sign;
    }
    return nullptr;
}

static void hud_draw_sign(const Level *level, float width, float height) {
    const Sign *sign = hud_sign(level);
    if (!sign) return;
    char text[160];
    hud_sign_text(sign->text, text, sizeof text);
    float wide = 0, high = 0;
    engine_measure_text(engine_get_font_by_index(SHARED_FONT_UI), text, &wide, &high);
    const SDL_FRect box = {width / 2 - wide / 2 - 14, height - high - 34, wide + 28, high + 14};
    fill_rect(engine_renderer(), &box, rgba(21, 18, 31, 215));
    hud_text(SHARED_FONT_UI, text, width / 2, box.y + 7, COLOR_PLAIN, TEXT_CENTER);
}

static void hud_draw_won(const Level *level, float width, float height) {
    char line[96];
    const SDL_FRect band = {0, height / 2 - 74, width, 148};
    fill_rect(engine_renderer(), &band, rgba(12, 8, 20, 200));
    const char *title = tile_property_string(&level->world->properties, "title", "");
    hud_text(SHARED_FONT_UI_HEADING, title, width / 2, height / 2 - 66, COLOR_BRIGHT, TEXT_CENTER);
    SDL_snprintf(
        line, sizeof line, "Time %s     Best %s", hud_time(level->time).text, hud_best_time(level->number).text);
    hud_text(SHARED_FONT_UI, line, width / 2, height / 2 - 8, COLOR_PLAIN, TEXT_CENTER);
    SDL_snprintf(
        line, sizeof line, "Embers %d of %d     Fallen %d", level->embers, level->things.embers, level->deaths);
    hud_text(SHARED_FONT_UI, line, width / 2, height / 2 + 16, COLOR_PLAIN, TEXT_CENTER);
    const bool fast = level->whole_run && level->time < level->seconds_to_beat;
    SDL_snprintf(
        line, sizeof line, fast ? "Faster than the keeper's %s!" : "The keeper needs %s",
        hud_time(level->seconds_to_beat).text);
    hud_text(SHARED_FONT_UI, line, width / 2, height / 2 + 40, fast ? COLOR_BRIGHT : COLOR_DIM, TEXT_CENTER);
}

// --- the corners: over dark panels, to be legible over fire and moon ---

static void hud_panel(float x, float w, float h) {
    const SDL_FRect panel = {x, EDGE - 4, w, h};
    fill_rect(engine_renderer(), &panel, rgba(12, 8, 20, 150));
}

static void hud_draw_hero(const Level *level) {
    const Art *art = &level->art;
    const Hero &hero = level->hero;
    const bool charged = hero.flames == HERO_FLAMES;
    const SettingsText flame = charged ? settings_action_text(ACTION_SPECIAL, gamepad_connected()) : SettingsText{};
    float wide = 0, high = 0;
    engine_measure_text(engine_get_font_by_index(SHARED_FONT_UI), flame.text, &wide, &high);
    const float hearts = HERO_HEARTS * HEART_STEP + 8;
    hud_panel(EDGE - 4, charged ? SDL_max(hearts, LABEL_X - EDGE + wide + 10) : hearts, hero.flames > 0 ? 64 : 38);
    for (int i = 0; i < HERO_HEARTS; i++) {
        const Uint8 light = i < hero.hearts ? 255 : 60; // lost ones are dark
        SDL_SetTextureColorMod(art->things_sheet->texture, light, light, light);
        const SDL_FPoint feet = {EDGE + 14 + HEART_STEP * static_cast<float>(i), EDGE + 36};
        art_draw_thing(art, &art->clips[CLIP_HEART], feet, 2);
    }
    SDL_SetTextureColorMod(art->things_sheet->texture, 255, 255, 255);
    for (int i = 0; i < hero.flames; i++)
        art_draw_thing(art, &art->clips[CLIP_FIREBALL], {EDGE + 20 + FLAME_STEP * static_cast<float>(i), EDGE + 62}, 2);
    hud_text(SHARED_FONT_UI, flame.text, LABEL_X, EDGE + 38, COLOR_BRIGHT, TEXT_LEFT);
}

static void hud_draw_embers_and_time(const Level *level, float width) {
    const Art *art = &level->art;
    const bool key = level->hero.has_key;
    hud_panel(width - EDGE - 112, 116, key ? 88 : 38);
    art_draw_thing(art, &art->clips[CLIP_EMBER], {width - EDGE - 16, EDGE + 36}, 2);
    if (key) art_draw_thing(art, &art->clips[CLIP_KEY], {width - EDGE - 16, EDGE + 82}, 2);
    char text[32];
    SDL_snprintf(text, sizeof text, "%d / %d", level->embers, level->things.embers);
    hud_text(SHARED_FONT_UI, text, width - EDGE - 34, EDGE + 6, COLOR_PLAIN, TEXT_RIGHT);
    HudTime time = hud_time(level->time);
    time.text[SDL_strlen(time.text) - 1] = '\0'; // tenths: a text that changes every frame is laid out every frame
    hud_panel(width / 2 - 42, 84, 30);
    hud_text(SHARED_FONT_UI, time.text, width / 2, EDGE, COLOR_PLAIN, TEXT_CENTER);
}

void hud_draw(const Level *level) {
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    SDL_SetRenderDrawBlendMode(engine_renderer(), SDL_BLENDMODE_BLEND);
    hud_draw_hero(level);
    hud_draw_embers_and_time(level, width);
    if (level->phase == LEVEL_PLAYING) hud_draw_sign(level, width, height);
    if (level->phase == LEVEL_WON) hud_draw_won(level, width, height);
}
