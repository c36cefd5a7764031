// Corrupts assets, one at a time: removed, emptied, truncated, replaced by noise, or with flipped bits.
//   LUMARIND_DAMAGE_SEED        seed of the damage (default 1)
//   LUMARIND_DAMAGE_EVERYWHERE  if set, every screen is run with every damaged file, not only those that read it
#pragma once

#include <filesystem>
#include <string>
#include <vector>

using Damage = void (*)(std::string *content); // null: the file is removed

void damage_empty(std::string *content);
void damage_truncate(std::string *content);
void damage_noise(std::string *content);
void damage_noise_behind_header(std::string *content); // preserves the first 64 bytes
void damage_flip_bits(std::string *content);

void damage_seed();                // at the start of a test
size_t damage_below(size_t limit); // a random number, from the seed
bool damage_is_exhaustive();

// Creates the folder "assets" in the current folder, with links to the files of `intact` except for the damaged one.
void damage_file(const std::filesystem::path &intact, const std::string &file, Damage damage);
std::vector<std::string> files_below(const std::filesystem::path &folder); // relative paths
