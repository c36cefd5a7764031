// Fixture that runs Cinder Keep in the engine's fixture, with its own assets and user folder.
#pragma once

#include "keep/keep_bot.h"
#include "support/engine_fixture.h"

class KeepTest : public EngineTest {
protected:
    void SetUp() override;
    bool start_level(int number); // from 1; runs one frame
    void press(const KeepKeys &keys);
    std::string user_file(const std::string &name) const; // in the game's user folder
    // Lets the bot play the level. Returns "" if it is won, else where the bot got stuck.
    std::string run_route(int number, int frames_max = 30 * 240);
    bool jump_held_ = false;
};
