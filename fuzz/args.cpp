// Parsing of the command line. The input has one argument per line.
#include "app/args.h"

#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "lumarind/engine/ui_scale.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

static std::vector<std::string> split_words(const uint8_t *data, size_t size) {
    std::vector<std::string> words = {"LumarindEngine"};
    for (size_t at = 0; at < size;) {
        const void *feed = std::memchr(data + at, '\n', size - at);
        const size_t end = feed ? static_cast<size_t>(static_cast<const uint8_t *>(feed) - data) : size;
        const auto *start = reinterpret_cast<const char *>(data + at);
        words.emplace_back(std::string(start, end - at).c_str()); // up to the first NUL, as in a real argument
        at = end + 1;
    }
    return words;
}

// The last value of a number option, truncated to 32 bits, as "%d" reads it; 0 if not given.
static int last_value(const std::vector<std::string> &words, const char *option) {
    long long value = 0;
    for (size_t i = 1; i < words.size(); i++) {
        if (words[i] == "--no-config-save") continue;
        if (i + 1 < words.size() && words[i] == option) value = std::strtoll(words[i + 1].c_str(), nullptr, 10);
        i++; // every other option has a value
    }
    return static_cast<int>(value);
}

static void check_values(const std::vector<std::string> &words) {
    fuzz_note_text(args_start_screen() ? args_start_screen() : "none");
    fuzz_check(args_capture_at() == last_value(words, "--capture-at"), "--capture-at has the last value given");
    fuzz_check(
        args_capture_every() == last_value(words, "--capture-every"), "--capture-every has the last value given");
    fuzz_check(args_quit_at() == last_value(words, "--quit-at"), "--quit-at has the last value given");
    fuzz_check(args_ui_scale() == last_value(words, "--ui-scale"), "--ui-scale has the last value given");
    fuzz_check(args_ui_scale() >= 0 && args_ui_scale() <= UI_SCALE_MAX, "the UI scale is in its range");
    int width = 0, height = 0;
    const bool given = args_window_size(&width, &height);
    fuzz_check(given == (width > 0 && height > 0), "a window size is positive or not given");
    fuzz_note(width, height, args_config_save_enabled());
    if (given) fuzz_check(width == last_value(words, "--window-size"), "the window's width has the last value given");
}

int fuzz_args(const uint8_t *data, size_t size) {
    fuzz_start();
    std::vector<std::string> words = split_words(data, size);
    std::vector<char *> argv;
    for (std::string &word : words) argv.push_back(word.data());
    const ArgsResult result = args_parse(static_cast<int>(argv.size()), argv.data());
    fuzz_note(result);
    fuzz_check((result == ARGS_FAILED) == (fuzz_logged_errors() > 0), "a rejected command line is reported");
    if (result == ARGS_RUN) check_values(words);
    if (result == ARGS_RUN && args_start_screen())
        fuzz_check(std::strlen(args_start_screen()) < size, "a string is not truncated");
    char *none[] = {argv[0], nullptr};
    args_parse(1, none); // drops pointers into this run's words
    return 0;
}
