// Captures SDL's log lines during its lifetime instead of printing them.
#pragma once

#include <SDL3/SDL_log.h>

#include <string>
#include <vector>

struct LogLine {
    SDL_LogPriority priority;
    std::string text;
};

class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    std::vector<LogLine> lines;

    int count(const std::string &text) const; // lines that contain it
    bool has(const std::string &text) const { return count(text) > 0; }
    std::vector<std::string> at_least(SDL_LogPriority priority) const; // texts of lines with this priority or above
    bool only_error_starts(const std::string &text) const;             // exactly one error, starting with `text`
    std::vector<std::string> errors() const { return at_least(SDL_LOG_PRIORITY_ERROR); }

private:
    SDL_LogOutputFunction previous_ = nullptr;
    void *previous_userdata_ = nullptr;
};
