#include "ghost.h"

#include "lumarind/core/error.h"
#include "lumarind/core/storage.h"

#include <SDL3/SDL_endian.h>
#include <SDL3/SDL_error.h>
#include <SDL3/SDL_storage.h>

static constexpr double SAMPLE_SECONDS = 0.05;

// The file: this header, then the samples, little-endian.
struct GhostHeader {
    char magic[4];
    Uint32 count, crc; // of the samples (CRC-32)
};
static constexpr char MAGIC[] = {'C', 'K', 'G', '1'};
static_assert(SDL_BYTEORDER == SDL_LIL_ENDIAN, "samples are written without byte swapping");
static_assert(sizeof(GhostSample) == 8 && sizeof(GhostHeader) == 12, "no padding");

struct GhostPath {
    char text[32];
};

static GhostPath ghost_path(int level) {
    GhostPath path = {};
    SDL_snprintf(path.text, sizeof path.text, "saves/ghost-%d.bin", level + 1);
    return path;
}

bool ghost_setup(Ghost *ghost) {
    if (!ghost->samples)
        ghost->samples = static_cast<GhostSample *>(SDL_calloc(GHOST_SAMPLES_MAX, sizeof(GhostSample)));
    return ghost->samples || engine_error("[GHOST] Memory allocation failed, error: %s", SDL_GetError());
}

void ghost_cleanup(Ghost *ghost) {
    SDL_free(ghost->samples);
    *ghost = {};
}

void ghost_record(Ghost *ghost, SDL_FPoint feet, int facing, const Animation *anim, double dt) {
    ghost->time -= dt;
    if (ghost->time > 0 || ghost->count == GHOST_SAMPLES_MAX) return;
    ghost->time += SAMPLE_SECONDS;
    ghost->samples[ghost->count++] = {static_cast<Sint16>(feet.x),     static_cast<Sint16>(feet.y),
                                      static_cast<Sint8>(facing),      static_cast<Uint8>(anim->clip),
                                      static_cast<Uint8>(anim->frame), 0};
}

void ghost_load(Ghost *ghost, int level) {
    const GhostPath path = ghost_path(level);
    SDL_PathInfo info = {};
    ghost->count = 0;
    if (!SDL_GetStoragePathInfo(storage_user(), path.text, &info)) return;
    char *bytes = storage_read_user_file(path.text);
    if (!bytes) return;
    GhostHeader header = {};
    const size_t size = static_cast<size_t>(info.size);
    if (size >= sizeof header) SDL_memcpy(&header, bytes, sizeof header);
    const size_t length = size_t{header.count} * sizeof(GhostSample);
    const bool valid = SDL_memcmp(header.magic, MAGIC, sizeof MAGIC) == 0 && header.count <= GHOST_SAMPLES_MAX &&
                       size == sizeof header + length && SDL_crc32(0, bytes + sizeof header, length) == header.crc;
    if (valid) {
        SDL_memcpy(ghost->samples, bytes + sizeof header, length);
        ghost->count = static_cast<int>(header.count);
    } else {
        engine_error("[GHOST] Damaged, not shown: %s", path.text);
    }
    SDL_free(bytes);
}

void ghost_save(const Ghost *ghost, int level) {
    const size_t length = static_cast<size_t>(ghost->count) * sizeof(GhostSample);
    GhostHeader header = {
        .magic = {}, .count = static_cast<Uint32>(ghost->count), .crc = SDL_crc32(0, ghost->samples, length)};
    SDL_memcpy(header.magic, MAGIC, sizeof MAGIC);
    char *bytes = static_cast<char *>(SDL_malloc(sizeof header + length));
    if (!bytes) return static_cast<void>(engine_error("[GHOST] Memory allocation failed, error: %s", SDL_GetError()));
    SDL_memcpy(bytes, &header, sizeof header);
    SDL_memcpy(bytes + sizeof header, ghost->samples, length);
    storage_write_user_file(ghost_path(level).text, bytes, sizeof header + length);
    SDL_free(bytes);
}

bool ghost_at(const Ghost *ghost, double seconds, GhostSample *sample) {
    const double at = seconds / SAMPLE_SECONDS;
    const int index = static_cast<int>(at);
    if (index < 0 || index + 1 >= ghost->count) return false;
    const GhostSample *a = &ghost->samples[index], *b = a + 1;
    *sample = *a;
    const double t = at - index;
    if (SDL_abs(b->x - a->x) > 40 || SDL_abs(b->y - a->y) > 40) return true; // the hero respawned: do not interpolate
    sample->x = static_cast<Sint16>(SDL_lround(a->x + (b->x - a->x) * t));
    sample->y = static_cast<Sint16>(SDL_lround(a->y + (b->y - a->y) * t));
    return true;
}
