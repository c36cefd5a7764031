#include "keep_bot.h"

#include <cmath>
#include <sstream>
#include <stdexcept>

namespace {

constexpr float TILE = 16, TOLERANCE = 4, REACH = 42, RESPAWN_DISTANCE = 36, FAR = 144; // px
constexpr size_t COMMANDS_BACK = 16; // more than lie between two checkpoints
constexpr int ATTACK_INTERVAL = 13;  // steps between two attacks

} // namespace

const char *const KEEP_ROUTES[2] = {
    "go 25 jump 28 41 jump 32 39 go 38 go 39.3 jump 45.5 42 go 59.5 jump 62.5 39 go 63.4 jump 68 38 "
    "jump 73.5 40 go 77 go 89.3 jump 96 42 go 105.5 jump 108 38 go 107.4 jump 104.5 35 go 105.4 jump 108 32 "
    "go 107.4 jump 104 29 jump 101.5 27 go 93 go 90.4 jump 88.2 24 go 82 wait 0 79 27 jump 79 27 "
    "wait 0 69 27 jump 64.5 27 go 65 jump 62 24 go 60.7 jump 56 21 go 54.6 jump 50 21 go 45 go 36 go 35.6 "
    "jump 28.5 27 go 27 jump 25.2 26 go 20 go 14 go 8.6 jump 6.5 24 go 7.4 jump 12 21 go 10.7 jump 7 18 go 7.4 "
    "jump 11.5 15 go 12.4 jump 17 12 go 19 jump 22 11 jump 25.5 9 go 30 go 33.4 jump 40 12 go 41.4 "
    "jump 49 12 go 65.4 wait 1 68 12 jump 68 12 wait 1 79 12 jump 83.5 12 go 87.6 jump 90 10 go 95 go 106.5",
    "go 7 jump 9 83 go 13.4 jump 21 84 go 27.3 wait 0 30 84 jump 30 84 wait 0 38 84 jump 41.5 84 go 43 "
    "jump 45 82 go 52.6 jump 55.5 80 go 54.6 jump 51.5 77 go 52.4 jump 55 74 go 53.8 jump 48.5 72 go 48 go 42.4 jump "
    "35 72 "
    "go 34 jump 32 70 go 27 go 24 jump 21.5 71 go 18 jump 15.5 69 go 7 jump 4.5 68 go 5.4 jump 8.5 65 go 7.6 "
    "jump 4 62 go 4.6 jump 9.5 60 go 11 go 13.4 jump 20 60 go 21.4 jump 28 60 go 29 jump 31.5 56 go 34.4 "
    "jump 38.5 53 go 42 go 49 go 51 wait 1 54 59.5 jump 54 59.5 wait 1 54 48 jump 50.5 48 go 49 go 46.4 "
    "wait 2 44 48 jump 44 48 wait 2 41 48 jump 39 48 wait 3 35 48 jump 35 48 wait 3 29 48 jump 26 45 go 24.5 "
    "wait 4 21 47 jump 21 47 wait 4 12 47 jump 8.5 48 go 7.2 jump 4 44 go 5.4 jump 8.5 41 go 6.6 jump 3.5 38 go 4.4 "
    "jump 8 35 jump 11 34 go 12 go 17.4 jump 25 34 go 31.4 wait 5 34 34 jump 34 34 wait 5 40 34 jump 43.5 34 "
    "go 44.3 jump 46 32 go 54 jump 56.5 31 go 55.6 jump 52 28 wait 6 55 28 jump 55 28 wait 6 55 19 jump 48.5 18 "
    "go 46 go 40 jump 37.5 16 go 36.6 jump 30 14 go 26 go 24.6 jump 17 18 go 5.5"};

KeepBot::KeepBot(const char *route) {
    std::istringstream text(route);
    for (Command command; text >> command.name;) {
        if (command.name == "wait") text >> command.platform >> command.x >> command.y;
        if (command.name == "go" || command.name == "jump") text >> command.x;
        if (command.name == "jump") text >> command.y;
        if (!text) throw std::runtime_error("the route is incomplete");
        commands_.push_back(command);
    }
}

std::string KeepBot::where(const Level &level) const {
    std::ostringstream text;
    text << "command " << at_ << (done() ? "" : " " + commands_[at_].name + " " + std::to_string(commands_[at_].x))
         << " at " << level.hero.body.pos.x / TILE << ", " << level.hero.body.pos.y / TILE << ", hearts "
         << level.hero.hearts << ", time " << level.time;
    return text.str();
}

void KeepBot::retry(SDL_FPoint feet) {
    failed_ = SDL_max(failed_, at_);
    const size_t failed = at_;
    resume_nearest(feet, SDL_min(failed, retried_at_));
    const SDL_FPoint start = commands_[at_].feet;
    const bool far = std::hypot(start.x - feet.x, start.y - feet.y) > FAR; // of another part of the level
    if (far) resume_nearest(feet, failed);
    retried_at_ = far || at_ == 0 ? SIZE_MAX : at_;
}

// Attacks an enemy within reach, or keeps its distance.
bool KeepBot::attack_nearby(const Level &level, KeepKeys *keys) {
    const PlayerBody &body = level.hero.body;
    for (int i = 0; i < level.enemies.count; i++) {
        const Enemy &enemy = level.enemies.items[i];
        const float dx = enemy.body.pos.x - body.pos.x, dy = enemy.body.pos.y - body.pos.y;
        if (!enemy.alive || std::fabs(dx) > REACH + 24 || dy > 24 || dy < -40) continue;
        const bool faces = (dx > 0) == (body.facing > 0);
        if (!faces) (dx > 0 ? keys->right : keys->left) = true;
        if (faces && std::fabs(dx) < REACH + 8 && since_attack_ > ATTACK_INTERVAL) {
            keys->press_attack = true;
            since_attack_ = 0;
        }
        if (std::fabs(dx) < 26) (dx > 0 ? keys->left : keys->right) = since_attack_ > 6; // too close: step back
        return std::fabs(dx) < REACH + 8;
    }
    return false;
}

void KeepBot::resume_nearest(SDL_FPoint feet, size_t before) {
    float nearest = 1e9f;
    for (size_t i = 0; i < SDL_min(before, commands_.size()); i++) {
        const float distance = std::hypot(commands_[i].feet.x - feet.x, commands_[i].feet.y - feet.y);
        if (i + COMMANDS_BACK < furthest_ || commands_[i].feet.x < 0 || distance > nearest + 1) continue;
        nearest = distance;
        at_ = i;
    }
    steps_ = 0;
    jumped_ = false;
}

void KeepBot::attack_in_the_air(const Level &level, KeepKeys *keys) {
    const PlayerBody &body = level.hero.body;
    for (int i = 0; i < level.enemies.count && !body.grounded && since_attack_ > ATTACK_INTERVAL; i++) {
        const Enemy &enemy = level.enemies.items[i];
        const float dx = enemy.body.pos.x - body.pos.x, dy = enemy.body.pos.y - body.pos.y;
        if (!enemy.alive || (dx > 0) != (body.facing > 0) || std::fabs(dx) > REACH + 12 || std::fabs(dy) > 40) continue;
        keys->press_attack = true;
        since_attack_ = 0;
    }
}

KeepKeys KeepBot::play(const Level &level) {
    KeepKeys keys = {};
    const PlayerBody &body = level.hero.body;
    if (steps_ + static_cast<int>(at_) > 0 &&
        std::hypot(body.pos.x - previous_.x, body.pos.y - previous_.y) > RESPAWN_DISTANCE) {
        resume_nearest(body.pos, commands_.size());
        failed_ = 0;
        retried_at_ = SIZE_MAX;
    }
    previous_ = body.pos;
    steps_++;
    since_attack_++;
    furthest_ = SDL_max(furthest_, at_);
    const bool starts = !done() && steps_ == 1 && body.grounded && commands_[at_].name != "wait";
    if (starts && commands_[at_].feet.x < 0) commands_[at_].feet = body.pos;
    if (done() || level.phase != LEVEL_PLAYING) return keys;
    const Command &command = commands_[at_];
    const float dx = command.x * TILE - body.pos.x;
    bool reached = false;
    if (command.name == "wait") {
        const Platform &platform = level.things.platforms[command.platform];
        reached = std::fabs(platform.box.x + platform.box.w / 2 - command.x * TILE) < 6 &&
                  std::fabs(platform.box.y - command.y * TILE) < 6;
        if (!level.things.platforms[command.platform].time) reached = true;
        attack_nearby(level, &keys);
        if (keys.left || keys.right) keys.left = keys.right = false;
    } else if (command.name == "go") {
        if (!body.grounded || !attack_nearby(level, &keys))
            (dx > 0 ? keys.right : keys.left) = std::fabs(dx) > TOLERANCE;
        reached = std::fabs(dx) <= TOLERANCE + 2 && body.grounded;
        if (!reached && steps_ > 200) return retry(body.pos), keys;
    } else {
        const bool after_wait = at_ > 0 && commands_[at_ - 1].name == "wait"; // the platform moves during the jump
        attack_in_the_air(level, &keys);
        const bool wrong_way = body.vel.x * dx < 0 && std::fabs(body.vel.x) > 10;
        if (!jumped_ && body.grounded && !wrong_way) jumped_ = keys.press_jump = true;
        keys.jump = jumped_ && body.vel.y < 0;  // never from the ground: a real key would jump again
        const float ahead = body.vel.x * 0.05f; // distance covered while braking
        if (jumped_ && std::fabs(dx - ahead) > TOLERANCE) (dx - ahead > 0 ? keys.right : keys.left) = true;
        reached = jumped_ && steps_ > 4 && body.grounded && std::fabs(dx) < 30 &&
                  std::fabs(body.pos.y - command.y * TILE) < (after_wait ? 24 : 6);
        if (jumped_ && !reached && body.grounded && steps_ % 20 == 19) jumped_ = false; // retry
        if (!reached && steps_ > 75) return retry(body.pos), keys;
    }
    if (reached) {
        if (at_ >= failed_) retried_at_ = SIZE_MAX;
        at_++;
        steps_ = 0;
        jumped_ = false;
    }
    return keys;
}
