// music: looping music and effects. Click: the horizontal position sets the pan, the vertical one the pitch. P pauses.

#include "lumarind/lumarind.h"

static MIX_Audio *music;
static SharedSound *chime;           // cached; with LUMARIND_RELOAD=1 reloaded when its file changes
static float last_x, last_y, ripple; // of the last click
static bool paused;

static void play_at(float x, float y) {
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    const float octaves = 1 - 2 * y / height; // one up at the top, one down at the bottom
    audio_play_sfx_with(chime->audio, {.pitch = SDL_powf(2, octaves), .pan = 2 * x / width - 1});
    last_x = x;
    last_y = y;
    ripple = 0;
}

static bool mouse_down(SDL_Event *event) {
    play_at(event->button.x, event->button.y);
    return true;
}

static bool setup() {
    music = audio_load("assets/audio/music/FluffyTail.ogg", false); // streamed
    chime = sound_store_get("assets/audio/sfx/retro/sfx_coin_single1.wav");
    if (!music || !chime || !audio_play_music(music, 1000)) return false;
    play_at(560, 130);
    return engine_add_callback(SDL_EVENT_MOUSE_BUTTON_DOWN, mouse_down);
}

static void tick() {
    if (input_pressed(INPUT_ACTION_PAUSE)) audio_pause_music(paused = !paused);
    SDL_Renderer *renderer = engine_renderer();
    fill_rect(renderer, nullptr, rgba(20, 26, 44, 255));
    float width = 0, height = 0;
    engine_view_size(&width, &height);
    for (int line = 1; line < 8; line++) { // a stave: the pitch rises towards the top
        const SDL_FRect stave = {0, height * static_cast<float>(line) / 8, width, line == 4 ? 2.0f : 1.0f};
        fill_rect(renderer, &stave, rgba(52, 62, 96, 255));
    }
    ripple = SDL_min(ripple + 60 * static_cast<float>(engine_fps_delta()), 60);
    for (float r = ripple; r > 0; r -= 12) outline_circle(renderer, last_x, last_y, r, rgba(255, 190, 90, 255));
    fill_circle(renderer, last_x, last_y, 6, rgba(255, 226, 160, 255));
    TTF_Font *font = engine_get_font_by_index(SHARED_FONT_UI);
    engine_draw_text(font, "Click to play. P pauses the music.", 30, height - 50, {240, 226, 190, 255});
}

static void cleanup() {
    engine_remove_callback(SDL_EVENT_MOUSE_BUTTON_DOWN, mouse_down);
    audio_stop_music(0);
    sound_store_release(chime);
    audio_free(&music);
}

static constexpr GameScreen SCREENS[] = {{"room", {.setup = setup, .tick = tick, .cleanup = cleanup}}};

static const Game game = {
    .title = "Music and effects",
    .id = "music",
    .organisation = "lumarind-examples",
    .screens = SCREENS,
    .screen_count = 1,
    .ui_font = "assets/fonts/EuroStyle Normal.ttf",
    .ui_font_size = 20,
};

int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
