// files: where the program's files lie: the assets it reads, and what it writes for its user. The game's record says
// by which rule (GameFiles). Main thread only.
#pragma once

inline constexpr int FILE_PATH_SIZE = 1024; // bytes, with the terminating NUL

struct FilePath {
    char text[FILE_PATH_SIZE];
};

// Where an asset is read: `path` as the game names it, "assets/hero.png". Absolute paths stay as they are; one that
// becomes too long is cut, and no such file will be found.
FilePath files_asset(const char *path);

// Where something is written for the user: a relative path, in the user's folder.
FilePath files_user(const char *path);
