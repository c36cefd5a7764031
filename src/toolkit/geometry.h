// geometry: containment and overlap tests. Float pixels, y grows downwards. Pure functions.
#pragma once

#include <SDL3/SDL_rect.h>

struct Tri { // either winding
    SDL_FPoint a, b, c;
};

struct Circle {
    float x, y; // centre
    float r;
};

bool point_in_rect(const SDL_FPoint *p, const SDL_FRect *r); // all four edges count as inside
bool point_in_circle(const SDL_FPoint *p, const Circle *c);  // so does the boundary
bool point_near_point(const SDL_FPoint *p, const SDL_FPoint *q, float distance);
bool point_in_tri(const SDL_FPoint *p, const Tri *t); // edges and vertices count as inside

// True for an overlap of positive width and height: rectangles that only touch do not intersect.
bool rect_intersect_rect(const SDL_FRect *a, const SDL_FRect *b);
