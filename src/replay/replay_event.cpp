#include "replay/replay_event.h"

#include <initializer_list>

enum EventKind {
    EVENT_PLAIN,
    EVENT_KEY,
    EVENT_TEXT,
    EVENT_MOTION,
    EVENT_BUTTON,
    EVENT_WHEEL,
    EVENT_PAD_BUTTON,
    EVENT_PAD_AXIS,
    EVENT_PAD_DEVICE,
    EVENT_WINDOW,
    EVENT_FINGER,
    EVENT_DROP
};

struct EventRange {
    Uint32 first, last; // event types
    EventKind kind;
};
static constexpr EventRange EVENT_RANGES[] = {
    {SDL_EVENT_WINDOW_FIRST, SDL_EVENT_WINDOW_LAST, EVENT_WINDOW},
    {SDL_EVENT_KEY_DOWN, SDL_EVENT_KEY_UP, EVENT_KEY},
    {SDL_EVENT_TEXT_INPUT, SDL_EVENT_TEXT_INPUT, EVENT_TEXT},
    {SDL_EVENT_MOUSE_MOTION, SDL_EVENT_MOUSE_MOTION, EVENT_MOTION},
    {SDL_EVENT_MOUSE_BUTTON_DOWN, SDL_EVENT_MOUSE_BUTTON_UP, EVENT_BUTTON},
    {SDL_EVENT_MOUSE_WHEEL, SDL_EVENT_MOUSE_WHEEL, EVENT_WHEEL},
    {SDL_EVENT_GAMEPAD_AXIS_MOTION, SDL_EVENT_GAMEPAD_AXIS_MOTION, EVENT_PAD_AXIS},
    {SDL_EVENT_GAMEPAD_BUTTON_DOWN, SDL_EVENT_GAMEPAD_BUTTON_UP, EVENT_PAD_BUTTON},
    {SDL_EVENT_GAMEPAD_ADDED, SDL_EVENT_GAMEPAD_REMAPPED, EVENT_PAD_DEVICE},
    {SDL_EVENT_FINGER_DOWN, SDL_EVENT_FINGER_CANCELED, EVENT_FINGER},
    {SDL_EVENT_DROP_FILE, SDL_EVENT_DROP_POSITION, EVENT_DROP},
    {SDL_EVENT_QUIT, SDL_EVENT_QUIT, EVENT_PLAIN},
};

static const EventRange *_event_range(Uint32 type) {
    for (const EventRange &range : EVENT_RANGES) {
        if (type >= range.first && type <= range.last) return &range;
    }
    return nullptr;
}

bool replay_event_is_recorded(const SDL_Event *event) { return _event_range(event->type) != nullptr; }

static void _code_text(Codec *codec, const char **field, char *text) {
    if (!codec->reading) SDL_strlcpy(text, *field ? *field : "", REPLAY_EVENT_TEXT_SIZE);
    codec_text(codec, text, REPLAY_EVENT_TEXT_SIZE);
    if (codec->reading) *field = text;
}

static void _code_floats(Codec *codec, std::initializer_list<float *> values) {
    for (float *value : values) codec_float(codec, value);
}

void replay_event_code(Codec *codec, SDL_Event *event, char *text) {
    Uint32 type = event->type;
    codec_int(codec, &type);
    const EventRange *range = _event_range(type);
    if (!range) codec->bad = true;
    if (codec->bad) return;
    if (codec->reading) {
        *event = {};
        event->type = type;
    }
    switch (range->kind) {
    case EVENT_PLAIN:
        break;
    case EVENT_KEY:
        codec_index(codec, &event->key.scancode, SDL_SCANCODE_COUNT);
        codec_int(codec, &event->key.key);
        codec_int(codec, &event->key.mod);
        codec_int(codec, &event->key.down);
        codec_int(codec, &event->key.repeat);
        break;
    case EVENT_TEXT:
        _code_text(codec, &event->text.text, text);
        break;
    case EVENT_MOTION:
        codec_int(codec, &event->motion.state);
        _code_floats(codec, {&event->motion.x, &event->motion.y, &event->motion.xrel, &event->motion.yrel});
        break;
    case EVENT_BUTTON:
        codec_int(codec, &event->button.button);
        codec_int(codec, &event->button.down);
        codec_int(codec, &event->button.clicks);
        _code_floats(codec, {&event->button.x, &event->button.y});
        break;
    case EVENT_WHEEL:
        codec_index(codec, &event->wheel.direction, SDL_MOUSEWHEEL_FLIPPED + 1);
        _code_floats(codec, {&event->wheel.x, &event->wheel.y, &event->wheel.mouse_x, &event->wheel.mouse_y});
        break;
    case EVENT_PAD_BUTTON:
        codec_index(codec, &event->gbutton.button, SDL_GAMEPAD_BUTTON_COUNT);
        codec_int(codec, &event->gbutton.down);
        break;
    case EVENT_PAD_AXIS:
        codec_index(codec, &event->gaxis.axis, SDL_GAMEPAD_AXIS_COUNT);
        codec_int(codec, &event->gaxis.value);
        break;
    case EVENT_PAD_DEVICE:
        break;
    case EVENT_WINDOW:
        codec_int(codec, &event->window.data1);
        codec_int(codec, &event->window.data2);
        break;
    case EVENT_FINGER:
        codec_unsigned(codec, &event->tfinger.fingerID);
        _code_floats(
            codec,
            {&event->tfinger.x, &event->tfinger.y, &event->tfinger.dx, &event->tfinger.dy, &event->tfinger.pressure});
        break;
    case EVENT_DROP:
        _code_floats(codec, {&event->drop.x, &event->drop.y});
        _code_text(codec, &event->drop.data, text);
        break;
    }
}
