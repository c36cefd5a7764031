// args: command-line options. Parsed once at start, then queried by the modules they concern; needs no setup.
#pragma once

enum ArgsResult {
    ARGS_RUN = 0,
    ARGS_HELP = 1,   // the usage was printed; exit with success
    ARGS_FAILED = 2, // the error was logged and the usage printed; exit with failure
};

// Resets the record, then applies the options in order. Strings are borrowed from argv. The last occurrence of an
// option wins; help stops parsing.
ArgsResult args_parse(int argc, char *argv[]);
void args_print_usage(); // to standard output

// Returns the value after argv[*index] and advances the index. Reports an error if there is none.
const char *args_take_value(const char *option, int argc, char *argv[], int *index);
// Parses a number above 0 as SDL_sscanf's "%d" does: trailing text is ignored, and numbers too large for 32 bits wrap
// around. Reports errors.
bool args_take_positive_int(const char *option, const char *value, int *out);

// --- queries: 0 or null if not given ---
bool args_config_save_enabled();
const char *args_start_screen();
int args_capture_at();
int args_capture_every();
int args_quit_at();
int args_ui_scale();

// Overrides the options by a recording's values; nothing is saved. The string is borrowed.
void args_take_recorded(const char *screen, int window_width, int window_height, int ui_scale);

bool args_window_size(int *width, int *height); // false, writing nothing, if not given; outputs may be null
