// Decodes cells of tile layers: CSV, base64 and XML, plain or compressed. Sizes are checked before allocating: each
// encoding needs a minimum of bytes per cell.
#include "lumarind/core/error.h"
#include "lumarind/toolkit/tile_grid.h"
#include "toolkit/tile_world_internal.h"

#include <SDL3/SDL_endian.h>
#include <SDL3/SDL_error.h>

#include <iterator>
#include <pugixml.hpp>
#include <zlib.h>

struct TileData {
    TileLoad *load;
    const char *layer; // its name
    bool csv, base64, compressed;
    Uint32 *cells;
    size_t count;
};

static bool _tile_data_error(const TileData *data, const char *what) {
    return engine_error("[TILE_WORLD] %s: layer '%s': %s", data->load->path, data->layer, what);
}

static bool _tile_data_count_error(const TileData *data, const char *how, size_t count) {
    return engine_error(
        "[TILE_WORLD] %s: layer '%s' has %s%zu cells, but its size requires %zu", data->load->path, data->layer, how,
        count, data->count);
}

// Allocates the cells; called once the text is known to be long enough for them.
static bool _tile_data_alloc(TileData *data) {
    data->cells = _tile_load_new<Uint32>(data->load, data->count);
    return data->cells != nullptr;
}

// --- CSV ---

static const char *_tile_skip_blanks(const char *at) {
    while (*at == ' ' || *at == '\n' || *at == '\r' || *at == '\t') at++;
    return at;
}

// Parses a decimal number. Returns null if there is none or it is too large.
static const char *_tile_read_cell(const char *at, Uint32 *cell) {
    const char *first = at;
    Uint64 number = 0;
    for (unsigned digit = 0; (digit = static_cast<unsigned char>(*at) - unsigned{'0'}) <= 9; at++) {
        number = number * 10 + digit;
        if (number > SDL_MAX_UINT32) return nullptr;
    }
    *cell = static_cast<Uint32>(number);
    return at == first ? nullptr : at;
}

static bool _tile_read_csv(TileData *data, const char *text) {
    if (SDL_strlen(text) + 1 < 2 * data->count) return _tile_data_count_error(data, "at most ", SDL_strlen(text));
    if (!_tile_data_alloc(data)) return false;
    const char *at = _tile_skip_blanks(text);
    for (size_t i = 0; i < data->count; i++) {
        if (!*at) return _tile_data_count_error(data, "", i);
        at = _tile_read_cell(at, &data->cells[i]);
        if (!at) return _tile_data_error(data, "its CSV contains an invalid tile number: save the map again");
        if (*at != ',') at = _tile_skip_blanks(at);
        if (*at == ',') {
            at = _tile_skip_blanks(at + 1);
        } else if (*at) {
            return _tile_data_error(data, "a comma is missing in its CSV: save the map again");
        }
    }
    return !*at || _tile_data_count_error(data, "more than ", data->count);
}

// --- XML: one element per cell ---

static bool _tile_read_elements(TileData *data, const pugi::xml_node &parent) {
    size_t count = 0;
    for (const pugi::xml_node &tile : parent.children("tile")) count += tile ? 1 : 0;
    if (count != data->count) return _tile_data_count_error(data, "", count);
    if (!_tile_data_alloc(data)) return false;
    Uint32 *cell = data->cells;
    for (const pugi::xml_node &tile : parent.children("tile")) *cell++ = tile.attribute("gid").as_uint();
    return true;
}

// --- base64 ---

struct Base64Values {
    Uint8 of[256]; // 64: not a digit, 65: whitespace
    constexpr Base64Values() : of() {
        constexpr char DIGITS[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        for (Uint8 &value : of) value = 64;
        for (Uint8 i = 0; i < 64; i++) of[static_cast<unsigned char>(DIGITS[i])] = i;
        for (const char blank : {' ', '\n', '\r', '\t'}) of[static_cast<unsigned char>(blank)] = 65;
    }
};
static constexpr Base64Values BASE64_VALUES;

// Decodes into `bytes`, which has room for three bytes per four characters. Returns the number of bytes, or -1.
static Sint64 _tile_decode_base64(const char *text, Uint8 *bytes) {
    Sint64 count = 0;
    unsigned pending = 0, bits = 0;
    const char *at = text;
    for (; *at && *at != '='; at++) {
        const Uint8 value = BASE64_VALUES.of[static_cast<unsigned char>(*at)];
        if (value == 65) continue;
        if (value == 64) return -1;
        pending = pending << 6 | value;
        bits += 6;
        if (bits < 8) continue;
        bits -= 8;
        bytes[count++] = static_cast<Uint8>(pending >> bits);
    }
    while (*at == '=') at++;
    return *_tile_skip_blanks(at) ? -1 : count;
}

// --- zlib and gzip ---

static void *_tile_zlib_alloc(void *, uInt count, uInt size) { return SDL_calloc(count, size); }
static void _tile_zlib_free(void *, void *memory) { SDL_free(memory); }

// Never writes more than the layer's size, whatever the size of the decompressed data.
static bool _tile_inflate(const TileData *data, Uint8 *bytes, size_t count) {
    constexpr int ANY_HEADER = 15 + 32; // accepts zlib and gzip headers, with the largest window
    const size_t size = data->count * sizeof(Uint32);
    z_stream stream = {};
    stream.zalloc = _tile_zlib_alloc;
    stream.zfree = _tile_zlib_free;
    stream.next_in = bytes;
    stream.avail_in = static_cast<uInt>(count);
    stream.next_out = reinterpret_cast<Bytef *>(data->cells);
    stream.avail_out = static_cast<uInt>(size);
    if (inflateInit2(&stream, ANY_HEADER) != Z_OK) {
        return engine_error("[TILE_WORLD] Memory allocation failed while loading %s", data->load->path);
    }
    int result = inflate(&stream, Z_FINISH);
    const size_t written = stream.total_out;
    Bytef beyond = 0;
    if (result == Z_BUF_ERROR && written == size) { // distinguishes excess data from a missing end marker
        stream.next_out = &beyond;
        stream.avail_out = 1;
        result = inflate(&stream, Z_FINISH);
    }
    const bool more = stream.total_out > size;
    inflateEnd(&stream);
    if (result == Z_MEM_ERROR) {
        return engine_error("[TILE_WORLD] Memory allocation failed while loading %s", data->load->path);
    }
    if (more) return _tile_data_count_error(data, "more than ", data->count);
    if (result != Z_STREAM_END) return _tile_data_error(data, "its compressed data is corrupt: save the map again");
    return written == size || _tile_data_count_error(data, "", written / sizeof(Uint32));
}

static bool _tile_unpack(TileData *data, Uint8 *bytes, size_t count) {
    constexpr size_t DEFLATE_MAX = 1032; // maximum compression ratio
    const size_t size = data->count * sizeof(Uint32);
    const size_t available = data->compressed ? count * DEFLATE_MAX : count;
    if (available < size || (!data->compressed && available > size)) {
        return _tile_data_count_error(data, data->compressed ? "at most " : "", available / sizeof(Uint32));
    }
    if (!_tile_data_alloc(data)) return false;
    if (data->compressed) {
        if (!_tile_inflate(data, bytes, count)) return false;
    } else {
        SDL_memcpy(data->cells, bytes, size);
    }
    for (size_t i = 0; i < data->count; i++) data->cells[i] = SDL_Swap32LE(data->cells[i]);
    return true;
}

static bool _tile_read_base64(TileData *data, const char *text) {
    const size_t room = SDL_strlen(text) / 4 * 3 + 3;
    auto *bytes = static_cast<Uint8 *>(SDL_malloc(room));
    if (!bytes) return engine_error("[TILE_WORLD] Memory allocation failed while loading %s", data->load->path);
    const Sint64 count = _tile_decode_base64(text, bytes);
    const bool read = count < 0 ? _tile_data_error(data, "its base64 text is invalid: save the map again")
                                : _tile_unpack(data, bytes, static_cast<size_t>(count));
    SDL_free(bytes);
    return read;
}

// --- layers ---

static bool _tile_data_form(TileData *data, const pugi::xml_node &node) {
    const char *encoding = node.attribute("encoding").value();
    const char *compression = node.attribute("compression").value();
    data->csv = SDL_strcmp(encoding, "csv") == 0;
    data->base64 = SDL_strcmp(encoding, "base64") == 0;
    data->compressed = SDL_strcmp(compression, "zlib") == 0 || SDL_strcmp(compression, "gzip") == 0;
    if (*encoding && !data->csv && !data->base64) {
        return engine_error(
            "[TILE_WORLD] %s: layer '%s' is encoded as %s: choose CSV or base64 as the map's tile layer format",
            data->load->path, data->layer, encoding);
    }
    if (!*compression || data->compressed) return true;
    return engine_error(
        "[TILE_WORLD] %s: layer '%s' is compressed with %s: choose zlib, gzip or CSV as the map's tile layer format",
        data->load->path, data->layer, compression);
}

static bool _tile_chunk_in_range(const TileChunk *chunk) {
    const auto is = [](Sint32 at, Sint32 length) {
        return length > 0 && at >= -TILE_WORLD_COORDINATE_MAX && at <= TILE_WORLD_COORDINATE_MAX - length;
    };
    return chunk->cols <= TILE_WORLD_COORDINATE_MAX && chunk->rows <= TILE_WORLD_COORDINATE_MAX &&
           is(chunk->left, chunk->cols) && is(chunk->top, chunk->rows) &&
           Sint64{chunk->cols} * chunk->rows <= TILE_WORLD_CELLS_MAX;
}

// Decodes a chunk, whose position and size are set.
static bool _tile_read_chunk(TileData *data, const pugi::xml_node &node, TileChunk *chunk) {
    if (!_tile_chunk_in_range(chunk)) {
        return engine_error(
            "[TILE_WORLD] %s: layer '%s' has %dx%d cells from %d, %d on: at least 1x1 and at most %d cells within %d "
            "of the origin can be loaded",
            data->load->path, data->layer, chunk->cols, chunk->rows, chunk->left, chunk->top,
            static_cast<int>(TILE_WORLD_CELLS_MAX), TILE_WORLD_COORDINATE_MAX);
    }
    data->count = static_cast<size_t>(chunk->cols) * static_cast<size_t>(chunk->rows);
    const bool read = data->csv      ? _tile_read_csv(data, node.child_value())
                      : data->base64 ? _tile_read_base64(data, node.child_value())
                                     : _tile_read_elements(data, node);
    chunk->cells = data->cells;
    return read;
}

static int SDLCALL _tile_compare_chunks(const void *a, const void *b) {
    const auto *first = static_cast<const TileChunk *>(a), *second = static_cast<const TileChunk *>(b);
    if (first->top != second->top) return first->top < second->top ? -1 : 1;
    return first->left < second->left ? -1 : first->left > second->left;
}

static bool _tile_read_infinite(TileData *data, const pugi::xml_node &node, TileLayerParts *parts) {
    size_t count = 0;
    for (const pugi::xml_node &chunk : node.children("chunk")) count += chunk ? 1 : 0;
    if (count == 0) return true;
    TileChunk *chunks = _tile_load_new<TileChunk>(data->load, count);
    if (!chunks) return false;
    TileChunk *at = chunks;
    for (const pugi::xml_node &chunk : node.children("chunk")) {
        *at = {
            .left = chunk.attribute("x").as_int(),
            .top = chunk.attribute("y").as_int(),
            .cols = chunk.attribute("width").as_int(),
            .rows = chunk.attribute("height").as_int(),
            .cells = nullptr};
        if (!_tile_read_chunk(data, chunk, at++)) return false;
    }
    SDL_qsort(chunks, count, sizeof *chunks, _tile_compare_chunks);
    parts->chunks = chunks;
    parts->chunk_count = static_cast<Sint32>(count);
    return true;
}

bool _tile_load_data(TileLoad *load, const pugi::xml_node &layer, const char *name, TileLayerParts *parts) {
    const pugi::xml_node node = layer.child("data");
    TileData data = {};
    data.load = load;
    data.layer = name;
    if (!_tile_data_form(&data, node)) return false;
    if (load->content->infinite) return _tile_read_infinite(&data, node, parts);
    TileChunk *chunk = _tile_load_new<TileChunk>(load);
    if (!chunk) return false;
    chunk->cols = layer.attribute("width").as_int(load->world->cols);
    chunk->rows = layer.attribute("height").as_int(load->world->rows);
    parts->chunks = chunk;
    parts->chunk_count = 1;
    return _tile_read_chunk(&data, node, chunk);
}
