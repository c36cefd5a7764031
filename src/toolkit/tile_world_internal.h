// What the parts of tile_world share, and its tests reach into.
#pragma once

#include "core/arena.h"
#include "lumarind/toolkit/reload.h"
#include "lumarind/toolkit/texture_store.h"
#include "lumarind/toolkit/tile_world.h"

namespace pugi {
class xml_node;
}

// --- content: in the arena, but for textures ---

struct TileFrame {
    Sint32 id; // within the tileset
    Sint32 ms; // above 0
};

// What a tileset says of single tiles; most have nothing said of them.
struct TileInfo {
    Sint32 id;
    const char *type;
    TileProperties properties;
    const TileObject *shapes; // for collision, from the tile's top left
    Sint32 shape_count;
    const TileFrame *frames; // of an animation
    Sint32 frame_count;
    Sint32 loop_ms;
    SharedTexture *texture; // of tiles that are pictures of their own: held
    SDL_Rect src;
};

// Of each tile: its ImageAlpha, and these flags.
constexpr Uint8 TILE_IS_THERE = 0x80, TILE_IS_ANIMATED = 0x40, TILE_HAS_SHAPES = 0x20, TILE_ALPHA = 0x03;

struct TileSet {
    Uint32 first_gid;
    const char *name;
    const char *path; // of its own file; "" in the map
    Sint32 tile_w, tile_h, spacing, margin, columns;
    SDL_Point offset;         // px, added when drawn
    SDL_FPoint object_anchor; // 0 to 1 of a tile object's size
    bool grid_size, keep_aspect;
    SharedTexture *texture; // held; null where each tile is a picture of its own
    Sint32 id_count;        // ids lie below
    Uint8 *kinds;           // of each id
    const TileInfo *infos;  // by rising id
    Sint32 info_count;
    Sint32 max_w, max_h; // of any tile
};

struct TileChunk { // cells as they stand in the file: a finite layer is one chunk
    Sint32 left, top, cols, rows;
    Uint32 *cells; // row by row, with flags
};

struct TileCellRef {
    Sint32 col, row;
    Uint32 gid;
};

struct TileLayerParts {
    const TileChunk *chunks; // by rising top, then left
    Sint32 chunk_count;
    const TileCellRef *animated; // in drawing order
    Sint32 animated_count;
    const TileObject *const *drawn; // of object layers, those that are pictures, in drawing order
    Sint32 drawn_count;
    SharedTexture *image; // held; of image layers, null when they have none
    bool repeat_x, repeat_y;
};

// A file the world was read from.
struct TileSourceFile {
    TileSourceFile *next;
    const char *path;
    bool is_picture; // then relative to the current folder, else a game file
    FileStamp stamp; // before it was read; kept up to date only where files are followed
};

struct TileHeldTexture {
    TileHeldTexture *next;
    SharedTexture *texture;
};

struct TileContent {
    Arena arena;
    TileHeldTexture *held;
    TileSourceFile *files;
    const TileSet **tilesets; // by rising first_gid
    Sint32 tileset_count;
    TileLayerParts *layers;
    bool infinite;
    bool from_right, from_bottom; // the order in which tiles are drawn
    SDL_FPoint parallax_origin;
    SDL_Rect reach; // how far tiles stand out of their cells: to the left, top, right, bottom as x, y, w, h; px
};

struct TileChunkCache;

struct TileWorldParts {
    TileContent content;
    SDL_Renderer *renderer;
    char *path; // owned
    double clock_ms;
    Uint64 looked_ms; // when the files were last looked at
    TileChunkCache *cache;
};

// --- reading, with the world being filled ---

struct TileTemplate;

struct TileLoad {
    SDL_Renderer *renderer;
    TileWorld *world;
    TileContent *content;
    const char *path; // of the file being read
    int depth;        // of nested elements
    TileTemplate *templates;
    int tileset_room; // of content->tilesets
};

// An object template: what an object has where it says nothing itself.
struct TileTemplate {
    TileTemplate *next;
    const char *path;
    TileObject object;
};

constexpr int TILE_WORLD_DEPTH_MAX = 32;            // of groups, and of properties within properties
constexpr int TILE_WORLD_TILES_MAX = 1 << 16;       // of a tileset
constexpr Sint64 TILE_WORLD_CELLS_MAX = 64 << 20;   // of a layer or chunk: a quarter of a gigabyte
constexpr int TILE_WORLD_TILE_SIZE_MAX = 4096;      // px
constexpr int TILE_WORLD_COORDINATE_MAX = 16 << 20; // tiles

// Memory of the content. Null: reported.
void *_tile_load_memory(TileLoad *load, size_t count, size_t size);
template <typename T> T *_tile_load_new(TileLoad *load, size_t count = 1) {
    return static_cast<T *>(_tile_load_memory(load, count, sizeof(T)));
}
const char *_tile_load_text(TileLoad *load, const char *text); // a copy
// A path written in the file being read, as seen from where the game's files begin. Null: reported.
const char *_tile_load_resolve(TileLoad *load, const char *element, const char *path);
// Reads a file whose outermost element has this name; `read` gets it, with the file as the load's path. False:
// reported.
using TileXmlReader = bool (*)(TileLoad *load, const pugi::xml_node &root, void *result);
bool _tile_load_xml(TileLoad *load, const char *path, const char *root, TileXmlReader read, void *result);
// The picture of an image element; `owner` names whose it is. Null: reported.
FileStamp _tile_file_stamp(const TileSourceFile *file); // as it is now
SharedTexture *_tile_load_picture(TileLoad *load, const pugi::xml_node &image, const char *owner);

float _tile_xml_number(const pugi::xml_node &node, const char *name, float otherwise); // finite, within reach
bool _tile_xml_color(const char *text, SDL_Color *color);                              // false: none

bool _tile_load_properties(TileLoad *load, const pugi::xml_node &owner, TileProperties *properties);
// The objects among an element's children. With `may_be_tiles`, those of the map, else a tile's collision shapes.
bool _tile_load_objects(
    TileLoad *load, const pugi::xml_node &group, bool may_be_tiles, const TileObject **objects, Sint32 *count);
bool _tile_sort_objects(TileLoad *load, const pugi::xml_node &group, const TileLayer *layer, TileLayerParts *parts);
// A tileset element of the map or of a template; its content may be in a file of its own. Null: reported.
const TileSet *_tile_load_tileset(TileLoad *load, const pugi::xml_node &node, Uint32 first_gid);
bool _tile_load_data(TileLoad *load, const pugi::xml_node &layer, const char *name, TileLayerParts *parts);
bool _tile_load_map(TileLoad *load);
bool _tile_load_add_tileset(TileLoad *load, const TileSet *set);

void _tile_content_cleanup(TileContent *content);

// --- questions ---
const TileSet *_tile_world_tileset(const TileContent *content, Uint32 gid); // null: none holds it
const TileInfo *_tile_set_info(const TileSet *set, int id);                 // null: nothing is said of it
Uint32 _tile_world_next_gid(const TileContent *content);                    // the first one above all tilesets

// Where a tile of w × h px stands in the world when it is in this cell: bottom left, at the size its tileset wants. Of
// a transposed one, the box after turning.
SDL_FRect _tile_cell_box(const TileWorld *world, const TileSet *set, SDL_Point size, Uint32 gid, int col, int row);
SDL_Point _tile_size(const TileSet *set, const TileInfo *info); // px

// Takes over what changed files hold. A world whose files cannot be loaded stays as it is.
void _tile_world_follow_files(TileWorld *world);

// --- chunks ---
TileChunkCache *_tile_cache_new(SDL_Renderer *renderer); // null: reported
void _tile_cache_free(TileChunkCache *cache);
void _tile_cache_clear(TileChunkCache *cache);
