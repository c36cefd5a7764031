// Cost of a map of any size: loads it, draws its first frame and pans it, in a window of 1280 × 720.
//   lumarind_world make FILE COLS ROWS   writes a map of this size beside the executable
//   lumarind_world show FILE FRAMES      prints one line each: first <ms>, firstcpu <ms of CPU time>, median <us>,
//   p99 <us>, memory <KiB>
// Frames are measured in CPU time of all threads, including deferred drawing.

#include "bench/repeated_castle.h"
#include "lumarind/core/storage.h"
#include "lumarind/toolkit/tile_world.h"

#include <SDL3/SDL.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <vector>

static constexpr int WIDTH = 1280, HEIGHT = 720;
static constexpr float SCALE = 3, SPEED_X = 3, SPEED_Y = 1; // speeds in world pixels per frame

static double processor_us() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

static long peak_kib() {
    char line[256];
    long kib = 0;
    std::FILE *status = std::fopen("/proc/self/status", "r");
    while (status && std::fgets(line, sizeof line, status)) std::sscanf(line, "VmHWM: %ld", &kib);
    if (status) std::fclose(status);
    return kib;
}

// A triangle wave between 0 and `end`.
static float triangle_wave(float distance, float end) {
    const float at = SDL_fmodf(distance, 2 * end);
    return at < end ? at : 2 * end - at;
}

static bool draw_frame(SDL_Renderer *renderer, TileWorld *world, int frame) {
    const float w = WIDTH / SCALE, h = HEIGHT / SCALE, step = static_cast<float>(frame);
    const float slack_x = static_cast<float>(world->cols * world->tile_w) - w;
    const float slack_y = static_cast<float>(world->rows * world->tile_h) - h;
    const TileWorldView view = {
        {triangle_wave(step * SPEED_X, slack_x), triangle_wave(step * SPEED_Y, slack_y), w, h}, SCALE};
    const SDL_Rect corner = {0, 0, 1, 1};
    tile_world_advance(world, 1 / 60.0);
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
    if (!tile_world_draw(renderer, world, &view)) return false;
    SDL_DestroySurface(SDL_RenderReadPixels(renderer, &corner)); // waits until drawing is complete
    return SDL_RenderPresent(renderer);
}

static int show(const char *file, int frames) {
    SDL_Window *window = SDL_Init(SDL_INIT_VIDEO) ? SDL_CreateWindow("world", WIDTH, HEIGHT, 0) : nullptr;
    SDL_Renderer *renderer = SDL_CreateRenderer(window, nullptr);
    if (!renderer || !storage_setup()) return 1;
    const Uint64 begin = SDL_GetTicksNS();
    const double began_us = processor_us();
    TileWorld *world = tile_world_load(renderer, file);
    if (!world || !draw_frame(renderer, world, 0)) return 1;
    std::printf("first %f\n", static_cast<double>(SDL_GetTicksNS() - begin) / 1e6);
    std::printf("firstcpu %f\n", (processor_us() - began_us) / 1e3);
    std::vector<double> times;
    for (int frame = 1; frame <= frames; frame++) {
        SDL_Event event = {};
        while (SDL_PollEvent(&event)) {
        }
        const double before = processor_us();
        if (!draw_frame(renderer, world, frame)) return 1;
        times.push_back(processor_us() - before);
    }
    std::sort(times.begin(), times.end());
    std::printf("median %f\np99 %f\n", times[times.size() / 2], times[times.size() * 99 / 100]);
    std::printf("memory %ld\n", peak_kib());
    tile_world_cleanup(&world);
    storage_cleanup();
    SDL_DestroyRenderer(renderer);
    SDL_Quit();
    return 0;
}

int main(int argc, char *argv[]) {
    if (argc == 5 && std::strcmp(argv[1], "make") == 0) {
        return write_repeated_castle(argv[2], std::atoi(argv[3]), std::atoi(argv[4])) ? 0 : 1;
    }
    return argc == 4 && std::strcmp(argv[1], "show") == 0 ? show(argv[2], SDL_max(std::atoi(argv[3]), 1)) : 2;
}
