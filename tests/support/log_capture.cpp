#include "support/log_capture.h"

static void SDLCALL capture_line(void *userdata, int, SDL_LogPriority priority, const char *message) {
    static_cast<LogCapture *>(userdata)->lines.push_back({priority, message});
}

LogCapture::LogCapture() {
    SDL_GetLogOutputFunction(&previous_, &previous_userdata_);
    SDL_SetLogOutputFunction(capture_line, this);
}

LogCapture::~LogCapture() { SDL_SetLogOutputFunction(previous_, previous_userdata_); }

int LogCapture::count(const std::string &text) const {
    int found = 0;
    for (const LogLine &line : lines) found += line.text.find(text) != std::string::npos ? 1 : 0;
    return found;
}

std::vector<std::string> LogCapture::at_least(SDL_LogPriority priority) const {
    std::vector<std::string> texts;
    for (const LogLine &line : lines) {
        if (line.priority >= priority) texts.push_back(line.text);
    }
    return texts;
}

bool LogCapture::only_error_starts(const std::string &text) const {
    return errors().size() == 1 && errors().front().starts_with(text);
}
