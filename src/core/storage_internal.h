// What the storage module's tests reach into.
#pragma once

struct SDL_Storage;

struct StorageState {
    SDL_Storage *game; // owned
    SDL_Storage *user; // owned
};
namespace lumarind {
extern StorageState *storage; // null: not set up
}
using lumarind::storage;

bool storage_setup_game();
bool storage_setup_user();
