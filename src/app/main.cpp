// The entry points of the demonstration program.

#include "app/demo_game.h"
#include "lumarind/engine/game.h"

#define SDL_MAIN_HANDLED // the entry points are defined below
#include <SDL3/SDL_main.h>

extern "C" int SDL_main(int argc, char *argv[]) { return engine_run(&demo_game, argc, argv); }

#ifdef _WIN32
#include <windows.h>

// SDL_RunApp reads the arguments from the process's command line.
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) { return SDL_RunApp(0, nullptr, SDL_main, nullptr); }
#else
int main(int argc, char *argv[]) { return SDL_RunApp(argc, argv, SDL_main, nullptr); }
#endif
