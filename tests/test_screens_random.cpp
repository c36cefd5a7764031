// Random input on every screen: what it draws, plays and logs, compared with stored hashes.

#include "app/demo_game.h"
#include "lumarind/engine/game.h"
#include "support/call_faults.h"
#include "support/engine_fixture.h"

namespace {

class RandomPlayTest : public EngineTest {};

TEST_F(RandomPlayTest, FramesMatchStoredHashes) {
    expect_stored("random-play.txt", random_play(demo_game.screen_count, 150));
}

} // namespace
