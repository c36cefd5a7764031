// Cost of submitting 2,000 sprites of one sheet to the renderer, single and batched, compared with direct SDL calls
// that draw the same picture. Only submission is timed, not the drawing that follows. The two loops alternate, and
// times_bare is the ratio of their medians.

#include "engine/setup.h"
#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/sprite_batch.h"
#include "lumarind/toolkit/sprite_sheet.h"
#include "player/fireknight.h"

#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_render.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <vector>

namespace {

constexpr int SPRITES = 2000;

struct Driver {
    const char *name, *video, *renderer;
};
constexpr Driver DRIVERS[] = {{"software", "dummy", "software"}, {"opengl", "offscreen", "opengl"}};

class Crowd {
public:
    explicit Crowd(const Driver &driver) {
        SDL_SetLogOutputFunction([](void *, int, SDL_LogPriority, const char *) {}, nullptr);
        SDL_SetHintWithPriority(SDL_HINT_VIDEO_DRIVER, driver.video, SDL_HINT_OVERRIDE);
        SDL_SetHintWithPriority(SDL_HINT_AUDIO_DRIVER, "dummy", SDL_HINT_OVERRIDE);
        SDL_SetHintWithPriority(SDL_HINT_RENDER_DRIVER, driver.renderer, SDL_HINT_OVERRIDE);
        if (!engine_start("bench")) return;
        renderer = engine_renderer();
        SDL_SetRenderVSync(renderer, 0);
        sheet = sprite_sheet_new(renderer, &fireknight_animations);
        batch = sprite_batch_new(SPRITES);
        for (int i = 0; i < SPRITES; i++) {
            animation_init(&animations[i], &fireknight_animations, i % FIREKNIGHT_CLIP_COUNT);
            animations[i].frame = i % 3;
            places[i] = {static_cast<float>(i * 37 % 700), static_cast<float>(i * 91 % 400)};
        }
    }
    ~Crowd() {
        sprite_batch_cleanup(&batch);
        sprite_sheet_cleanup(&sheet);
        engine_stop();
        for (const char *hint : {SDL_HINT_VIDEO_DRIVER, SDL_HINT_AUDIO_DRIVER, SDL_HINT_RENDER_DRIVER})
            SDL_ResetHint(hint);
    }
    Crowd(const Crowd &) = delete;
    Crowd &operator=(const Crowd &) = delete;

    // One source rectangle per frame, as in a program written for this sheet.
    SDL_FRect source(int i) const {
        const AnimationClip *clip = &fireknight_animations.clips[animations[i].clip];
        const int frame = clip->first_frame + animations[i].frame;
        return {static_cast<float>(288 * (frame % 28)), static_cast<float>(128 * (frame / 28)), 288, 128};
    }

    void draw_bare() const {
        for (int i = 0; i < SPRITES; i++) {
            const SDL_FRect src = source(i), dst = {places[i].x, places[i].y, 288, 128};
            SDL_RenderTexture(renderer, sheet->texture, &src, &dst);
        }
    }
    void draw_sheet() const {
        for (int i = 0; i < SPRITES; i++) {
            sprite_sheet_draw(renderer, sheet, &animations[i], places[i], 1, SDL_FLIP_NONE);
        }
    }
    void draw_bare_geometry() {
        const float w = static_cast<float>(sheet->texture->w), h = static_cast<float>(sheet->texture->h);
        constexpr SDL_FColor WHITE = {1, 1, 1, 1};
        bare_vertices.resize(SPRITES * 4);
        bare_indices.resize(SPRITES * 6);
        for (int i = 0; i < SPRITES; i++) {
            const SDL_FRect src = source(i), dst = {places[i].x, places[i].y, 288, 128};
            SDL_Vertex *v = &bare_vertices[static_cast<size_t>(i) * 4];
            v[0] = {{dst.x, dst.y}, WHITE, {src.x / w, src.y / h}};
            v[1] = {{dst.x + dst.w, dst.y}, WHITE, {(src.x + src.w) / w, src.y / h}};
            v[2] = {{dst.x + dst.w, dst.y + dst.h}, WHITE, {(src.x + src.w) / w, (src.y + src.h) / h}};
            v[3] = {{dst.x, dst.y + dst.h}, WHITE, {src.x / w, (src.y + src.h) / h}};
            constexpr int TWO_TRIANGLES[] = {0, 1, 2, 0, 2, 3};
            for (size_t k = 0; k < 6; k++) bare_indices[static_cast<size_t>(i) * 6 + k] = i * 4 + TWO_TRIANGLES[k];
        }
        const SDL_Vertex *first = bare_vertices.data();
        SDL_RenderGeometryRaw(
            renderer, sheet->texture, &first->position.x, sizeof *first, &first->color, sizeof *first,
            &first->tex_coord.x, sizeof *first, SPRITES * 4, bare_indices.data(), SPRITES * 6, sizeof(int));
    }
    void draw_batch() const {
        sprite_batch_begin(batch, sheet);
        for (int i = 0; i < SPRITES; i++) sprite_batch_add(batch, &animations[i], places[i], 1, SDL_FLIP_NONE);
        sprite_batch_draw(renderer, batch);
    }

    SDL_Renderer *renderer = nullptr;
    SpriteSheet *sheet = nullptr;
    SpriteBatch *batch = nullptr;
    Animation animations[SPRITES] = {};
    SDL_FPoint places[SPRITES] = {};
    std::vector<SDL_Vertex> bare_vertices;
    std::vector<int> bare_indices;
};

double median(std::vector<double> *values) {
    const auto middle = values->begin() + static_cast<std::ptrdiff_t>(values->size() / 2);
    std::nth_element(values->begin(), middle, values->end());
    return *middle;
}

double thread_seconds() { // CPU time, hardly affected by other processes
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

template <typename Work> double seconds(SDL_Renderer *renderer, Work work) {
    const double begin = thread_seconds();
    work();
    const double end = thread_seconds();
    SDL_SetRenderClipRect(renderer, nullptr);
    SDL_RenderPresent(renderer); // executes the drawing, not timed
    return end - begin;
}

template <typename Bare, typename Ours> void compare(benchmark::State &state, Bare bare, Ours ours) {
    const Driver &driver = DRIVERS[state.range(0)];
    auto crowd = std::make_unique<Crowd>(driver);
    if (!crowd->sheet || !crowd->batch) return state.SkipWithError("no renderer");
    state.SetLabel(driver.name);
    // Clipped to one pixel: measures submission, not filling 74 million pixels.
    const SDL_Rect corner = {0, 0, 1, 1};
    std::vector<double> bare_times, our_times;
    for (auto _ : state) {
        SDL_SetRenderClipRect(crowd->renderer, &corner);
        bare_times.push_back(seconds(crowd->renderer, [&] { bare(*crowd); }));
        SDL_SetRenderClipRect(crowd->renderer, &corner);
        our_times.push_back(seconds(crowd->renderer, [&] { ours(*crowd); }));
        state.SetIterationTime(our_times.back());
    }
    const double ours_median = median(&our_times), bare_median = median(&bare_times);
    state.counters["us_bare"] = bare_median * 1e6;
    state.counters["times_bare"] = ours_median / bare_median;
}

void sprite_sheet_draw_2000(benchmark::State &state) {
    compare(state, [](Crowd &c) { c.draw_bare(); }, [](Crowd &c) { c.draw_sheet(); });
}
BENCHMARK(sprite_sheet_draw_2000)->DenseRange(0, 1)->UseManualTime()->Iterations(400)->Unit(benchmark::kMicrosecond);

void sprite_batch_2000(benchmark::State &state) {
    compare(state, [](Crowd &c) { c.draw_bare_geometry(); }, [](Crowd &c) { c.draw_batch(); });
}
BENCHMARK(sprite_batch_2000)->DenseRange(0, 1)->UseManualTime()->Iterations(400)->Unit(benchmark::kMicrosecond);

void sprite_batch_2000_against_copies(benchmark::State &state) {
    compare(state, [](Crowd &c) { c.draw_bare(); }, [](Crowd &c) { c.draw_batch(); });
}
BENCHMARK(sprite_batch_2000_against_copies)
    ->DenseRange(0, 1)
    ->UseManualTime()
    ->Iterations(400)
    ->Unit(benchmark::kMicrosecond);

} // namespace
