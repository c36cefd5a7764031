// log: writes every message of SDL's log to lumarind-engine.log in the current directory as well.
// The file is made anew by each setup and flushed after every line. SDL's own output goes on as before.
#pragma once

void log_setup();   // safe twice. A file that cannot be opened is no failure: SDL's output goes on alone
void log_cleanup(); // safe twice, and without setup
