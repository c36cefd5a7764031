// checksums: makes a changed picture or sound stand up to the first look again, so that what lies behind the checksums
// is reached as well.
#pragma once

#include <cstdint>
#include <vector>

void fuzz_mend_png(std::vector<uint8_t> *file); // each chunk's CRC, as far as there are chunks
void fuzz_mend_ogg(std::vector<uint8_t> *file); // each page's
