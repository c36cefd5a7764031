// Drawing of tile worlds. Tile layers are divided into chunks; visible chunks are baked into textures within a byte
// budget and a limit of bakes per frame, and otherwise drawn tile by tile.
#include "lumarind/core/error.h"
#include "lumarind/toolkit/tile_grid.h"
#include "lumarind/toolkit/tile_range.h"
#include "lumarind/toolkit/tilemap.h"
#include "toolkit/lost_targets.h"
#include "toolkit/tile_world_internal.h"
#include "toolkit/view_copy.h"

#include <SDL3/SDL_atomic.h>
#include <SDL3/SDL_error.h>
#include <SDL3/SDL_render.h>

#include <cstddef>
#include <initializer_list>

static constexpr int CHUNK_SIDE = 256; // px, rounded down to whole tiles
static constexpr int SLOTS = 1024;
static constexpr int SPARSE = 4;    // a chunk is sparse if at most one cell in SPARSE has a tile
static constexpr int BUCKETS = 256; // a power of two
static constexpr int PARTS = 32;    // per chunk
static constexpr int PART_CELLS = CHUNK_SIDE / 8 * (CHUNK_SIDE / 8); // chunks of smaller tiles are not divided
static constexpr int NO_SLOT = -1;
static constexpr float LARGE = 4096; // drawing units; larger copies are drawn as geometry

// --- chunks ---

struct ChunkPlace {
    Sint32 layer, col, row;
};

enum ChunkContent : Uint8 {
    CHUNK_EMPTY,
    CHUNK_SPARSE,  // few tiles, cheaper one by one than as a chunk; no texture
    CHUNK_OPAQUE,  // all pixels are opaque: copied without blending
    CHUNK_CUTOUT,  // pixels are opaque or transparent: alpha blending
    CHUNK_BLENDED, // translucent: premultiplied alpha, which combines overlapping tiles correctly
};

// A rectangle of cells in a CHUNK_CUTOUT that are all opaque or all to be blended. Blending takes several times longer
// than copying on the software renderer.
struct ChunkPart {
    Uint8 col, row, cols, rows;
    bool opaque;
};

struct ChunkSlot {
    ChunkPlace place;
    SDL_Texture *texture; // null: an empty chunk
    size_t bytes;
    Uint64 drawn; // last frame in which it was drawn
    Sint32 next;  // in its hash bucket or the free list
    ChunkContent content;
    Sint32 part_count; // 0: copied as a whole
    ChunkPart parts[PARTS];
};

struct TileChunkCache {
    SDL_Renderer *renderer;
    size_t budget, bytes;
    Sint32 bakes_per_frame, bakes_left;
    Uint64 frame;
    SDL_AtomicInt targets_lost;
    Sint32 first_free;
    Sint32 buckets[BUCKETS];
    ChunkSlot slots[SLOTS];
};

static int _chunk_bucket(ChunkPlace place) {
    const Uint32 mixed = static_cast<Uint32>(place.col) * 73856093u ^ static_cast<Uint32>(place.row) * 19349663u ^
                         static_cast<Uint32>(place.layer) * 83492791u;
    return static_cast<int>((mixed ^ mixed >> 15) & (BUCKETS - 1));
}

static ChunkSlot *_chunk_find(TileChunkCache *cache, ChunkPlace place) {
    for (int i = cache->buckets[_chunk_bucket(place)]; i != NO_SLOT; i = cache->slots[i].next) {
        const ChunkPlace at = cache->slots[i].place;
        if (at.layer == place.layer && at.col == place.col && at.row == place.row) return &cache->slots[i];
    }
    return nullptr;
}

static void _chunk_free(TileChunkCache *cache, int index) {
    ChunkSlot *slot = &cache->slots[index];
    Sint32 *at = &cache->buckets[_chunk_bucket(slot->place)];
    while (*at != index) at = &cache->slots[*at].next;
    *at = slot->next;
    if (slot->texture) SDL_DestroyTexture(slot->texture);
    cache->bytes -= slot->bytes;
    *slot = {};
    slot->next = cache->first_free;
    cache->first_free = index;
}

// Evicts the least recently drawn chunk, except those drawn in this frame or the previous one: if the budget is smaller
// than the view, they would be evicted and baked again every frame. Returns false if there is none.
static bool _chunk_free_oldest(TileChunkCache *cache) {
    int oldest = NO_SLOT;
    for (const Sint32 bucket : cache->buckets) {
        for (int i = bucket; i != NO_SLOT; i = cache->slots[i].next) {
            if (oldest == NO_SLOT || cache->slots[i].drawn < cache->slots[oldest].drawn) oldest = i;
        }
    }
    if (oldest == NO_SLOT || cache->slots[oldest].drawn + 1 >= cache->frame) return false;
    _chunk_free(cache, oldest);
    return true;
}

// Returns an empty slot for a chunk of `bytes`, evicting others if necessary; null if there is no room.
static ChunkSlot *_chunk_add(TileChunkCache *cache, ChunkPlace place, size_t bytes) {
    if (bytes > cache->budget) return nullptr;
    while (cache->first_free == NO_SLOT || cache->bytes + bytes > cache->budget) {
        if (!_chunk_free_oldest(cache)) return nullptr;
    }
    const int index = cache->first_free, bucket = _chunk_bucket(place);
    ChunkSlot *slot = &cache->slots[index];
    cache->first_free = slot->next;
    *slot = {
        .place = place,
        .texture = nullptr,
        .bytes = bytes,
        .drawn = cache->frame,
        .next = cache->buckets[bucket],
        .content = CHUNK_EMPTY,
        .part_count = 0,
        .parts = {}};
    cache->buckets[bucket] = index;
    cache->bytes += bytes;
    return slot;
}

TileChunkCache *_tile_cache_new(SDL_Renderer *renderer) {
    auto *cache = static_cast<TileChunkCache *>(SDL_calloc(1, sizeof(TileChunkCache)));
    if (!cache || !lost_targets_watch(&cache->targets_lost)) {
        SDL_free(cache);
        engine_error("[TILE_WORLD] Creating the chunk cache failed, error: %s", SDL_GetError());
        return nullptr;
    }
    cache->renderer = renderer;
    cache->budget = TILE_WORLD_CHUNK_BYTES;
    cache->bakes_per_frame = cache->bakes_left = TILE_WORLD_BAKES_PER_FRAME;
    cache->frame = 2; // `drawn` is initially 0, which must be older than the previous frame
    for (Sint32 &bucket : cache->buckets) bucket = NO_SLOT;
    for (int i = 0; i < SLOTS; i++) cache->slots[i].next = i + 1 < SLOTS ? i + 1 : NO_SLOT;
    return cache;
}

void _tile_cache_clear(TileChunkCache *cache) {
    for (const Sint32 &bucket : cache->buckets) {
        while (bucket != NO_SLOT) _chunk_free(cache, bucket);
    }
}

void _tile_cache_free(TileChunkCache *cache) {
    if (!cache) return;
    lost_targets_unwatch(&cache->targets_lost);
    _tile_cache_clear(cache);
    SDL_free(cache);
}

void tile_world_set_chunk_budget(TileWorld *world, size_t bytes, int bakes_per_frame) {
    TileChunkCache *cache = world->parts->cache;
    if (bytes < cache->bytes) _tile_cache_clear(cache);
    cache->budget = bytes;
    cache->bakes_per_frame = cache->bakes_left = SDL_max(bakes_per_frame, 0);
}

size_t tile_world_chunk_bytes(const TileWorld *world) { return world->parts->cache->bytes; }

void tile_world_advance(TileWorld *world, double seconds) {
    TileWorldParts *parts = world->parts;
    _tile_world_follow_files(world);
    if (seconds > 0) parts->clock_ms += seconds * 1000;
    parts->cache->frame++;
    parts->cache->bakes_left = parts->cache->bakes_per_frame;
}

// --- tiles ---

// State for drawing the tiles of one layer.
struct TilePainter {
    SDL_Renderer *renderer;
    const TileWorld *world;
    SDL_FPoint origin; // of the world, in drawing units
    float scale;
    SDL_FColor tint;
    bool keeps_alpha; // the render target is blended later, so its alpha must be correct
    bool on_pixels;   // texels cover whole output pixels: adjoining copies leave no seams
};

static bool _is_white(SDL_FColor c) { return c.r == 1 && c.g == 1 && c.b == 1 && c.a == 1; }

// The software renderer magnifies a whole copy before clipping it, which takes gigabytes for an object a thousand
// screens wide, but clips triangles first. There are four, around the centre, because it turns two triangles that form
// a rectangle back into a copy.
static bool _paint_large(
    const TilePainter *painter, SDL_Texture *texture, const SDL_FRect *src, const SDL_FRect *dst, double angle,
    const SDL_FPoint *center, SDL_FlipMode flip) {
    constexpr int MIDDLE = 4;
    constexpr int FAN[] = {MIDDLE, 0, 1, MIDDLE, 1, 2, MIDDLE, 2, 3, MIDDLE, 3, 0};
    constexpr SDL_FPoint CORNERS[] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0.5f, 0.5f}};
    const SDL_FPoint about = center ? *center : SDL_FPoint{dst->w / 2, dst->h / 2};
    const float radians = static_cast<float>(angle) * SDL_PI_F / 180;
    const float sine = SDL_sinf(radians), cosine = SDL_cosf(radians);
    const float width = static_cast<float>(texture->w), height = static_cast<float>(texture->h);
    SDL_Vertex vertices[MIDDLE + 1];
    for (int i = 0; i <= MIDDLE; i++) {
        const SDL_FPoint at = {CORNERS[i].x * dst->w - about.x, CORNERS[i].y * dst->h - about.y};
        const float u = flip & SDL_FLIP_HORIZONTAL ? 1 - CORNERS[i].x : CORNERS[i].x;
        const float v = flip & SDL_FLIP_VERTICAL ? 1 - CORNERS[i].y : CORNERS[i].y;
        vertices[i].position = {
            dst->x + about.x + at.x * cosine - at.y * sine, dst->y + about.y + at.x * sine + at.y * cosine};
        vertices[i].color = painter->tint;
        vertices[i].tex_coord = {(src->x + u * src->w) / width, (src->y + v * src->h) / height};
    }
    return SDL_RenderGeometry(painter->renderer, texture, vertices, SDL_arraysize(vertices), FAN, SDL_arraysize(FAN));
}

static bool _paint_texture(
    const TilePainter *painter, SDL_Texture *texture, const SDL_FRect *src, const SDL_FRect *dst, double angle,
    const SDL_FPoint *center, SDL_FlipMode flip) {
    const SDL_FColor tint = painter->tint;
    const bool tinted = !_is_white(tint);
    const bool plain = angle == 0 && flip == SDL_FLIP_NONE;
    if (dst->w > LARGE || dst->h > LARGE) {
        return _paint_large(painter, texture, src, dst, angle, center, flip) ||
               engine_error("[TILE_WORLD] Could not draw, error: %s", SDL_GetError());
    }
    if (tinted) {
        SDL_SetTextureColorModFloat(texture, tint.r, tint.g, tint.b);
        SDL_SetTextureAlphaModFloat(texture, tint.a);
    }
    if (plain && painter->keeps_alpha) { // same pixels, but the software renderer's plain copy makes the target opaque
        angle = 180;
        flip = static_cast<SDL_FlipMode>(SDL_FLIP_HORIZONTAL | SDL_FLIP_VERTICAL);
    }
    const bool drawn = plain && !painter->keeps_alpha
                           ? SDL_RenderTexture(painter->renderer, texture, src, dst)
                           : SDL_RenderTextureRotated(painter->renderer, texture, src, dst, angle, center, flip);
    if (tinted) { // reset: the texture is shared
        SDL_SetTextureColorModFloat(texture, 1, 1, 1);
        SDL_SetTextureAlphaModFloat(texture, 1);
    }
    return drawn || engine_error("[TILE_WORLD] Could not draw, error: %s", SDL_GetError());
}

struct TileArt {
    SDL_Texture *texture;
    SDL_FRect src;
};

static TileArt _tile_art(const TileSet *set, int id) {
    if (!set->texture) {
        const TileInfo *info = _tile_set_info(set, id);
        SDL_FRect src = {};
        SDL_RectToFRect(&info->src, &src);
        return {info->texture->texture, src};
    }
    const int x = set->margin + id % set->columns * (set->tile_w + set->spacing);
    const int y = set->margin + id / set->columns * (set->tile_h + set->spacing);
    return {
        set->texture->texture,
        {static_cast<float>(x), static_cast<float>(y), static_cast<float>(set->tile_w),
         static_cast<float>(set->tile_h)}};
}

// Returns the id of an animated tile's current frame.
static int _tile_frame(const TileInfo *info, double clock_ms) {
    double left = SDL_fmod(clock_ms, info->loop_ms);
    for (int i = 0; i < info->frame_count; i++) {
        left -= info->frames[i].ms;
        if (left < 0) return info->frames[i].id;
    }
    return info->frames[info->frame_count - 1].id;
}

static int _tile_shown(const TileWorld *world, const TileSet *set, int id) {
    if (!(set->kinds[id] & TILE_IS_ANIMATED)) return id;
    return _tile_frame(_tile_set_info(set, id), world->parts->clock_ms);
}

static bool _paint_tile(const TilePainter *painter, const TileSet *set, Uint32 gid, int col, int row) {
    const int id = _tile_shown(painter->world, set, static_cast<int>((gid & TILE_ID_MASK) - set->first_gid));
    const TileArt art = _tile_art(set, id);
    const SDL_Point size = {static_cast<int>(art.src.w), static_cast<int>(art.src.h)};
    const SDL_FRect box = _tile_cell_box(painter->world, set, size, gid, col, row);
    const DecodedTile turned = tile_decode_gid(gid, set->first_gid, 1);
    SDL_FRect dst = {
        painter->origin.x + box.x * painter->scale, painter->origin.y + box.y * painter->scale, box.w * painter->scale,
        box.h * painter->scale};
    if (gid & TILE_FLIP_D) { // SDL rotates about the centre of the untransposed tile
        dst = {dst.x + (dst.w - dst.h) / 2, dst.y + (dst.h - dst.w) / 2, dst.h, dst.w};
    }
    return _paint_texture(painter, art.texture, &art.src, &dst, turned.angle, nullptr, turned.flip);
}

// Summary of the tiles in a range of cells, which decides how a chunk is blended.
struct CellSummary {
    int tiles, filled; // filled: opaque tiles that exactly cover their cells
    bool blended;
};

static void _summarize_cell(const TileWorld *world, const TileSet *set, Uint32 gid, CellSummary *summary) {
    const auto alpha = static_cast<ImageAlpha>(set->kinds[(gid & TILE_ID_MASK) - set->first_gid] & TILE_ALPHA);
    const bool fits = set->texture && set->tile_w == world->tile_w && set->tile_h == world->tile_h &&
                      set->offset.x == 0 && set->offset.y == 0 && (!(gid & TILE_FLIP_D) || set->tile_w == set->tile_h);
    summary->tiles++;
    summary->filled += alpha == IMAGE_OPAQUE && fits ? 1 : 0;
    summary->blended = summary->blended || alpha == IMAGE_BLENDED;
}

// Calls `visit` for each static tile of a range of cells, in drawing order, until one returns false.
template <typename Visit>
static bool _visit_cells(const TileWorld *world, int layer, TileRange rows, TileRange cols, Visit visit) {
    const TileContent *content = &world->parts->content;
    const TileLayerParts *parts = &content->layers[layer];
    for (int i = 0; i < rows.end - rows.first; i++) {
        const int row = content->from_bottom ? rows.end - 1 - i : rows.first + i;
        for (int k = 0; k < parts->chunk_count; k++) {
            const TileChunk *chunk = &parts->chunks[content->from_right ? parts->chunk_count - 1 - k : k];
            if (row < chunk->top || row >= chunk->top + chunk->rows) continue;
            const int first = SDL_max(cols.first, chunk->left), end = SDL_min(cols.end, chunk->left + chunk->cols);
            const Uint32 *cells =
                chunk->cells + static_cast<std::ptrdiff_t>(row - chunk->top) * chunk->cols - chunk->left;
            for (int n = 0; n < end - first; n++) {
                const int col = content->from_right ? end - 1 - n : first + n;
                const Uint32 gid = cells[col];
                if ((gid & TILE_ID_MASK) == 0) continue;
                const TileSet *set = _tile_world_tileset(content, gid);
                if (set->kinds[(gid & TILE_ID_MASK) - set->first_gid] & TILE_IS_ANIMATED) continue;
                if (!visit(set, gid, col, row)) return false;
            }
        }
    }
    return true;
}

// --- chunk layout ---

static SDL_FColor _layer_tint(const TileWorld *world, int layer) {
    SDL_FColor tint = world->layers[layer].tint;
    tint.a *= world->layers[layer].opacity;
    return tint;
}

struct ChunkRaster {
    Sint32 tiles_x, tiles_y; // per chunk
    Sint32 w, h;             // px
};

static ChunkRaster _chunk_raster(const TileWorld *world) {
    const int x = SDL_max(CHUNK_SIDE / world->tile_w, 1), y = SDL_max(CHUNK_SIDE / world->tile_h, 1);
    return {x, y, x * world->tile_w, y * world->tile_h};
}

static int _floor_div(int a, int b) { return a / b - (a % b < 0 ? 1 : 0); }

// The cells whose tiles may be visible in a chunk, including neighbouring cells whose tiles extend into it.
static void _chunk_cells(const TileWorld *world, int chunk_col, int chunk_row, TileRange *rows, TileRange *cols) {
    const ChunkRaster raster = _chunk_raster(world);
    const SDL_Rect reach = world->parts->content.reach;
    const auto cells = [](int px, int tile) { return (px + tile - 1) / tile; };
    *cols = {
        chunk_col * raster.tiles_x - cells(reach.w, world->tile_w),
        (chunk_col + 1) * raster.tiles_x + cells(reach.x, world->tile_w)};
    *rows = {
        chunk_row * raster.tiles_y - cells(reach.h, world->tile_h),
        (chunk_row + 1) * raster.tiles_y + cells(reach.y, world->tile_h)};
}

// No tile extends beyond its cell.
static bool _tiles_fit_cells(const TileWorld *world) {
    const SDL_Rect reach = world->parts->content.reach;
    return reach.x == 0 && reach.y == 0 && reach.w == 0 && reach.h == 0;
}

static ChunkContent _chunk_content(const TileWorld *world, ChunkPlace place) {
    const ChunkRaster raster = _chunk_raster(world);
    CellSummary summary = {};
    TileRange rows = {}, cols = {};
    _chunk_cells(world, place.col, place.row, &rows, &cols);
    _visit_cells(world, place.layer, rows, cols, [&](const TileSet *set, Uint32 gid, int, int) {
        _summarize_cell(world, set, gid, &summary);
        return true;
    });
    const bool confined = _tiles_fit_cells(world);
    if (summary.tiles == 0) return CHUNK_EMPTY;
    if (_layer_tint(world, place.layer).a < 1 || summary.blended) return CHUNK_BLENDED;
    const int cells = raster.tiles_x * raster.tiles_y;
    if (confined && summary.tiles * SPARSE <= cells) return CHUNK_SPARSE;
    return confined && summary.filled == cells ? CHUNK_OPAQUE : CHUNK_CUTOUT;
}

static bool _paint_cells(const TilePainter *painter, int layer, TileRange rows, TileRange cols) {
    return _visit_cells(painter->world, layer, rows, cols, [painter](const TileSet *set, Uint32 gid, int col, int row) {
        return _paint_tile(painter, set, gid, col, row);
    });
}

bool tile_world_find_open(const TileWorld *world, int layer, SDL_FRect area) {
    if (layer < 0 || layer >= world->layer_count) return true;
    const auto covering = [](float at, float length, int tile) {
        const float size = static_cast<float>(tile);
        return TileRange{static_cast<int>(SDL_floorf(at / size)), static_cast<int>(SDL_ceilf((at + length) / size))};
    };
    const TileRange cols = covering(area.x, area.w, world->tile_w), rows = covering(area.y, area.h, world->tile_h);
    CellSummary summary = {};
    _visit_cells(world, layer, rows, cols, [&](const TileSet *set, Uint32 gid, int, int) {
        _summarize_cell(world, set, gid, &summary);
        return true;
    });
    return summary.filled != (cols.end - cols.first) * (rows.end - rows.first);
}

// The largest rectangle of equal cells from `first` on that grows to the right, then down. Empties its cells.
static ChunkPart _chunk_take_part(Uint8 *cells, ChunkRaster raster, int first) {
    const int col = first % raster.tiles_x, row = first / raster.tiles_x;
    const Uint8 content = cells[first];
    int cols = 1, rows = 1;
    while (col + cols < raster.tiles_x && cells[first + cols] == content) cols++;
    const auto equal = [&](const Uint8 *from) {
        int n = 0;
        while (n < cols && from[n] == content) n++;
        return n == cols;
    };
    while (row + rows < raster.tiles_y && equal(&cells[first + rows * raster.tiles_x])) rows++;
    for (int i = 0; i < rows; i++)
        SDL_memset(&cells[first + i * raster.tiles_x], CHUNK_EMPTY, static_cast<size_t>(cols));
    return {
        static_cast<Uint8>(col), static_cast<Uint8>(row), static_cast<Uint8>(cols), static_cast<Uint8>(rows),
        content == CHUNK_OPAQUE};
}

// Divides a CHUNK_CUTOUT into parts, leaving out its empty cells, unless it needs too many.
static void _chunk_divide(const TileWorld *world, ChunkSlot *slot) {
    const ChunkRaster raster = _chunk_raster(world);
    const int left = slot->place.col * raster.tiles_x, top = slot->place.row * raster.tiles_y;
    const int count = raster.tiles_x * raster.tiles_y;
    Uint8 cells[PART_CELLS] = {}; // CHUNK_EMPTY, CHUNK_OPAQUE or CHUNK_CUTOUT
    if (count > PART_CELLS || !_tiles_fit_cells(world)) return;
    const TileRange rows = {top, top + raster.tiles_y}, cols = {left, left + raster.tiles_x};
    _visit_cells(world, slot->place.layer, rows, cols, [&](const TileSet *set, Uint32 gid, int col, int row) {
        CellSummary summary = {};
        _summarize_cell(world, set, gid, &summary);
        cells[(row - top) * raster.tiles_x + col - left] = summary.filled ? CHUNK_OPAQUE : CHUNK_CUTOUT;
        return true;
    });
    int parts = 0;
    for (int i = 0; i < count; i++) {
        if (cells[i] == CHUNK_EMPTY) continue;
        if (parts == PARTS) return;
        slot->parts[parts++] = _chunk_take_part(cells, raster, i);
    }
    slot->part_count = parts;
}

// --- baking ---

static bool _chunk_paint_all(SDL_Renderer *renderer, const TileWorld *world, ChunkPlace place, ChunkContent content) {
    const ChunkRaster raster = _chunk_raster(world);
    TileRange rows = {}, cols = {};
    _chunk_cells(world, place.col, place.row, &rows, &cols);
    const SDL_FPoint origin = {
        -static_cast<float>(place.col) * static_cast<float>(raster.w),
        -static_cast<float>(place.row) * static_cast<float>(raster.h)};
    const TilePainter painter = {renderer, world, origin, 1, _layer_tint(world, place.layer), content == CHUNK_BLENDED,
                                 true};
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 0);
    SDL_RenderClear(renderer);
    return _paint_cells(&painter, place.layer, rows, cols);
}

static SDL_BlendMode _chunk_blend_mode(ChunkContent content) {
    if (content == CHUNK_OPAQUE) return SDL_BLENDMODE_NONE;
    return content == CHUNK_BLENDED ? SDL_BLENDMODE_BLEND_PREMULTIPLIED : SDL_BLENDMODE_BLEND;
}

// Returns null if baking fails; the chunk is then drawn tile by tile.
static SDL_Texture *
_chunk_bake(SDL_Renderer *renderer, const TileWorld *world, ChunkPlace place, ChunkContent content) {
    const ChunkRaster raster = _chunk_raster(world);
    SDL_Texture *chunk =
        SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGBA32, SDL_TEXTUREACCESS_TARGET, raster.w, raster.h);
    if (!chunk) return nullptr;
    SDL_Texture *before = SDL_GetRenderTarget(renderer);
    SDL_FColor color = {};
    SDL_GetRenderDrawColorFloat(renderer, &color.r, &color.g, &color.b, &color.a);
    SDL_SetTextureScaleMode(chunk, SDL_SCALEMODE_NEAREST);
    SDL_SetTextureBlendMode(chunk, _chunk_blend_mode(content));
    const bool baked = SDL_SetRenderTarget(renderer, chunk) && _chunk_paint_all(renderer, world, place, content);
    const bool restored = SDL_SetRenderTarget(renderer, before);
    SDL_SetRenderDrawColorFloat(renderer, color.r, color.g, color.b, color.a);
    if (baked && restored) return chunk;
    SDL_DestroyTexture(chunk);
    return nullptr;
}

static const ChunkSlot *_chunk_get(SDL_Renderer *renderer, const TileWorld *world, ChunkPlace place) {
    TileChunkCache *cache = world->parts->cache;
    ChunkSlot *slot = _chunk_find(cache, place);
    if (slot) {
        slot->drawn = cache->frame;
        return slot;
    }
    const ChunkRaster raster = _chunk_raster(world);
    const ChunkContent content = _chunk_content(world, place);
    const bool bare = content == CHUNK_EMPTY || content == CHUNK_SPARSE;
    const size_t bytes = static_cast<size_t>(raster.w) * static_cast<size_t>(raster.h) * 4;
    if (!bare && cache->bakes_left <= 0) return nullptr;
    slot = _chunk_add(cache, place, bare ? 0 : bytes);
    if (slot) slot->content = content;
    if (!slot || bare) return slot;
    cache->bakes_left--;
    slot->texture = _chunk_bake(renderer, world, place, content);
    if (content == CHUNK_CUTOUT) _chunk_divide(world, slot);
    if (slot->texture) return slot;
    _chunk_free(cache, static_cast<int>(slot - cache->slots));
    return nullptr;
}

// --- tile layers ---

static bool _draw_parts(const TilePainter *painter, const ChunkSlot *slot, const SDL_FRect *dst) {
    const float tile_w = static_cast<float>(painter->world->tile_w),
                tile_h = static_cast<float>(painter->world->tile_h);
    bool drawn = true;
    for (const bool opaque : {true, false}) { // ends with blending, the texture's usual mode
        SDL_SetTextureBlendMode(slot->texture, opaque ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND);
        for (int i = 0; drawn && i < slot->part_count; i++) {
            const ChunkPart part = slot->parts[i];
            if (part.opaque != opaque) continue;
            const SDL_FRect src = {
                static_cast<float>(part.col) * tile_w, static_cast<float>(part.row) * tile_h,
                static_cast<float>(part.cols) * tile_w, static_cast<float>(part.rows) * tile_h};
            const float scale = painter->scale;
            const SDL_FRect to = {dst->x + src.x * scale, dst->y + src.y * scale, src.w * scale, src.h * scale};
            drawn = copy_texture_in_view(painter->renderer, slot->texture, &src, &to);
        }
    }
    return drawn;
}

// The layer's tint and opacity are baked into the chunk.
static bool _draw_baked(const TilePainter *painter, const ChunkSlot *slot, const SDL_FRect *dst) {
    const bool drawn = painter->on_pixels && slot->part_count > 0
                           ? _draw_parts(painter, slot, dst)
                           : copy_texture_in_view(painter->renderer, slot->texture, nullptr, dst);
    return drawn || engine_error("[TILE_WORLD] Could not draw a chunk, error: %s", SDL_GetError());
}

// Draws a chunk's tiles, clipped to the chunk: the neighbours draw the rest.
static bool _draw_unbaked(const TilePainter *painter, ChunkPlace place, const SDL_FRect *dst) {
    SDL_Renderer *renderer = painter->renderer;
    TileRange rows = {}, cols = {};
    _chunk_cells(painter->world, place.col, place.row, &rows, &cols);
    if (_tiles_fit_cells(painter->world)) return _paint_cells(painter, place.layer, rows, cols);
    const int left = static_cast<int>(SDL_roundf(dst->x)), top = static_cast<int>(SDL_roundf(dst->y));
    SDL_Rect clip = {
        left, top, static_cast<int>(SDL_roundf(dst->x + dst->w)) - left,
        static_cast<int>(SDL_roundf(dst->y + dst->h)) - top};
    SDL_Rect before = {};
    const bool clipped = SDL_RenderClipEnabled(renderer);
    SDL_GetRenderClipRect(renderer, &before);
    if (clipped && !SDL_GetRectIntersection(&before, &clip, &clip)) return true;
    SDL_SetRenderClipRect(renderer, &clip);
    const bool drawn = _paint_cells(painter, place.layer, rows, cols);
    SDL_SetRenderClipRect(renderer, clipped ? &before : nullptr);
    return drawn;
}

// The visible chunks along one axis, limited to the world including tiles that extend beyond it.
static TileRange _visible_chunks(float view, float origin, int side, float scale, int first_px, int end_px) {
    const int first = _floor_div(first_px, side), end = _floor_div(end_px - 1, side) + 1;
    const float start = origin + static_cast<float>(first) * static_cast<float>(side) * scale;
    const TileRange range = tile_range_covering(0, view, start, static_cast<float>(side), scale, end - first);
    return {range.first + first, range.end + first};
}

static bool _draw_chunks(const TilePainter *painter, int layer, SDL_FPoint view) {
    const TileWorld *world = painter->world;
    const SDL_Rect reach = world->parts->content.reach;
    const ChunkRaster raster = _chunk_raster(world);
    const auto px = [](Sint64 cells, int tile, int more) {
        return static_cast<int>(SDL_clamp(cells * tile + more, Sint64{SDL_MIN_SINT32 / 2}, Sint64{SDL_MAX_SINT32 / 2}));
    };
    const TileRange cols = _visible_chunks(
        view.x, painter->origin.x, raster.w, painter->scale, px(world->left, world->tile_w, -reach.x),
        px(Sint64{world->left} + world->cols, world->tile_w, reach.w));
    const TileRange rows = _visible_chunks(
        view.y, painter->origin.y, raster.h, painter->scale, px(world->top, world->tile_h, -reach.y),
        px(Sint64{world->top} + world->rows, world->tile_h, reach.h));
    const float w = static_cast<float>(raster.w) * painter->scale, h = static_cast<float>(raster.h) * painter->scale;
    for (int row = rows.first; row < rows.end; row++) {
        for (int col = cols.first; col < cols.end; col++) {
            const ChunkPlace place = {layer, col, row};
            const SDL_FRect dst = {
                painter->origin.x + static_cast<float>(col) * w, painter->origin.y + static_cast<float>(row) * h, w, h};
            const ChunkSlot *slot = _chunk_get(painter->renderer, world, place);
            if (slot && slot->content == CHUNK_EMPTY) continue;
            const bool baked = slot && slot->content != CHUNK_SPARSE;
            if (baked ? !_draw_baked(painter, slot, &dst) : !_draw_unbaked(painter, place, &dst)) return false;
        }
    }
    return true;
}

// Draws the layer's animated tiles, above its other tiles.
static bool _draw_animated(const TilePainter *painter, int layer, SDL_FPoint view) {
    const TileWorld *world = painter->world;
    const TileLayerParts *parts = &world->parts->content.layers[layer];
    const SDL_Rect reach = world->parts->content.reach;
    const auto covering = [painter](float length, float origin, int tile, int before, int after) {
        const float step = static_cast<float>(tile) * painter->scale;
        const float first = (static_cast<float>(-after) * painter->scale - origin) / step;
        return SDL_FPoint{
            first - 1, first + length / step + static_cast<float>(before + after) / static_cast<float>(tile) + 1};
    };
    const SDL_FPoint cols = covering(view.x, painter->origin.x, world->tile_w, reach.x, reach.w);
    const SDL_FPoint rows = covering(view.y, painter->origin.y, world->tile_h, reach.h, reach.y);
    for (int i = 0; i < parts->animated_count; i++) {
        const TileCellRef *cell = &parts->animated[i];
        const float col = static_cast<float>(cell->col), row = static_cast<float>(cell->row);
        if (col < cols.x || col > cols.y || row < rows.x || row > rows.y) continue;
        const TileSet *set = _tile_world_tileset(&world->parts->content, cell->gid);
        if (!_paint_tile(painter, set, cell->gid, cell->col, cell->row)) return false;
    }
    return true;
}

// --- object and image layers ---

static bool _draw_object(TilePainter painter, const TileObject *object, SDL_FPoint view) {
    const TileSet *set = _tile_world_tileset(&painter.world->parts->content, object->gid);
    const int id = static_cast<int>((object->gid & TILE_ID_MASK) - set->first_gid);
    const TileArt art = _tile_art(set, _tile_shown(painter.world, set, id));
    const float w = (object->width > 0 ? object->width : art.src.w) * painter.scale;
    const float h = (object->height > 0 ? object->height : art.src.h) * painter.scale;
    const SDL_FPoint anchor = {set->object_anchor.x * w, set->object_anchor.y * h};
    const SDL_FRect dst = {
        painter.origin.x + (object->x + static_cast<float>(set->offset.x)) * painter.scale - anchor.x,
        painter.origin.y + (object->y + static_cast<float>(set->offset.y)) * painter.scale - anchor.y, w, h};
    const float far = w + h; // bounds the rotated object
    if (dst.x + w + far < 0 || dst.y + h + far < 0 || dst.x - far > view.x || dst.y - far > view.y) return true;
    const int flip =
        (object->gid & TILE_FLIP_H ? SDL_FLIP_HORIZONTAL : 0) | (object->gid & TILE_FLIP_V ? SDL_FLIP_VERTICAL : 0);
    painter.tint.a *= object->opacity;
    return _paint_texture(
        &painter, art.texture, &art.src, &dst, static_cast<double>(object->rotation), &anchor,
        static_cast<SDL_FlipMode>(flip));
}

static bool _draw_objects(const TilePainter *painter, const TileLayerParts *parts, SDL_FPoint view) {
    for (int i = 0; i < parts->drawn_count; i++) {
        const TileObject *object = parts->drawn[i];
        if (object->visible && !_draw_object(*painter, object, view)) return false;
    }
    return true;
}

// Start and length of an image repeated along an axis, in whole copies: renderers sample partial copies differently.
static void _repeat(float *at, float *length, float view) {
    *at -= SDL_ceilf(*at / *length) * *length;
    *length *= SDL_max(SDL_ceilf((view - *at) / *length), 1);
}

static bool _draw_image_copies(const TilePainter *painter, const TileLayerParts *parts, SDL_FPoint view) {
    const SharedTexture *image = parts->image;
    const float w = static_cast<float>(image->width) * painter->scale;
    const float h = static_cast<float>(image->height) * painter->scale;
    SDL_FRect dst = {painter->origin.x, painter->origin.y, w, h};
    if (parts->repeat_x) _repeat(&dst.x, &dst.w, view.x);
    if (parts->repeat_y) _repeat(&dst.y, &dst.h, view.y);
    const SDL_FRect src = {0, 0, static_cast<float>(image->width), static_cast<float>(image->height)};
    if (!parts->repeat_x && !parts->repeat_y) {
        return _paint_texture(painter, image->texture, &src, &dst, 0, nullptr, SDL_FLIP_NONE);
    }
    const SDL_FColor tint = painter->tint;
    SDL_SetTextureColorModFloat(image->texture, tint.r, tint.g, tint.b);
    SDL_SetTextureAlphaModFloat(image->texture, tint.a);
    const bool drawn = SDL_RenderTextureTiled(painter->renderer, image->texture, nullptr, painter->scale, &dst);
    SDL_SetTextureColorModFloat(image->texture, 1, 1, 1);
    SDL_SetTextureAlphaModFloat(image->texture, 1);
    return drawn || engine_error("[TILE_WORLD] Could not draw, error: %s", SDL_GetError());
}

// An opaque image is copied without blending.
static bool _draw_image(const TilePainter *painter, const TileLayerParts *parts, SDL_FPoint view) {
    if (!parts->image) return true;
    SDL_Texture *texture = parts->image->texture;
    const bool opaque = parts->image_opaque && painter->tint.a >= 1;
    SDL_BlendMode before = SDL_BLENDMODE_BLEND;
    SDL_GetTextureBlendMode(texture, &before);
    if (opaque) SDL_SetTextureBlendMode(texture, SDL_BLENDMODE_NONE);
    const bool drawn = _draw_image_copies(painter, parts, view);
    SDL_SetTextureBlendMode(texture, before); // the texture is shared
    return drawn;
}

// --- worlds ---

SDL_FPoint tile_world_origin(const TileWorld *world, int layer, const TileWorldView *view) {
    const TileLayer *at = &world->layers[layer];
    const SDL_FPoint parallax_origin = world->parts->content.parallax_origin;
    const SDL_FRect area = view->area;
    const float x = at->offset.x + (1 - at->parallax.x) * (area.x + area.w / 2 - parallax_origin.x) - area.x;
    const float y = at->offset.y + (1 - at->parallax.y) * (area.y + area.h / 2 - parallax_origin.y) - area.y;
    return {SDL_roundf(x * view->scale), SDL_roundf(y * view->scale)};
}

static bool _is_on_pixels(SDL_Renderer *renderer, float scale) {
    SDL_RendererLogicalPresentation presentation = SDL_LOGICAL_PRESENTATION_DISABLED;
    SDL_FPoint units = {1, 1};
    SDL_GetRenderLogicalPresentation(renderer, nullptr, nullptr, &presentation);
    SDL_GetRenderScale(renderer, &units.x, &units.y);
    const bool whole = scale == SDL_floorf(scale) && units.x == SDL_floorf(units.x) && units.y == SDL_floorf(units.y);
    return whole && (presentation == SDL_LOGICAL_PRESENTATION_DISABLED ||
                     presentation == SDL_LOGICAL_PRESENTATION_INTEGER_SCALE);
}

static bool _draw_layer(const TilePainter *painter, int index, SDL_FPoint view) {
    const TileLayerKind kind = painter->world->layers[index].kind;
    const TileLayerParts *parts = &painter->world->parts->content.layers[index];
    if (kind == TILE_LAYER_OBJECTS) return _draw_objects(painter, parts, view);
    if (kind == TILE_LAYER_IMAGE) return _draw_image(painter, parts, view);
    return _draw_chunks(painter, index, view) && _draw_animated(painter, index, view);
}

bool tile_world_draw_layer(SDL_Renderer *renderer, TileWorld *world, int layer, const TileWorldView *view) {
    if (layer < 0 || layer >= world->layer_count) {
        return engine_error("[TILE_WORLD] %s: there is no layer %d", world->parts->path, layer);
    }
    const TileLayer *at = &world->layers[layer];
    const SDL_FPoint size = {view->area.w * view->scale, view->area.h * view->scale};
    if (!at->visible || !(size.x > 0) || !(size.y > 0) || !(view->scale > 0)) return true;
    if (SDL_SetAtomicInt(&world->parts->cache->targets_lost, 0) != 0) _tile_cache_clear(world->parts->cache);
    const SDL_FColor tint = _layer_tint(world, layer);
    const bool on_pixels = _is_on_pixels(renderer, view->scale);
    const TilePainter painter = {renderer, world,    tile_world_origin(world, layer, view), view->scale, tint,
                                 false,    on_pixels};
    return tint.a <= 0 || _draw_layer(&painter, layer, size);
}

bool tile_world_draw(SDL_Renderer *renderer, TileWorld *world, const TileWorldView *view) {
    const SDL_FRect all = {0, 0, view->area.w * view->scale, view->area.h * view->scale};
    if (world->background.a > 0) {
        const SDL_Color color = world->background;
        SDL_SetRenderDrawColor(renderer, color.r, color.g, color.b, color.a);
        SDL_RenderFillRect(renderer, &all);
    }
    for (int i = 0; i < world->layer_count; i++) {
        if (!tile_world_draw_layer(renderer, world, i, view)) return false;
    }
    return true;
}
