// Recordings. The input is the second block of an otherwise valid recording, or the whole file if it starts with
// "LMRP"; checksums are made to match, so that changed starts are read as well.
#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "lumarind/engine/game.h"
#include "lumarind/input/gamepad.h"
#include "replay/codec.h"
#include "replay/replay_feed.h"

#include <SDL3/SDL_stdinc.h>

#include <algorithm>
#include <cstring>
#include <string>

static void add_block(std::string *file, const uint8_t *bytes, size_t size) {
    const Uint32 head[] = {static_cast<Uint32>(size), SDL_crc32(0, bytes, size)};
    for (const Uint32 number : head) {
        for (int shift = 0; shift < 32; shift += 8) *file += static_cast<char>(number >> shift);
    }
    file->append(reinterpret_cast<const char *>(bytes), size);
}

// A copy with the checksums of all whole blocks up to the first that ends beyond the file.
static std::string with_checksums(const uint8_t *data, size_t size) {
    constexpr size_t FILE_HEAD = 6, BLOCK_HEAD = 8;
    std::string file(reinterpret_cast<const char *>(data), std::min(size, FILE_HEAD));
    size_t at = file.size();
    while (size - at >= BLOCK_HEAD) {
        const size_t length = data[at] | data[at + 1] << 8 | data[at + 2] << 16 | size_t{data[at + 3]} << 24;
        if (length > size - at - BLOCK_HEAD) break;
        add_block(&file, data + at + BLOCK_HEAD, length);
        at += BLOCK_HEAD + length;
    }
    return file.append(reinterpret_cast<const char *>(data) + at, size - at);
}

static std::string whole_file(const uint8_t *data, size_t size) {
    if (size >= 4 && std::memcmp(data, "LMRP", 4) == 0) return with_checksums(data, size);
    std::string file = {'L', 'M', 'R', 'P', REPLAY_VERSION, 0};
    Codec codec = {};
    char game[REPLAY_TEXT_SIZE] = {}, build[] = "fuzz", screen[REPLAY_TEXT_SIZE] = {};
    SDL_strlcpy(game, engine_game()->id, sizeof game);
    SDL_strlcpy(screen, engine_game()->screens[0].name, sizeof screen);
    for (char *text : {game, build, screen}) codec_text(&codec, text, REPLAY_TEXT_SIZE);
    for (int number : {60, 640, 360, 640, 360, 1}) codec_int(&codec, &number);
    float deadzone = 0.1f;
    Uint64 seed = 1;
    double fade = 0.25;
    int axes = 0, bindings = 0;
    codec_float(&codec, &deadzone);
    codec_unsigned(&codec, &seed);
    codec_double(&codec, &fade);
    codec_int(&codec, &axes);
    codec_int(&codec, &bindings);
    add_block(&file, codec.bytes, codec.size);
    codec_cleanup(&codec);
    add_block(&file, data, size);
    return file;
}

static void check_event(const SDL_Event *event) {
    if (event->type == SDL_EVENT_TEXT_INPUT)
        fuzz_note_text(event->text.text);
    else if (event->type < SDL_EVENT_DROP_FILE || event->type > SDL_EVENT_DROP_POSITION) // the others hold pointers
        fuzz_note_bytes(event, sizeof *event);
    if (event->type == SDL_EVENT_TEXT_INPUT)
        fuzz_check(std::strlen(event->text.text) < 512, "typed texts are NUL-terminated");
    if (event->type == SDL_EVENT_DROP_FILE)
        fuzz_check(std::strlen(event->drop.data) < 512, "dropped texts are NUL-terminated");
}

static void note_start(const ReplayStart *start) {
    for (const char *text : {start->game, start->build, start->screen}) fuzz_note_text(text);
    fuzz_note(
        start->step_hz, start->window_width, start->window_height, start->output_width, start->output_height,
        start->ui_scale, start->seed, start->axes_past, start->binding_count);
    fuzz_note_bytes(&start->deadzone, sizeof start->deadzone);
    fuzz_note_bytes(&start->fade_seconds, sizeof start->fade_seconds);
    fuzz_check(start->binding_count >= 0 && start->binding_count <= REPLAY_MAX_ACTIONS, "bindings fit");
    for (int i = 0; i < start->binding_count; i++) fuzz_note_text(start->bindings[i]);
}

static void note_gamepad() { // as recorded
    fuzz_note_text(gamepad_name());
    fuzz_note_text(gamepad_type_name());
    for (int i = -1; i <= SDL_GAMEPAD_BUTTON_COUNT; i++) {
        const auto button = static_cast<SDL_GamepadButton>(i);
        fuzz_note(gamepad_has_button(button), gamepad_button(button), gamepad_button_label(button));
    }
    for (int i = -1; i <= SDL_GAMEPAD_AXIS_COUNT; i++) {
        const auto axis = static_cast<SDL_GamepadAxis>(i);
        fuzz_note(gamepad_has_axis(axis), gamepad_axis_raw(axis));
    }
}

int fuzz_recording(const uint8_t *data, size_t size) {
    fuzz_start();
    const std::string file = whole_file(data, size);
    const char *path = fuzz_memory_file(reinterpret_cast<const uint8_t *>(file.data()), file.size());
    replay_clear_failure();
    const bool opened = replay_open(path, 0);
    fuzz_check(opened || fuzz_logged_errors() == 1, "a rejected recording is reported once");
    if (opened) note_start(replay_start());
    replay_play();
    Uint64 ns = 0;
    while (opened && replay_next_frame(&ns)) {
        const ReplayDevices *devices = replay_devices();
        fuzz_note(ns);
        fuzz_check(std::strlen(devices->pad.name) < REPLAY_TEXT_SIZE, "names are NUL-terminated");
        SDL_Event event = {};
        while (replay_next_event(&event)) check_event(&event);
        fuzz_note_bytes(devices, sizeof *devices);
        note_gamepad();
        for (int step = 0; step < REPLAY_HASH_STEPS; step++) replay_step("fuzz", [] { return Uint64{7}; });
        if (replay_failed()) break;
    }
    fuzz_check(fuzz_logged_errors() <= 1, "corruption is reported once");
    replay_stop();
    return 0;
}
