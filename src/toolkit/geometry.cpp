#include "lumarind/toolkit/geometry.h"

bool point_in_rect(const SDL_FPoint *p, const SDL_FRect *r) {
    return p->x >= r->x && p->x <= r->x + r->w && p->y >= r->y && p->y <= r->y + r->h;
}

static float _distance_squared(float ax, float ay, float bx, float by) {
    const float dx = ax - bx, dy = ay - by;
    return dx * dx + dy * dy;
}

bool point_in_circle(const SDL_FPoint *p, const Circle *c) {
    return _distance_squared(p->x, p->y, c->x, c->y) <= c->r * c->r;
}

bool point_near_point(const SDL_FPoint *p, const SDL_FPoint *q, float distance) {
    return _distance_squared(p->x, p->y, q->x, q->y) <= distance * distance;
}

// Returns which side of the line through u and v the point is on, as a sign; 0 on the line.
static float _side(const SDL_FPoint *p, const SDL_FPoint *u, const SDL_FPoint *v) {
    return (p->x - v->x) * (u->y - v->y) - (u->x - v->x) * (p->y - v->y);
}

bool point_in_tri(const SDL_FPoint *p, const Tri *t) {
    const float d1 = _side(p, &t->a, &t->b), d2 = _side(p, &t->b, &t->c), d3 = _side(p, &t->c, &t->a);
    const bool some_negative = d1 < 0 || d2 < 0 || d3 < 0;
    const bool some_positive = d1 > 0 || d2 > 0 || d3 > 0;
    return !(some_negative && some_positive);
}

bool rect_intersect_rect(const SDL_FRect *a, const SDL_FRect *b) {
    return !(b->x >= a->x + a->w || a->x >= b->x + b->w || b->y >= a->y + a->h || a->y >= b->y + b->h);
}
