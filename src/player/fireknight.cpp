#include "player/fireknight.h"

#include <iterator>

static constexpr int COLUMNS = 28; // of the sheet; each clip has a row of its own
static constexpr int FRAME_MS = 100;

template <int COUNT> struct FrameDurations {
    Sint32 ms[COUNT];
    constexpr FrameDurations() : ms() {
        for (Sint32 &duration : ms) duration = FRAME_MS;
    }
};
static constexpr FrameDurations<8> fireknight_idle_ms;
static constexpr FrameDurations<8> fireknight_run_ms;
static constexpr FrameDurations<3> fireknight_j_up_ms;
static constexpr FrameDurations<3> fireknight_j_down_ms;
static constexpr FrameDurations<20> fireknight_jump_ms;
static constexpr FrameDurations<8> fireknight_air_atk_ms;
static constexpr FrameDurations<8> fireknight_roll_ms;
static constexpr FrameDurations<11> fireknight_1_atk_ms;
static constexpr FrameDurations<19> fireknight_2_atk_ms;
static constexpr FrameDurations<28> fireknight_3_atk_ms;
static constexpr FrameDurations<18> fireknight_sp_atk_ms;
static constexpr FrameDurations<10> fireknight_defend_ms;
static constexpr FrameDurations<6> fireknight_take_hit_ms;
static constexpr FrameDurations<13> fireknight_death_ms;

static constexpr AnimationClip fireknight_clips[] = {
    {.name = "idle", .first_frame = 0 * COLUMNS, .frame_count = 8, .frame_ms = fireknight_idle_ms.ms, .loop = true},
    {.name = "run", .first_frame = 1 * COLUMNS, .frame_count = 8, .frame_ms = fireknight_run_ms.ms, .loop = true},
    {.name = "j_up", .first_frame = 2 * COLUMNS, .frame_count = 3, .frame_ms = fireknight_j_up_ms.ms, .loop = true},
    {.name = "j_down", .first_frame = 3 * COLUMNS, .frame_count = 3, .frame_ms = fireknight_j_down_ms.ms, .loop = true},
    {.name = "jump", .first_frame = 4 * COLUMNS, .frame_count = 20, .frame_ms = fireknight_jump_ms.ms, .loop = false},
    {.name = "air_atk",
     .first_frame = 5 * COLUMNS,
     .frame_count = 8,
     .frame_ms = fireknight_air_atk_ms.ms,
     .loop = false},
    {.name = "roll", .first_frame = 6 * COLUMNS, .frame_count = 8, .frame_ms = fireknight_roll_ms.ms, .loop = false},
    {.name = "1_atk", .first_frame = 7 * COLUMNS, .frame_count = 11, .frame_ms = fireknight_1_atk_ms.ms, .loop = false},
    {.name = "2_atk", .first_frame = 8 * COLUMNS, .frame_count = 19, .frame_ms = fireknight_2_atk_ms.ms, .loop = false},
    {.name = "3_atk", .first_frame = 9 * COLUMNS, .frame_count = 28, .frame_ms = fireknight_3_atk_ms.ms, .loop = false},
    {.name = "sp_atk",
     .first_frame = 10 * COLUMNS,
     .frame_count = 18,
     .frame_ms = fireknight_sp_atk_ms.ms,
     .loop = false},
    {.name = "defend",
     .first_frame = 11 * COLUMNS,
     .frame_count = 10,
     .frame_ms = fireknight_defend_ms.ms,
     .loop = true},
    {.name = "take_hit",
     .first_frame = 12 * COLUMNS,
     .frame_count = 6,
     .frame_ms = fireknight_take_hit_ms.ms,
     .loop = false},
    {.name = "death",
     .first_frame = 13 * COLUMNS,
     .frame_count = 13,
     .frame_ms = fireknight_death_ms.ms,
     .loop = false},
};
static_assert(std::size(fireknight_clips) == FIREKNIGHT_CLIP_COUNT, "one clip per index");

const AnimationSet fireknight_animations = {
    .path = "assets/fireknight/sprites/fireknight_288x128.png",
    .frame_w = 288,
    .frame_h = 128,
    .columns = COLUMNS,
    .rows = FIREKNIGHT_CLIP_COUNT,
    .clips = fireknight_clips,
    .clip_count = FIREKNIGHT_CLIP_COUNT,
};
