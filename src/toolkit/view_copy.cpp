#include "toolkit/view_copy.h"

#include <SDL3/SDL_render.h>

struct Span { // along one axis
    float src, src_length, dst, dst_length;
};

static bool _is_whole(float number) { return number == SDL_floorf(number); }

// Cuts a span down to the texels that the view, from 0 to `view`, shows some of. Only where texels are whole units
// large and start on one: elsewhere the cut could move the sampling. False: nothing of it is in the view.
static bool _cut_to_view(Span *span, float view, bool mirrored) {
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

bool copy_texture_in_view(
    SDL_Renderer *renderer, SDL_Texture *texture, const SDL_FRect *src, const SDL_FRect *dst, SDL_FlipMode flip) {
    SDL_FRect whole = {};
    SDL_Rect view = {};
    if (!SDL_GetTextureSize(texture, &whole.w, &whole.h) || !SDL_GetRenderViewport(renderer, &view)) return false;
    if (!src) src = &whole;
    Span x = {src->x, src->w, dst->x, dst->w}, y = {src->y, src->h, dst->y, dst->h};
    if (!_cut_to_view(&x, static_cast<float>(view.w), (flip & SDL_FLIP_HORIZONTAL) != 0)) return true;
    if (!_cut_to_view(&y, static_cast<float>(view.h), (flip & SDL_FLIP_VERTICAL) != 0)) return true;
    const SDL_FRect from = {x.src, y.src, x.src_length, y.src_length};
    const SDL_FRect to = {x.dst, y.dst, x.dst_length, y.dst_length};
    return _copy(renderer, texture, &from, &to, flip);
}
