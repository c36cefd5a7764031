// Reading whole files from storage, and splitting text into lines. Allocation faults are covered by the callers' tests.

#include "lumarind/core/storage.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

namespace {

class StorageTest : public ::testing::Test {
protected:
    ~StorageTest() override { storage_cleanup(); }

    TemporaryDirectory directory;
    LogCapture log;
};

TEST_F(StorageTest, ReadsGameAndUserFiles) {
    const char *font = "assets/fonts/EuroStyle Normal.ttf";
    EXPECT_EQ(storage_read_game_file(font), nullptr) << "before setup";
    ASSERT_TRUE(storage_setup());
    const SDL_Storage *game = storage_game();
    ASSERT_TRUE(storage_setup());
    EXPECT_EQ(storage_game(), game) << "setup is idempotent";
    char *text = storage_read_game_file(font);
    EXPECT_NE(text, nullptr);
    SDL_free(text);

    write_file("lumarind/LumarindEngine/folder/save", std::string("a\0b", 3));
    write_file("lumarind/LumarindEngine/empty", "");
    text = storage_read_user_file("folder/save");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::string(text, 4), std::string("a\0b\0", 4));
    SDL_free(text);
    for (const char *none : {font, "empty"}) EXPECT_EQ(storage_read_user_file(none), nullptr);
    const std::vector<std::string> errors = {
        std::string("[STORAGE] Storage is NULL, can't read file: ") + font,
        std::string("[STORAGE] Error reading file: ") + font + ", file not found or permission error.",
        "[STORAGE] Error determining file size or file is empty: empty"};
    EXPECT_EQ(log.errors(), errors);
    storage_cleanup();
    storage_cleanup();
    EXPECT_EQ(storage_user(), nullptr);
}

TEST(StorageLines, SplitAtLineFeedsOnly) {
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"a\r\n\nb\n", {"a\r", "b"}}, {"\n\nlast line without end", {"last line without end"}}, {"", {}}, {"\n\n", {}}};
    StringArray lines = {};
    for (auto [text, expected] : cases) {
        EXPECT_TRUE(string_array_add(&lines, "from before"));
        const int count = storage_parse_lines(text.data(), &lines);
        EXPECT_EQ(std::vector<std::string>(lines.items, lines.items + count), expected);
    }
    string_array_cleanup(&lines);
}

} // namespace
