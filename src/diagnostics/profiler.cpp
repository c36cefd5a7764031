#include "diagnostics/profiler.h"

#include "diagnostics/profiler_internal.h"
#include "lumarind/config/config.h"
#include "lumarind/core/error.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_timer.h>
#include <SDL3/SDL_video.h>

static constexpr int RECTS_CAPACITY = FRAME_PROFILE_CAPACITY; // at most one rectangle per frame in a batch
static constexpr double MS_PER_SECOND = 1000;

// The panel covers at most two fifths of the view's height.
static constexpr int PANEL_SHARE = 2, PANEL_SHARE_OF = 5;
static constexpr int VIEW_WIDTH_MIN = 200;
static constexpr int VIEW_HEIGHT_MIN = 208; // leaves room for the compact panel
static constexpr int COMPACT_PANEL_HEIGHT = 83, COMPACT_CHART_HEIGHT = 60;
static constexpr int FULL_PANEL_HEIGHT = 156, FULL_CHART_HEIGHT = 100;

// UI units, from the panel's top edge downwards.
static constexpr float MARGIN = 6;
static constexpr float CHART_X = 62;
static constexpr float CHART_TOP = 17;
static constexpr float LABEL_RIGHT = 54; // right edge of the labels left of the chart
static constexpr float STRIP_GAP = 3;
static constexpr float STRIP_HEIGHT = 8;
static constexpr float STRIP_PITCH = 11;
static constexpr float CHAR_SIZE = SDL_DEBUG_TEXT_FONT_CHARACTER_SIZE;
static constexpr float SLICE_HEIGHT_MIN = 0.05f; // thinner slices take up space but are not drawn
static constexpr float PIP_HEIGHT = 3;
static constexpr double PIP_SECONDS = 0.25;
static constexpr float DASH_WIDTH = 4, DASH_PITCH = 8;
static constexpr float BUDGET_LABEL_ROOM = 8;
static constexpr float SWATCH_SIZE = 6, SWATCH_PITCH = 12, LEGEND_GAP = 10;

static constexpr Uint32 JITTER_LIMITS_NS[] = {SDL_MS_TO_NS(1), SDL_MS_TO_NS(4)};

static constexpr size_t NUMBER_TEXT_SIZE = 16; // bytes, with the terminating NUL, as below
static constexpr size_t MODE_TEXT_SIZE = 32;
static constexpr size_t STATISTICS_TEXT_SIZE = 160;

ProfilerState *lumarind::profiler;

// --- lifetime ---

static bool _profiler_new_rects(ProfilerRects **slots, int count) {
    for (int i = 0; i < count; i++) {
        slots[i] = profiler_rects_new(RECTS_CAPACITY, RECTS_CAPACITY);
        if (!slots[i]) return false;
    }
    return true;
}

bool profiler_setup() {
    if (profiler) return true;
    profiler = static_cast<ProfilerState *>(SDL_calloc(1, sizeof *profiler));
    if (!profiler) return engine_error("[PROFILER] Memory allocation failed, error: %s", SDL_GetError());
    if (!_profiler_new_rects(profiler->phase_rects, PHASE_COUNT)) return false;
    if (!_profiler_new_rects(profiler->step_rects, STEP_CLASSES)) return false;
    if (!_profiler_new_rects(profiler->jitter_rects, JITTER_CLASSES)) return false;
    if (!_profiler_new_rects(&profiler->pip_rects, 1) || !_profiler_new_rects(&profiler->budget_rects, 1)) return false;
    profiler->budget_ms = profiler_resolve_budget_ms();
    return true;
}

void profiler_free_rects(ProfilerRects **rects) {
    if (!*rects) return;
    profiler_rects_cleanup(*rects);
    SDL_free(*rects);
    *rects = nullptr;
}

void profiler_cleanup() {
    if (!profiler) return;
    for (ProfilerRects *&rects : profiler->phase_rects) profiler_free_rects(&rects);
    for (ProfilerRects *&rects : profiler->step_rects) profiler_free_rects(&rects);
    for (ProfilerRects *&rects : profiler->jitter_rects) profiler_free_rects(&rects);
    profiler_free_rects(&profiler->pip_rects);
    profiler_free_rects(&profiler->budget_rects);
    SDL_free(profiler);
    profiler = nullptr;
}

// --- recording ---

void profiler_frame_boundary(Uint64 now_ns) {
    if (profiler) frame_profile_boundary(&profiler->live, now_ns);
}

void profiler_mark(int phase) {
    if (profiler) frame_profile_mark(&profiler->live, phase, SDL_GetTicksNS());
}

void profiler_count_step() {
    if (profiler) frame_profile_count_step(&profiler->live);
}

void profiler_toggle_freeze() {
    if (!profiler) return;
    profiler->frozen = !profiler->frozen;
    if (profiler->frozen) profiler->frozen_copy = profiler->live;
    SDL_LogDebug(SDL_LOG_CATEGORY_TEST, "[PROFILER] DEBUG: Toggled: frozen: %d", profiler->frozen);
}

// --- budget and view size ---

double profiler_resolve_budget_ms() {
    if (!profiler) return 0;
    const int limit = cfg_get_fps_limit();
    if (limit >= 1) return MS_PER_SECOND / limit;
    int interval = 0; // in refreshes; negative for adaptive vsync
    if (!SDL_GetRenderVSync(engine_renderer(), &interval) || interval <= 0) return 0;
    const SDL_DisplayMode *mode = SDL_GetCurrentDisplayMode(SDL_GetDisplayForWindow(engine_window()));
    if (!mode || !(mode->refresh_rate > 0)) return 0;
    return MS_PER_SECOND * interval / static_cast<double>(mode->refresh_rate);
}

PanelTier profiler_tier_for(Sint32 width, Sint32 height) {
    const Sint64 room = Sint64{height} * PANEL_SHARE;
    if (width < VIEW_WIDTH_MIN || room < COMPACT_PANEL_HEIGHT * PANEL_SHARE_OF) return PANEL_TOO_SMALL;
    return room < FULL_PANEL_HEIGHT * PANEL_SHARE_OF ? PANEL_COMPACT : PANEL_FULL;
}

// Also updates the budget when the view's size changes, because the window may have moved to another display.
static PanelTier _profiler_check_view(Sint32 width, Sint32 height) {
    if (width != profiler->last_width || height != profiler->last_height) {
        profiler->last_width = width;
        profiler->last_height = height;
        profiler->budget_ms = profiler_resolve_budget_ms();
    }
    const PanelTier tier = profiler_tier_for(width, height);
    if (tier == PANEL_TOO_SMALL && !profiler->too_small_logged) {
        SDL_Log(
            "[PROFILER] Window is %dx%d, too small for the panel, which needs at least %dx%d.", width, height,
            VIEW_WIDTH_MIN, VIEW_HEIGHT_MIN);
    }
    profiler->too_small_logged = tier == PANEL_TOO_SMALL;
    return tier;
}

// --- filling the batches ---

float profiler_column_edge(float x, float width, float bar_width, int i) {
    return x + width - static_cast<float>(i) * bar_width;
}

// The horizontal extent of a frame's column: x and w.
static SDL_FRect _profiler_column(float x, float width, float bar_width, int age) {
    const float left = profiler_column_edge(x, width, bar_width, age + 1);
    return {left, 0, profiler_column_edge(x, width, bar_width, age) - left, 0};
}

static void _profiler_add(ProfilerRects *rects, SDL_FRect rect) {
    profiler_rects_add(rects, &rect); // reports errors; the rectangle is then skipped
}

// Stacks the phases from the chart's bottom upwards, clipped at its top.
static void _profiler_stack_phases(const FrameRecord *frame, float left, float width, float top, float height) {
    float cursor = top + height;
    for (int phase = 0; phase < PHASE_COUNT; phase++) {
        float slice = frame_profile_sample_y(frame->phase_ns[phase], profiler->scale_ms, height);
        if (slice <= 0) continue;
        slice = SDL_min(slice, cursor - top);
        if (slice <= 0) return;
        cursor -= slice;
        if (slice >= SLICE_HEIGHT_MIN) _profiler_add(profiler->phase_rects[phase], {left, cursor, width, slice});
    }
}

void profiler_build_columns(
    const FrameProfile *profile, const ChartLayout *layout, float x, float y, float width, float height) {
    if (!profiler) return;
    for (int age = 0; age < layout->visible_frames; age++) {
        const FrameRecord *frame = frame_profile_at(profile, age);
        if (!frame) return;
        const SDL_FRect bar = _profiler_column(x, width, layout->bar_width, age);
        _profiler_stack_phases(frame, bar.x, bar.w, y, height);
        const bool slow = frame->total_ns / static_cast<double>(SDL_NS_PER_SECOND) > PIP_SECONDS;
        if (slow) _profiler_add(profiler->pip_rects, {bar.x, y, bar.w, PIP_HEIGHT});
    }
}

static int _profiler_jitter_class(Uint32 a_ns, Uint32 b_ns) {
    const Uint32 difference = a_ns > b_ns ? a_ns - b_ns : b_ns - a_ns;
    int i = 0;
    for (const Uint32 limit : JITTER_LIMITS_NS) i += difference >= limit ? 1 : 0;
    return i;
}

void profiler_build_strips(
    const FrameProfile *profile, const ChartLayout *layout, float x, float width, float step_y, float jitter_y) {
    if (!profiler) return;
    for (int age = 0; age < layout->visible_frames; age++) {
        const FrameRecord *frame = frame_profile_at(profile, age);
        if (!frame) return;
        const SDL_FRect bar = _profiler_column(x, width, layout->bar_width, age);
        const int steps = SDL_min(frame->steps, STEP_CLASSES - 1);
        _profiler_add(profiler->step_rects[steps], {bar.x, step_y, bar.w, STRIP_HEIGHT});
        const FrameRecord *older = frame_profile_at(profile, age + 1); // may be outside the chart
        if (!older) return;
        const int jitter = _profiler_jitter_class(frame->total_ns, older->total_ns);
        _profiler_add(profiler->jitter_rects[jitter], {bar.x, jitter_y, bar.w, STRIP_HEIGHT});
    }
}

// --- drawing ---

void profiler_set_color(SDL_Renderer *renderer, SDL_Color color) {
    if (profiler) SDL_SetRenderDrawColor(renderer, color.r, color.g, color.b, color.a);
}

void profiler_flush_rects(SDL_Renderer *renderer, ProfilerRects *rects, SDL_Color color) {
    if (!profiler) return;
    if (rects->count > 0) {
        profiler_set_color(renderer, color);
        SDL_RenderFillRects(renderer, rects->items, rects->count);
    }
    profiler_rects_reset(rects);
}

void profiler_debug_text_right(SDL_Renderer *renderer, float right_x, float y, const char *text) {
    if (!profiler) return;
    SDL_RenderDebugText(renderer, right_x - CHAR_SIZE * static_cast<float>(SDL_strlen(text)), y, text);
}

static void _profiler_draw_ms_right(SDL_Renderer *renderer, float right_x, float y, double ms) {
    char text[NUMBER_TEXT_SIZE];
    SDL_snprintf(text, sizeof text, "%.1f", ms);
    profiler_debug_text_right(renderer, right_x, y, text);
}

static void
_profiler_draw_chart(SDL_Renderer *renderer, const FrameProfile *profile, const ChartLayout *layout, SDL_FRect chart) {
    profiler_build_columns(profile, layout, chart.x, chart.y, chart.w, chart.h);
    for (int phase = 0; phase < PHASE_COUNT; phase++) {
        profiler_flush_rects(renderer, profiler->phase_rects[phase], PHASE_COLORS[phase]);
    }
    profiler_flush_rects(renderer, profiler->pip_rects, PIP_COLOR);

    const float last_x = chart.x + chart.w - 1, bottom = chart.y + chart.h;
    profiler_set_color(renderer, GRIDLINE_COLOR);
    SDL_RenderLine(renderer, chart.x, chart.y, last_x, chart.y);
    SDL_RenderLine(renderer, chart.x, bottom, last_x, bottom);
    profiler_set_color(renderer, TEXT_COLOR);
    _profiler_draw_ms_right(renderer, LABEL_RIGHT, chart.y, profiler->scale_ms);
    profiler_debug_text_right(renderer, LABEL_RIGHT, bottom - CHAR_SIZE, "0");
}

void profiler_draw_budget_line(SDL_Renderer *renderer, float x, float y, float width, float height) {
    if (!profiler || !(profiler->budget_ms > 0 && profiler->budget_ms < profiler->scale_ms)) return;
    const float line_y = y + height - static_cast<float>(profiler->budget_ms / profiler->scale_ms) * height;
    const float right = x + width;
    for (int i = 0; x + static_cast<float>(i) * DASH_PITCH < right; i++) {
        const float left = x + static_cast<float>(i) * DASH_PITCH;
        _profiler_add(profiler->budget_rects, {left, line_y, SDL_min(DASH_WIDTH, right - left), 1});
    }
    profiler_flush_rects(renderer, profiler->budget_rects, BUDGET_COLOR);
    if (line_y - y < BUDGET_LABEL_ROOM) return; // it would overlap the scale's label
    profiler_set_color(renderer, BUDGET_COLOR);
    _profiler_draw_ms_right(renderer, x - CHAR_SIZE, line_y - CHAR_SIZE / 2, profiler->budget_ms);
}

static void _profiler_draw_strips(
    SDL_Renderer *renderer, const FrameProfile *profile, const ChartLayout *layout, SDL_FRect chart, float step_y) {
    const float jitter_y = step_y + STRIP_PITCH;
    profiler_build_strips(profile, layout, chart.x, chart.w, step_y, jitter_y);
    for (int i = 0; i < STEP_CLASSES; i++) profiler_flush_rects(renderer, profiler->step_rects[i], STEP_COLORS[i]);
    for (int i = 0; i < JITTER_CLASSES; i++) {
        profiler_flush_rects(renderer, profiler->jitter_rects[i], JITTER_COLORS[i]);
    }
    profiler_set_color(renderer, TEXT_COLOR);
    profiler_debug_text_right(renderer, LABEL_RIGHT, step_y, "steps");
    profiler_debug_text_right(renderer, LABEL_RIGHT, jitter_y, "jitter");
}

static void _profiler_format_mode(char *text, size_t size) {
    const int limit = cfg_get_fps_limit();
    if (cfg_get_vsync_enabled()) {
        SDL_strlcpy(text, "vsync", size);
    } else if (limit >= 1) {
        SDL_snprintf(text, size, "limit %d", limit);
    } else {
        SDL_strlcpy(text, "uncapped", size);
    }
}

static void _profiler_draw_statistics(SDL_Renderer *renderer, const FrameStats *stats, float y) {
    const double ns_per_ms = SDL_NS_PER_MS;
    char mode[MODE_TEXT_SIZE], text[STATISTICS_TEXT_SIZE];
    _profiler_format_mode(mode, sizeof mode);
    // Formatted here because SDL_RenderDebugTextFormat allocates.
    SDL_snprintf(
        text, sizeof text, "avg %.1f  min %.1f  max %.1f  1%% low %.1f ms   win %df   %s", stats->avg_ns / ns_per_ms,
        stats->min_ns / ns_per_ms, stats->max_ns / ns_per_ms, stats->low_ns / ns_per_ms, stats->window_frames, mode);
    profiler_set_color(renderer, TEXT_COLOR);
    SDL_RenderDebugText(renderer, MARGIN, y, text);
}

void profiler_draw_legend(SDL_Renderer *renderer, float x, float y, float right_limit) {
    if (!profiler) return;
    for (int phase = 0; phase < PHASE_COUNT; phase++) {
        const char *name = PHASE_NAMES[phase];
        const float width = CHAR_SIZE * static_cast<float>(SDL_strlen(name)) + SWATCH_PITCH + LEGEND_GAP;
        if (x + width > right_limit) return;
        const SDL_FRect swatch = {x, y + 1, SWATCH_SIZE, SWATCH_SIZE};
        profiler_set_color(renderer, PHASE_COLORS[phase]);
        SDL_RenderFillRect(renderer, &swatch);
        profiler_set_color(renderer, TEXT_COLOR);
        SDL_RenderDebugText(renderer, x + SWATCH_PITCH, y, name);
        x += width;
    }
}

static void _profiler_draw_panel(SDL_Renderer *renderer, PanelTier tier, float width, float height) {
    const bool full = tier == PANEL_FULL;
    const float panel_height = static_cast<float>(full ? FULL_PANEL_HEIGHT : COMPACT_PANEL_HEIGHT);
    const float top = height - panel_height;
    const SDL_FRect backdrop = {0, top, width, panel_height};
    const SDL_FRect chart = {
        CHART_X, top + CHART_TOP, width - CHART_X - MARGIN,
        static_cast<float>(full ? FULL_CHART_HEIGHT : COMPACT_CHART_HEIGHT)};

    const FrameProfile *profile = profiler->frozen ? &profiler->frozen_copy : &profiler->live;
    ChartLayout layout = {};
    FrameStats stats = {}; // of the frames shown in the chart
    frame_profile_chart_layout(profile->count, chart.w, &layout);
    frame_profile_stats(profile, layout.visible_frames, &stats);
    profiler->scale_ms =
        frame_profile_ladder_pick(stats.max_ns / static_cast<double>(SDL_NS_PER_MS), profiler->scale_ms);

    profiler_set_color(renderer, BACKDROP_COLOR);
    SDL_RenderFillRect(renderer, &backdrop);
    _profiler_draw_chart(renderer, profile, &layout, chart);
    profiler_draw_budget_line(renderer, chart.x, chart.y, chart.w, chart.h);
    const float step_y = chart.y + chart.h + STRIP_GAP;
    if (full) _profiler_draw_strips(renderer, profile, &layout, chart, step_y);
    _profiler_draw_statistics(renderer, &stats, top + MARGIN);
    if (profiler->frozen) {
        profiler_set_color(renderer, FROZEN_COLOR);
        profiler_debug_text_right(renderer, width - MARGIN, top + MARGIN, "FROZEN");
    }
    if (full) profiler_draw_legend(renderer, MARGIN, step_y + 2 * STRIP_PITCH, width - MARGIN);
}

void profiler_tick() {
    if (!profiler || !engine_get_show_frame_time_graph()) return;
    profiler_mark(PHASE_PANEL);
    float view_width = 0, view_height = 0;
    engine_view_size(&view_width, &view_height);
    const Sint32 width = static_cast<Sint32>(view_width), height = static_cast<Sint32>(view_height);
    const PanelTier tier = _profiler_check_view(width, height);
    if (tier == PANEL_TOO_SMALL) return;

    SDL_Renderer *renderer = engine_renderer();
    SDL_BlendMode blend = SDL_BLENDMODE_NONE;
    SDL_GetRenderDrawBlendMode(renderer, &blend);
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    const float scale = static_cast<float>(engine_ui_scale());
    SDL_SetRenderScale(renderer, scale, scale);
    _profiler_draw_panel(renderer, tier, static_cast<float>(width), static_cast<float>(height));
    SDL_SetRenderDrawBlendMode(renderer, blend);
}
