#include "bench/repeated_castle.h"

#include "lumarind/core/storage.h"
#include "lumarind/toolkit/tile_grid.h"

#include <SDL3/SDL_filesystem.h>

#include <fstream>
#include <string>

static std::string repeated_csv(const TileGrid *castle, int cols, int rows) {
    std::string csv;
    for (int row = 0; row < rows; row++) {
        for (int col = 0; col < cols; col++) {
            csv += std::to_string(tile_grid_gid(castle, row % castle->rows, col % castle->cols));
            if (col + 1 < cols || row + 1 < rows) csv += ',';
        }
        csv += '\n';
    }
    return csv;
}

bool write_repeated_castle(const char *name, int cols, int rows) {
    char *text = storage_setup() ? storage_read_game_file("assets/fireknight/tilemaps/castle-tilemap.csv") : nullptr;
    TileGrid *castle = tile_grid_parse_csv(text);
    SDL_free(text);
    if (!castle) return false;
    const std::string size = "width=\"" + std::to_string(cols) + "\" height=\"" + std::to_string(rows) + "\"";
    std::ofstream file(std::string(SDL_GetBasePath()) + name);
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<map version=\"1.10\" orientation=\"orthogonal\" " << size
         << " tilewidth=\"16\" tileheight=\"16\">\n <tileset firstgid=\"1\" "
         << "source=\"assets/fireknight/tilemaps/castle-tileset.tsx\"/>\n <layer id=\"1\" name=\"castle\" " << size
         << ">\n  <data encoding=\"csv\">\n"
         << repeated_csv(castle, cols, rows) << "</data>\n </layer>\n</map>\n";
    tile_grid_cleanup(castle);
    SDL_free(castle);
    return file.good();
}
