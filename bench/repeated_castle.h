// repeated_castle: the castle's tile layer over and over, as a map of any size.
#pragma once

// Writes a map beside the executable, with its layer as CSV. False: it could not be written.
bool write_repeated_castle(const char *name, int cols, int rows);
