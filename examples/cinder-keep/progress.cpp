#include "progress.h"

#include "lumarind/core/error.h"
#include "lumarind/core/storage.h"

#include <SDL3/SDL_log.h>
#include <SDL3/SDL_storage.h>

#include <cinttypes>
#include <cstdio>

static constexpr char PATH[] = "saves/progress.txt", BACKUP_PATH[] = "saves/progress.damaged.txt"; // user files
static constexpr int VERSION = 2;

Progress progress;
static bool loaded, read_failed; // read_failed: the file may be intact, so it is not overwritten
static ProgressLoad load_result;

// Version 1 had best times in whole seconds, but neither embers nor runs.
static bool progress_read_1(const char *text, Progress *into) {
    int seconds[LEVEL_COUNT] = {};
    if (std::sscanf(text, "cinder-keep 1\nreached %d\nbest %d %d", &into->reached, &seconds[0], &seconds[1]) != 3)
        return false;
    for (int i = 0; i < LEVEL_COUNT; i++) into->levels[i].best_ms = seconds[i] * Sint64{1000};
    into->finished = seconds[LEVEL_COUNT - 1] > 0;
    return true;
}

// The last line holds the checksum of the text before it.
static bool progress_read_2(const char *text, Progress *into) {
    const char *last = SDL_strstr(text, "check ");
    unsigned check = 0;
    if (!last || std::sscanf(last, "check %x", &check) != 1) return false;
    if (SDL_crc32(0, text, static_cast<size_t>(last - text)) != check) return false;
    int finished = 0, key = 0, door = 0, used = 0;
    RunProgress *run = &into->run;
    if (std::sscanf(text, "cinder-keep 2\nreached %d\nfinished %d\n%n", &into->reached, &finished, &used) != 2 || !used)
        return false;
    text += used;
    for (LevelProgress &level : into->levels) {
        used = 0;
        if (std::sscanf(
                text, "level best_ms %" SCNd64 " embers %d deaths %d\n%n", &level.best_ms, &level.embers, &level.deaths,
                &used) != 3 ||
            !used)
            return false;
        text += used;
    }
    if (std::sscanf(
            text,
            "run level %d checkpoint %d ms %" SCNd64 " deaths %d key %d door %d embers %" SCNx64 " %" SCNx64 " %" SCNx64
            " %" SCNx64,
            &run->level, &run->checkpoint, &run->ms, &run->deaths, &key, &door, &run->embers[0], &run->embers[1],
            &run->embers[2], &run->embers[3]) != 10)
        return false;
    into->finished = finished != 0;
    run->has_key = key != 0;
    run->door_open = door != 0;
    return true;
}

static bool progress_read(const char *text) {
    Progress read;
    int version = 0;
    if (std::sscanf(text, "cinder-keep %d", &version) != 1) return false;
    if (version == 1 ? !progress_read_1(text, &read) : version != VERSION || !progress_read_2(text, &read))
        return false;
    if (read.reached < 1 || read.reached > LEVEL_COUNT || read.run.level >= LEVEL_COUNT) return false;
    progress = read;
    return true;
}

static ProgressLoad progress_load_file() {
    SDL_PathInfo info = {};
    if (!SDL_GetStoragePathInfo(storage_user(), PATH, &info)) return PROGRESS_NEW;
    char *text = storage_read_user_file(PATH);
    if (text && progress_read(text)) {
        SDL_free(text);
        return PROGRESS_READ;
    }
    read_failed = !text && info.size > 0;
    if (text) storage_write_user_file(BACKUP_PATH, text, SDL_strlen(text));
    SDL_free(text);
    SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "[PROGRESS] Damaged, copied to %s: %s", BACKUP_PATH, PATH);
    return PROGRESS_DAMAGED;
}

ProgressLoad progress_load() { return loaded ? load_result : progress_load_again(); }

ProgressLoad progress_load_again() {
    progress = {};
    loaded = true;
    return load_result = progress_load_file();
}

bool progress_save() {
    if (read_failed) return false;
    char text[1024];
    const RunProgress &run = progress.run;
    int used = SDL_snprintf(
        text, sizeof text, "cinder-keep %d\nreached %d\nfinished %d\n", VERSION, progress.reached, progress.finished);
    for (const LevelProgress &level : progress.levels) {
        used += SDL_snprintf(
            text + used, sizeof text - static_cast<size_t>(used), "level best_ms %" SDL_PRIs64 " embers %d deaths %d\n",
            level.best_ms, level.embers, level.deaths);
    }
    used += SDL_snprintf(
        text + used, sizeof text - static_cast<size_t>(used),
        "run level %d checkpoint %d ms %" SDL_PRIs64 " deaths %d key %d door %d embers %" SDL_PRIx64 " %" SDL_PRIx64
        " %" SDL_PRIx64 " %" SDL_PRIx64 "\n",
        run.level, run.checkpoint, run.ms, run.deaths, run.has_key, run.door_open, run.embers[0], run.embers[1],
        run.embers[2], run.embers[3]);
    const Uint32 check = SDL_crc32(0, text, static_cast<size_t>(used));
    used += SDL_snprintf(text + used, sizeof text - static_cast<size_t>(used), "check %08x\n", check);
    return storage_write_user_file(PATH, text, static_cast<size_t>(used));
}

void progress_forget_run() { progress.run = {}; }

bool progress_has_game() { return progress.run.level >= 0 || progress.reached > 1; }
