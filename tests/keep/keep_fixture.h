// Cinder Keep in the engine's fixture: its own files, its own user's folder.
#pragma once

#include "keep/keep_bot.h"
#include "support/engine_fixture.h"

class KeepTest : public EngineTest {
protected:
    void SetUp() override;
    bool start_level(int number); // from 1; and draws a frame of it
    void press(const KeepKeys &keys);
    std::string user_file(const std::string &name) const; // below the game's folder
    // The bot's run through the level; the message where it does not arrive.
    std::string run_route(int number, int frames_max = 30 * 240);
    bool jump_held_ = false;
};
