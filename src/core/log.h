// log: writes every message of SDL's log to <id>.log as well, <id> being the game's, among the user's files.
// The file is made anew by each setup and flushed after every line. SDL's own output goes on as before.
#pragma once

void log_setup();   // safe twice. A file that cannot be opened is no failure: SDL's output goes on alone
void log_cleanup(); // safe twice, and without setup
