// files_internal: setup of the root folders used by files.h, for the main loop, storage and tests.
#pragma once

// Resolves both root folders as Game::files says, relative to the current folder at this time. Returns false, without
// logging, if there is no folder for the user's files (see SDL_GetError). Before setup both are the current folder.
bool files_setup();
void files_cleanup();
void files_log(); // logs the asset root, or the folders searched; nothing if the game uses the current folder

const char *files_asset_root(); // ends with a slash, or is empty for the current folder
