// Baseline for the program's start-up time and memory: a minimal SDL program with the same window, renderer, mixer and
// font that draws a line of text. With "placed" it also waits for its window's position, as the program does.
//   lumarind_bare FRAMES [placed]

#include <SDL3/SDL.h>
#include <SDL3_mixer/SDL_mixer.h>
#include <SDL3_ttf/SDL_ttf.h>

#include <cstdlib>

struct Bare {
    SDL_Window *window;
    SDL_Renderer *renderer;
    MIX_Mixer *mixer;
    TTF_Font *font;
    TTF_TextEngine *text_engine;
    TTF_Text *text;
};

static bool open(Bare *bare) {
    if (!SDL_Init(SDL_INIT_VIDEO) || !MIX_Init() || !TTF_Init()) return false;
    bare->mixer = MIX_CreateMixerDevice(SDL_AUDIO_DEVICE_DEFAULT_PLAYBACK, nullptr);
    bare->window = SDL_CreateWindow("bare", 800, 450, SDL_WINDOW_RESIZABLE | SDL_WINDOW_HIGH_PIXEL_DENSITY);
    bare->renderer = SDL_CreateRenderer(bare->window, nullptr);
    bare->font = TTF_OpenFont("assets/fonts/EuroStyle Normal.ttf", 32);
    bare->text_engine = TTF_CreateRendererTextEngine(bare->renderer);
    bare->text = TTF_CreateText(bare->text_engine, bare->font, "Hello", 0);
    return bare->mixer && bare->renderer && bare->text;
}

static void place(SDL_Window *window) {
    SDL_SyncWindow(window);
    SDL_SetWindowPosition(window, 200, 400);
    SDL_SyncWindow(window);
}

int main(int argc, char *argv[]) {
    Bare bare = {};
    if (!open(&bare)) return 1;
    if (argc > 2 && SDL_strcmp(argv[2], "placed") == 0) place(bare.window);
    for (int frames = argc > 1 ? std::atoi(argv[1]) : 60; frames > 0; frames--) {
        SDL_Event event = {};
        while (SDL_PollEvent(&event)) {
        }
        SDL_RenderClear(bare.renderer);
        TTF_DrawRendererText(bare.text, 20, 20);
        SDL_RenderPresent(bare.renderer);
    }
    return 0; // the operating system releases everything
}
