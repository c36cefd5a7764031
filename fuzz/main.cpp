// libFuzzer's entry point. LUMARIND_FUZZ selects the target, because the fuzzer restarts itself with its own arguments.
#include "engine/game_internal.h"
#include "fuzz/support.h"
#include "fuzz/targets.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

static constexpr GameScreen FUZZ_SCREENS[] = {{.name = "fuzz"}};
static constexpr Game FUZZ_GAME = {
    .program = "lumarind_fuzz",
    .id = "lumarind-engine",
    .organisation = "lumarind",
    .screens = FUZZ_SCREENS,
    .screen_count = 1,
    .files = GAME_FILES_CURRENT_FOLDER};

static const FuzzTarget *target;

static const FuzzTarget *find_target(const char *name) {
    for (const FuzzTarget &row : FUZZ_TARGETS) {
        if (std::strcmp(row.name, name) == 0) return &row;
    }
    return nullptr;
}

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    const char *name = std::getenv("LUMARIND_FUZZ");
    target = find_target(name ? name : "");
    if (!target) {
        std::fprintf(stderr, "LUMARIND_FUZZ must be the name of a target in targets.h\n");
        std::exit(2);
    }
    _engine_set_game(&FUZZ_GAME);
    std::atexit(fuzz_stop);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz_clear_log();
    return target->run(data, size);
}
