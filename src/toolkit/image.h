// image: picture files as textures: PNG, JPEG and BMP.
#pragma once

struct SDL_Renderer;
struct SDL_Texture;

// A picture is decoded whole, at 4 bytes a pixel and more than once: a file of a few bytes can ask for gigabytes.
inline constexpr int IMAGE_MAX_PIXELS = 64 << 20;

// Null, with SDL's error saying which file and why: the file is missing, of another kind, broken or too large. The
// caller owns the texture.
SDL_Texture *image_load_texture(SDL_Renderer *renderer, const char *path);
