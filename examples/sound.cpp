// sound: effects generated from a seed. Left and Right select the preset, jump (Space) the next seed.

#include "lumarind/lumarind.h"

static int preset;
static Uint64 seed;
static MIX_Audio *sound;
static float *samples; // of the same sound, for drawing
static int sample_count;
static char label[64];

static bool make_sound() {
    audio_free(&sound);
    SDL_free(samples);
    sample_count = sfx_render(preset, seed, &samples);
    sound = sfx_generate(preset, seed); // the same preset and seed: the same sound, on every machine
    SDL_snprintf(label, sizeof label, "%s, seed %d", sfx_preset_name(preset), static_cast<int>(seed));
    if (!sound || !samples) return false;
    audio_play_sfx(sound); // returns false if all sixteen tracks are busy, which is not an error
    return true;
}

static bool setup() {
    preset = SFX_EXPLOSION;
    seed = 5;
    return make_sound();
}

static void tick() {
    const int direction = input_pressed(INPUT_ACTION_RIGHT) - input_pressed(INPUT_ACTION_LEFT);
    preset = (preset + direction + SFX_PRESET_COUNT) % SFX_PRESET_COUNT;
    if (input_pressed(INPUT_ACTION_JUMP)) seed++;
    if (direction != 0 || input_pressed(INPUT_ACTION_JUMP)) make_sound();

    SDL_Renderer *renderer = engine_renderer();
    fill_rect(renderer, nullptr, rgba(22, 24, 40, 255));
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    const int bars = static_cast<int>(width - 80) / 4, span = sample_count / bars + 1;
    for (int bar = 0; bar < bars; bar++) { // its loudness over time
        float peak = 0;
        for (int i = bar * span; i < (bar + 1) * span && i < sample_count; i++) peak = SDL_max(peak, samples[i]);
        const SDL_FRect column = {40 + 4 * static_cast<float>(bar), height * 0.55f - 250 * peak, 3, 500 * peak + 1};
        fill_rect(renderer, &column, rgba(230, 160, 80, 255));
    }
    engine_draw_text(engine_get_font_by_index(SHARED_FONT_UI), label, 40, 30, {240, 226, 190, 255});
}

static void cleanup() {
    audio_free(&sound);
    SDL_free(samples);
    samples = nullptr;
}

static constexpr GameScreen SCREENS[] = {{"sounds", {.setup = setup, .tick = tick, .cleanup = cleanup}}};

static const Game game = {
    .title = "A sound from a seed",
    .id = "sound",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .ui_font = "assets/fonts/EuroStyle Normal.ttf",
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
