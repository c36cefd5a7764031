// Shared by the sources of tile_world, and used by its tests.
#pragma once

#include "core/arena.h"
#include "lumarind/toolkit/reload.h"
#include "lumarind/toolkit/texture_store.h"
#include "lumarind/toolkit/tile_world.h"

namespace pugi {
class xml_node;
}

// --- content: allocated in the arena, except for textures ---

struct TileFrame {
    Sint32 id; // within the tileset
    Sint32 ms; // above 0
};

// Tileset data of a single tile; most tiles have none.
struct TileInfo {
    Sint32 id;
    const char *type;
    TileProperties properties;
    const TileObject *shapes; // collision shapes, relative to the tile's top left
    Sint32 shape_count;
    const TileFrame *frames; // of an animation
    Sint32 frame_count;
    Sint32 loop_ms;
    SharedTexture *texture; // of a tile with an image of its own; a counted reference
    SDL_Rect src;
};

// Per tile: its ImageAlpha and these flags.
constexpr Uint8 TILE_EXISTS = 0x80, TILE_IS_ANIMATED = 0x40, TILE_HAS_SHAPES = 0x20, TILE_ALPHA = 0x03;

struct TileSet {
    Uint32 first_gid;
    const char *name;
    const char *path; // of an external tileset; "" if embedded in the map
    Sint32 tile_w, tile_h, spacing, margin, columns;
    SDL_Point offset;         // drawing offset, px
    SDL_FPoint object_anchor; // fraction of a tile object's size
    bool grid_size, keep_aspect;
    SharedTexture *texture; // a counted reference; null if each tile has an image of its own
    Sint32 id_count;        // ids are below it
    Uint8 *kinds;           // per id
    const TileInfo *infos;  // in ascending id order
    Sint32 info_count;
    Sint32 max_w, max_h; // largest tile size
};

struct TileChunk { // cells as stored in the file: a finite layer is one chunk
    Sint32 left, top, cols, rows;
    Uint32 *cells; // row by row, with flags
};

struct TileCellRef {
    Sint32 col, row;
    Uint32 gid;
};

struct TileLayerParts {
    const TileChunk *chunks; // in ascending order of top, then left
    Sint32 chunk_count;
    const TileCellRef *animated; // in drawing order
    Sint32 animated_count;
    const TileObject *const *drawn; // tile objects of object layers, in drawing order
    Sint32 drawn_count;
    SharedTexture *image; // of image layers, a counted reference; null if none
    bool image_opaque;    // every pixel of it
    bool repeat_x, repeat_y;
};

// A source file of the world.
struct TileSourceFile {
    TileSourceFile *next;
    const char *path;
    bool is_picture; // an asset's path; otherwise a game file's
    FileStamp stamp; // taken before reading; updated only with hot reload
};

struct TileTextureRef {
    TileTextureRef *next;
    SharedTexture *texture;
};

struct TileContent {
    Arena arena;
    TileTextureRef *textures;
    TileSourceFile *files;
    const TileSet **tilesets; // in ascending order of first_gid
    Sint32 tileset_count;
    TileLayerParts *layers;
    bool infinite;
    bool from_right, from_bottom; // drawing order of tiles
    SDL_FPoint parallax_origin;
    SDL_Rect reach; // how far tiles extend beyond their cells: left, top, right, bottom as x, y, w, h; px
};

struct TileChunkCache;

struct TileWorldParts {
    TileContent content;
    SDL_Renderer *renderer;
    char *path; // owned
    double clock_ms;
    Uint64 checked_ms; // time of the last check for changed files
    TileChunkCache *cache;
};

// --- loading ---

struct TileTemplate;

struct TileLoad {
    SDL_Renderer *renderer;
    TileWorld *world;
    TileContent *content;
    const char *path; // of the file being read
    int depth;        // nesting of elements
    TileTemplate *templates;
    int tileset_room; // capacity of content->tilesets
};

// An object template: defaults for the objects that use it.
struct TileTemplate {
    TileTemplate *next;
    const char *path;
    TileObject object;
};

constexpr int TILE_WORLD_DEPTH_MAX = 32;            // nesting of groups, and of properties
constexpr int TILE_WORLD_TILES_MAX = 1 << 16;       // per tileset
constexpr Sint64 TILE_WORLD_CELLS_MAX = 64 << 20;   // per layer or chunk: 256 MB
constexpr int TILE_WORLD_TILE_SIZE_MAX = 4096;      // px
constexpr int TILE_WORLD_COORDINATE_MAX = 16 << 20; // tiles

// Allocates from the content's arena. Reports errors.
void *_tile_load_memory(TileLoad *load, size_t count, size_t size);
template <typename T> T *_tile_load_new(TileLoad *load, size_t count = 1) {
    return static_cast<T *>(_tile_load_memory(load, count, sizeof(T)));
}
const char *_tile_load_text(TileLoad *load, const char *text); // a copy
// Resolves a path in the file being read to one relative to the game's files. Reports errors.
const char *_tile_load_resolve(TileLoad *load, const char *element, const char *path);
// Parses a file and calls `read` with its root element, which must have this name; load->path names the file during the
// call. Reports errors.
using TileXmlReader = bool (*)(TileLoad *load, const pugi::xml_node &root, void *result);
bool _tile_load_xml(TileLoad *load, const char *path, const char *root, TileXmlReader read, void *result);
FileStamp _tile_file_stamp(const TileSourceFile *file); // current stamp
// Loads the image of an image element; `owner` is named in messages. Reports errors.
SharedTexture *_tile_load_picture(TileLoad *load, const pugi::xml_node &image, const char *owner);

float _tile_xml_number(const pugi::xml_node &node, const char *name, float otherwise); // finite, clamped
bool _tile_xml_color(const char *text, SDL_Color *color);                              // false: not a colour

bool _tile_load_properties(TileLoad *load, const pugi::xml_node &owner, TileProperties *properties);
// Reads the objects in an element: of the map (`may_be_tiles`), or a tile's collision shapes.
bool _tile_load_objects(
    TileLoad *load, const pugi::xml_node &group, bool may_be_tiles, const TileObject **objects, Sint32 *count);
bool _tile_sort_objects(TileLoad *load, const pugi::xml_node &group, const TileLayer *layer, TileLayerParts *parts);
// Reads a tileset element of the map or a template; the tileset may be an external file. Reports errors.
const TileSet *_tile_load_tileset(TileLoad *load, const pugi::xml_node &node, Uint32 first_gid);
bool _tile_load_data(TileLoad *load, const pugi::xml_node &layer, const char *name, TileLayerParts *parts);
bool _tile_load_map(TileLoad *load);
bool _tile_load_add_tileset(TileLoad *load, const TileSet *set);

void _tile_content_cleanup(TileContent *content);

// --- queries ---
const TileSet *_tile_world_tileset(const TileContent *content, Uint32 gid); // null if no tileset contains it
const TileInfo *_tile_set_info(const TileSet *set, int id);                 // null if the tile has no data
Uint32 _tile_world_next_gid(const TileContent *content);                    // first GID after all tilesets

// Box in the world of a w × h px tile in this cell: anchored bottom left, at the size the tileset specifies. For a
// transposed tile, the box after rotation.
SDL_FRect _tile_cell_box(const TileWorld *world, const TileSet *set, SDL_Point size, Uint32 gid, int col, int row);
SDL_Point _tile_size(const TileSet *set, const TileInfo *info); // px

// Hot reload: replaces the content if files have changed. If loading fails, the world is unchanged.
void _tile_world_follow_files(TileWorld *world);

// --- chunks ---
TileChunkCache *_tile_cache_new(SDL_Renderer *renderer); // reports errors
void _tile_cache_free(TileChunkCache *cache);
void _tile_cache_clear(TileChunkCache *cache);
