#include "lumarind/toolkit/animation_set.h"

#include "core/arena.h"
#include "lumarind/core/error.h"
#include "lumarind/core/storage.h"
#include "lumarind/toolkit/reload.h"
#include "toolkit/sprite_sheet_internal.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_log.h>

#include <utility>
#include <yyjson.h>

static constexpr int FRAMES_MAX = 1 << 16;     // per sheet, and per clip including repeats
static constexpr int LENGTH_MAX = 1 << 15;     // px, of a frame's size and position
static constexpr int DURATION_MAX = 3'600'000; // ms

struct LoadedSet {
    AnimationSet set; // first: the set's address is this record's
    Arena arena;
    const AnimationSlice *slices;
    Sint32 slice_count;
};

struct SetLoad {
    const char *path;
    LoadedSet *result;
    AnimationFrame *frames;
    Sint32 *frame_ms;
    Sint32 frame_count;
};

static bool _set_error(const SetLoad *load, const char *what) {
    return engine_error("[ANIMATION_SET] %s: %s", load->path, what);
}

template <typename T> static T *_set_new(SetLoad *load, size_t count) {
    T *memory = arena_new<T>(&load->result->arena, count);
    if (!memory) engine_error("[ANIMATION_SET] Memory allocation failed while loading %s", load->path);
    return memory;
}

static const char *_set_text(SetLoad *load, yyjson_val *text) {
    const char *from = yyjson_is_str(text) ? yyjson_get_str(text) : "";
    const size_t size = SDL_strlen(from) + 1;
    char *copy = _set_new<char>(load, size);
    if (copy) SDL_memcpy(copy, from, size);
    return copy;
}

// --- frames ---

static int _set_int(yyjson_val *object, const char *key, int low, int high) {
    const double number = yyjson_get_num(yyjson_obj_get(object, key));
    return number >= low ? number <= high ? static_cast<int>(number) : high : low;
}

static SDL_Rect _set_rect(yyjson_val *object) {
    return {
        _set_int(object, "x", -LENGTH_MAX, LENGTH_MAX), _set_int(object, "y", -LENGTH_MAX, LENGTH_MAX),
        _set_int(object, "w", 0, LENGTH_MAX), _set_int(object, "h", 0, LENGTH_MAX)};
}

static bool _set_frame_error(const SetLoad *load, int index, const char *what) {
    return engine_error("[ANIMATION_SET] %s: frame %d %s", load->path, index, what);
}

static bool _set_read_frame(SetLoad *load, yyjson_val *value, int index) {
    AnimationFrame *frame = &load->frames[index];
    const SDL_Rect source = _set_rect(yyjson_obj_get(value, "spriteSourceSize"));
    yyjson_val *size = yyjson_obj_get(value, "sourceSize");
    if (yyjson_get_bool(yyjson_obj_get(value, "rotated"))) {
        return _set_frame_error(load, index, "is rotated on its sheet: export it without rotation");
    }
    frame->src = _set_rect(yyjson_obj_get(value, "frame"));
    if (frame->src.x < 0 || frame->src.y < 0 || frame->src.w < 1 || frame->src.h < 1) {
        return _set_frame_error(load, index, "has no \"frame\" with x, y, w and h on the sheet: export it again");
    }
    frame->offset = {source.x, source.y};
    load->frame_ms[index] = _set_int(value, "duration", 0, DURATION_MAX);
    AnimationSet *set = &load->result->set;
    const int w = size ? _set_int(size, "w", 1, LENGTH_MAX) : frame->src.w;
    const int h = size ? _set_int(size, "h", 1, LENGTH_MAX) : frame->src.h;
    set->frame_w = SDL_max(set->frame_w, w);
    set->frame_h = SDL_max(set->frame_h, h);
    return true;
}

static bool _set_read_frames(SetLoad *load, yyjson_val *frames) {
    const bool is_object = yyjson_is_obj(frames);
    const size_t count = is_object ? yyjson_obj_size(frames) : yyjson_arr_size(frames);
    if (count == 0) return _set_error(load, "\"frames\" is empty: export the sheet with its JSON data");
    if (count > FRAMES_MAX) {
        return engine_error(
            "[ANIMATION_SET] %s: %zu frames: at most %d can be loaded, divide the sheet", load->path, count,
            FRAMES_MAX);
    }
    load->frames = _set_new<AnimationFrame>(load, count);
    load->frame_ms = _set_new<Sint32>(load, count);
    if (!load->frames || !load->frame_ms) return false;
    size_t i = 0, max = 0;
    yyjson_val *key = nullptr, *value = nullptr;
    if (is_object) { // in file order
        yyjson_obj_foreach(frames, i, max, key, value) {
            if (!_set_read_frame(load, value, load->frame_count++)) return false;
        }
    } else {
        yyjson_arr_foreach(frames, i, max, value) {
            if (!_set_read_frame(load, value, load->frame_count++)) return false;
        }
    }
    load->result->set.frames = load->frames;
    load->result->set.rows = load->frame_count;
    return true;
}

// --- clips ---

struct TagDirection {
    const char *name;
    bool backwards, ping_pong;
};
static constexpr TagDirection DIRECTIONS[] = {
    {"forward", false, false},
    {"reverse", true, false},
    {"pingpong", false, true},
    {"pingpong_reverse", true, true},
};

static const TagDirection *_set_direction(yyjson_val *value) {
    const char *name = yyjson_get_str(value);
    for (const TagDirection &direction : DIRECTIONS) {
        if (!name || SDL_strcmp(direction.name, name) == 0) return &direction; // forward by default
    }
    return nullptr;
}

// Computes a clip's frames in playing order: `passes` through the tag; a ping-pong clip does not repeat its end frames,
// nor, if `closed`, its first. Returns their number, and stores them unless `order` is null.
static Sint64 _set_order(const TagDirection *direction, int from, int to, Sint64 passes, bool closed, Sint32 *order) {
    const Sint64 length = to - from + 1;
    const Sint64 skipped = direction->ping_pong && length > 1 ? 1 : 0; // per pass, except the first
    const Sint64 count = SDL_max(length + (passes - 1) * (length - skipped) - (closed ? skipped : 0), 1);
    for (Sint64 i = 0; order && i < count; i++) {
        const Sint64 step = length - skipped;
        const Sint64 pass = i < length ? 0 : 1 + (i - length) / step;
        const Sint64 within = i < length ? i : (i - length) % step + skipped;
        const bool backwards = direction->backwards != (direction->ping_pong && pass % 2 == 1);
        order[i] = static_cast<Sint32>(backwards ? to - within : from + within);
    }
    return count;
}

static bool
_set_fill_clip(SetLoad *load, const TagDirection *direction, int from, int to, Sint64 repeat, AnimationClip *clip) {
    const bool endless = repeat <= 0;
    const Sint64 passes = !endless ? repeat : direction->ping_pong && to > from ? 2 : 1;
    const Sint64 count = _set_order(direction, from, to, passes, endless, nullptr);
    if (count > FRAMES_MAX) {
        return engine_error(
            "[ANIMATION_SET] %s: tag '%s' plays %lld frames with its repeats: at most %d can be loaded, repeat it less",
            load->path, clip->name, static_cast<long long>(count), FRAMES_MAX);
    }
    Sint32 *order = _set_new<Sint32>(load, static_cast<size_t>(count));
    Sint32 *frame_ms = _set_new<Sint32>(load, static_cast<size_t>(count));
    if (!order || !frame_ms) return false;
    _set_order(direction, from, to, passes, endless, order);
    for (Sint64 i = 0; i < count; i++) frame_ms[i] = load->frame_ms[order[i]];
    clip->first_frame = from;
    clip->frame_count = static_cast<Sint32>(count);
    clip->frame_ms = frame_ms;
    clip->loop = endless;
    clip->order = order;
    return true;
}

static bool _set_read_tag(SetLoad *load, yyjson_val *tag, AnimationClip *clip) {
    yyjson_val *repeat = yyjson_obj_get(tag, "repeat"); // a string or a number
    const double from = yyjson_get_num(yyjson_obj_get(tag, "from")), to = yyjson_get_num(yyjson_obj_get(tag, "to"));
    const TagDirection *direction = _set_direction(yyjson_obj_get(tag, "direction"));
    const double times = yyjson_is_str(repeat) ? SDL_atof(yyjson_get_str(repeat)) : yyjson_get_num(repeat);
    clip->name = _set_text(load, yyjson_obj_get(tag, "name"));
    if (!clip->name) return false;
    if (!(from >= 0) || !(to >= from) || !(to < load->frame_count)) {
        return engine_error(
            "[ANIMATION_SET] %s: tag '%s' spans frames %g to %g, but the sheet has %d: export the sheet again",
            load->path, clip->name, from, to, load->frame_count);
    }
    if (!direction) {
        return engine_error(
            "[ANIMATION_SET] %s: tag '%s' has an unknown direction: choose forward, reverse or ping-pong", load->path,
            clip->name);
    }
    const Sint64 repeats = times >= 1 ? static_cast<Sint64>(SDL_min(times, 1e9)) : 0;
    return _set_fill_clip(load, direction, static_cast<int>(from), static_cast<int>(to), repeats, clip);
}

static bool _set_read_tags(SetLoad *load, yyjson_val *tags) {
    const size_t count = SDL_max(yyjson_arr_size(tags), size_t{1});
    AnimationClip *clips = _set_new<AnimationClip>(load, count);
    AnimationSet *set = &load->result->set;
    if (!clips) return false;
    set->clips = clips;
    size_t i = 0, max = 0;
    yyjson_val *tag = nullptr;
    yyjson_arr_foreach(tags, i, max, tag) {
        if (!_set_read_tag(load, tag, &clips[set->clip_count++])) return false;
    }
    if (set->clip_count > 0) return true;
    clips[set->clip_count++].name = "all";
    return _set_fill_clip(load, &DIRECTIONS[0], 0, load->frame_count - 1, 0, &clips[0]);
}

// --- slices ---

static bool _set_read_slice(SetLoad *load, yyjson_val *value, AnimationSlice *slice) {
    yyjson_val *keys = yyjson_obj_get(value, "keys");
    slice->name = _set_text(load, yyjson_obj_get(value, "name"));
    slice->data = _set_text(load, yyjson_obj_get(value, "data"));
    AnimationSliceKey *slice_keys = _set_new<AnimationSliceKey>(load, yyjson_arr_size(keys) + 1);
    if (!slice->name || !slice->data || !slice_keys) return false;
    slice->keys = slice_keys;
    size_t i = 0, max = 0;
    yyjson_val *key = nullptr;
    yyjson_arr_foreach(keys, i, max, key) { // missing values are 0
        yyjson_val *pivot = yyjson_obj_get(key, "pivot");
        slice_keys[slice->key_count++] = {
            .frame = _set_int(key, "frame", 0, FRAMES_MAX),
            .bounds = _set_rect(yyjson_obj_get(key, "bounds")),
            .center = _set_rect(yyjson_obj_get(key, "center")),
            .pivot = {_set_int(pivot, "x", -LENGTH_MAX, LENGTH_MAX), _set_int(pivot, "y", -LENGTH_MAX, LENGTH_MAX)},
            .has_pivot = pivot != nullptr};
    }
    return true;
}

static bool _set_read_slices(SetLoad *load, yyjson_val *slices) {
    const size_t count = yyjson_arr_size(slices);
    if (count == 0) return true;
    AnimationSlice *items = _set_new<AnimationSlice>(load, count);
    if (!items) return false;
    load->result->slices = items;
    size_t i = 0, max = 0;
    yyjson_val *slice = nullptr;
    yyjson_arr_foreach(slices, i, max, slice) {
        if (!_set_read_slice(load, slice, &items[load->result->slice_count++])) return false;
    }
    return true;
}

// --- the file ---

// The image must be in the file's folder or a folder below it.
static bool _set_read_image(SetLoad *load, yyjson_val *image) {
    const char *name = yyjson_get_str(image), *slash = SDL_strrchr(load->path, '/');
    const size_t folder = slash ? static_cast<size_t>(slash + 1 - load->path) : 0;
    if (!name || !*name || *name == '/' || SDL_strpbrk(name, "\\:") || SDL_strstr(name, "..")) {
        return engine_error(
            "[ANIMATION_SET] %s: meta.image '%s' is not an image beside the file: export the sheet beside its data",
            load->path, name ? name : "");
    }
    const size_t size = folder + SDL_strlen(name) + 1;
    char *path = _set_new<char>(load, size);
    if (!path) return false;
    SDL_memcpy(path, load->path, folder);
    SDL_memcpy(path + folder, name, size - folder);
    load->result->set.path = path;
    return true;
}

static bool _set_read(SetLoad *load, yyjson_val *root) {
    yyjson_val *meta = yyjson_obj_get(root, "meta");
    load->result->set.columns = 1;
    return _set_read_frames(load, yyjson_obj_get(root, "frames")) &&
           _set_read_image(load, yyjson_obj_get(meta, "image")) &&
           _set_read_tags(load, yyjson_obj_get(meta, "frameTags")) &&
           _set_read_slices(load, yyjson_obj_get(meta, "slices"));
}

static void *_set_json_alloc(void *, size_t size) { return SDL_malloc(size); }
static void *_set_json_realloc(void *, void *memory, size_t, size_t size) { return SDL_realloc(memory, size); }
static void _set_json_free(void *, void *memory) { SDL_free(memory); }

static bool _set_parse(SetLoad *load, char *text) {
    constexpr yyjson_alc ALLOCATOR = {_set_json_alloc, _set_json_realloc, _set_json_free, nullptr};
    yyjson_read_err error = {};
    yyjson_doc *document = yyjson_read_opts(text, SDL_strlen(text), YYJSON_READ_NOFLAG, &ALLOCATOR, &error);
    if (!document && error.code == YYJSON_READ_ERROR_MEMORY_ALLOCATION) {
        return engine_error("[ANIMATION_SET] Memory allocation failed while loading %s", load->path);
    }
    if (!document) {
        return engine_error(
            "[ANIMATION_SET] %s: invalid JSON at byte %zu: %s: export it again", load->path, error.pos, error.msg);
    }
    const bool read = _set_read(load, yyjson_doc_get_root(document));
    yyjson_doc_free(document);
    return read;
}

static AnimationSet *_set_load(const char *path) {
    auto *result = static_cast<LoadedSet *>(SDL_calloc(1, sizeof(LoadedSet)));
    if (!result) {
        engine_error("[ANIMATION_SET] Memory allocation failed while loading %s", path);
        return nullptr;
    }
    SetLoad load = {};
    load.path = path;
    load.result = result;
    char *text = storage_read_game_file(path);
    const bool loaded = text && _set_parse(&load, text);
    SDL_free(text);
    AnimationSet *set = &result->set;
    if (!loaded) animation_set_cleanup(&set);
    return set;
}

// The set and its sheets are replaced together or not at all.
static void _set_reload(void *owner, const char *path) {
    auto *loaded = static_cast<LoadedSet *>(owner);
    AnimationSet *fresh = _set_load(path);
    if (!fresh) return;
    const bool enough = fresh->clip_count >= loaded->set.clip_count ||
                        engine_error(
                            "[ANIMATION_SET] %s: %d clips, but %d are in use: restore them, or restart the program",
                            path, fresh->clip_count, loaded->set.clip_count);
    const bool fits = enough && _sprite_sheets_prepare(&loaded->set, fresh);
    if (fits) std::swap(*loaded, *reinterpret_cast<LoadedSet *>(fresh));
    _sprite_sheets_finish(&loaded->set, fits);
    animation_set_cleanup(&fresh);
    if (fits) SDL_Log("[ANIMATION_SET] Reloaded: %s", path);
}

AnimationSet *animation_set_load(const char *path) {
    const FileStamp stamp = reload_stamp(path, true);
    AnimationSet *set = _set_load(path);
    if (set) reload_follow(set, _set_reload, path, true, stamp);
    return set;
}

void animation_set_cleanup(AnimationSet **set) {
    if (!set || !*set) return;
    reload_forget(*set);
    auto *loaded = reinterpret_cast<LoadedSet *>(*set);
    arena_free(&loaded->arena);
    SDL_free(loaded);
    *set = nullptr;
}

// --- slices ---

const AnimationSlice *animation_set_find_slice(const AnimationSet *set, const char *name) {
    const auto *loaded = reinterpret_cast<const LoadedSet *>(set);
    for (int i = 0; i < loaded->slice_count; i++) {
        if (SDL_strcmp(loaded->slices[i].name, name) == 0) return &loaded->slices[i];
    }
    return nullptr;
}

const AnimationSliceKey *animation_slice_at(const AnimationSlice *slice, int frame) {
    const AnimationSliceKey *found = nullptr;
    for (int i = 0; slice && i < slice->key_count; i++) {
        if (slice->keys[i].frame <= frame) found = &slice->keys[i];
    }
    return found;
}
