#include "support/log_kinds.h"

struct LineKind {
    SDL_LogPriority priority = SDL_LOG_PRIORITY_INFO;
    const char *pattern = "";
};
static constexpr LineKind LINE_KINDS[] = {
    {.pattern = "[ENGINE] SDL3 *"},
    {.pattern = "[ENGINE] *: */"},
    {.pattern = "[ENGINE] Display scale: *, UI scale: *"},
    {.pattern = "[ENGINE] Window title: Lumarind Engine v0.0.1"},
    {.pattern = "[ENGINE] Video driver: *, renderer: *"},
    {.pattern = "[FONTS] Setting up font: assets/fonts/*.ttf"},
    {.pattern = "[CONFIG] *: config/lumarind-engine.ini"},
    {.pattern = "[AUDIO] Mixer open on dummy: * Hz, * channels"},
    {.pattern = "[GAMEPAD] *onnected*"},
    {.pattern = "[GAMEPAD] Ignoring additional controller *, * is already active"},
    {.priority = SDL_LOG_PRIORITY_WARN, // removed before its event was handled
     .pattern = "[GAMEPAD] Could not open controller *, error: ?*"},
    {.pattern = "[PROFILER] Window is *x*, too small for the panel, which needs at least *x*."},
    {.pattern = "[PLATFORMER_DEMO] Loaded * rect colliders and * slopes from *.csv"},
    {.pattern = "[REPLAY] Record*: */soak.lmr, * steps"},
    {.pattern = "[REPLAY] Record* to */soak.lmr"},
    {.pattern = "[REPLAY] Replay* recorded with *"},
    {.pattern = "[REPLAY] Replayed * steps, all hashes equal"},
    {.pattern = "[CAPTURE] Saved: captures/capture-*"},
    {.priority = SDL_LOG_PRIORITY_DEBUG, .pattern = "[ENGINE] DEBUG: *: *"},
    {.priority = SDL_LOG_PRIORITY_DEBUG, .pattern = "[PROFILER] DEBUG: Toggled: frozen: *"},

    // --- corrupt assets ---
    {.priority = SDL_LOG_PRIORITY_ERROR, .pattern = "[FONTS] Font file not found (assets/fonts/*.ttf)"},
    {.priority = SDL_LOG_PRIORITY_ERROR, .pattern = "[*] *, error: ?*"},
    {.priority = SDL_LOG_PRIORITY_ERROR, .pattern = "[STORAGE] Error *: *"},
    {.priority = SDL_LOG_PRIORITY_ERROR, .pattern = "[TILE_GRID] *"},
    {.priority = SDL_LOG_PRIORITY_ERROR, .pattern = "[TILEMAP] *"},
    {.priority = SDL_LOG_PRIORITY_ERROR, .pattern = "[TILE_WORLD] assets/*: *"},
    {.priority = SDL_LOG_PRIORITY_ERROR, .pattern = "[RENDER_GRID] *"},
    {.priority = SDL_LOG_PRIORITY_ERROR, .pattern = "[SPRITE_SHEET] *.png is *x*, but its set describes a *"},
    {.priority = SDL_LOG_PRIORITY_ERROR, .pattern = "[PLATFORMER_DEMO] Spawn at (*, *) is inside a collider"},
};

static bool _matches(const char *text, const char *pattern) {
    if (!*pattern) return !*text;
    if (*pattern == '*') return _matches(text, pattern + 1) || (*text && _matches(text + 1, pattern));
    return *text && (*pattern == '?' || *pattern == *text) && _matches(text + 1, pattern + 1);
}

bool matches(const std::string &text, const char *pattern) { return _matches(text.c_str(), pattern); }

std::string unknown_line(const LogLine &line) {
    for (const LineKind &kind : LINE_KINDS) {
        if (line.priority == kind.priority && matches(line.text, kind.pattern)) return "";
    }
    return "priority " + std::to_string(line.priority) + ": " + line.text;
}
