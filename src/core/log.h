// log: copies SDL's log to the file <id>.log in the user's folder, with the game's id.
// Setup truncates the file; each line is flushed. SDL's own log output continues.
#pragma once

void log_setup();   // safe to call twice. If the file cannot be opened, only SDL's own output remains
void log_cleanup(); // safe to call twice, and without setup
