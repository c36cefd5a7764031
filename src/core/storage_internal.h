// storage_internal: the storage module's state, for its tests.
#pragma once

struct SDL_Storage;

struct StorageState {
    SDL_Storage *game; // owned
    SDL_Storage *user; // owned
};
namespace lumarind {
extern StorageState *storage; // null before setup
}
using lumarind::storage;

bool storage_setup_game();
bool storage_setup_user();
