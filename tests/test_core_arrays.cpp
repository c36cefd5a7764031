// Typed arrays: one of values, defined here, and the string array, which owns its elements.

#include "lumarind/core/string_array.h"
#include "support/call_faults.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

struct NumberTraits : ArrayOfValues<int> {
    static constexpr const char *TAG = "NUMBERS";
    static constexpr const char *PREFIX = "numbers";
};
TYPED_ARRAY_STAMP(numbers, Numbers, NumberTraits)
TYPED_ARRAY_STAMP_ADD(numbers, Numbers, NumberTraits)

std::shared_ptr<Numbers> numbers_of(const std::vector<int> &values, int capacity = 0, int grow_by = 0) {
    const std::shared_ptr<Numbers> array(numbers_new(capacity, grow_by), [](Numbers *numbers) {
        numbers_cleanup(numbers);
        SDL_free(numbers);
    });
    for (const int value : values) EXPECT_TRUE(numbers_add(array.get(), &value));
    return array;
}

std::vector<int> content(const std::shared_ptr<Numbers> &array) { return {array->items, array->items + array->count}; }

// --- growth ---

TEST(TypedArray, GrowsByGrowByOrOne) {
    const struct {
        int capacity, grow_by, adds, expected_capacity;
    } cases[] = {{0, 0, 0, 0}, {0, 0, 3, 3}, {0, -4, 2, 2}, {11, 5, 11, 11}, {11, 5, 12, 16}, {-3, 2, 1, 2}};
    for (const auto &c : cases) {
        const auto array = numbers_of(std::vector<int>(static_cast<size_t>(c.adds)), c.capacity, c.grow_by);
        EXPECT_EQ(array->capacity, c.expected_capacity) << c.capacity << ", " << c.grow_by << ", " << c.adds;
        EXPECT_EQ(array->items == nullptr, c.expected_capacity == 0);
    }
    const auto array = numbers_of({7});
    for (int i = 0; i < 2; i++) {
        numbers_cleanup(array.get());
        EXPECT_TRUE(!array->items && array->capacity == 0 && array->count == 0);
    }
    const int seven = 7;
    EXPECT_TRUE(numbers_add(array.get(), &seven)) << "reusable after cleanup";
    for (int i = 0; i < 20; i++)
        ASSERT_TRUE(numbers_add(array.get(), &array->items[0])) << "an element in the array's own buffer";
    EXPECT_EQ(content(array), std::vector<int>(21, 7));
}

// --- elements ---

TEST(TypedArray, RemoveAndMoveFillGapWithLastElement) {
    const LogCapture log;
    const auto src = numbers_of({1, 2, 3}), dst = numbers_of({9});
    for (const int out : {-1, 3, 100}) {
        numbers_remove(src.get(), out);
        EXPECT_EQ(numbers_get(src.get(), out), 0);
        EXPECT_FALSE(numbers_move(src.get(), out, dst.get()));
    }
    allocation_faults_arm(1, false);
    EXPECT_FALSE(numbers_move(src.get(), 0, dst.get()));
    EXPECT_EQ(call_faults_disarm(), 1);
    EXPECT_EQ(log.count("[NUMBERS] Memory allocation failed while growing the array to 2 elements, error: "), 1);
    EXPECT_EQ(content(src), (std::vector{1, 2, 3}));
    EXPECT_EQ(content(dst), (std::vector{9}));

    EXPECT_TRUE(numbers_move(src.get(), 0, dst.get()));
    EXPECT_EQ(content(src), (std::vector{3, 2}));
    EXPECT_TRUE(numbers_move(dst.get(), 0, dst.get())) << "to the end of the same array";
    EXPECT_EQ(content(dst), (std::vector{9, 1}));
    numbers_remove(src.get(), 0);
    EXPECT_EQ(content(src), std::vector{2});
    EXPECT_EQ(numbers_get(src.get(), 0), 2);
    EXPECT_EQ(numbers_get(src.get(), 1), 0);
}

// --- an array that owns its elements ---

TEST(StringArray, OwnsCopiesWithoutLeaks) {
    const LogCapture log;
    StringArray array = {};
    char text[] = "one";
    ASSERT_TRUE(string_array_add(&array, text));
    text[0] = 'X';
    for (const int nth : {1, 2}) {
        allocation_faults_arm(nth, false);
        EXPECT_FALSE(string_array_add(&array, "two")) << "first copying the text fails, then growing the array";
        EXPECT_EQ(call_faults_disarm(), 1);
        allocation_faults_arm(nth, false);
        EXPECT_EQ(string_array_new(1, 1), nullptr) << "first allocating the record fails, then the elements";
        call_faults_disarm();
    }
    EXPECT_TRUE(log.has("[STRING_ARRAY] Memory allocation failed in string_array_new(), error: "));
    EXPECT_TRUE(log.has("[STRING_ARRAY] Element memory allocation failed in string_array_new(), error: "));
    EXPECT_TRUE(log.has("[STRING_ARRAY] Memory allocation failed while copying a string, error: "));
    EXPECT_EQ(array.count, 1);
    ASSERT_TRUE(string_array_add(&array, "two"));
    EXPECT_STREQ(string_array_get(&array, 0), "one");
    string_array_remove(&array, 0);
    EXPECT_STREQ(string_array_get(&array, 0), "two");
    string_array_cleanup(&array);
}

} // namespace
