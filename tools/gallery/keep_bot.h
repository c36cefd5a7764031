// A bot that plays Cinder Keep from a route script: follows its commands, attacks enemies in its way and, after a
// respawn, resumes at the command whose start is nearest.
#pragma once

#include "level.h"

#include <cstdint>
#include <string>
#include <vector>

// Positions are in tiles: x the middle of the feet, y the floor.
//   go X           runs there, attacking on the way
//   jump X Y       jumps there from the current position, at full height
//   wait N X Y     waits until platform N is there
extern const char *const KEEP_ROUTES[2];

struct KeepKeys {
    bool left, right, jump; // held
    bool press_jump, press_attack;
};

class KeepBot {
public:
    explicit KeepBot(const char *route);
    KeepKeys play(const Level &level);           // input for the next step
    std::string where(const Level &level) const; // position, for messages
    size_t at() const { return at_; }            // index of the current command
    bool done() const { return at_ >= commands_.size(); }

private:
    struct Command {
        std::string name;
        float x = 0, y = 0;
        size_t platform = 0;
        SDL_FPoint feet = {-1, -1}; // where the command started; negative before
    };
    bool attack_nearby(const Level &level, KeepKeys *keys);
    void attack_in_the_air(const Level &level, KeepKeys *keys);
    void resume_nearest(SDL_FPoint feet, size_t before); // to the nearest start of the commands before `before`

    std::vector<Command> commands_;
    void retry(SDL_FPoint feet); // after a failed command; starts farther back each time
    size_t at_ = 0, furthest_ = 0;
    size_t failed_ = 0, retried_at_ = SIZE_MAX; // the failed command, and where the last retry started
    int steps_ = 0, since_attack_ = 0;          // of this command
    bool jumped_ = false;
    SDL_FPoint previous_ = {};
};
