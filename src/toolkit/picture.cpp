#include "lumarind/toolkit/picture.h"

#include "lumarind/core/error.h"
#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/image.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

SDL_Texture *picture_load(const char *path, PictureFilter filter) {
    SDL_Texture *picture = image_load_texture(engine_renderer(), path);
    if (!picture) {
        engine_error("[PICTURE] Unable to load %s, error: %s", path, SDL_GetError());
        return nullptr;
    }
    SDL_SetTextureScaleMode(picture, filter == PICTURE_LINEAR ? SDL_SCALEMODE_LINEAR : SDL_SCALEMODE_NEAREST);
    return picture;
}

bool picture_draw(SDL_Texture *picture, float x, float y, const PictureDraw &how) {
    SDL_FRect src = how.cell;
    if (src.w == 0 && !SDL_GetTextureSize(picture, &src.w, &src.h)) {
        return engine_error("[PICTURE] Nothing to draw, error: %s", SDL_GetError());
    }
    const SDL_FRect dst = {x, y, src.w * how.scale, src.h * how.scale};
    return SDL_RenderTextureRotated(engine_renderer(), picture, &src, &dst, how.angle, nullptr, how.flip) ||
           engine_error("[PICTURE] Drawing failed, error: %s", SDL_GetError());
}
