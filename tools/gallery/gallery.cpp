// Renders the pictures of docs/gallery from fixed scripts: each screen at a representative moment, and the frames of a
// short animation of the castle level. ./dev gallery runs it.
//   LUMARIND_GALLERY  output folder of the BMP files

#include "support/castle_routes.h"
#include "support/engine_fixture.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int STEPS_PER_PICTURE = 3; // of the animation: 20 pictures per second

// Input of the animation, slower than the routes. Digits attack, u is the special attack.
constexpr const char *SHOW = "..rrrrrrrrRrrrrrrrrrrr.ll1......rr.3...................l.u................";

// The keys of a letter of a route, or of SHOW.
std::string keys_of(char letter) {
    const char *attack = std::strchr("1J3LuU", letter);
    const bool attacks = attack && (letter == '1' || letter == '3' || letter == 'u');
    return route_keys(letter) + (attacks ? std::string(1, attack[1]) + " " : "");
}

std::string route(const std::string &letters) {
    std::string script;
    for (const char letter : letters) script += keys_of(letter) + "0.1s ";
    return script + "-Left -Right ";
}

class Gallery : public EngineTest {
protected:
    void SetUp() override {
        const char *folder = std::getenv("LUMARIND_GALLERY");
        if (!folder) GTEST_SKIP() << "LUMARIND_GALLERY is not set";
        folder_ = std::filesystem::absolute(folder);
        EngineTest::SetUp();
    }
    void save(const std::string &name) const {
        const std::string path = (folder_ / (name + ".bmp")).string();
        ASSERT_TRUE(SDL_SaveBMP(picture().get(), path.c_str())) << path << ": " << SDL_GetError();
        std::printf("%s\n", path.c_str());
    }

private:
    std::filesystem::path folder_;
};

TEST_F(Gallery, Screens) {
    const std::string tower = ROUTE_BY_THE_TOWER, knight = " Right Right Right Right Right Right Right Right Right";
    const struct {
        const char *name, *screen;
        std::string script;
    } moments[] = {
        {"main-menu", "main-menu", "0.5s"},
        {"text-demo", "text-demo", "0.5s"},
        {"texture-demo", "texture-demo", "1.4s"},
        {"tilemap-demo", "tilemap-demo", "6.6s"},
        {"logical-demo", "logical-demo", "9.6s"},
        {"audio-demo", "audio-demo", "0.5s"},
        {"sprite-demo", "sprite-demo", "Right" + knight + " 1 . . . . . . . . . 1"},
        {"input-demo", "input-demo", "Space 0.2s Space 0.2s Space 0.2s Space 0.2s Space 0.2s +D 1"},
        {"gamepad-demo", "gamepad-demo",
         "pad:plug 0.2s pad:a=1 pad:leftshoulder=1 pad:leftx=.8 pad:lefty=-.5 pad:righttrigger=.7 0.2s"},
        {"physics-demo", "physics-demo", "+Right 0.6s Space 0.15s Space 0.15s Space 0.15s Space 0.15s Space 0.15s"},
        {"platformer-tower", "platformer-demo", route(tower.substr(0, tower.size() - 93) + "1") + "0.05s"},
        {"platformer-demo", "platformer-demo", route(tower + "....u........")},
    };
    for (const auto &moment : moments) {
        ASSERT_TRUE(start_screen(moment.screen, "1280x720"));
        play(moment.script);
        save(moment.name);
    }
}

TEST_F(Gallery, Animation) {
    ASSERT_TRUE(start_screen("platformer-demo", "800x450"));
    int steps = 0, pictures = 0;
    for (const char *letter = SHOW; *letter; letter++) {
        play(keys_of(*letter));
        for (int i = 0; i < ROUTE_STEPS_PER_LETTER; i++, steps++) {
            play("1");
            if (steps % STEPS_PER_PICTURE != 0) continue;
            char name[32];
            std::snprintf(name, sizeof name, "play-%03d", pictures++);
            save(name);
        }
    }
}

} // namespace
