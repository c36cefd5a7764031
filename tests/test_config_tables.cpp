// The constant tables the configuration is written with: input actions and capture formats.

#include "diagnostics/capture_format.h"
#include "input/input_actions.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(InputActions, NamesAreFoundInAnyCaseAndNothingElseIs) {
    for (int action = 0; action < INPUT_ACTION_COUNT; action++) {
        std::string name = input_action_name(action);
        EXPECT_EQ(input_action_from_name(name.c_str()), action);
        for (char &c : name) c = static_cast<char>(std::toupper(c));
        EXPECT_EQ(input_action_from_name(name.c_str()), action);
        EXPECT_STRNE(input_default_bindings_text(action), "");
    }
    for (const char *other : {"roll", "", "jump ", "jumps"}) EXPECT_EQ(input_action_from_name(other), -1) << other;
    for (const int none : {-1, INPUT_ACTION_COUNT + 0}) {
        EXPECT_FALSE(_input_action_valid(none));
        EXPECT_STREQ(input_action_name(none), "");
        EXPECT_STREQ(input_default_bindings_text(none), "");
    }
}

TEST(CaptureFormat, WordsBecomeFormatsAndBack) {
    for (const char *jpeg : {"jpg", "JPEG", "Jpg"}) EXPECT_EQ(capture_format_from_string(jpeg), CAPTURE_FORMAT_JPEG);
    for (const char *png : {"jpe", "gif", "", "jpg ", static_cast<const char *>(nullptr)}) {
        EXPECT_EQ(capture_format_from_string(png), CAPTURE_FORMAT_PNG);
    }
    EXPECT_STREQ(capture_format_to_string(CAPTURE_FORMAT_JPEG), "jpg");
    EXPECT_STREQ(capture_format_to_string(7), "png");
}

} // namespace
