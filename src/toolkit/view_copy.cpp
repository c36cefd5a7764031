#include "toolkit/view_copy.h"

#include <SDL3/SDL_render.h>

struct Span { // along one axis
    float src, src_length, dst, dst_length;
};

static bool _is_whole(float number) { return number == SDL_floorf(number); }

// Clips a span to the texels visible in the view, 0 to `view`, but only if texels cover whole units and start on one:
// otherwise clipping could shift the sampling. Returns false if nothing is visible.
static bool _clip_to_view(Span *span, float view, bool mirrored) {
    const float texel = span->dst_length / span->src_length;
    if (!(texel >= 1) || !_is_whole(texel) || !_is_whole(span->dst) || !_is_whole(span->src_length)) return true;
    const float first = SDL_max(SDL_floorf(-span->dst / texel), 0);
    const float end = SDL_min(SDL_ceilf((view - span->dst) / texel), span->src_length);
    if (first >= end) return false;
    span->src += mirrored ? span->src_length - end : first;
    span->src_length = end - first;
    span->dst += first * texel;
    span->dst_length = span->src_length * texel;
    return true;
}

static bool
_copy(SDL_Renderer *renderer, SDL_Texture *texture, const SDL_FRect *src, const SDL_FRect *dst, SDL_FlipMode flip) {
    return flip == SDL_FLIP_NONE ? SDL_RenderTexture(renderer, texture, src, dst)
                                 : SDL_RenderTextureRotated(renderer, texture, src, dst, 0, nullptr, flip);
}

// Renderer state that decides whether clipping pays. Each query costs a good part of a copy's time, so the results are
// cached for a frame; stale ones cost time, but never change a pixel.
struct ViewState {
    const SDL_Renderer *renderer; // null: not queried in this frame
    bool software;                // other renderers clip by themselves
    bool plain;                   // one unit is one pixel
};

[[gnu::noinline]] static ViewState _query_view(SDL_Renderer *renderer) {
    SDL_RendererLogicalPresentation presentation = SDL_LOGICAL_PRESENTATION_DISABLED;
    SDL_FPoint scale = {1, 1};
    const char *name = SDL_GetRendererName(renderer);
    SDL_GetRenderLogicalPresentation(renderer, nullptr, nullptr, &presentation);
    SDL_GetRenderScale(renderer, &scale.x, &scale.y);
    return {
        .renderer = renderer,
        .software = name && SDL_strcmp(name, SDL_SOFTWARE_RENDERER) == 0,
        .plain = presentation == SDL_LOGICAL_PRESENTATION_DISABLED && scale.x == 1 && scale.y == 1};
}

static ViewState g_view_state;

void view_copy_new_frame() { g_view_state.renderer = nullptr; }

[[gnu::noinline]] static bool _copy_clipped(
    SDL_Renderer *renderer, SDL_Texture *texture, const SDL_FRect *src, const SDL_FRect *dst, SDL_FlipMode flip) {
    SDL_FRect whole = {};
    SDL_Rect view = {};
    if (!SDL_GetTextureSize(texture, &whole.w, &whole.h) || !SDL_GetRenderViewport(renderer, &view)) return false;
    if (!src) src = &whole;
    Span x = {src->x, src->w, dst->x, dst->w}, y = {src->y, src->h, dst->y, dst->h};
    if (!_clip_to_view(&x, static_cast<float>(view.w), (flip & SDL_FLIP_HORIZONTAL) != 0)) return true;
    if (!_clip_to_view(&y, static_cast<float>(view.h), (flip & SDL_FLIP_VERTICAL) != 0)) return true;
    const SDL_FRect from = {x.src, y.src, x.src_length, y.src_length};
    const SDL_FRect to = {x.dst, y.dst, x.dst_length, y.dst_length};
    return _copy(renderer, texture, &from, &to, flip);
}

bool copy_texture_in_view(
    SDL_Renderer *renderer, SDL_Texture *texture, const SDL_FRect *src, const SDL_FRect *dst, SDL_FlipMode flip) {
    constexpr float SMALL = 512; // units; for larger copies clipping is always considered
    if (g_view_state.renderer != renderer) g_view_state = _query_view(renderer);
    if (!g_view_state.software) return _copy(renderer, texture, src, dst, flip);
    const bool small = src && dst->w <= SMALL && dst->h <= SMALL && dst->w <= src->w && dst->h <= src->h;
    if (small && g_view_state.plain) return _copy(renderer, texture, src, dst, flip);
    return _copy_clipped(renderer, texture, src, dst, flip);
}
