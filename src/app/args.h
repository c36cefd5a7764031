// args: the parsed command line. Parsed once at start, read by whoever an option concerns; needs no setup.
#pragma once

enum ArgsResult {
    ARGS_RUN = 0,
    ARGS_HELP = 1,   // the usage was printed; leave successfully
    ARGS_FAILED = 2, // the reason was logged and the usage printed
};

// Resets the record, then takes the options in order. Texts are borrowed from argv. A repeated option's last value
// counts; help ends the parsing at once.
ArgsResult args_parse(int argc, char *argv[]);
void args_print_usage(); // to standard output

// The value after option argv[*index], advancing the index; null: reported as missing.
const char *args_take_value(const char *option, int argc, char *argv[], int *index);
// Reads a number above 0 into *out, as SDL_sscanf reads it with "%d": text behind the number is ignored, and of one too
// large for 32 bits the lowest 32 count. False: reported.
bool args_take_positive_int(const char *option, const char *value, int *out);

// --- questions: 0 or null when not given ---
bool args_config_save_enabled();
const char *args_start_screen();
int args_capture_at();
int args_capture_every();
int args_quit_at();
int args_ui_scale();

// Takes from now on what a recording was made with, whatever the command line says; nothing is saved. The text is
// borrowed.
void args_take_recorded(const char *screen, int window_width, int window_height, int ui_scale);

bool args_window_size(int *width, int *height); // false, and nothing written, when not given; either may be null
