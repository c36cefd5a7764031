// error: the report of a failure and the last failure's text. Main thread only.
// Reports work at any time; the text is kept only while a slot is attached, which the engine does for its whole life.
#pragma once

#include <SDL3/SDL_stdinc.h>

// Logs the printf-style message at error priority and keeps it as the error text, replacing the one before.
// Always false, so that a failing operation is one line: return engine_error("[TAG] ...", ...).
// The arguments may include SDL_GetError() and engine_get_error().
bool engine_error(SDL_PRINTF_FORMAT_STRING const char *fmt, ...) SDL_PRINTF_VARARG_FUNC(1);

void engine_clear_error();
const char *engine_get_error(); // null when there is none; valid until the next report
bool engine_has_error();

// Where the text is kept: a slot the caller owns and frees with SDL_free after detaching (null).
void engine_error_attach(char **slot);
