#include "core/log.h"

#include "lumarind/core/files.h"
#include "lumarind/engine/game.h"

#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_iostream.h>
#include <SDL3/SDL_log.h>

struct LogState {
    SDL_IOStream *file; // owned; null: not set up
    SDL_LogOutputFunction previous_output;
    void *previous_userdata;
};
static LogState log_state;

static const char *_priority_prefix(SDL_LogPriority priority) {
    switch (priority) {
    case SDL_LOG_PRIORITY_WARN:
        return "WARNING: ";
    case SDL_LOG_PRIORITY_ERROR:
    case SDL_LOG_PRIORITY_CRITICAL:
        return "ERROR: ";
    default:
        return "";
    }
}

static void SDLCALL _output(void *, int category, SDL_LogPriority priority, const char *message) {
    log_state.previous_output(log_state.previous_userdata, category, priority, message);
    const char *prefix = _priority_prefix(priority);
    SDL_WriteIO(log_state.file, prefix, SDL_strlen(prefix));
    SDL_WriteIO(log_state.file, message, SDL_strlen(message));
    SDL_WriteIO(log_state.file, "\n", 1);
    SDL_FlushIO(log_state.file); // on disk even if the process ends abruptly
}

// Categories in which the engine logs warnings, although SDL's default priority for them is error.
// Priorities set by the user in SDL_LOGGING are respected.
static constexpr SDL_LogCategory WARNING_CATEGORIES[] = {
    SDL_LOG_CATEGORY_ERROR, SDL_LOG_CATEGORY_AUDIO, SDL_LOG_CATEGORY_INPUT};

void log_setup() {
    if (log_state.file) return;
    const bool user_decides = SDL_GetHint(SDL_HINT_LOGGING) != nullptr;
    for (const SDL_LogCategory category : WARNING_CATEGORIES) {
        if (!user_decides && SDL_GetLogPriority(category) > SDL_LOG_PRIORITY_WARN)
            SDL_SetLogPriority(category, SDL_LOG_PRIORITY_WARN);
    }
    FilePath name = {};
    SDL_snprintf(name.text, sizeof name.text, "%s.log", engine_game()->id);
    log_state.file = SDL_IOFromFile(files_user(name.text).text, "w");
    if (!log_state.file) return;
    SDL_GetLogOutputFunction(&log_state.previous_output, &log_state.previous_userdata);
    SDL_SetLogOutputFunction(_output, nullptr);
}

void log_cleanup() {
    if (!log_state.file) return;
    SDL_SetLogOutputFunction(log_state.previous_output, log_state.previous_userdata);
    SDL_CloseIO(log_state.file);
    log_state.file = nullptr;
}
