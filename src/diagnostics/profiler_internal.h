// profiler_internal: the profiler's state, and the panel's layout and drawing steps. For the profiler, its tests and
// benchmarks. Lengths are in UI units.
#pragma once

#include "diagnostics/frame_profile.h"
#include "lumarind/core/typed_array.h"

#include <SDL3/SDL_pixels.h>
#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

struct SDL_Renderer;

struct ProfilerRectsTraits : ArrayOfValues<SDL_FRect> {
    static constexpr const char *TAG = "PROFILER";
    static constexpr const char *PREFIX = "profiler_rects";
};
TYPED_ARRAY_STAMP(profiler_rects, ProfilerRects, ProfilerRectsTraits)
TYPED_ARRAY_STAMP_ADD(profiler_rects, ProfilerRects, ProfilerRectsTraits)

constexpr int STEP_CLASSES = 4; // frames with 0, 1, 2, and 3 or more fixed steps
constexpr int JITTER_CLASSES = 3;

constexpr SDL_Color PHASE_COLORS[PHASE_COUNT] = {
    {38, 166, 154, 255}, // evt
    {255, 0, 255, 255},  // swap
    {255, 152, 0, 255},  // fix
    {76, 175, 80, 255},  // tick
    {156, 39, 176, 255}, // ovl
    {121, 85, 72, 255},  // panel
    {33, 150, 243, 255}, // pres
    {80, 80, 88, 255},   // sleep
};
constexpr SDL_Color STEP_COLORS[STEP_CLASSES] = {
    {48, 48, 56, 255}, {76, 175, 80, 255}, {255, 152, 0, 255}, {244, 67, 54, 255}};
constexpr SDL_Color JITTER_COLORS[JITTER_CLASSES] = {{76, 175, 80, 255}, {255, 152, 0, 255}, {244, 67, 54, 255}};
constexpr SDL_Color BACKDROP_COLOR = {16, 18, 24, 200};
constexpr SDL_Color GRIDLINE_COLOR = {96, 102, 112, 255};
constexpr SDL_Color BUDGET_COLOR = {224, 224, 224, 192};
constexpr SDL_Color TEXT_COLOR = {208, 214, 224, 255};
constexpr SDL_Color FROZEN_COLOR = {255, 152, 0, 255};
constexpr SDL_Color PIP_COLOR = {255, 0, 255, 255};

enum PanelTier {
    PANEL_TOO_SMALL = 0,
    PANEL_COMPACT = 1,
    PANEL_FULL = 2, // with strips and legend
};

struct ProfilerState {
    FrameProfile live, frozen_copy;
    bool frozen;                    // the panel draws the copy
    double scale_ms;                // of the chart's full height; persists between frames for its hysteresis
    double budget_ms;               // frame budget; 0: none
    Sint32 last_width, last_height; // view size for which the budget was computed
    bool too_small_logged;          // once per episode of a too small view
    // Batches, filled and emptied within one draw; all owned.
    ProfilerRects *phase_rects[PHASE_COUNT], *step_rects[STEP_CLASSES], *jitter_rects[JITTER_CLASSES];
    ProfilerRects *pip_rects, *budget_rects;
};
namespace lumarind {
extern ProfilerState *profiler; // null before setup
}
using lumarind::profiler;

double profiler_resolve_budget_ms(); // from the frame-rate limit, else from vsync and the display; else 0
PanelTier profiler_tier_for(Sint32 width, Sint32 height);
float profiler_column_edge(float x, float width, float bar_width, int i); // right edge of the column of age i

// --- filling the batches ---
void profiler_build_columns(
    const FrameProfile *profile, const ChartLayout *layout, float x, float y, float width, float height);
void profiler_build_strips(
    const FrameProfile *profile, const ChartLayout *layout, float x, float width, float step_y, float jitter_y);

// --- drawing ---
void profiler_draw_budget_line(SDL_Renderer *renderer, float x, float y, float width, float height);
void profiler_draw_legend(SDL_Renderer *renderer, float x, float y, float right_limit); // as many phases as fit
void profiler_debug_text_right(SDL_Renderer *renderer, float right_x, float y, const char *text);
void profiler_set_color(SDL_Renderer *renderer, SDL_Color color);
void profiler_flush_rects(SDL_Renderer *renderer, ProfilerRects *rects, SDL_Color color); // draws and empties a batch
void profiler_free_rects(ProfilerRects **rects);                                          // sets null; null is ignored
