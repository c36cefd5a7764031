#include "menus.h"

#include "game.h"
#include "lumarind/settings/settings.h"
#include "sounds.h"

static constexpr SettingsAction ACTIONS[] = {
    {ACTION_LEFT, "Run left"}, {ACTION_RIGHT, "Run right"}, {ACTION_JUMP, "Jump"},   {ACTION_ROLL, "Roll"},
    {ACTION_ATTACK, "Strike"}, {ACTION_SPECIAL, "Flame"},   {ACTION_PAUSE, "Pause"},
};
static_assert(SDL_arraysize(ACTIONS) == ACTION_PLAY_COUNT, "one row per action of the game");

bool menus_setup() {
    const MenuControls controls = {
        .up = ACTION_MENU_UP,
        .down = ACTION_MENU_DOWN,
        .left = ACTION_MENU_LEFT,
        .right = ACTION_MENU_RIGHT,
        .take = ACTION_MENU_TAKE,
        .back = ACTION_MENU_BACK,
        .clear = ACTION_MENU_CLEAR};
    return menu_setup(controls) && settings_setup(ACTIONS, ACTION_PLAY_COUNT);
}

void menus_cleanup() {
    settings_cleanup();
    menu_cleanup();
}

static void menus_sound(const MenuAnswer &answer) {
    const bool moved = answer.moved || answer.step != 0;
    const Sound sound = answer.taken >= 0 ? SOUND_MENU_TAKE : answer.back ? SOUND_MENU_BACK : SOUND_MENU_MOVE;
    if (sound != SOUND_MENU_MOVE || moved) sounds_play(sound);
}

MenuAnswer menus_tick(Menu *menu, const MenuLine *lines, int count, const SDL_FRect &area, bool listens) {
    const MenuAnswer answer = menu_tick(menu, lines, count, area, listens);
    menus_sound(answer);
    return answer;
}

bool menus_settings_tick() {
    MenuAnswer answer = {};
    const bool open = settings_menu_tick(&answer);
    menus_sound(answer);
    return open;
}
