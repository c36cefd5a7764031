// Reading whole files from storage, and cutting text into lines.

#include "core/storage.h"
#include "core/storage_internal.h"
#include "support/allocation_faults.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_storage.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class StorageTest : public ::testing::Test {
protected:
    void SetUp() override { setenv("XDG_DATA_HOME", directory.path.c_str(), 1); }
    ~StorageTest() override { storage_cleanup(); }

    std::vector<std::string> lines_of(std::string text) {
        StringArray *lines = string_array_new(0, 0);
        EXPECT_TRUE(string_array_add(lines, "from before"));
        const int count = storage_parse_lines(text.data(), lines);
        const std::vector<std::string> result(lines->items, lines->items + count);
        string_array_cleanup(lines);
        SDL_free(lines);
        return result;
    }

    TemporaryDirectory directory;
    LogCapture log;
};

TEST_F(StorageTest, ReadsAWholeFileAndEndsItWithZero) {
    write_file("folder/data.csv", std::string("a\0b", 3));
    write_file("empty.csv", "");
    SDL_Storage *files = SDL_OpenFileStorage(directory.path.c_str());
    ASSERT_NE(files, nullptr);
    char *text = storage_read_file(files, "folder/data.csv");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::string(text, 4), std::string("a\0b\0", 4));
    SDL_free(text);

    EXPECT_EQ(storage_read_file(files, "empty.csv"), nullptr);
    EXPECT_EQ(storage_read_file(files, "missing.csv"), nullptr);
    EXPECT_EQ(storage_read_file(nullptr, "data.csv"), nullptr);
    const std::vector<std::string> errors = {
        "[STORAGE] Error determining file size or file is empty: empty.csv",
        "[STORAGE] Error reading file: missing.csv, file not found or permission error.",
        "[STORAGE] Storage is NULL, can't read file: data.csv"};
    EXPECT_EQ(log.errors(), errors);
    SDL_CloseStorage(files);
}

TEST_F(StorageTest, GameFilesAreReadBesideTheExecutable) {
    EXPECT_EQ(storage_read_game_file("assets/fonts/EuroStyle Normal.ttf"), nullptr) << "before setup";
    ASSERT_TRUE(storage_setup());
    const SDL_Storage *game = storage_game();
    ASSERT_TRUE(storage_setup());
    EXPECT_EQ(storage_game(), game) << "a second setup changes nothing";
    char *font = storage_read_game_file("assets/fonts/EuroStyle Normal.ttf");
    EXPECT_NE(font, nullptr);
    SDL_free(font);
    EXPECT_EQ(storage_read_user_file("nothing"), nullptr);
    EXPECT_EQ(storage_read_user_file("assets/fonts/EuroStyle Normal.ttf"), nullptr) << "the game's";
    write_file("lumarind/LumarindEngine/save", "mine");
    char *own = storage_read_user_file("save");
    EXPECT_STREQ(own, "mine");
    SDL_free(own);
    storage_cleanup();
    storage_cleanup();
    EXPECT_EQ(storage_user(), nullptr);
}

TEST_F(StorageTest, LinesAreCutAtNewlinesOnly) {
    using Lines = std::vector<std::string>;
    EXPECT_EQ(lines_of("a\r\n\nb\n"), (Lines{"a\r", "b"}));
    EXPECT_EQ(lines_of("\n\nlast line without end"), (Lines{"last line without end"}));
    for (const char *none : {"", "\n\n\n"}) EXPECT_EQ(lines_of(none), Lines{});
}

TEST_F(StorageTest, SurvivesAllocationFaults) {
    expect_allocation_faults_survived(&log, storage_setup, storage_cleanup);
    ASSERT_TRUE(storage_setup());
    char *text = nullptr;
    expect_allocation_faults_survived(
        &log, [&] { return (text = storage_read_game_file("assets/fonts/EuroStyle Normal.ttf")) != nullptr; },
        [&] {
            SDL_free(text);
            text = nullptr;
        });
}

} // namespace
