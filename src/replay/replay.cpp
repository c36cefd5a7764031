#include "core/write_error.h"
#include "lumarind/core/error.h"
#include "lumarind/engine/game.h"
#include "replay/replay_event.h"
#include "replay/replay_feed.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_iostream.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_stdinc.h>
#include <SDL3/SDL_timer.h>

#include <initializer_list>

// File format: MAGIC, the version, then blocks, each preceded by its length and CRC-32. The first contains a
// ReplayStart, the others complete records. If the program is killed, the last block is missing or truncated.
static constexpr Uint8 MAGIC[] = {'L', 'M', 'R', 'P'};
static constexpr size_t FILE_HEAD_SIZE = 6, BLOCK_HEAD_SIZE = 8; // bytes
static constexpr size_t BLOCK_MAX = 1 << 20;
static constexpr Uint64 BLOCK_NS = SDL_NS_PER_SECOND; // recorded time per block
static constexpr size_t FILE_MAX = size_t{256} << 20;

enum ReplayMode { REPLAY_OFF, REPLAY_REQUESTED, REPLAY_RECORDING, REPLAY_OPENED, REPLAY_PLAYING };
enum RecordKind : Uint8 {
    RECORD_FRAME = 1,
    RECORD_EVENT,
    RECORD_KEYS,
    RECORD_MOUSE,
    RECORD_OUTPUT,
    RECORD_PAD,
    RECORD_PAD_STATE,
    RECORD_POLLED,
    RECORD_HASH
};

struct ReplayState {
    ReplayMode mode;
    ReplayStart start;
    ReplayDevices devices; // as last written or read
    Uint64 steps;

    // recording
    char *path;         // owned
    SDL_IOStream *file; // owned
    Codec block;        // owned
    Uint64 block_ns;

    // replaying
    Uint8 *bytes;          // owned: the whole file
    size_t size, next;     // file size; offset of the next block
    Codec reader;          // of the current block
    ReplayDevices skipped; // scratch: device records read again along with the events
    double speed;          // 0: as fast as possible
    Uint64 start_ns, played_ns;
    char text[REPLAY_EVENT_TEXT_SIZE]; // of the last event read
};
static ReplayState *g_replay; // null: off
static bool g_replay_failed;

static bool _replay_is(ReplayMode mode) { return g_replay && g_replay->mode == mode; }

bool replay_is_recording() { return _replay_is(REPLAY_RECORDING); }
bool replay_is_playing() { return _replay_is(REPLAY_PLAYING); }
bool replay_is_requested() { return _replay_is(REPLAY_REQUESTED); }
bool replay_failed() { return g_replay_failed; }
bool replay_is_fast() { return replay_is_playing() && g_replay->speed == 0; }

static bool _replay_setup(ReplayMode mode) {
    replay_stop();
    g_replay = static_cast<ReplayState *>(SDL_calloc(1, sizeof *g_replay));
    if (!g_replay) return engine_error("[REPLAY] Memory allocation failed, error: %s", SDL_GetError());
    g_replay->mode = mode;
    return true;
}

static void _replay_free() {
    if (!g_replay) return;
    if (g_replay->file) SDL_CloseIO(g_replay->file);
    codec_cleanup(&g_replay->block);
    SDL_free(g_replay->bytes);
    SDL_free(g_replay->path);
    SDL_free(g_replay);
    g_replay = nullptr;
}

// --- serialisation ---

static void _code_start(Codec *codec, ReplayStart *start) {
    codec_text(codec, start->game, REPLAY_TEXT_SIZE);
    codec_text(codec, start->build, REPLAY_TEXT_SIZE);
    codec_text(codec, start->screen, REPLAY_TEXT_SIZE);
    for (Sint32 *number :
         {&start->step_hz, &start->window_width, &start->window_height, &start->output_width, &start->output_height,
          &start->ui_scale})
        codec_int(codec, number);
    codec_float(codec, &start->deadzone);
    codec_unsigned(codec, &start->seed);
    codec_double(codec, &start->fade_seconds);
    codec_int(codec, &start->axes_past);
    codec_int(codec, &start->binding_count);
    if (start->binding_count < 0 || start->binding_count > REPLAY_MAX_ACTIONS) {
        codec->bad = true;
        start->binding_count = 0;
    }
    for (int i = 0; i < start->binding_count; i++) codec_text(codec, start->bindings[i], REPLAY_TEXT_SIZE);
}

static void _code_pad(Codec *codec, ReplayPad *pad) {
    codec_int(codec, &pad->connected);
    codec_text(codec, pad->name, REPLAY_TEXT_SIZE);
    codec_text(codec, pad->type, REPLAY_TEXT_SIZE);
    codec_int(codec, &pad->has_buttons);
    codec_int(codec, &pad->has_axes);
    codec_bytes(codec, pad->labels, sizeof pad->labels);
}

static void _code_pad_state(Codec *codec, ReplayPad *pad) {
    codec_int(codec, &pad->buttons);
    for (Sint16 &axis : pad->axes) codec_int(codec, &axis);
}

// --- recording ---

bool replay_record(const char *path) {
    if (!_replay_setup(REPLAY_REQUESTED)) return false;
    g_replay->path = SDL_strdup(path);
    if (g_replay->path) return true;
    _replay_free();
    return engine_error("[REPLAY] Memory allocation failed, error: %s", SDL_GetError());
}

static void _write_u32(Uint8 *to, Uint32 value) {
    for (int i = 0; i < 4; i++) to[i] = static_cast<Uint8>(value >> 8 * i);
}

static Uint32 _read_u32(const Uint8 *from) {
    return from[0] | Uint32{from[1]} << 8 | Uint32{from[2]} << 16 | Uint32{from[3]} << 24;
}

// A write error ends the recording; blocks already written remain.
static void _replay_write_block() {
    Codec *block = &g_replay->block;
    g_replay->block_ns = 0;
    if (block->size == 0) return;
    Uint8 head[BLOCK_HEAD_SIZE];
    _write_u32(head, static_cast<Uint32>(block->size));
    _write_u32(head + 4, SDL_crc32(0, block->bytes, block->size));
    SDL_ClearError();
    if (block->bad) SDL_OutOfMemory();
    const bool written = !block->bad && SDL_WriteIO(g_replay->file, head, sizeof head) == sizeof head &&
                         SDL_WriteIO(g_replay->file, block->bytes, block->size) == block->size &&
                         SDL_FlushIO(g_replay->file);
    codec_reset(block);
    if (written) return;
    engine_error("[REPLAY] Recording stopped: %s, error: %s", g_replay->path, write_error());
    _replay_free();
}

void replay_begin(const ReplayStart *start) {
    ReplayState *replay = g_replay;
    SDL_ClearError();
    replay->file = SDL_IOFromFile(replay->path, "wb");
    Uint8 head[FILE_HEAD_SIZE] = {MAGIC[0], MAGIC[1], MAGIC[2], MAGIC[3], REPLAY_VERSION & 0xFF, REPLAY_VERSION >> 8};
    if (!replay->file || SDL_WriteIO(replay->file, head, sizeof head) != sizeof head) {
        engine_error("[REPLAY] Unable to record to %s, error: %s", replay->path, write_error());
        _replay_free();
        return;
    }
    replay->mode = REPLAY_RECORDING;
    replay->start = *start;
    replay->devices.output_width = start->output_width;
    replay->devices.output_height = start->output_height;
    _code_start(&replay->block, &replay->start);
    SDL_Log("[REPLAY] Recording to %s", replay->path);
    SDL_srand(start->seed);
    _replay_write_block();
}

static Codec *_replay_begin_record(RecordKind kind) {
    codec_bytes(&g_replay->block, &kind, 1);
    return &g_replay->block;
}

void replay_record_frame(Uint64 elapsed_ns) {
    if (!replay_is_recording()) return;
    if (g_replay->block_ns >= BLOCK_NS || g_replay->block.size > BLOCK_MAX / 2) _replay_write_block();
    if (!replay_is_recording()) return; // writing the block failed
    g_replay->block_ns += elapsed_ns;
    codec_unsigned(_replay_begin_record(RECORD_FRAME), &elapsed_ns);
}

void replay_record_event(const SDL_Event *event) {
    if (!replay_is_recording() || !replay_event_is_recorded(event)) return;
    SDL_Event copy = *event;
    replay_event_code(_replay_begin_record(RECORD_EVENT), &copy, g_replay->text);
}

static void _record_keys(const bool *keys) {
    ReplayDevices *last = &g_replay->devices;
    Sint32 changed = 0;
    for (int i = 0; i < SDL_SCANCODE_COUNT; i++) changed += keys[i] != last->keys[i];
    if (changed == 0) return;
    Codec *codec = _replay_begin_record(RECORD_KEYS);
    codec_int(codec, &changed);
    for (Sint32 i = 0; i < SDL_SCANCODE_COUNT; i++) {
        if (keys[i] != last->keys[i]) codec_int(codec, &i);
        last->keys[i] = keys[i];
    }
}

static void _record_pad(const ReplayPad *pad) {
    ReplayPad *last = &g_replay->devices.pad;
    const bool same_device = pad->connected == last->connected && SDL_strcmp(pad->name, last->name) == 0 &&
                             SDL_strcmp(pad->type, last->type) == 0 && pad->has_buttons == last->has_buttons &&
                             pad->has_axes == last->has_axes &&
                             SDL_memcmp(pad->labels, last->labels, sizeof pad->labels) == 0;
    const bool same_state = pad->buttons == last->buttons && SDL_memcmp(pad->axes, last->axes, sizeof pad->axes) == 0;
    *last = *pad;
    if (!same_device) _code_pad(_replay_begin_record(RECORD_PAD), last);
    if (!same_state) _code_pad_state(_replay_begin_record(RECORD_PAD_STATE), last);
}

void replay_record_devices(const ReplayDevices *state) {
    if (!replay_is_recording()) return;
    ReplayDevices *last = &g_replay->devices;
    _record_keys(state->keys);
    if (state->mouse_x != last->mouse_x || state->mouse_y != last->mouse_y) {
        last->mouse_x = state->mouse_x;
        last->mouse_y = state->mouse_y;
        Codec *codec = _replay_begin_record(RECORD_MOUSE);
        codec_float(codec, &last->mouse_x);
        codec_float(codec, &last->mouse_y);
    }
    if (state->output_width != last->output_width || state->output_height != last->output_height) {
        last->output_width = state->output_width;
        last->output_height = state->output_height;
        Codec *codec = _replay_begin_record(RECORD_OUTPUT);
        codec_int(codec, &last->output_width);
        codec_int(codec, &last->output_height);
    }
    _record_pad(&state->pad);
    _replay_begin_record(RECORD_POLLED);
}

// --- replaying ---

static bool _replay_reject(const char *path, const char *why) {
    g_replay_failed = true;
    _replay_free();
    return engine_error("[REPLAY] %s cannot be replayed: %s", path, why);
}

// Opens the next block. Returns false if there is none; sets *damaged if its length or checksum is invalid.
static bool _replay_next_block(bool *damaged) {
    ReplayState *replay = g_replay;
    const size_t left = replay->size - replay->next;
    *damaged = false;
    if (left < BLOCK_HEAD_SIZE) return false;
    const Uint8 *head = replay->bytes + replay->next;
    const size_t size = _read_u32(head);
    *damaged = size == 0 || size > BLOCK_MAX;
    if (*damaged || size > left - BLOCK_HEAD_SIZE) return false;
    *damaged = SDL_crc32(0, head + BLOCK_HEAD_SIZE, size) != _read_u32(head + 4);
    if (*damaged) return false;
    replay->reader = codec_reader(head + BLOCK_HEAD_SIZE, size);
    replay->next += BLOCK_HEAD_SIZE + size;
    return true;
}

static const char *_replay_check_start(const ReplayStart *start) {
    const Game *game = engine_game();
    if (SDL_strcmp(start->game, game->id) != 0) return "it was recorded with another game";
    if (start->step_hz < 1 || start->window_width < 1 || start->window_height < 1 || start->ui_scale < 1 ||
        !(start->fade_seconds >= 0))
        return "it is corrupt";
    for (int i = 0; i < game->screen_count; i++) {
        if (SDL_strcmp(game->screens[i].name, start->screen) == 0) return nullptr;
    }
    return "the game has no screen of that name";
}

void replay_clear_failure() { g_replay_failed = false; }

bool replay_open(const char *path, double speed) {
    if (!_replay_setup(REPLAY_OPENED)) return false;
    ReplayState *replay = g_replay;
    replay->speed = speed;
    void *bytes = SDL_LoadFile(path, &replay->size);
    replay->bytes = static_cast<Uint8 *>(bytes);
    if (!bytes) return _replay_reject(path, SDL_GetError());
    if (replay->size > FILE_MAX) return _replay_reject(path, "it is too large");
    if (replay->size < FILE_HEAD_SIZE || SDL_memcmp(bytes, MAGIC, sizeof MAGIC) != 0)
        return _replay_reject(path, "it is not a recording");
    if ((replay->bytes[4] | replay->bytes[5] << 8) != REPLAY_VERSION)
        return _replay_reject(path, "its format version is not supported");
    replay->next = FILE_HEAD_SIZE;
    bool damaged = false;
    if (!_replay_next_block(&damaged)) return _replay_reject(path, "it is corrupt");
    _code_start(&replay->reader, &replay->start);
    if (replay->reader.bad) return _replay_reject(path, "it is corrupt");
    if (const char *why = _replay_check_start(&replay->start)) return _replay_reject(path, why);
    replay->reader.at = replay->reader.size;
    SDL_Log("[REPLAY] Replaying %s, recorded with %s", path, replay->start.build);
    return true;
}

const ReplayStart *replay_start() {
    return _replay_is(REPLAY_OPENED) || replay_is_playing() ? &g_replay->start : nullptr;
}

void replay_play() {
    if (!_replay_is(REPLAY_OPENED)) return;
    g_replay->mode = REPLAY_PLAYING;
    g_replay->devices.output_width = g_replay->start.output_width;
    g_replay->devices.output_height = g_replay->start.output_height;
    g_replay->start_ns = SDL_GetTicksNS();
    SDL_srand(g_replay->start.seed);
}

static bool _replay_fail(const char *what) {
    g_replay_failed = true;
    return engine_error("[REPLAY] After step %" SDL_PRIu64 ": %s", g_replay->steps, what);
}

// Returns the next record's kind, or 0 at the end of the recording.
static Uint8 _replay_next_kind() {
    Codec *reader = &g_replay->reader;
    bool damaged = false;
    if (reader->bad) return 0;
    if (reader->at == reader->size && !_replay_next_block(&damaged)) {
        if (damaged) _replay_fail("the recording is corrupt");
        return 0;
    }
    Uint8 kind = 0;
    codec_bytes(reader, &kind, 1);
    return kind;
}

static bool _replay_is_readable() {
    if (!g_replay->reader.bad) return true;
    return _replay_fail("the recording is corrupt");
}

static void _replay_wait() {
    if (g_replay->speed <= 0) return;
    const auto due =
        g_replay->start_ns + static_cast<Uint64>(static_cast<double>(g_replay->played_ns) / g_replay->speed);
    const Uint64 now = SDL_GetTicksNS();
    if (due > now) SDL_DelayPrecise(due - now);
}

static void _replay_read_keys(Codec *reader, ReplayDevices *devices) {
    Sint32 changed = 0;
    codec_int(reader, &changed);
    if (changed < 0 || changed > SDL_SCANCODE_COUNT) reader->bad = true;
    for (Sint32 i = 0, key = 0; i < changed && !reader->bad; i++) {
        codec_int(reader, &key);
        if (key < 0 || key >= SDL_SCANCODE_COUNT) {
            reader->bad = true;
        } else {
            devices->keys[key] = !devices->keys[key];
        }
    }
}

// Reads the frame's next record: an event or a device's new state. Returns false at the frame's end.
static bool _replay_read_record(SDL_Event *event, ReplayDevices *devices, bool *is_event) {
    Codec *reader = &g_replay->reader;
    const Uint8 kind = _replay_next_kind();
    *is_event = kind == RECORD_EVENT;
    switch (kind) {
    case 0:
    case RECORD_POLLED:
        return false;
    case RECORD_EVENT:
        replay_event_code(reader, event, g_replay->text);
        break;
    case RECORD_KEYS:
        _replay_read_keys(reader, devices);
        break;
    case RECORD_MOUSE:
        codec_float(reader, &devices->mouse_x);
        codec_float(reader, &devices->mouse_y);
        break;
    case RECORD_OUTPUT:
        codec_int(reader, &devices->output_width);
        codec_int(reader, &devices->output_height);
        break;
    case RECORD_PAD:
        _code_pad(reader, &devices->pad);
        break;
    case RECORD_PAD_STATE:
        _code_pad_state(reader, &devices->pad);
        break;
    default:
        reader->bad = true;
        break;
    }
    return _replay_is_readable();
}

// Reads the frame twice: here its device records, because SDL updates device state before events are handled; its
// events in replay_next_event.
bool replay_next_frame(Uint64 *elapsed_ns) {
    const Uint8 kind = _replay_next_kind();
    if (kind == 0) return false;
    if (kind != RECORD_FRAME) return _replay_fail("the game diverges from the recording");
    codec_unsigned(&g_replay->reader, elapsed_ns, 3600 * Uint64{SDL_NS_PER_SECOND});
    g_replay->played_ns += *elapsed_ns;
    if (!_replay_is_readable()) return false;
    _replay_wait();
    const size_t events = g_replay->reader.at;
    bool is_event = false;
    SDL_Event skipped = {};
    while (_replay_read_record(&skipped, &g_replay->devices, &is_event)) {
    }
    g_replay->reader.at = events;
    return !g_replay_failed;
}

bool replay_next_event(SDL_Event *event) {
    bool is_event = false;
    while (!g_replay_failed && _replay_read_record(event, &g_replay->skipped, &is_event)) {
        if (is_event) return true;
    }
    return false;
}

const ReplayDevices *replay_devices() { return replay_is_playing() ? &g_replay->devices : nullptr; }

// --- recording and replaying ---

static void _replay_compare(const char *screen, Uint64 hash) {
    Uint64 recorded = 0;
    const Uint8 kind = _replay_next_kind();
    if (kind == 0) return; // the recording is truncated here
    if (kind != RECORD_HASH) {
        _replay_fail("the game diverges from the recording");
        return;
    }
    codec_unsigned(&g_replay->reader, &recorded);
    if (!_replay_is_readable() || recorded == hash) return;
    g_replay_failed = true;
    engine_error("[REPLAY] Step %" SDL_PRIu64 " of %s differs from the recording", g_replay->steps, screen);
}

void replay_step(const char *screen, Uint64 (*state_hash)()) {
    if (!replay_is_recording() && !replay_is_playing()) return;
    if (++g_replay->steps % REPLAY_HASH_STEPS != 0 || !state_hash) return;
    Uint64 hash = state_hash();
    if (replay_is_recording()) {
        codec_unsigned(_replay_begin_record(RECORD_HASH), &hash);
    } else if (!g_replay_failed) {
        _replay_compare(screen, hash);
    }
}

void replay_stop() {
    if (replay_is_recording()) _replay_write_block();
    if (replay_is_recording()) SDL_Log("[REPLAY] Recorded: %s, %" SDL_PRIu64 " steps", g_replay->path, g_replay->steps);
    if (replay_is_playing() && !g_replay_failed) {
        const char *result = g_replay->steps > 0 ? ", all hashes equal" : ""; // 0 if the screen's setup failed
        SDL_Log("[REPLAY] Replayed %" SDL_PRIu64 " steps%s", g_replay->steps, result);
    }
    _replay_free();
}
