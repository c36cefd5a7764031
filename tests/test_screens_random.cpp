// Random input on every screen: what it draws, logs and simulates, compared with stored hashes.

#include "app/demo_game.h"
#include "app/screen_registry.h"
#include "lumarind/core/random.h"
#include "support/call_faults.h"
#include "support/engine_fixture.h"
#include "support/sdl_calls.h"

#include <array>
#include <format>
#include <iterator>
#include <sstream>
#include <zlib.h>

namespace {

class RandomPlayTest : public EngineTest {
protected:
    void TearDown() override {
        texts_are_recorded = false;
        EngineTest::TearDown();
    }
};

// Without the panel and captures, which show times. If it fails after an intended change, ./dev accept stores the new
// hashes, one per screen and 30 steps.
TEST_F(RandomPlayTest, FramesMatchStoredHashes) {
    std::istringstream words(
        "Up Down Left Right Return Space A D E F G H I J K L O P R S W X Z . key:, key:1 key:2 Left_Shift ~Down "
        "+Right -Right +Left -Left +Up +Down -Up -Down +D -D pad:a pad:b pad:start pad:dpdown "
        "pad:dpup pad:leftx=.6 pad:leftx=-1 pad:lefty=.9 pad:leftx=0 pad:rightx=.3 pad:righttrigger=.7 pad:a=1 "
        "wheel:0,1");
    const std::vector<std::string> inputs(std::istream_iterator<std::string>(words), {});
    Random random = random_make(1);
    const auto below = [&](int limit) { return random_below(&random, limit); };
    const std::array sizes = {"640x400", "800x200", "330x300", "400x1300"};
    texts_are_recorded = true;
    std::string text;
    for (GameState state = GAME_STATE_FIRST_SCREEN; screen_for(state); state++) {
        config = std::string("[graphics]\nvsync_enable = false\nshow_fps = false\nui_scale = ") +
                 (state % 4 ? "1\n" : "2\n");
        ASSERT_TRUE(start({"--screen", screen_name(state), "--window-size", "640x400"}));
        play("pad:plug");
        uLong hash = 0;
        for (int i = 1; i <= 150; i++) {
            sdl_calls.clear();
            log.lines.clear();
            const int kind = below(8), x = below(640), y = below(400);
            if (kind == 0) play(std::format("{}:{},{}", std::array{"move", "drop", "click", "rdrop"}[below(4)], x, y));
            if (kind == 1 && below(4) == 0) play(std::string("size:") + sizes[below(4)]);
            if (i == 130) play("Escape");
            if (kind > 1) play(inputs[static_cast<size_t>(below(static_cast<int>(inputs.size())))]);
            if (!frame(std::array{0.0, 1 / 60.0, 1 / 60.0, 1 / 144.0, 0.04, 0.3}[i > 1 ? below(6) : 0])) break;
            const Picture shown = picture();
            hash = crc32_z(hash, row_of(shown, 0), static_cast<size_t>(shown->pitch * shown->h));
            for (const LogLine &line : log.lines) sdl_calls += line.text;
            hash = crc32_z(hash, reinterpret_cast<const Bytef *>(sdl_calls.data()), sdl_calls.size());
            if (i % 30 == 0) text += std::format("{} {} {:08x}\n", screen_name(state), i, hash);
        }
    }
    expect_stored("random-play.txt", text);
}

} // namespace
