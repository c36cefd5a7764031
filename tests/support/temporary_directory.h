// A new working directory while it lives, removed with all it holds.
#pragma once

#include <filesystem>
#include <string>

class TemporaryDirectory {
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory &) = delete;
    TemporaryDirectory &operator=(const TemporaryDirectory &) = delete;

    std::filesystem::path path;

    void link_assets() const; // the project's assets, as assets/
    // It, or a folder in it, instead of that of the executable, once the storage is set up.
    void use_as_game_files(const char *folder = "") const;

private:
    std::filesystem::path previous_;
};

void write_file(const std::filesystem::path &path, const std::string &content); // makes the folders on the way
std::string read_file(const std::filesystem::path &path);                       // "" when there is none
