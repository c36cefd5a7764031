// repeated_castle: a map of any size made by repeating the castle's tile layer.
#pragma once

// Writes the map, with a CSV layer, beside the executable. Returns false on a write error.
bool write_repeated_castle(const char *name, int cols, int rows);
