// Shows all uses of the audio module: streamed music with fades, effects from files and from the synthesiser, and the
// configured volumes. One table of rows decides what is loaded, shown and played.

#include "screens/audio_demo.h"

#include "lumarind/audio/audio.h"
#include "lumarind/audio/sfx.h"
#include "lumarind/core/error.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"
#include "lumarind/input/input.h"
#include "lumarind/toolkit/primitives.h"

#include <SDL3/SDL_audio.h>
#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

#include <iterator>

static constexpr const char *TITLE = "Audio Demo";
static constexpr SDL_Color TITLE_COLOR = {208, 220, 230, 255};
static constexpr Uint32 COLOR_BACKGROUND = rgba(20, 24, 30, 255);
static constexpr Uint32 COLOR_IDLE = rgba(42, 49, 60, 255);
static constexpr Uint32 COLOR_ACTIVE = rgba(120, 216, 254, 255);
static constexpr Uint32 COLOR_FLASH = rgba(255, 193, 7, 255);
static constexpr Uint32 COLOR_TEXT = rgba(208, 220, 230, 255);
static constexpr Uint32 COLOR_TEXT_DIM = rgba(112, 124, 136, 255);

static constexpr int MUSIC_FADE_IN_MS = 1000, MUSIC_FADE_OUT_MS = 500;
static constexpr double FLASH_SECONDS = 0.2;
static constexpr float VOLUME_STEP = 0.1f;
static constexpr int VOLUME_SEGMENTS = 10;
static constexpr Uint64 FIRST_SEED = 1;

// Layout, in units of the view.
static constexpr float MARGIN = 16;
static constexpr float DRIVER_TOP = 54;
static constexpr float ROWS_TOP = 78, ROW_PITCH = 12, GROUP_GAP = 8;
static constexpr float LABEL_INDENT = 12, VALUE_INDENT = 112;
static constexpr float BAR_OVERHANG_X = 4, BAR_OVERHANG_Y = 2; // how far the selection bar extends beyond its row
static constexpr float SEGMENT_WIDTH = 6, SEGMENT_HEIGHT = 8, SEGMENT_PITCH = 8, VOLUME_NUMBER_INDENT = 86;
static constexpr float FOOTER_RISE = 24;

enum AudioRowKind { AUDIO_ROW_MUSIC, AUDIO_ROW_VOLUME, AUDIO_ROW_GENERATED, AUDIO_ROW_SOUND };

struct AudioDemoRow {
    int column = 0; // 0 left, 1 right
    const char *heading = "";
    AudioRowKind kind = AUDIO_ROW_MUSIC;
    const char *label = nullptr; // null: the preset's name
    const char *path = nullptr;  // null: no file
    int value = 0;               // AudioBus of a volume, SfxPreset of a generated sound
};
static constexpr int COLUMNS = 2;
static constexpr const char *HEADING_MUSIC = "MUSIC";
static constexpr const char *HEADING_VOLUME = "VOLUME";
static constexpr const char *HEADING_GENERATED = "GENERATED  sfxr presets";
static constexpr const char *HEADING_INTERFACE = "INTERFACE  by this project's generators, OGG";
static constexpr const char *HEADING_RETRO = "RETRO  by this project's generators, WAV";

static constexpr AudioDemoRow _music_row(const char *path) {
    return {.heading = HEADING_MUSIC, .kind = AUDIO_ROW_MUSIC, .label = "FluffyTail", .path = path};
}
static constexpr AudioDemoRow _volume_row(const char *label, AudioBus bus) {
    return {.heading = HEADING_VOLUME, .kind = AUDIO_ROW_VOLUME, .label = label, .value = bus};
}
static constexpr AudioDemoRow _generated_row(SfxPreset preset) {
    return {.heading = HEADING_GENERATED, .kind = AUDIO_ROW_GENERATED, .value = preset};
}
static constexpr AudioDemoRow _sound_row(const char *heading, const char *label, const char *path) {
    return {.column = 1, .heading = heading, .kind = AUDIO_ROW_SOUND, .label = label, .path = path};
}
static constexpr AudioDemoRow rows[] = {
    _music_row("assets/audio/music/FluffyTail.ogg"),
    _music_row("assets/audio/music/FluffyTail.mp3"),
    _volume_row("Master", AUDIO_BUS_MASTER),
    _volume_row("Music", AUDIO_BUS_MUSIC),
    _volume_row("Effects", AUDIO_BUS_SFX),
    _generated_row(SFX_COIN),
    _generated_row(SFX_LASER),
    _generated_row(SFX_EXPLOSION),
    _generated_row(SFX_POWERUP),
    _generated_row(SFX_HIT),
    _generated_row(SFX_JUMP),
    _generated_row(SFX_BLIP),
    _sound_row(HEADING_INTERFACE, "Click", "assets/audio/sfx/interface/click_001.ogg"),
    _sound_row(HEADING_INTERFACE, "Select", "assets/audio/sfx/interface/select_001.ogg"),
    _sound_row(HEADING_INTERFACE, "Back", "assets/audio/sfx/interface/back_001.ogg"),
    _sound_row(HEADING_INTERFACE, "Confirm", "assets/audio/sfx/interface/confirmation_001.ogg"),
    _sound_row(HEADING_INTERFACE, "Error", "assets/audio/sfx/interface/error_001.ogg"),
    _sound_row(HEADING_RETRO, "Jump", "assets/audio/sfx/retro/sfx_movement_jump1.wav"),
    _sound_row(HEADING_RETRO, "Coin", "assets/audio/sfx/retro/sfx_coin_single1.wav"),
    _sound_row(HEADING_RETRO, "Hit", "assets/audio/sfx/retro/sfx_damage_hit1.wav"),
    _sound_row(HEADING_RETRO, "Explosion", "assets/audio/sfx/retro/sfx_exp_short_hard1.wav"),
    _sound_row(HEADING_RETRO, "Laser", "assets/audio/sfx/retro/sfx_wpn_laser1.wav"),
    _sound_row(HEADING_RETRO, "Fanfare", "assets/audio/sfx/retro/sfx_sounds_fanfare1.wav"),
};
static constexpr int ROW_COUNT = static_cast<int>(std::size(rows));

struct AudioDemo {
    TTF_Text *title;              // owned
    MIX_Audio *sounds[ROW_COUNT]; // owned; null for volume rows, and where generating failed
    Uint64 seeds[ROW_COUNT];      // of the generated rows
    double flash[ROW_COUNT];      // s left
    int selected;
    int music_row; // the row whose music was started last, or -1
};
static AudioDemo *audio_demo;

// --- sounds ---

static bool audio_demo_generate(int row) {
    audio_free(&audio_demo->sounds[row]);
    audio_demo->sounds[row] = sfx_generate(rows[row].value, audio_demo->seeds[row]);
    return audio_demo->sounds[row] != nullptr;
}

static bool _audio_demo_load(int row) {
    switch (rows[row].kind) {
    case AUDIO_ROW_VOLUME:
        return true;
    case AUDIO_ROW_GENERATED:
        audio_demo->seeds[row] = FIRST_SEED;
        return audio_demo_generate(row);
    case AUDIO_ROW_MUSIC:
    case AUDIO_ROW_SOUND:
        break;
    }
    audio_demo->sounds[row] = audio_load(rows[row].path, rows[row].kind == AUDIO_ROW_SOUND);
    return audio_demo->sounds[row] != nullptr;
}

static void audio_demo_play(int row) {
    if (!audio_demo->sounds[row]) return;
    audio_play_sfx(audio_demo->sounds[row]); // the row flashes also if no track is free
    audio_demo->flash[row] = FLASH_SECONDS;
}

static bool audio_demo_music_is(int row) { return audio_demo->music_row == row && audio_music_playing(); }

static void audio_demo_toggle_music(int row) {
    if (audio_demo_music_is(row)) {
        audio_stop_music(MUSIC_FADE_OUT_MS);
        audio_demo->music_row = -1;
    } else if (audio_play_music(audio_demo->sounds[row], MUSIC_FADE_IN_MS)) {
        audio_demo->music_row = row;
    }
}

// --- lifetime ---

bool audio_demo_setup() {
    if (audio_demo) return true;
    audio_demo = static_cast<AudioDemo *>(SDL_calloc(1, sizeof *audio_demo));
    if (!audio_demo) return engine_error("[AUDIO_DEMO] Memory allocation failed, error: %s", SDL_GetError());
    audio_demo->music_row = -1;
    audio_demo->title = engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI), TITLE, 0, TITLE_COLOR);
    if (!audio_demo->title) return false;
    for (int row = 0; row < ROW_COUNT; row++) {
        if (!_audio_demo_load(row)) return false;
    }
    audio_demo_toggle_music(0);
    return true;
}

void audio_demo_cleanup() {
    if (!audio_demo) return;
    audio_stop_music(MUSIC_FADE_OUT_MS); // the mixer keeps a reference to sounds that still play
    for (MIX_Audio *&sound : audio_demo->sounds) audio_free(&sound);
    engine_cleanup_text(&audio_demo->title);
    SDL_free(audio_demo);
    audio_demo = nullptr;
}

// --- simulation ---

static void _audio_demo_change_seed(int row, int dir) {
    if (dir < 0 && audio_demo->seeds[row] == 0) return;
    audio_demo->seeds[row] += static_cast<Uint64>(dir); // wraps around modulo 2^64
    if (audio_demo_generate(row)) audio_demo_play(row);
}

static void audio_demo_change(int row, int dir) {
    if (rows[row].kind == AUDIO_ROW_GENERATED) _audio_demo_change_seed(row, dir);
    if (rows[row].kind != AUDIO_ROW_VOLUME) return;
    const auto bus = static_cast<AudioBus>(rows[row].value);
    audio_set_volume(bus, audio_volume(bus) + VOLUME_STEP * static_cast<float>(dir));
}

void audio_demo_fixed_update(double dt) {
    for (double &flash : audio_demo->flash) {
        if (flash > 0) flash -= dt;
    }
    int *selected = &audio_demo->selected;
    if (input_pressed(INPUT_ACTION_UP)) *selected = (*selected + ROW_COUNT - 1) % ROW_COUNT;
    if (input_pressed(INPUT_ACTION_DOWN)) *selected = (*selected + 1) % ROW_COUNT;
    if (input_pressed(INPUT_ACTION_LEFT)) audio_demo_change(*selected, -1);
    if (input_pressed(INPUT_ACTION_RIGHT)) audio_demo_change(*selected, 1);
    if (!input_pressed(INPUT_ACTION_JUMP)) return;
    if (rows[*selected].kind == AUDIO_ROW_MUSIC) {
        audio_demo_toggle_music(*selected);
    } else {
        audio_demo_play(*selected);
    }
}

// --- drawing ---

static const char *audio_demo_file_name(const char *path) {
    const char *slash = SDL_strrchr(path, '/');
    return slash ? slash + 1 : path;
}

static void audio_demo_draw_volume(SDL_Renderer *renderer, float x, float y, float volume) {
    const int lit = static_cast<int>(SDL_roundf(volume * VOLUME_SEGMENTS));
    for (int k = 0; k < VOLUME_SEGMENTS; k++) {
        const SDL_FRect segment = {x + SEGMENT_PITCH * static_cast<float>(k), y, SEGMENT_WIDTH, SEGMENT_HEIGHT};
        fill_rect(renderer, &segment, k < lit ? COLOR_ACTIVE : COLOR_IDLE);
    }
    draw_text(renderer, x + VOLUME_NUMBER_INDENT, y, COLOR_TEXT, "%.1f", static_cast<double>(volume));
}

static void audio_demo_draw_value(SDL_Renderer *renderer, float x, float y, int row) {
    switch (rows[row].kind) {
    case AUDIO_ROW_MUSIC: {
        const bool playing = audio_demo_music_is(row);
        draw_text(
            renderer, x, y, playing ? COLOR_ACTIVE : COLOR_TEXT_DIM, "%-15s %s", audio_demo_file_name(rows[row].path),
            playing ? "playing" : "stopped");
        break;
    }
    case AUDIO_ROW_VOLUME:
        audio_demo_draw_volume(renderer, x, y, audio_volume(static_cast<AudioBus>(rows[row].value)));
        break;
    case AUDIO_ROW_GENERATED:
        draw_text(renderer, x, y, COLOR_TEXT_DIM, "seed %" SDL_PRIu64, audio_demo->seeds[row]);
        break;
    case AUDIO_ROW_SOUND:
        draw_text(renderer, x, y, COLOR_TEXT_DIM, "%s", audio_demo_file_name(rows[row].path));
        break;
    }
}

static void _audio_demo_draw_row(SDL_Renderer *renderer, float x, float y, float bar_width, int row) {
    if (row == audio_demo->selected) {
        const SDL_FRect bar = {x - BAR_OVERHANG_X, y - BAR_OVERHANG_Y, bar_width, ROW_PITCH};
        fill_rect(renderer, &bar, COLOR_IDLE);
        draw_text(renderer, x, y, COLOR_ACTIVE, ">");
    }
    const char *label = rows[row].label ? rows[row].label : sfx_preset_name(rows[row].value);
    draw_text(renderer, x + LABEL_INDENT, y, audio_demo->flash[row] > 0 ? COLOR_FLASH : COLOR_TEXT, "%s", label);
    audio_demo_draw_value(renderer, x + VALUE_INDENT, y, row);
}

static bool _audio_demo_begins_group(int row) {
    return row == 0 || rows[row].column != rows[row - 1].column ||
           SDL_strcmp(rows[row].heading, rows[row - 1].heading) != 0;
}

static void audio_demo_draw_rows(SDL_Renderer *renderer, float view_width) {
    const float column_x[COLUMNS] = {MARGIN, view_width / 2};
    float column_y[COLUMNS] = {ROWS_TOP, ROWS_TOP};
    for (int row = 0; row < ROW_COUNT; row++) {
        const float x = column_x[rows[row].column];
        float &y = column_y[rows[row].column];
        if (_audio_demo_begins_group(row)) {
            if (y > ROWS_TOP) y += GROUP_GAP;
            draw_text(renderer, x, y, COLOR_TEXT_DIM, "%s", rows[row].heading);
            y += ROW_PITCH;
        }
        _audio_demo_draw_row(renderer, x, y, view_width / 2 - MARGIN, row);
        y += ROW_PITCH;
    }
}

void audio_demo_tick() {
    SDL_Renderer *renderer = engine_renderer();
    set_color(renderer, COLOR_BACKGROUND);
    SDL_RenderClear(renderer);
    engine_render_text(audio_demo->title, MARGIN, MARGIN);
    draw_text(renderer, MARGIN, DRIVER_TOP, COLOR_TEXT_DIM, "DRIVER %s", SDL_GetCurrentAudioDriver());

    float view_width = 0, view_height = 0;
    engine_view_size(&view_width, &view_height);
    audio_demo_draw_rows(renderer, view_width);
    draw_text(
        renderer, MARGIN, view_height - FOOTER_RISE, COLOR_TEXT_DIM,
        "up/down select   left/right change   jump play/stop        ESC  back to menu");
}
