#include "keep/keep_fixture.h"

#include "game.h"
#include "progress.h"

void KeepTest::SetUp() {
    EngineTest::SetUp();
    tested_game = &cinder_keep;
    progress = {}; // left over from an earlier test
    config = "";
    write_file(user_file("config/cinder-keep.ini"), "[graphics]\nvsync_enable = false\nui_scale = 1\n");
}

std::string KeepTest::user_file(const std::string &name) const { return "lumarind-examples/cinder-keep/" + name; }

bool KeepTest::start_level(int number) { return start_screen("level-" + std::to_string(number)); }
