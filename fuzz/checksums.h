// checksums: fixes the checksums of mutated images and sounds, so that the decoders do not reject them early.
#pragma once

#include <cstdint>
#include <vector>

void fuzz_fix_png_checksums(std::vector<uint8_t> *file); // the CRC of each chunk
void fuzz_fix_ogg_checksums(std::vector<uint8_t> *file); // the CRC of each page
