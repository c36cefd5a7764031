// Fixture that runs Cinder Keep in the engine's fixture, with its own assets and user folder.
#pragma once

#include "level.h"
#include "support/engine_fixture.h"

class KeepTest : public EngineTest {
protected:
    void SetUp() override;
    bool start_level(int number);                         // from 1; runs one frame
    std::string user_file(const std::string &name) const; // in the game's user folder
};
