// files: resolves paths of assets and of the user's files, as selected by Game::files. Main thread only.
#pragma once

inline constexpr int FILE_PATH_SIZE = 1024; // bytes, with the terminating NUL

struct FilePath {
    char text[FILE_PATH_SIZE];
};

// Path of an asset; `path` is relative, such as "assets/hero.png". Absolute paths are returned unchanged; a path that
// would be too long is truncated, and opening it fails.
FilePath files_asset(const char *path);

// Path of a file in the user's folder, for writing; `path` is relative.
FilePath files_user(const char *path);
