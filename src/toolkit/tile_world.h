// tile_world: loads tile maps of a map editor (.tmx with .tsx tilesets and .tx templates): layers, tilesets, objects,
// properties and collision shapes, and draws them with culling, at a cost that does not grow with the map.
// Orthogonal maps; tile, object and image layers; groups are flattened. Coordinates are world pixels, y downwards.
// Main thread only. A world is owned by one renderer and must be freed before it.
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
    TILE_PROPERTY_FILE,   // as written: relative to the file that contains it
    TILE_PROPERTY_OBJECT, // the id of an object, 0 for none
    TILE_PROPERTY_CLASS,  // its members follow as "name.member"
    TILE_PROPERTY_LIST,   // its items follow as "name.0", "name.1", ...; `number` is their count
};

struct TileProperty {
    const char *name;
    TilePropertyType type;
    const char *text; // as written; empty for classes and lists
    double number;    // value of int, float, bool and object, length of a list
    SDL_Color color;  // value of a colour; transparent if none is given
};

struct TileProperties {
    const TileProperty *items;
    Sint32 count;
};

// Each returns `otherwise` if there is no property of this name and type. Int and float convert to each other; the
// string function returns the text as written for any type.
const char *tile_property_string(const TileProperties *properties, const char *name, const char *otherwise);
int tile_property_int(const TileProperties *properties, const char *name, int otherwise);
double tile_property_float(const TileProperties *properties, const char *name, double otherwise);
bool tile_property_bool(const TileProperties *properties, const char *name, bool otherwise);
SDL_Color tile_property_color(const TileProperties *properties, const char *name, SDL_Color otherwise);
const TileProperty *tile_property_find(const TileProperties *properties, const char *name); // null if there is none

// --- objects ---

enum TileObjectShape : Uint8 {
    TILE_OBJECT_RECT,
    TILE_OBJECT_POINT,
    TILE_OBJECT_ELLIPSE,
    TILE_OBJECT_CAPSULE,
    TILE_OBJECT_POLYGON,
    TILE_OBJECT_POLYLINE,
    TILE_OBJECT_TILE, // drawn: a tile, `gid`
    TILE_OBJECT_TEXT,
};

struct TileObject {
    Sint32 id;
    const char *name, *type; // never null
    TileObjectShape shape;
    float x, y;          // top left; for tile objects the anchor, by default bottom left
    float width, height; // px
    float rotation;      // degrees clockwise about x, y
    bool visible;
    float opacity;            // 0 to 1
    Uint32 gid;               // of tile objects, with flip flags
    const SDL_FPoint *points; // of polygons and polylines, relative to x, y, before rotation
    Sint32 point_count;
    const char *text; // of text objects, otherwise empty. Text is not drawn
    TileProperties properties;
};

// --- layers, in drawing order ---

enum TileLayerKind : Uint8 { TILE_LAYER_TILES, TILE_LAYER_OBJECTS, TILE_LAYER_IMAGE };

// Values of enclosing groups are already combined into the layer's own.
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

// --- the world: read-only ---

struct TileWorld {
    Sint32 cols, rows;     // in tiles; of an infinite map, the box around its chunks
    Sint32 left, top;      // first column and row; 0 unless the map is infinite
    Sint32 tile_w, tile_h; // of the grid, px
    SDL_Color background;  // transparent: none
    TileProperties properties;
    const TileLayer *layers;
    Sint32 layer_count;
    Uint32 generation; // incremented when hot reload replaces the content
    TileWorldParts *parts;
};

// --- lifetime ---

// Loads a game file. Its path and those in it are relative, with "/" between names. Reports errors with file, element
// and remedy.
TileWorld *tile_world_load(SDL_Renderer *renderer, const char *path);
void tile_world_cleanup(TileWorld **world); // sets the pointer to null; null is ignored

// Called once per frame, before drawing: advances the clock of animated tiles and resets the frame's bake budget. With
// hot reload (toolkit/reload.h) changed files replace the content: the world keeps its address, but pointers to its
// layers, objects and strings become invalid, and its generation is incremented. An invalid file is reported once and
// changes nothing.
void tile_world_advance(TileWorld *world, double seconds);

// --- drawing ---

// The visible area and its scale.
struct TileWorldView {
    SDL_FRect area; // world px; its top-left corner is drawn at (0, 0) of the drawing space
    float scale;    // drawing units per world pixel, above 0
};

// Draws one layer, so that actors can be drawn between layers. Invisible layers are skipped. A layer's origin is
// rounded to whole units. At integer scales baked chunks and single tiles give the same pixels, except for a rounding
// error in translucent ones. Reports errors.
bool tile_world_draw_layer(SDL_Renderer *renderer, TileWorld *world, int layer, const TileWorldView *view);
// Draws the map's background colour, if any, and all layers.
bool tile_world_draw(SDL_Renderer *renderer, TileWorld *world, const TileWorldView *view);

// Returns whether anything behind a tile layer may be visible in the area: it has a cell without an opaque tile. If
// false, layers behind it need not be drawn. The layer must have no offset and no parallax.
bool tile_world_find_open(const TileWorld *world, int layer, SDL_FRect area);

// Position of the world's origin in the drawing space for a layer, with its offset and parallax, for drawing actors.
SDL_FPoint tile_world_origin(const TileWorld *world, int layer, const TileWorldView *view);

// Limits texture memory of baked chunks; the least recently drawn are evicted. Chunks that do not fit, or all with a
// budget of 0, are drawn tile by tile.
inline constexpr size_t TILE_WORLD_CHUNK_BYTES = 64 << 20;
inline constexpr int TILE_WORLD_BAKES_PER_FRAME = 4;
void tile_world_set_chunk_budget(TileWorld *world, size_t bytes, int bakes_per_frame);
size_t tile_world_chunk_bytes(const TileWorld *world); // texture memory in use

// --- queries ---

int tile_world_find_layer(const TileWorld *world, const char *name);                  // first of this name, or -1
const TileObject *tile_world_find_object(const TileWorld *world, const char *name);   // in any layer; null if none
const TileObject *tile_world_object(const TileWorld *world, int id);                  // null if none
Uint32 tile_world_gid(const TileWorld *world, int layer, int col, int row);           // with flags; 0: empty
const TileProperties *tile_world_tile_properties(const TileWorld *world, Uint32 gid); // never null
const char *tile_world_tile_type(const TileWorld *world, Uint32 gid);                 // "" if none

// --- collision ---

// Appends a layer's collision shapes to the sets; null sets are skipped. Object layers contribute their rectangles, and
// polygons as triangles, whose upper outline is a slope. Tile layers contribute the shapes drawn on tiles in the
// tileset, with flips applied; touching rectangles are merged. Null for `layer`: all tile layers, visible or not.
// Because slopes lift anything below them, a polygon with open space right below it is an error; the ground below may
// be in the sets, in the layer, or be the map's lower edge. Rotated rectangles, ellipses, capsules and polylines are
// errors too; points and text are ignored. Reports errors and then leaves the sets unchanged.
bool tile_world_colliders(const TileWorld *world, const char *layer, ColliderRects *rects, ColliderTris *tris);
