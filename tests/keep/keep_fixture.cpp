#include "keep/keep_fixture.h"

#include "game.h"
#include "progress.h"

#include <cstdlib>

void KeepTest::SetUp() {
    EngineTest::SetUp();
    played = &cinder_keep;
    progress = {}; // left over from an earlier test
    config = "";
    const std::string here = std::filesystem::current_path().string();
    setenv("XDG_DATA_HOME", here.c_str(), 1);
    write_file(user_file("config/cinder-keep.ini"), "[graphics]\nvsync_enable = false\nui_scale = 1\n");
}

std::string KeepTest::user_file(const std::string &name) const { return "lumarind-examples/cinder-keep/" + name; }

bool KeepTest::start_level(int number) { return start_screen("level-" + std::to_string(number)); }

void KeepTest::press(const KeepKeys &keys) {
    std::set<SDL_Scancode> held;
    if (keys.left) held.insert(SDL_SCANCODE_LEFT);
    if (keys.right) held.insert(SDL_SCANCODE_RIGHT);
    if (keys.jump || keys.press_jump) held.insert(SDL_SCANCODE_SPACE);
    hold(held);
    if (keys.press_jump) play("Space");
    if (keys.press_attack) play("J");
}

std::string KeepTest::run_route(int number, int frames_max) {
    KeepBot bot(KEEP_ROUTES[number - 1]);
    const bool tells = std::getenv("LUMARIND_ROUTES_TELL") != nullptr;
    size_t last = 0;
    int same = 0;
    for (int i = 0; i < frames_max; i++) {
        const Level *level = play_level();
        if (!level) return "the level is gone";
        if (level->phase == LEVEL_WON) return "";
        press(bot.play(*level));
        if (tells && bot.at() != last) std::printf("%s%s\n", bot.at() < last ? "BACK " : "", bot.where(*level).c_str());
        if (const char *word = std::getenv("LUMARIND_ROUTES_WORD"); tells && word && bot.at() == std::stoul(word))
            std::printf(
                "word step %s state %d vel %.0f %.0f\n", bot.where(*level).c_str(), level->hero.state,
                static_cast<double>(level->hero.body.vel.x), static_cast<double>(level->hero.body.vel.y));
        same = bot.at() == last ? same + 1 : 0;
        last = bot.at();
        if (same > 30 * 15) break;
        if (!frame(1.0 / 30)) return "the program has ended"; // a recording half as large as at 60 frames per second
    }
    return bot.where(*play_level());
}
