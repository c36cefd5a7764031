// tile_world: maps of a map editor (.tmx with its .tsx tilesets and .tx templates), read directly: layers, tilesets,
// objects, properties and collision shapes, and their drawing under a camera at a cost that does not grow with the map.
// Orthogonal maps; tile, object and image layers; groups are flattened. Coordinates are world pixels, y downwards.
// Main thread only. A world belongs to its renderer and has to be freed before it.
#pragma once

#include "lumarind/toolkit/colliders.h"

#include <SDL3/SDL_pixels.h>
#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_stdinc.h>

struct SDL_Renderer;
struct TileWorldParts;

// --- properties ---

enum TilePropertyType : Uint8 {
    TILE_PROPERTY_STRING,
    TILE_PROPERTY_INT,
    TILE_PROPERTY_FLOAT,
    TILE_PROPERTY_BOOL,
    TILE_PROPERTY_COLOR,
    TILE_PROPERTY_FILE,   // as written: relative to the file that names it
    TILE_PROPERTY_OBJECT, // the id of an object, 0 for none
    TILE_PROPERTY_CLASS,  // its members follow as "name.member"
    TILE_PROPERTY_LIST,   // its items follow as "name.0", "name.1", ...; the number is how many there are
};

struct TileProperty {
    const char *name;
    TilePropertyType type;
    const char *text; // as written; empty for classes and lists
    double number;    // of int, float, bool, object and list
    SDL_Color color;  // of colours; transparent when none is given
};

struct TileProperties {
    const TileProperty *items;
    Sint32 count;
};

// Each returns the default when there is no property of this name or it is of another type. Int and float read each
// other; a string reads as written whatever the type.
const char *tile_property_string(const TileProperties *properties, const char *name, const char *otherwise);
int tile_property_int(const TileProperties *properties, const char *name, int otherwise);
double tile_property_float(const TileProperties *properties, const char *name, double otherwise);
bool tile_property_bool(const TileProperties *properties, const char *name, bool otherwise);
SDL_Color tile_property_color(const TileProperties *properties, const char *name, SDL_Color otherwise);
const TileProperty *tile_property_find(const TileProperties *properties, const char *name); // null: none

// --- objects ---

enum TileObjectShape : Uint8 {
    TILE_OBJECT_RECT,
    TILE_OBJECT_POINT,
    TILE_OBJECT_ELLIPSE,
    TILE_OBJECT_CAPSULE,
    TILE_OBJECT_POLYGON,
    TILE_OBJECT_POLYLINE,
    TILE_OBJECT_TILE, // a picture: `gid`
    TILE_OBJECT_TEXT,
};

struct TileObject {
    Sint32 id;
    const char *name, *type; // never null
    TileObjectShape shape;
    float x, y;          // top left, or the anchor of a tile object, by default its bottom left
    float width, height; // px
    float rotation;      // degrees clockwise about x, y
    bool visible;
    float opacity;            // 0 to 1
    Uint32 gid;               // of tile objects, with its flips
    const SDL_FPoint *points; // of polygons and polylines, relative to x, y and not yet rotated
    Sint32 point_count;
    const char *text; // of text objects, else empty. Text is not drawn
    TileProperties properties;
};

// --- layers, in drawing order ---

enum TileLayerKind : Uint8 { TILE_LAYER_TILES, TILE_LAYER_OBJECTS, TILE_LAYER_IMAGE };

// What the groups around a layer say is contained in the layer's own values.
struct TileLayer {
    TileLayerKind kind;
    Sint32 id;
    const char *name, *type; // never null
    bool visible;
    float opacity;   // 0 to 1
    SDL_FColor tint; // white: none
    SDL_FPoint offset, parallax;
    TileProperties properties;
    const TileObject *objects; // of object layers, in the order of the file
    Sint32 object_count;
};

// --- the world: to be read, not written ---

struct TileWorld {
    Sint32 cols, rows;     // in tiles; of an infinite map, the box around its chunks
    Sint32 left, top;      // the first column and row: 0, but for infinite maps
    Sint32 tile_w, tile_h; // of the grid, px
    SDL_Color background;  // transparent: none
    TileProperties properties;
    const TileLayer *layers;
    Sint32 layer_count;
    Uint32 generation; // rises when the content is replaced by that of changed files
    TileWorldParts *parts;
};

// --- lifetime ---

// From a game file. Its path and those within are relative, with "/" between names. Null: reported, with the file, the
// element and what to do about it.
TileWorld *tile_world_load(SDL_Renderer *renderer, const char *path);
void tile_world_cleanup(TileWorld **world); // and nulls the caller's pointer; null pointers are ignored

// Once per frame, before drawing: the world's clock, which animated tiles follow, goes on, and a few more chunks may be
// baked. Where files are followed (toolkit/reload.h), the world takes over what its changed files hold: the world stays
// where it is, but pointers to its layers, objects and texts end here, and its generation rises. A file that is broken
// or half written changes nothing and is reported once.
void tile_world_advance(TileWorld *world, double seconds);

// --- drawing ---

// What of the world is seen, and how large.
struct TileWorldView {
    SDL_FRect area; // world px; shown with its top left corner at (0, 0) of the drawing space
    float scale;    // drawing units to a world pixel, above 0
};

// Draws one layer, so that actors can be drawn between layers. Invisible layers are not drawn. A layer's origin is
// rounded to whole units. At whole-number scales the same pixels are drawn from baked chunks and tile by tile, but for
// half-transparent ones, which are rounded once more.
// Returns false and reports the error when SDL could not draw.
bool tile_world_draw_layer(SDL_Renderer *renderer, TileWorld *world, int layer, const TileWorldView *view);
// The background colour, where the map has one, and all layers.
bool tile_world_draw(SDL_Renderer *renderer, TileWorld *world, const TileWorldView *view);

// Whether anything of the area shows what lies behind a tile layer that stays with the world: through a cell without a
// tile, or a tile that is not opaque. Where nothing does, layers behind it need not be drawn.
bool tile_world_find_open(const TileWorld *world, int layer, SDL_FRect area);

// Where the world's origin lies in the drawing space for a layer, with its offset and parallax: to draw actors by.
SDL_FPoint tile_world_origin(const TileWorld *world, int layer, const TileWorldView *view);

// Baked chunks take at most so much texture memory; the least recently drawn ones go first. What does not fit is drawn
// tile by tile, as is everything with a budget of 0.
inline constexpr size_t TILE_WORLD_CHUNK_BYTES = 64 << 20;
inline constexpr int TILE_WORLD_BAKES_PER_FRAME = 4;
void tile_world_set_chunk_budget(TileWorld *world, size_t bytes, int bakes_per_frame);
size_t tile_world_chunk_bytes(const TileWorld *world); // taken by chunks now

// --- questions ---

int tile_world_find_layer(const TileWorld *world, const char *name);                  // the first of this name, or -1
const TileObject *tile_world_find_object(const TileWorld *world, const char *name);   // of any layer; null: none
const TileObject *tile_world_object(const TileWorld *world, int id);                  // null: none
Uint32 tile_world_gid(const TileWorld *world, int layer, int col, int row);           // with its flags; 0: empty
const TileProperties *tile_world_tile_properties(const TileWorld *world, Uint32 gid); // never null
const char *tile_world_tile_type(const TileWorld *world, Uint32 gid);                 // "" without one

// --- collision ---

// Appends a layer's collision shapes to the sets; null sets are skipped. From an object layer: rectangles as they are,
// and polygons as triangles whose upper outline is floor. From a tile layer: the shapes drawn on its tiles in the
// tileset, in all orientations, rectangles that touch merged into few.
// Null for `layer`: all tile layers, visible or not.
// A slope lifts whatever is below it. So a polygon with open space right below it is refused, as are turned rectangles,
// ellipses, capsules and polylines; points and text have no body. What is below may be in the sets already, in the
// layer, or be the lower edge of the map.
// Returns false and reports the error; the sets are then as they were.
bool tile_world_colliders(const TileWorld *world, const char *layer, ColliderRects *rects, ColliderTris *tris);
