// error: error reporting and the text of the last error. Main thread only.
// Errors are always logged; the text is stored only while a slot is attached, as it is while the engine runs.
#pragma once

#include <SDL3/SDL_stdinc.h>

// Logs the printf-style message at error priority and stores it as the error text, replacing the previous one.
// Always returns false, so that a failing function needs one line: return engine_error("[TAG] ...", ...).
// The arguments may include SDL_GetError() and engine_get_error().
bool engine_error(SDL_PRINTF_FORMAT_STRING const char *fmt, ...) SDL_PRINTF_VARARG_FUNC(1);

void engine_clear_error();
const char *engine_get_error(); // null if there is none; valid until the next error is reported
bool engine_has_error();

// Sets the slot that stores the text. The caller owns it, detaches it with null and then frees the text with SDL_free.
void engine_error_attach(char **slot);
