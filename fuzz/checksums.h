// checksums: fixes the checksums of mutated images and sounds, so that fuzzing reaches the code behind them.
#pragma once

#include <cstdint>
#include <vector>

void fuzz_mend_png(std::vector<uint8_t> *file); // the CRC of each chunk
void fuzz_mend_ogg(std::vector<uint8_t> *file); // the CRC of each page
