// A player for Cinder Keep who knows the way: follows a route of a few words to a place, fights what stands in it, and
// begins again with the word that was begun nearest when he is put back.
#pragma once

#include "level.h"

#include <string>
#include <vector>

// Places are in tiles: x the middle of the feet, y the floor.
//   go X           runs there, and fights on the way
//   jump X Y       jumps there, from where he stands, as high as he can
//   wait N X Y     until the platform N is there
extern const char *const KEEP_ROUTES[2];

struct KeepKeys {
    bool left, right, jump; // held
    bool press_jump, press_attack;
};

class KeepBot {
public:
    explicit KeepBot(const char *route);
    KeepKeys play(const Level &level);           // what he does in the next step
    std::string where(const Level &level) const; // for a message
    size_t at() const { return at_; }            // how far he is
    bool done() const { return at_ >= words_.size(); }

private:
    struct Word {
        std::string name;
        float x = 0, y = 0;
        size_t platform = 0;
        SDL_FPoint feet = {-1, -1}; // where he began with it; not yet: negative
    };
    bool fights(const Level &level, KeepKeys *keys);
    void strikes_in_the_air(const Level &level, KeepKeys *keys);
    void go_back(SDL_FPoint feet, size_t before); // to the word begun nearest, of those before one

    std::vector<Word> words_;
    size_t at_ = 0;
    int steps_ = 0, since_attack_ = 0; // of this word
    bool jumped_ = false;
    SDL_FPoint before_ = {};
};
