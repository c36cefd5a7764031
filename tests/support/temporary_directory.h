// A temporary working directory, also for user data, removed with its contents at the end of its lifetime.
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
    // Replaces the title storage with this directory or a folder in it. Call after storage_setup.
    void use_as_game_files(const char *folder = "") const;

private:
    std::filesystem::path previous_;
};

void write_file(const std::filesystem::path &path, const std::string &content); // creates missing folders
std::string read_file(const std::filesystem::path &path);                       // "" if it does not exist

// Sets a variable in the process's environment and in SDL's copy. Null unsets it.
void set_environment(const char *name, const char *value);
