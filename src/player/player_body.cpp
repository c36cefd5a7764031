#include "lumarind/player/player_body.h"

// px
static constexpr int LEDGE_MAX = 10;           // climbed by walking
static constexpr float SLOPE_DROP_MAX = 8;     // followed by walking
static constexpr float GROUND_PROBE = 1;       // of rectangles
static constexpr float SLOPE_TOLERANCE = 0.5f; // of feet above an unrounded slope

void player_body_init(PlayerBody *body, SDL_FPoint feet, float w, float h) {
    *body = {};
    body->pos = body->prev_pos = feet;
    body->w = w;
    body->h = h;
    body->facing = 1;
}

SDL_FRect player_body_rect(const PlayerBody *body) {
    return {body->pos.x - body->w / 2, body->pos.y - body->h, body->w, body->h};
}

// --- moving ---

static bool _player_body_blocked(const PlayerBody *body, const ColliderRects *rects) {
    const SDL_FRect box = player_body_rect(body);
    return colliders_rect_inside_rect(&box, rects) != -1;
}

// Climbs the ledge that blocks a move by dx. Returns false, changing nothing, if it is too high or there is no room.
static bool _player_body_step_up(PlayerBody *body, float dx, const ColliderRects *rects) {
    const float y0 = body->pos.y;
    for (int lift = 1; lift <= LEDGE_MAX; lift++) {
        body->pos.y = y0 - static_cast<float>(lift);
        if (_player_body_blocked(body, rects)) continue;
        body->pos.x += dx;
        if (!_player_body_blocked(body, rects)) return true;
        body->pos.x -= dx;
    }
    body->pos.y = y0;
    return false;
}

// Returns whether the whole move is free, with one query instead of one per pixel. The swept box extends one pixel
// further, so that rounding cannot hide a collision that the per-pixel move would find.
static bool _player_body_path_is_free(PlayerBody *body, float *axis, float move, const ColliderRects *rects) {
    SDL_FRect swept = player_body_rect(body);
    const float start = *axis;
    *axis += move + (move > 0 ? 1.0f : -1.0f);
    const SDL_FRect end = player_body_rect(body);
    *axis = start;
    swept.w += SDL_fabsf(end.x - swept.x);
    swept.h += SDL_fabsf(end.y - swept.y);
    swept.x = SDL_min(swept.x, end.x);
    swept.y = SDL_min(swept.y, end.y);
    return colliders_rect_inside_rect(&swept, rects) == -1;
}

// `axis` and `remainder` point into the body. Returns true if a rectangle stopped it.
static bool _player_body_move_axis(
    PlayerBody *body, float *axis, float *remainder, float amount, bool allow_step_up, const ColliderRects *rects) {
    *remainder += amount;
    const float move = SDL_roundf(*remainder);
    if (move == 0) return false;
    *remainder -= move;
    const float sign = move > 0 ? 1.0f : -1.0f;
    int steps = static_cast<int>(SDL_fabsf(move));
    const bool path_is_free = steps > 1 && _player_body_path_is_free(body, axis, move, rects);
    for (; steps > 0; steps--) {
        *axis += sign;
        if (path_is_free || !_player_body_blocked(body, rects)) continue;
        *axis -= sign;
        if (allow_step_up && body->grounded && _player_body_step_up(body, sign, rects)) continue;
        *remainder = 0;
        return true;
    }
    return false;
}

bool player_body_move_x(PlayerBody *body, float dx, const ColliderRects *rects) {
    return _player_body_move_axis(body, &body->pos.x, &body->remainder_x, dx, true, rects);
}

bool player_body_move_y(PlayerBody *body, float dy, const ColliderRects *rects) {
    if (!_player_body_move_axis(body, &body->pos.y, &body->remainder_y, dy, false, rects)) return false;
    body->vel.y = 0;
    return true;
}

// --- slopes ---

// Intersects the vertical line at x with the edge from p to q; for a vertical edge y is its upper end.
static bool _player_body_edge_y(SDL_FPoint p, SDL_FPoint q, float x, float *y) {
    if (x < SDL_min(p.x, q.x) || x > SDL_max(p.x, q.x)) return false;
    *y = p.x == q.x ? SDL_min(p.y, q.y) : p.y + (x - p.x) * (q.y - p.y) / (q.x - p.x);
    return true;
}

bool player_body_slope_surface_y(const ColliderTris *tris, float x, float *surface_y) {
    bool found = false;
    float top = 0;
    for (int i = 0; tris && i < tris->count; i++) {
        const Tri *tri = &tris->items[i];
        const SDL_FPoint corners[] = {tri->a, tri->b, tri->c, tri->a};
        for (int edge = 0; edge < 3; edge++) {
            float y = 0;
            if (!_player_body_edge_y(corners[edge], corners[edge + 1], x, &y) || (found && y >= top)) continue;
            top = y;
            found = true;
        }
    }
    if (found && surface_y) *surface_y = top;
    return found;
}

// Moves back towards `y` in steps of one pixel until the body is free. Beyond 2^24 px a float cannot represent the
// step: then it moves all the way.
static void _player_body_back_out(PlayerBody *body, float y, const ColliderRects *rects) {
    while (body->pos.y != y && _player_body_blocked(body, rects)) {
        const float next = body->pos.y > y ? SDL_max(body->pos.y - 1, y) : SDL_min(body->pos.y + 1, y);
        body->pos.y = next == body->pos.y ? y : next;
    }
}

void player_body_snap_to_slope(PlayerBody *body, const ColliderRects *rects, const ColliderTris *tris) {
    float surface_y = 0;
    if (!player_body_slope_surface_y(tris, body->pos.x, &surface_y)) return;
    const float s = SDL_roundf(surface_y);
    const bool below = body->pos.y > s;
    const bool follows = body->grounded && body->vel.y >= 0 && s - body->pos.y <= SLOPE_DROP_MAX;
    if (!below && !follows) return;
    const float old_y = body->pos.y;
    body->pos.y = s;
    body->vel.y = 0;
    _player_body_back_out(body, old_y, rects);
}

// --- ground ---

void player_body_update_ground(PlayerBody *body, const ColliderRects *rects, const ColliderTris *tris) {
    SDL_FRect probe = player_body_rect(body);
    probe.y += GROUND_PROBE;
    float surface_y = 0;
    body->grounded =
        colliders_rect_inside_rect(&probe, rects) != -1 ||
        (player_body_slope_surface_y(tris, body->pos.x, &surface_y) && body->pos.y >= surface_y - SLOPE_TOLERANCE);
}

// --- step ---

bool player_body_step(PlayerBody *body, double dt, const ColliderRects *rects, const ColliderTris *tris) {
    const bool stopped = player_body_move_x(body, static_cast<float>(body->vel.x * dt), rects);
    player_body_move_y(body, static_cast<float>(body->vel.y * dt), rects);
    if (tris) player_body_snap_to_slope(body, rects, tris);
    player_body_update_ground(body, rects, tris);
    return stopped;
}
