// The folders behind files.h: for the main loop, the storage and tests.
#pragma once

// Finds the folders by the game's rule; the working folder is asked for now. False, and nothing logged yet: there is no
// folder for the user's files; SDL's error says why. Without setup both are the current folder.
bool files_setup();
void files_cleanup();
void files_log(); // where assets are read, and where was looked; nothing for a game in the current folder

const char *files_asset_root(); // ends with a slash, or is empty for the current folder
